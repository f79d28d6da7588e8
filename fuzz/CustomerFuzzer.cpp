// "Customer.TXT": the customer's name read as the open does and put as the
// footer of a construction drawing.
#include <QString>
#include <cstdint>

#include "FuzzSupport.h"
#include "app/services/FileHelpers.h"
#include "solar/design/Csv2Svg.h"

namespace {
const char* const kFrame =
    "@page=A4, margin_mm=10\n"
    "0, 0, 100, 0\n"
    "0,0,0,50\n"
    "10, 20, 90, 20, 4, 8421504\n";
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    zvfuzz::writeFile("Reports/A_P(4).csv", kFrame);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString customer = StringFromFile(QString::fromStdString(zvfuzz::writeFile("Customer.TXT", data, size)));
    CSV2SVG(QString::fromStdString(zvfuzz::scratchPath("Reports/A_P(4).csv")), "Construction A", customer);
    return 0;
}
