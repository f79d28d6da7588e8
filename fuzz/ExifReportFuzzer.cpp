// exiftool's text report of a picture: the tag rules and the record made of it.
#include <QString>
#include <QStringList>
#include <cstdint>

#include "FuzzSupport.h"
#include "geo/GeoState.h"
#include "photometa/ExifReport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The geoid raster is not the subject here.
    geoState().GlobalGeoidalSeparationSet = true;
    const QStringList lines =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)).split('\n');
    GetExifTag(lines, "GPS Coordinates...");
    GetExifFromTS(lines);
    return 0;
}
