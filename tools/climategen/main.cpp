// zv-climategen LAT LON OUTPUT.csv [--seed N]: writes a synthetic hourly
// climate year for the site (decimal degrees, north and east positive) in the
// layout of the folded climate file, and prints OUTPUT.csv. The same
// arguments always give the same file.

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "solar/analysis/SyntheticClimate.h"

namespace {

constexpr const char* kUsage = "usage: zv-climategen LAT LON OUTPUT.csv [--seed N]\n";

bool parseNumber(const char* text, double low, double high, double& value) {
    char* end = nullptr;
    value = std::strtod(text, &end);
    return end != text && *end == '\0' && value >= low && value <= high;
}

}  // namespace

int main(int argc, char** argv) {
    std::setlocale(LC_NUMERIC, "C");
    double latitude = 0, longitude = 0, seed = 1;
    const bool seeded = argc == 6 && std::string(argv[4]) == "--seed";
    if ((argc != 4 && !seeded) || !parseNumber(argv[1], -90, 90, latitude) ||
        !parseNumber(argv[2], -180, 180, longitude) || (seeded && !parseNumber(argv[5], 0, 4294967295.0, seed)) ||
        seed != static_cast<double>(static_cast<unsigned>(seed))) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    if (!WriteSyntheticClimateFile(latitude, longitude, static_cast<unsigned>(seed), argv[3])) {
        std::fprintf(stderr, "zv-climategen: cannot write %s\n", argv[3]);
        return 1;
    }
    std::printf("%s\n", argv[3]);
    return 0;
}
