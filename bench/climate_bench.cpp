// Climate stages of a report: folding a six-year hourly answer (2018-2023,
// 52,584 rows) into the hourly climate file, indexing that file, and the
// 8760 irradiance look-ups of one panel's year.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "solar/analysis/ClimateHourlyIrradiance.h"
#include "solar/analysis/ClimateIrradianceLookup.h"

namespace {

constexpr int FIRST_YEAR = 2018;
constexpr int LAST_YEAR = 2023;

int daysIn(int year, int month) {
    static const int days[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && year % 4 == 0 ? 29 : days[month - 1];
}

// A PVGIS-layout answer with every hour of six years; the sun is up from
// 04 to 17 UTC.
std::string sixYearAnswer(long& rows) {
    std::string text = "Latitude (decimal degrees):\t32.100\n\ntime,Gb(i),Gd(i),Gr(i),H_sun,T2m,WS10m,Int\n";
    char line[128];
    rows = 0;
    for (int year = FIRST_YEAR; year <= LAST_YEAR; ++year)
        for (int month = 1; month <= 12; ++month)
            for (int day = 1; day <= daysIn(year, month); ++day)
                for (int hour = 0; hour < 24; ++hour, ++rows) {
                    const bool sun = hour >= 4 && hour <= 17;
                    const int beam = sun ? (month * 131 + day * 17 + hour * 29 + year) % 9000 : 0;
                    std::snprintf(line, sizeof line, "%04d%02d%02d:%02d10,%d.%d,%d.%d,%d.%d,%s,%d.%d,%d.%d,0.0\n",
                                  year, month, day, hour, beam / 10, beam % 10, beam / 30, beam % 7, beam / 200,
                                  beam % 3, sun ? "35.2" : "-10.0", 10 + (month + hour) % 20, day % 10,
                                  1 + hour % 5, month % 10);
                    text += line;
                }
    return text + "\nPVGIS (c) European Union, 2001-2024\n";
}

struct ClimateBenchFiles {
    std::filesystem::path folder;
    std::string raw, hourly;
    long rows = 0;
    ClimateBenchFiles() {
        folder = std::filesystem::temp_directory_path() / ("zv-climate-bench-" + std::to_string(getpid()));
        std::filesystem::create_directories(folder);
        raw = (folder / "PVGIST_R.csv").string();
        hourly = (folder / "PVGIST_H.csv").string();
        std::ofstream(raw, std::ios::binary) << sixYearAnswer(rows);
        CreateHourlyIrradianceFromDownloadedCSV(raw, hourly);
    }
    ~ClimateBenchFiles() {
        std::error_code ec;
        std::filesystem::remove_all(folder, ec);
    }
};

const ClimateBenchFiles& files() {
    static const ClimateBenchFiles f;
    return f;
}

void BM_FoldSixYearAnswer(benchmark::State& state) {
    const ClimateBenchFiles& f = files();
    for (auto _ : state) benchmark::DoNotOptimize(CreateHourlyIrradianceFromDownloadedCSV(f.raw, f.hourly));
    state.counters["rows"] = static_cast<double>(f.rows);
}

void BM_IndexHourlyList(benchmark::State& state) {
    const QStringList lines = LoadHourlyClimateList(files().hourly);
    for (auto _ : state) {
        HourIrradianceIndex index(lines);
        benchmark::DoNotOptimize(index);
    }
    state.counters["lines"] = static_cast<double>(lines.size());
}

// Every hour of a year, dates and times formatted per call as the shading
// run does.
void BM_LookupPanelYear(benchmark::State& state) {
    const HourIrradianceIndex index(LoadHourlyClimateList(files().hourly));
    for (auto _ : state) {
        double sum = 0;
        for (int month = 1; month <= 12; ++month)
            for (int day = 1; day <= daysIn(2021, month); ++day)
                for (int hour = 0; hour < 24; ++hour) {
                    char date[16], time[8];
                    std::snprintf(date, sizeof date, "2021-%02d-%02d", month, day);
                    std::snprintf(time, sizeof time, "%02d:00", hour);
                    sum += GetRealIrradianceForTime(date, time, index).beam;
                }
        benchmark::DoNotOptimize(sum);
    }
    state.counters["lookups"] = 8760;
}

}  // namespace

BENCHMARK(BM_FoldSixYearAnswer)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_IndexHourlyList)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LookupPanelYear)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
