// A NASA POWER hourly answer rewritten in PVGIS layout.
#include <cstdint>

#include "FuzzSupport.h"
#include "solar/analysis/ClimateNasaToPvgis.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string answer = zvfuzz::writeFile("NASA_POWER_raw.csv", data, size);
    ConvertNasaPowerToPvgisRaw(answer, zvfuzz::scratchPath("PVGIST_R.csv"));
    return 0;
}
