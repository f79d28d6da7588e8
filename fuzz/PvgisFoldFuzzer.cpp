// A downloaded multi-year answer in PVGIS layout folded into the hourly
// climate file.
#include <cstdint>

#include "FuzzSupport.h"
#include "app/services/SessionPaths.h"
#include "solar/analysis/ClimateHourlyIrradiance.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    sessionPaths().ORVO_T = zvfuzz::scratchPath("TMP/");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string raw = zvfuzz::writeFile("PVGIST_R.csv", data, size);
    CreateHourlyIrradianceFromDownloadedCSV(raw, zvfuzz::scratchPath("PVGIST_H.csv"));
    return 0;
}
