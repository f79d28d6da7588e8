#include "LocationAddress.h"

#include <cstdio>

#include "ClimateServices.h"
#include "ClimateText.h"
#include "DownloadHttp.h"
#include "app/services/RunLog.h"

namespace {

constexpr std::size_t FIELD_OFFSET = 4;
constexpr std::size_t FIELD_LENGTH = 55;
constexpr long CONNECT_TIMEOUT_MS = 5000;
constexpr long READ_TIMEOUT_MS = 10000;

std::string queryAddress(const std::string& base, double lat, double lon) {
    const ClimateCLocale cNumbers;
    char query[128];
    std::snprintf(query, sizeof query, "?latitude=%.6f&longitude=%.6f", lat, lon);
    return ServiceUrl(base, "/data/reverse-geocode-client") + query;
}

}  // namespace

std::string GetLocationAddress(double lat, double lon, std::string& Country) {
    Country.clear();
    const std::string base = GeocodingServiceAddress();
    if (base.empty()) return "Unknown location";

    const std::string url = queryAddress(base, lat, lon);
    PrintRunLog("Calling geocoding API: %s\n", url.c_str());
    const HttpTextAnswer answer = HttpGetText({url, "SolarAnalysis/1.0", CONNECT_TIMEOUT_MS, READ_TIMEOUT_MS});
    if (!answer.answered || answer.status != 200) {
        const std::string reason = answer.answered ? "HTTP " + std::to_string(answer.status) : answer.error;
        PrintRunLog("Geocoding API error: %s\n", reason.c_str());
        return "Unknown location";
    }
    PrintRunLog("API response received: %d chars\n", static_cast<int>(answer.body.size()));
    PrintRunLog("Response:\n%s\n", answer.body.c_str());

    std::string city = ExtractJsonField(answer.body, "city");
    const std::string region = ExtractJsonField(answer.body, "principalSubdivision");
    Country = ExtractJsonField(answer.body, "countryName");
    if (city.empty()) city = ExtractJsonField(answer.body, "locality");

    std::string address;
    for (const std::string& part : {city, region, Country})
        if (!part.empty()) address += part + "\r, ";
    PrintRunLog("Parsed address: %s\n", address.c_str());
    return address.empty() ? "Unknown location" : address;
}

std::string ExtractJsonField(const std::string& json, const std::string& key) {
    const std::size_t found = json.find(key);
    if (found == std::string::npos) return "";
    const std::size_t start = found + key.size() + FIELD_OFFSET;
    if (start >= json.size()) return "";
    const std::string field = json.substr(start, FIELD_LENGTH);
    return field.substr(0, field.find('"'));
}
