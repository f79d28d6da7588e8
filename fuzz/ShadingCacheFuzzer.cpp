// A panel's shading CSV taken as the cached result of its ray analysis.
#include <cstdint>

#include "FuzzSupport.h"
#include "solar/analysis/ShadingResultsCache.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = zvfuzz::writeFile("Panel-1_1_Shading.CSV", data, size);
    // A wide tolerance lets rows of any position through to the results.
    CombinedPanelResults r;
    LoadAndValidateCache(path, 0, 0, 0, r, 1e300);
    QStringList lines;
    if (ReadCSVData(path, lines)) {
        CombinedPanelResults all;
        LoadResultsFromCSV(lines, all);
    }
    return 0;
}
