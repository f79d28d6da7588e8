// info, ray and ground: questions about one model in its map frame.
#include <cstdio>

#include "CliCommands.h"
#include "CliSupport.h"
#include "geo/Frames.h"
#include "scene/engine_interface.h"

namespace {

void printSix(const char* key, const double v[6]) {
    std::printf("%s: %.3f %.3f %.3f %.3f %.3f %.3f\n", key, v[0], v[1], v[2], v[3], v[4], v[5]);
}

int CliInfo(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli info MODEL";
    if (args.size() != 1) return CliUsageError("info takes one model file", usage);
    OpenedModel opened;
    if (!OpenModelForCli(args[0], opened)) return CLI_FAILED;

    long vertices = 0, faces = 0;
    char name[AT3D_NAME_SIZE];
    for (void* layer = At3d_GetNextLayer(nullptr, name); layer; layer = At3d_GetNextLayer(layer, name)) {
        vertices += At3d_VertexCount(name);
        faces += At3d_FaceCount(name);
    }
    const FrameState& frame = frameState();
    std::printf("layers: %d\n", At3d_LayerCount());
    std::printf("vertices: %ld\n", vertices);
    std::printf("faces: %ld\n", faces);
    printSix("bounds_file", frame.BeforeRotateModelMinMax);
    std::printf("offset: %.3f %.3f %.3f\n", frame.Offset[0], frame.Offset[1], frame.Offset[2]);
    printSix("bounds_map", frame.OriginalModelMinMax);
    std::printf("epsg: %d\n", opened.epsg);
    return CLI_OK;
}

int CliRay(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli ray MODEL X1 Y1 Z1 X2 Y2 Z2 [--skip D] [--first]";
    std::vector<std::string> positional;
    double skip = 0;
    int exitFirst = 0;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--first") {
            exitFirst = 1;
        } else if (args[i] == "--skip") {
            if (i + 1 >= args.size() || !ParseCliNumber(args[i + 1], skip) || skip < 0)
                return CliUsageError("--skip needs a distance of 0 or more", usage);
            ++i;
        } else {
            positional.push_back(args[i]);
        }
    }
    if (positional.size() != 7) return CliUsageError("ray takes a model and six coordinates", usage);
    double map[6];
    for (int k = 0; k < 6; ++k)
        if (!ParseCliNumber(positional[k + 1], map[k]))
            return CliUsageError("not a number: " + positional[k + 1], usage);

    OpenedModel opened;
    if (!OpenModelForCli(positional[0], opened)) return CLI_FAILED;
    double v1[3], v2[3], hit[3];
    for (int k = 0; k < 3; ++k) {
        v1[k] = map[k] - OC(k);
        v2[k] = map[k + 3] - OC(k);
    }
    if (At3d_Get_Line_Mesh_Intersection_Point(v1, v2, skip, hit, exitFirst) > 0)
        std::printf("hit %.3f %.3f %.3f\n", hit[0] + OC(0), hit[1] + OC(1), hit[2] + OC(2));
    else
        std::printf("no hit\n");
    return CLI_OK;
}

int CliGround(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli ground MODEL X Y";
    if (args.size() != 3) return CliUsageError("ground takes a model and a map point X Y", usage);
    double x, y;
    if (!ParseCliNumber(args[1], x)) return CliUsageError("not a number: " + args[1], usage);
    if (!ParseCliNumber(args[2], y)) return CliUsageError("not a number: " + args[2], usage);
    OpenedModel opened;
    if (!OpenModelForCli(args[0], opened)) return CLI_FAILED;
    const double z = GetZFromXY(x, y);
    if (z < -9990)
        std::printf("-9999\n");
    else
        std::printf("%.3f\n", z);
    return CLI_OK;
}

}  // namespace

ZV_CLI_COMMAND("info", "MODEL", CliInfo);
ZV_CLI_COMMAND("ray", "MODEL X1 Y1 Z1 X2 Y2 Z2 [--skip D] [--first]", CliRay);
ZV_CLI_COMMAND("ground", "MODEL X Y", CliGround);
