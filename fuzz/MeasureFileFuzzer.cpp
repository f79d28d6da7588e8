// A measure file (".MES") and a polygon file (".POL") imported onto the
// engine's measure list, as the Import menu does.
#include <cstdint>

#include "FuzzSupport.h"
#include "measure/MeasurementFiles.h"
#include "scene/engine_interface.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    zvfuzz::scratch();
    At3d_Start();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The first byte picks the extension: a polygon file also fills the way points.
    if (size < 1) return 0;
    const char* name = data[0] & 1 ? "T.POL" : "T.MES";
    const std::string path = zvfuzz::writeFile(name, data + 1, size - 1);
    At3d_MeasureList_Clear();
    ImportMeasureData(QString::fromStdString(path));
    return 0;
}
