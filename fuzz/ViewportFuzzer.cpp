// A viewport file (".vpt") read back into the engine's camera.
#include <cstdint>

#include "FuzzSupport.h"
#include "app/model/Viewport.h"
#include "scene/engine_interface.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    zvfuzz::scratch();
    At3d_Start();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    RestoreViewport(zvfuzz::writeFile("Home.vpt", data, size));
    return 0;
}
