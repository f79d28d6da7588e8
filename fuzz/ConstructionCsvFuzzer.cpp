// A construction drawing CSV (a frame's side view) drawn as an SVG page.
#include <cstdint>

#include "FuzzSupport.h"
#include "solar/design/Csv2Svg.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = zvfuzz::writeFile("Reports/A_P(4).csv", data, size);
    CSV2SVG(QString::fromStdString(path), "Construction A", "Customer");
    return 0;
}
