// A billboard container (".BLB") imported in place of the billboards.
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
    const std::string path = zvfuzz::writeFile("T.BLB", data, size);
    ImportBillboardData(QString::fromStdString(path));
    return 0;
}
