// The roof corner table "Corner,X,Y,Z,U,V,L" fitted to its target area.
#include <cstdint>

#include "FuzzSupport.h"
#include "solar/design/ConstructionAdjust.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    AdjustCSV(QString::fromStdString(zvfuzz::writeFile("roof.csv", data, size)));
    return 0;
}
