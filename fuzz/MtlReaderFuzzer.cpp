// The material library reader on any bytes.
#include <cstdint>
#include <string>
#include <unordered_map>

#include "FuzzSupport.h"
#include "scene/engine/MtlReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zvfuzz::writeFile("model.mtl", data, size);
    std::unordered_map<std::string, engine::ObjMaterial> materials;
    engine::ReadMtlLibrary(zvfuzz::scratch(), "model.mtl", materials);
    return 0;
}
