#include "TerrainElevation.h"

#include <curl/curl.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <string>

#include "app/services/OrvoIni.h"
#include "app/services/RunLog.h"

namespace {

constexpr const char* kDefaultElevationService = "https://api.opentopodata.org";

// The answer is small; more than 4095 bytes are not read.
struct AnswerBuffer {
    char text[4096] = {};
    std::size_t size = 0;
    bool full = false;
};

std::size_t keepAnswer(char* data, std::size_t size, std::size_t count, void* user) {
    auto* answer = static_cast<AnswerBuffer*>(user);
    const std::size_t offered = size * count;
    const std::size_t taken = std::min(offered, sizeof answer->text - 1 - answer->size);
    std::memcpy(answer->text + answer->size, data, taken);
    answer->size += taken;
    answer->text[answer->size] = '\0';
    if (taken < offered) {
        answer->full = true;
        return 0;
    }
    return offered;
}

}  // namespace

double GetTerrainElevation(double latitude, double longitude) {
    static std::once_flag curlReady;
    std::call_once(curlReady, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });

    std::string base = ORVOINI().readString("Services", "Elevation", kDefaultElevationService);
    while (!base.empty() && base.back() == '/') base.pop_back();
    char path[128];
    std::snprintf(path, sizeof path, "/v1/aster30m?locations=%.6f,%.6f", latitude, longitude);
    const std::string url = base + path;

    CURL* curl = curl_easy_init();
    if (!curl) {
        PrintRunLog("ERROR: InternetOpen failed\n");
        return 0;
    }
    AnswerBuffer answer;
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl, CURLOPT_USERAGENT, "TerrainQuery/1.0");
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, 15L);
    curl_easy_setopt(curl, CURLOPT_TIMEOUT, 60L);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, keepAnswer);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &answer);
    const CURLcode result = curl_easy_perform(curl);
    long status = 0;
    curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &status);
    curl_easy_cleanup(curl);

    const bool read = result == CURLE_OK || (result == CURLE_WRITE_ERROR && answer.full);
    if (status == 0 || status >= 400) {
        PrintRunLog("ERROR: InternetOpenUrl failed\n");
        return 0;
    }
    if (!read) {
        PrintRunLog("ERROR: InternetReadFile failed\n");
        return 0;
    }
    const char* key = std::strstr(answer.text, "\"elevation\"");
    const char* colon = key ? std::strchr(key, ':') : nullptr;
    if (!colon) {
        PrintRunLog("ERROR: no elevation in the answer\n");
        return 0;
    }
    const char* number = colon + 1;
    while (*number == ' ' || *number == '\t') ++number;
    // As atof reads it (a non-number such as null gives 0), whatever the locale.
    double elevation = 0;
    std::from_chars(number, answer.text + answer.size, elevation);
    PrintRunLog("Elevation: %.2f meters\n", elevation);
    return elevation;
}
