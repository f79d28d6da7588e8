// A panel's sun table file loaded for the shading pass.
#include <cstdint>

#include "FuzzSupport.h"
#include "solar/analysis/SunTableFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = zvfuzz::writeFile("Panel_1_1_Sun.csv", data, size);
    InitializeShadowing(path);
    CleanupShadowing();
    return 0;
}
