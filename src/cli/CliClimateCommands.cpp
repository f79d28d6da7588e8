// climate, fold and nasa2pvgis: the hourly climate file of a site, and its
// two stages alone.
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "CliCommands.h"
#include "CliSupport.h"
#include "app/services/DialogService.h"
#include "app/services/OrvoIni.h"
#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"
#include "geo/Frames.h"
#include "solar/analysis/ClimateDownload.h"
#include "solar/analysis/ClimateHourlyIrradiance.h"
#include "solar/analysis/ClimateNasaToPvgis.h"

namespace {

// The run log on stderr, and a dialog service that keeps the messages for stderr.
ScriptedDialogService& messagesOnStderr() {
    static ScriptedDialogService messages;
    runLog().fp_prt = stderr;
    installDialogService(&messages);
    return messages;
}

// The user's folders and settings as the viewer has them: $HOME/Orvo_/ with
// its TMP/ and Orvo.ini, where the services' addresses are set.
void loadUserSettings() {
    SessionPaths& paths = sessionPaths();
    const char* home = std::getenv("HOME");
    paths.USERFOLDER = std::string(home && *home ? home : ".") + "/";
    paths.ORVO_ = paths.USERFOLDER + "Orvo_/";
    paths.ORVO_T = paths.ORVO_ + "TMP/";
    std::error_code ec;
    std::filesystem::create_directories(paths.ORVO_T, ec);
    ORVOINI().load(paths.ORVO_ + "Orvo.ini");
}

void printMessages(const ScriptedDialogService& messages) {
    for (const ScriptedDialogService::Question& q : messages.questions())
        if (q.kind == ScriptedDialogService::Question::Message) std::fprintf(stderr, "%s\n", q.text.toStdString().c_str());
}

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
    if (!ParseCliNumber(args[0], lat) || lat < -90 || lat > 90)
        return CliUsageError("not a latitude: " + args[0], usage);
    if (!ParseCliNumber(args[1], lon) || lon < -180 || lon > 180)
        return CliUsageError("not a longitude: " + args[1], usage);
    std::error_code ec;
    if (!std::filesystem::is_directory(args[2], ec)) return CliUsageError("not a folder: " + args[2], usage);

    loadUserSettings();
    ScriptedDialogService& messages = messagesOnStderr();
    frameState().OCENTERLat = lat;
    frameState().OCENTERLon = lon;
    frameState().OCENTER[2] = altitude;
    const std::string hourly = DownloadPVGISTdata(args[2]);
    printMessages(messages);
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
    ScriptedDialogService& messages = messagesOnStderr();
    frameState().OCENTER[2] = altitude;
    const bool written = CreateHourlyIrradianceFromDownloadedCSV(args[0], args[1]);
    printMessages(messages);
    if (!written) return CLI_FAILED;
    std::printf("%s\n", args[1].c_str());
    return CLI_OK;
}

int CliNasaToPvgis(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli nasa2pvgis IN.csv OUT.csv";
    if (args.size() != 2) return CliUsageError("nasa2pvgis takes a NASA POWER answer and an output file", usage);
    runLog().fp_prt = stderr;
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
