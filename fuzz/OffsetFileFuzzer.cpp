// The offset side file ("offset.txt", or the model's ".zuz").
#include <cstdint>

#include "FuzzSupport.h"
#include "app/model/ModelOpening.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    double offset[3] = {0, 0, 0};
    ReadOffsetFile(zvfuzz::writeFile("offset.txt", data, size), offset);
    return 0;
}
