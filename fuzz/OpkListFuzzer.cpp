// A model's camera list "OBLIXS/OPK.TXT": converted into the prepared list, then read back from it.
#include <cstdint>
#include <filesystem>

#include "FuzzSupport.h"
#include "oblique/ObliqueRecords.h"
#include "oblique/OpkList.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    resetObliqueStore();
    std::error_code ec;
    std::filesystem::remove_all(zvfuzz::scratchPath("site/OBLIXS"), ec);
    zvfuzz::writeFile("site/OBLIXS/OPK.TXT", data, size);
    const std::string model = zvfuzz::scratchPath("site/m.obj");
    LoadOpkList(model);
    LoadOpkList(model);
    return 0;
}
