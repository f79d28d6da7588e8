// A model's ".prj" text made into the coordinate system of the model.
#include <cstdint>

#include "FuzzSupport.h"
#include "geo/GeoConversions.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (LoadGlobalCS(zvfuzz::writeFile("model.prj", data, size))) {
        double lat = 0, lon = 0, east = 0, north = 0;
        GPSEastNorth2LatLon(178500, 663500, lat, lon);
        GPSLatLon2EastNorth(32.06, 34.77, east, north);
    }
    return 0;
}
