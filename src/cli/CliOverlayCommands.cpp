// grid-name and grid-center: the tactical grid beside a model; shape-report:
// the text report of a vector file; merge-shapes: shape files made one;
// elevation: the terrain height from the web.

#include <cstdio>
#include <QFile>
#include <filesystem>

#include "CliCommands.h"
#include "CliSupport.h"
#include "overlays/ShapeFiles.h"
#include "overlays/TacticalGridCells.h"
#include "overlays/VectorLayers.h"
#include "overlays/WebMapServices.h"
#include "scene/FileNameCase.h"

namespace {

// The model's "TacticalG.shp" in any case; empty, with the reason on stderr, when missing.
QString ModelGrid(const std::string& modelPath) {
    std::error_code ec;
    if (!std::filesystem::is_regular_file(modelPath, ec)) {
        std::fprintf(stderr, "Missing\n%s\n", modelPath.c_str());
        return {};
    }
    const std::filesystem::path folder = std::filesystem::absolute(modelPath, ec).parent_path();
    const std::string grid = FindFileNoCase((folder / "TacticalG.shp").string());
    if (grid.empty()) std::fprintf(stderr, "no tactical grid beside %s\n", modelPath.c_str());
    return QString::fromStdString(grid);
}

int CliGridName(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli grid-name MODEL E N";
    if (args.size() != 3) return CliUsageError("grid-name takes a model and a map point E N", usage);
    double east, north;
    if (!ParseCliNumber(args[1], east)) return CliUsageError("not a number: " + args[1], usage);
    if (!ParseCliNumber(args[2], north)) return CliUsageError("not a number: " + args[2], usage);
    const QString grid = ModelGrid(args[0]);
    if (grid.isEmpty()) return CLI_FAILED;
    const QString name = GetGridNameIn(grid, TGIS_Point{east, north});
    if (name.isEmpty()) {
        std::fprintf(stderr, "no grid cell holds %s %s\n", args[1].c_str(), args[2].c_str());
        return CLI_FAILED;
    }
    std::printf("%s\n", name.toUtf8().constData());
    return CLI_OK;
}

int CliGridCenter(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli grid-center MODEL NAME";
    if (args.size() != 2) return CliUsageError("grid-center takes a model and a cell name", usage);
    const QString grid = ModelGrid(args[0]);
    if (grid.isEmpty()) return CLI_FAILED;
    TGIS_Point3D center;
    if (!GetGridCenterIn(grid, QString::fromStdString(args[1]), center)) {
        std::fprintf(stderr, "no grid cell named %s\n", args[1].c_str());
        return CLI_FAILED;
    }
    std::printf("%.3f %.3f %.3f\n", center.X, center.Y, center.Z);
    return CLI_OK;
}

int CliShapeReport(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli shape-report FILE";
    if (args.size() != 1) return CliUsageError("shape-report takes one vector file", usage);
    std::error_code ec;
    if (!std::filesystem::is_regular_file(args[0], ec)) {
        std::fprintf(stderr, "Missing\n%s\n", args[0].c_str());
        return CLI_FAILED;
    }
    PrepareCliSession();
    const QString report = ReadShapeFileTatuk(QString::fromStdString(args[0]));
    QFile file(report);
    if (report.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "Can not read %s\n", args[0].c_str());
        return CLI_FAILED;
    }
    std::fwrite(file.readAll().constData(), 1, static_cast<std::size_t>(file.size()), stdout);
    std::fprintf(stderr, "%s\n", report.toUtf8().constData());
    return CLI_OK;
}

int CliMergeShapes(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli merge-shapes OUT FILE FILE...";
    if (args.size() < 2) return CliUsageError("merge-shapes takes an output and the files to merge", usage);
    PrepareCliSession();
    StderrDialogService dialogs;
    CliCommandScope scope(&dialogs);
    QStringList files;
    for (std::size_t i = 1; i < args.size(); ++i) files << QString::fromStdString(args[i]);
    const QString out = QString::fromStdString(args[0]);
    if (!MergeShapeFilesFromTS(files, out)) {
        std::fprintf(stderr, "Nothing written to %s\n", args[0].c_str());
        return CLI_FAILED;
    }
    std::unique_ptr<TGIS_LayerVector> merged = ReadVectorLayer(out);
    std::printf("%s\nshapes %d\n", args[0].c_str(), merged ? merged->ShapeCount() : 0);
    return CLI_OK;
}

int CliElevation(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli elevation LAT LON";
    if (args.size() != 2) return CliUsageError("elevation takes a latitude and a longitude", usage);
    double lat, lon;
    int error = 0;
    if (!ParseCliLatLon(args, 0, lat, lon, usage, error)) return error;
    PrepareCliSession();
    StderrDialogService dialogs;
    CliCommandScope scope(&dialogs);
    const double height = GetTerrainElevationFromWeb(lat, lon);
    if (height == -9999) return CLI_FAILED;
    std::printf("%.3f\n", height);
    return CLI_OK;
}

}  // namespace

ZV_CLI_COMMAND("grid-name", "MODEL E N", CliGridName);
ZV_CLI_COMMAND("grid-center", "MODEL NAME", CliGridCenter);
ZV_CLI_COMMAND("shape-report", "FILE", CliShapeReport);
ZV_CLI_COMMAND("merge-shapes", "OUT FILE FILE...", CliMergeShapes);
ZV_CLI_COMMAND("elevation", "LAT LON", CliElevation);
