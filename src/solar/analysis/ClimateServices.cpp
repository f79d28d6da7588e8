#include "ClimateServices.h"

#include "app/services/OrvoIni.h"

namespace {
constexpr const char* SECTION = "Services";
}  // namespace

std::string PvgisServiceAddress() { return ORVOINI().readString(SECTION, "PVGIS", "https://re.jrc.ec.europa.eu/"); }

std::string NasaPowerServiceAddress() {
    return ORVOINI().readString(SECTION, "NASAPOWER", "https://power.larc.nasa.gov/");
}

std::string GeocodingServiceAddress() {
    return ORVOINI().readString(SECTION, "Geocoding", "https://nominatim.openstreetmap.org/");
}

std::string GeocodingServiceApi() { return ORVOINI().readString(SECTION, "GeocodingApi", "nominatim"); }

std::string ServiceUrl(const std::string& base, const std::string& path) {
    std::string url = base;
    while (!url.empty() && url.back() == '/') url.pop_back();
    return url + "/" + (path.empty() || path[0] != '/' ? path : path.substr(1));
}
