// latlon, en and geoid: a model's map frame against WGS 84, and the geoid.

#include <cstdio>
#include <filesystem>

#include "CliCommands.h"
#include "CliSupport.h"
#include "geo/GeoConversions.h"
#include "geo/GeoState.h"
#include "geo/Geoid.h"

namespace {

// The messages the viewer would show in a box go to stderr.
// The model's ".prj" becomes GlobalCS; false, with the reason on stderr, when
// the model or its system is missing.
bool LoadModelSystem(const std::string& modelPath) {
    std::error_code ec;
    if (!std::filesystem::is_regular_file(modelPath, ec)) {
        std::fprintf(stderr, "Missing\n%s\n", modelPath.c_str());
        return false;
    }
    const std::string prj = FindPrjFile(modelPath);
    if (prj.empty() || !LoadGlobalCS(prj)) {
        std::fprintf(stderr, "no coordinate system\n");
        return false;
    }
    return true;
}

int CliLatLon(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli latlon MODEL E N";
    if (args.size() != 3) return CliUsageError("latlon takes a model and a map point E N", usage);
    double east, north;
    if (!ParseCliNumber(args[1], east)) return CliUsageError("not a number: " + args[1], usage);
    if (!ParseCliNumber(args[2], north)) return CliUsageError("not a number: " + args[2], usage);
    if (!LoadModelSystem(args[0])) return CLI_FAILED;
    double lat, lon;
    GPSEastNorth2LatLon(east, north, lat, lon);
    std::printf("%.9f %.9f\n", lat, lon);
    return CLI_OK;
}

int CliEastNorth(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli en MODEL LAT LON";
    if (args.size() != 3) return CliUsageError("en takes a model and a latitude and longitude", usage);
    double lat, lon;
    int error = 0;
    if (!ParseCliLatLon(args, 1, lat, lon, usage, error)) return error;
    if (!LoadModelSystem(args[0])) return CLI_FAILED;
    double east, north;
    if (!GPSLatLon2EastNorth(lat, lon, east, north)) {
        std::fprintf(stderr, "error: the point cannot be projected into the model's system\n");
        return CLI_FAILED;
    }
    std::printf("%.3f %.3f\n", east, north);
    return CLI_OK;
}

int CliGeoid(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli geoid LAT LON";
    if (args.size() != 2) return CliUsageError("geoid takes a latitude and a longitude", usage);
    double lat, lon;
    int error = 0;
    if (!ParseCliLatLon(args, 0, lat, lon, usage, error)) return error;
    PrepareCliSession();
    const double separation = GetGMGeoidalSeparation(lat, lon);
    if (!geoState().GlobalGeoidalSeparationSet) {
        std::fprintf(stderr, "error: no geoid separation at %s %s\n", args[0].c_str(), args[1].c_str());
        return CLI_FAILED;
    }
    std::printf("%.3f\n", separation);
    return CLI_OK;
}

}  // namespace

ZV_CLI_COMMAND("latlon", "MODEL E N", CliLatLon);
ZV_CLI_COMMAND("en", "MODEL LAT LON", CliEastNorth);
ZV_CLI_COMMAND("geoid", "LAT LON", CliGeoid);
