// The cleaning list "_Todelete.txt": its lines and the regions they mark.
#include <cstdint>

#include "FuzzSupport.h"
#include "modeltools/CleanRegions.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = zvfuzz::writeFile("model_Todelete.txt", data, size);
    ReadTodeleteLines(path);
    ReadCleanRegions(path);
    return 0;
}
