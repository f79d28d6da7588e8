// An ONC file of control pairs applied to a small OBJ, by both geocoding
// passes: the least-squares rectify and the three-pair conversion.
#include <cstdint>

#include "FuzzSupport.h"
#include "modeltools/RectifyByOnc.h"
#include "modeltools/RectifyConvert.h"

namespace {
const char* const kModel =
    "mtllib model.mtl\n"
    "v 0.000 0.000 0.000\nv 10.000 0.000 0.000\nv 10.000 10.000 2.000\nv 0.000 10.000 2.000\n"
    "vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\n"
    "g roof\nusemtl m0\nf 1/1 2/2 3/3\nf 1/1 3/3 4/4\n";
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    zvfuzz::writeFile("model.obj", kModel);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string onc = zvfuzz::writeFile("model.ONC", data, size);
    const std::string model = zvfuzz::scratchPath("model.obj");
    RectifyOBJByONC(model, zvfuzz::scratchPath("rectified.obj"), onc, 0);
    RectifyOBJByONC(model, zvfuzz::scratchPath("rectified.obj"), onc, 25);
    ConvertOBJ(model, zvfuzz::scratchPath("converted.obj"), onc);
    return 0;
}
