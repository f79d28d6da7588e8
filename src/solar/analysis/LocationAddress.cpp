#include "LocationAddress.h"

#include <chrono>
#include <cstdio>
#include <map>
#include <thread>
#include <utility>

#include "ClimateServices.h"
#include "ClimateText.h"
#include "DownloadHttp.h"
#include "app/services/RunLog.h"

namespace {

constexpr std::size_t FIELD_OFFSET = 4;
constexpr std::size_t FIELD_LENGTH = 55;
constexpr long CONNECT_TIMEOUT_MS = 5000;
constexpr long READ_TIMEOUT_MS = 10000;
// Nominatim's terms: an agent that names the application, one request a second at most.
constexpr const char* NOMINATIM_AGENT = "Zorvex64/0.1 (solar planner report address)";
constexpr std::chrono::milliseconds NOMINATIM_INTERVAL{1000};
constexpr std::chrono::seconds NOMINATIM_FAILURE_KEPT{60};

struct Address {
    std::string text;
    std::string country;
};

std::string clientQuery(const std::string& base, double lat, double lon) {
    const ClimateCLocale cNumbers;
    char query[128];
    std::snprintf(query, sizeof query, "?latitude=%.6f&longitude=%.6f", lat, lon);
    return ServiceUrl(base, "/data/reverse-geocode-client") + query;
}

std::string nominatimQuery(const std::string& base, double lat, double lon) {
    const ClimateCLocale cNumbers;
    char query[128];
    std::snprintf(query, sizeof query, "?format=jsonv2&lat=%.6f&lon=%.6f&zoom=10&accept-language=en", lat, lon);
    return ServiceUrl(base, "/reverse") + query;
}

std::string joined(const std::string& city, const std::string& region, const std::string& country) {
    std::string address;
    for (const std::string& part : {city, region, country})
        if (!part.empty()) address += part + "\r, ";
    return address;
}

Address fromClientAnswer(const std::string& body) {
    std::string city = ExtractJsonField(body, "city");
    const std::string region = ExtractJsonField(body, "principalSubdivision");
    const std::string country = ExtractJsonField(body, "countryName");
    if (city.empty()) city = ExtractJsonField(body, "locality");
    return {joined(city, region, country), country};
}

Address fromNominatimAnswer(const std::string& body) {
    std::string place;
    for (const char* key : {"city", "town", "village", "municipality", "hamlet"})
        if (place.empty()) place = JsonStringField(body, key);
    const std::string country = JsonStringField(body, "country");
    return {joined(place, JsonStringField(body, "state"), country), country};
}

// Nominatim is asked once a second at most. An answer is kept for the
// session; a failure for a minute, so that a report's two pages, which both
// want the address, ask only once.
HttpTextAnswer askNominatim(const std::string& url) {
    struct Kept {
        HttpTextAnswer answer;
        std::chrono::steady_clock::time_point at;
    };
    static std::map<std::string, Kept> kept;
    static std::chrono::steady_clock::time_point last{};
    const auto now = std::chrono::steady_clock::now();
    const auto known = kept.find(url);
    if (known != kept.end()) {
        const bool good = known->second.answer.answered && known->second.answer.status == 200;
        if (good || now - known->second.at < NOMINATIM_FAILURE_KEPT) return known->second.answer;
    }
    const auto wait = last + NOMINATIM_INTERVAL - now;
    if (wait.count() > 0) std::this_thread::sleep_for(wait);
    HttpTextAnswer answer = HttpGetText({url, NOMINATIM_AGENT, CONNECT_TIMEOUT_MS, READ_TIMEOUT_MS});
    last = std::chrono::steady_clock::now();
    kept[url] = {answer, last};
    return answer;
}

}  // namespace

std::string GetLocationAddress(double lat, double lon, std::string& Country) {
    Country.clear();
    const std::string base = GeocodingServiceAddress();
    if (base.empty()) return "Unknown location";
    const bool nominatim = GeocodingServiceApi() != "client";

    const std::string url = nominatim ? nominatimQuery(base, lat, lon) : clientQuery(base, lat, lon);
    PrintRunLog("Calling geocoding API: %s\n", url.c_str());
    const HttpTextAnswer answer = nominatim ? askNominatim(url)
                                            : HttpGetText({url, "SolarAnalysis/1.0", CONNECT_TIMEOUT_MS, READ_TIMEOUT_MS});
    if (!answer.answered || answer.status != 200) {
        const std::string reason = answer.answered ? "HTTP " + std::to_string(answer.status) : answer.error;
        PrintRunLog("Geocoding API error: %s\n", reason.c_str());
        return "Unknown location";
    }
    PrintRunLog("API response received: %d chars\n", static_cast<int>(answer.body.size()));
    PrintRunLog("Response:\n%s\n", answer.body.c_str());

    const Address address = nominatim ? fromNominatimAnswer(answer.body) : fromClientAnswer(answer.body);
    Country = address.country;
    PrintRunLog("Parsed address: %s\n", address.text.c_str());
    return address.text.empty() ? "Unknown location" : address.text;
}

std::string GeocodingAttribution() {
    if (GeocodingServiceAddress().empty() || GeocodingServiceApi() == "client") return "";
    return "Address data \u00a9 OpenStreetMap contributors";
}

std::string ExtractJsonField(const std::string& json, const std::string& key) {
    const std::size_t found = json.find(key);
    if (found == std::string::npos) return "";
    const std::size_t start = found + key.size() + FIELD_OFFSET;
    if (start >= json.size()) return "";
    const std::string field = json.substr(start, FIELD_LENGTH);
    return field.substr(0, field.find('"'));
}

std::string JsonStringField(const std::string& json, const std::string& key) {
    const std::string quoted = "\"" + key + "\"";
    for (std::size_t at = json.find(quoted); at != std::string::npos; at = json.find(quoted, at + 1)) {
        std::size_t i = at + quoted.size();
        while (i < json.size() && (json[i] == ' ' || json[i] == '\n' || json[i] == '\r' || json[i] == '\t')) ++i;
        if (i >= json.size() || json[i] != ':') continue;
        ++i;
        while (i < json.size() && (json[i] == ' ' || json[i] == '\n' || json[i] == '\r' || json[i] == '\t')) ++i;
        if (i >= json.size() || json[i] != '"') return "";
        std::string value;
        for (++i; i < json.size() && json[i] != '"'; ++i) {
            if (json[i] == '\\' && i + 1 < json.size()) ++i;
            value += json[i];
        }
        return value;
    }
    return "";
}
