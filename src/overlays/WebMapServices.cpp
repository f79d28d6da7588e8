#include "WebMapServices.h"

#include <curl/curl.h>

#include <QString>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "app/services/DialogService.h"
#include "app/services/OrvoIni.h"
#include "app/services/SessionPaths.h"
#include "geo/Frames.h"
#include "geo/TerrainElevation.h"

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

std::string OrthophotoServiceAddress() {
    return ORVOINI().readString("Services", "Orthophoto", "https://services.arcgisonline.com/");
}

namespace {

size_t writeToFile(char* data, size_t size, size_t count, void* file) {
    return std::fwrite(data, size, count, static_cast<std::FILE*>(file)) * size;
}

}  // namespace

bool DownloadOrthophoto(double lat, double lon, double distanceMeters, const std::string& file) {
    const std::string logPath = sessionPaths().ORVO_T + "a.log";
    std::FILE* log = std::fopen(logPath.c_str(), "a");
    if (log) std::setvbuf(log, nullptr, _IONBF, 0);
    auto note = [log](const std::string& line) {
        if (log) std::fputs(line.c_str(), log);
    };
    const double latDelta = distanceMeters / 111000 / 2;
    const double lonDelta = distanceMeters / (111000 * std::cos(lat * 3.14159265 / 180)) / 2;
    char bbox[160];
    std::snprintf(bbox, sizeof bbox, "%.8f,%.8f,%.8f,%.8f", lat - latDelta, lon - lonDelta, lat + latDelta, lon + lonDelta);
    const std::string url = joinUrl(OrthophotoServiceAddress(), "/arcgis/services/World_Imagery/MapServer/WMSServer") +
                            "?SERVICE=WMS&VERSION=1.3.0&REQUEST=GetMap&LAYERS=0&STYLES=&CRS=EPSG:4326&BBOX=" + bbox +
                            "&WIDTH=4096&HEIGHT=4096&FORMAT=image/geotiff";
    note("Downloading orthophoto: " + url + "\n");
    CURL* curl = curl_easy_init();
    if (!curl) {
        note("ERROR: InternetOpen failed\n");
        if (log) std::fclose(log);
        return false;
    }
    std::FILE* out = std::fopen(file.c_str(), "wb");
    if (!out) {
        note("ERROR: Cannot create output file: " + file + "\n");
        curl_easy_cleanup(curl);
        if (log) std::fclose(log);
        return false;
    }
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl, CURLOPT_USERAGENT, "OrthophotoDownloader/1.0");
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, writeToFile);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, out);
    curl_easy_setopt(curl, CURLOPT_BUFFERSIZE, 8192L);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, 30L);
    curl_easy_setopt(curl, CURLOPT_TIMEOUT, 300L);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    const CURLcode code = curl_easy_perform(curl);
    curl_off_t bytes = 0;
    curl_easy_getinfo(curl, CURLINFO_SIZE_DOWNLOAD_T, &bytes);
    curl_easy_cleanup(curl);
    std::fclose(out);
    if (code == CURLE_COULDNT_RESOLVE_HOST || code == CURLE_COULDNT_CONNECT || code == CURLE_OPERATION_TIMEDOUT) {
        note("ERROR: InternetOpenUrl failed\n");
    } else {
        char line[600];
        std::snprintf(line, sizeof line, "Downloaded %lu bytes to %s\n", static_cast<unsigned long>(bytes), file.c_str());
        note(line);
    }
    if (log) std::fclose(log);
    return code == CURLE_OK && bytes > 0;
}

void DownloadOrthophoto1Click() {
    const std::string file = sessionPaths().ORVO_T + "a.tif";
    DownloadOrthophoto(frameState().OCENTERLat, frameState().OCENTERLon, 1000, file);
    dialogService().openDocument(QString::fromStdString(file));
}

void ViewGoogleMap() {
    const FrameState& f = frameState();
    dialogService().openDocument(
        QString::asprintf("https://www.google.com/maps?q=%lf,%lf&z=17&t=k", f.OCENTERLat, f.OCENTERLon));
    GetTerrainElevation(f.OCENTERLat, f.OCENTERLon);
}
