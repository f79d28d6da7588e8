// The OBJ reader on any bytes: the whole model read, layers and all.
#include <cstdint>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "scene/engine/ObjReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = zvfuzz::writeFile("model.obj", data, size);
    std::vector<engine::Layer> layers;
    engine::ReadObjFile(path, layers);
    return 0;
}
