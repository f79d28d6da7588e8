// climate, fold and nasa2pvgis: the hourly climate file of a site, and its
// two stages alone.
#include <cstdio>
#include <filesystem>

#include "CliCommands.h"
#include "CliSupport.h"
#include "geo/Frames.h"
#include "solar/analysis/ClimateDownload.h"
#include "solar/analysis/ClimateHourlyIrradiance.h"
#include "solar/analysis/ClimateNasaToPvgis.h"

namespace {

// Takes "--altitude H" out of args; false when it is there without a number.
bool takeAltitude(std::vector<std::string>& args, double& altitude) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] != "--altitude") continue;
        if (i + 1 >= args.size() || !ParseCliNumber(args[i + 1], altitude)) return false;
        args.erase(args.begin() + static_cast<std::ptrdiff_t>(i), args.begin() + static_cast<std::ptrdiff_t>(i) + 2);
        return true;
    }
    return true;
}

int CliClimate(const std::vector<std::string>& arguments) {
    constexpr const char* usage = "zorvex64-cli climate LAT LON FOLDER [--altitude H]";
    std::vector<std::string> args = arguments;
    double altitude = 0;
    if (!takeAltitude(args, altitude)) return CliUsageError("--altitude needs a height in metres", usage);
    if (args.size() != 3) return CliUsageError("climate takes a latitude, a longitude and a folder", usage);
    double lat, lon;
    int error = 0;
    if (!ParseCliLatLon(args, 0, lat, lon, usage, error)) return error;
    std::error_code ec;
    if (!std::filesystem::is_directory(args[2], ec)) return CliUsageError("not a folder: " + args[2], usage);

    PrepareCliSession();
    frameState().MapCenterLat = lat;
    frameState().MapCenterLon = lon;
    frameState().OCENTER[2] = altitude;
    const std::string hourly = DownloadPVGISTdata(args[2]);
    if (hourly.empty()) {
        std::fprintf(stderr, "Could not download PVGIST data\n");
        return CLI_FAILED;
    }
    std::printf("%s\n", hourly.c_str());
    return CLI_OK;
}

int CliFold(const std::vector<std::string>& arguments) {
    constexpr const char* usage = "zorvex64-cli fold RAW.csv OUT.csv [--altitude H]";
    std::vector<std::string> args = arguments;
    double altitude = 0;
    if (!takeAltitude(args, altitude)) return CliUsageError("--altitude needs a height in metres", usage);
    if (args.size() != 2) return CliUsageError("fold takes a downloaded answer and an output file", usage);
    PrepareCliSession();
    frameState().OCENTER[2] = altitude;
    const bool written = CreateHourlyIrradianceFromDownloadedCSV(args[0], args[1]);
    if (!written) return CLI_FAILED;
    std::printf("%s\n", args[1].c_str());
    return CLI_OK;
}

int CliNasaToPvgis(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli nasa2pvgis IN.csv OUT.csv";
    if (args.size() != 2) return CliUsageError("nasa2pvgis takes a NASA POWER answer and an output file", usage);
    PrepareCliSession();
    if (!ConvertNasaPowerToPvgisRaw(args[0], args[1])) {
        std::fprintf(stderr, "error: no hourly rows could be taken from %s\n", args[0].c_str());
        return CLI_FAILED;
    }
    std::printf("%s\n", args[1].c_str());
    return CLI_OK;
}

}  // namespace

ZV_CLI_COMMAND("climate", "LAT LON FOLDER [--altitude H]", CliClimate);
ZV_CLI_COMMAND("fold", "RAW.csv OUT.csv [--altitude H]", CliFold);
ZV_CLI_COMMAND("nasa2pvgis", "IN.csv OUT.csv", CliNasaToPvgis);
