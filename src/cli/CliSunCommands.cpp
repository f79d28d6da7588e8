// sun-table: the sun table of a panel at a site, as the report run writes it.
#include <cmath>
#include <cstdio>

#include "CliCommands.h"
#include "CliSupport.h"
#include "app/services/SunGlobalLog.h"
#include "solar/analysis/SunTableFile.h"

namespace {

int CliSunTable(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli sun-table LAT LON YEAR TILT AZIMUTH OUT.csv";
    if (args.size() != 6)
        return CliUsageError("sun-table takes latitude, longitude, year, tilt, azimuth and an output file", usage);
    double value[5];
    for (int k = 0; k < 5; ++k)
        if (!ParseCliNumber(args[k], value[k])) return CliUsageError("not a number: " + args[k], usage);
    const double latitude = value[0], longitude = value[1], year = value[2], tilt = value[3], azimuth = value[4];
    if (std::fabs(latitude) > 90) return CliUsageError("latitude must lie between -90 and 90", usage);
    if (std::fabs(longitude) > 180) return CliUsageError("longitude must lie between -180 and 180", usage);
    if (year != std::floor(year) || year < 1 || year > 9999)
        return CliUsageError("year must be a whole number from 1 to 9999", usage);

    // The solar log's lines are the CLI's messages.
    sunGlobalLog().SunGlobalLogfile = stderr;
    const int rows = GenerateSunPositionData(latitude, longitude, static_cast<int>(year), tilt, azimuth, args[5]);
    if (rows < 0) {
        std::fprintf(stderr, "error: cannot write %s\n", args[5].c_str());
        return CLI_FAILED;
    }
    std::printf("rows: %d\n", rows);
    return CLI_OK;
}

}  // namespace

ZV_CLI_COMMAND("sun-table", "LAT LON YEAR TILT AZIMUTH OUT.csv", CliSunTable);
