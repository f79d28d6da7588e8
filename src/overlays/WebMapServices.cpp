#include "WebMapServices.h"

#include <curl/curl.h>

#include <QString>
#include <clocale>
#include <cstdio>
#include <cstdlib>

#include "app/services/DialogService.h"
#include "app/services/OrvoIni.h"

namespace {

std::string joinUrl(std::string base, const char* path) {
    while (!base.empty() && base.back() == '/') base.pop_back();
    return base + path;
}

size_t collect(char* data, size_t size, size_t count, void* target) {
    static_cast<std::string*>(target)->append(data, size * count);
    return size * count;
}

// Reads the leading number as the C runtime does, whatever the user's locale.
double readNumber(const std::string& text) {
    locale_t c = newlocale(LC_NUMERIC_MASK, "C", nullptr);
    const double value = strtod_l(text.c_str(), nullptr, c);
    freelocale(c);
    return value;
}

}  // namespace

std::string ElevationServiceAddress() {
    return ORVOINI().readString("Services", "Elevation", "https://api.open-meteo.com/");
}

double GetTerrainElevationFromWeb(double lat, double lon) {
    double result = -9999;
    char path[256];
    std::snprintf(path, sizeof path, "/v1/elevation?latitude=%.6f&longitude=%.6f", lat, lon);
    const std::string url = joinUrl(ElevationServiceAddress(), path);
    CURL* curl = curl_easy_init();
    if (!curl) {
        dialogService().showMessage(QString::asprintf("Failed to initialize Internet. Error: %lu\n", 0UL), "");
        return result;
    }
    std::string body;
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl, CURLOPT_USERAGENT, "OpenMeteoElevation/1.0");
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, collect);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &body);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, 30L);
    curl_easy_setopt(curl, CURLOPT_TIMEOUT, 60L);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    const CURLcode code = curl_easy_perform(curl);
    long status = 0;
    if (code == CURLE_COULDNT_RESOLVE_HOST || code == CURLE_COULDNT_CONNECT || code == CURLE_OPERATION_TIMEDOUT) {
        dialogService().showMessage(QString::asprintf("Failed to connect. Error: %lu\n", static_cast<unsigned long>(code)), "");
    } else if (code != CURLE_OK) {
        dialogService().showMessage(QString::asprintf("Failed to send request. Error: %lu\n", static_cast<unsigned long>(code)), "");
    } else if (curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &status) != CURLE_OK) {
        dialogService().showMessage(QString::asprintf("Failed to get status code. Error: %lu\n", 0UL), "");
    } else {
        const std::string head = body.substr(0, 1023);
        if (status != 200) {
            const unsigned long s = static_cast<unsigned long>(status);
            dialogService().showMessage(head.empty() ? QString::asprintf("Server returned error %lu\n", s)
                                                     : QString::asprintf("Server returned error %lu: %s\n", s, head.c_str()),
                                        "");
        } else {
            result = readNumber(head);
        }
    }
    curl_easy_cleanup(curl);
    return result;
}
