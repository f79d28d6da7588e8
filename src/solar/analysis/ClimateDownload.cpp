#include "ClimateDownload.h"

#include <QString>
#include <cstdio>
#include <vector>

#include "ClimateHourlyIrradiance.h"
#include "ClimateNasaToPvgis.h"
#include "ClimateServices.h"
#include "ClimateText.h"
#include "DownloadHttp.h"
#include "app/services/DialogService.h"
#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"
#include "geo/Frames.h"
#include "scene/FileNameCase.h"
#include "scene/engine_interface.h"

namespace {

constexpr std::size_t NASA_URL_BUFFER = 1024;
constexpr std::size_t FEWEST_ANSWER_LINES = 10;

void showMessage(const std::string& text) { dialogService().showMessage(QString::fromStdString(text), "Zorvex64"); }

std::string withSlash(const std::string& folder) {
    return folder.empty() || folder.back() == '/' ? folder : folder + "/";
}

}  // namespace

std::string DownloadPVGISTdata(const std::string& modelFolder) {
    const std::string hourly = withSlash(modelFolder) + "PVGIST_H.csv";
    const std::string existing = FindFileNoCase(hourly);
    if (!existing.empty()) return existing;

    const std::string raw = sessionPaths().ORVO_T + "PVGIST_R.csv";
    At3d_StatusBar_Set_Text("Start downloading pvgist data");
    const double latitude = frameState().MapCenterLat;
    const double longitude = frameState().MapCenterLon;
    bool downloaded = DownloadPVGIS_WinInet(latitude, longitude, raw);
    if (!downloaded) downloaded = DownloadNASA_WinInet(latitude, longitude, raw);

    std::vector<std::string> lines;
    if (!ReadTextLines(raw, lines)) {
        // Both services failed and no earlier run left a raw file.
        showMessage("Cannot open file " + raw);
        return "";
    }
    if (lines.size() < FEWEST_ANSWER_LINES) {
        // A short answer is the service's error text.
        if (!lines.empty()) showMessage(lines[0]);
        return "";
    }
    if (!downloaded) {
        showMessage("Failed");
        return "";
    }
    At3d_StatusBar_Set_Text("Start create hourly list");
    if (!CreateHourlyIrradianceFromDownloadedCSV(raw, hourly)) return "";
    At3d_StatusBar_Set_Text("Done");
    return hourly;
}

bool DownloadPVGIS_WinInet(double lat, double lon, const std::string& outputCsvFile) {
    const std::string url = ServiceUrl(PvgisServiceAddress(), "/api/v5_3/seriescalc") +
                            "?lat=" + FixedText(lat, 15, 6) + "&lon=" + FixedText(lon, 15, 6) +
                            "&outputformat=csv&browser=0&startyear=2018&endyear=2023&components=1&angle=0&aspect=0";
    PrintRunLog("=== PVGIS Download Request ===\n");
    PrintRunLog("URL: %s\n", url.c_str());
    PrintRunLog("Target CSV: %s\n", outputCsvFile.c_str());
    return DownloadFileViaWininet(url, outputCsvFile);
}

bool DownloadNASA_WinInet(double lat, double lon, const std::string& outputCsvFile) {
    char url[NASA_URL_BUFFER];
    {
        const ClimateCLocale cNumbers;
        std::snprintf(url, sizeof url,
                      "%s?parameters=ALLSKY_SFC_SW_DWN,ALLSKY_SFC_SW_DIFF,ALLSKY_SFC_SW_DNI,T2M,WS2M&latitude=%.6f&"
                      "longitude=%.6f&start=20180101&end=20231231&community=RE&format=CSV&time-standard=UTC",
                      ServiceUrl(NasaPowerServiceAddress(), "/api/temporal/hourly/point").c_str(), lat, lon);
    }
    // With no folder the name stands alone and lands in the working folder.
    const std::string temporary = FolderOf(outputCsvFile) + "NASA_POWER_raw.csv";
    PrintRunLog("*** NASA POWER Download Request ***\n");
    PrintRunLog("URL: %s\n", url);
    PrintRunLog("Temp CSV: %s\n", temporary.c_str());
    PrintRunLog("Target CSV: %s\n", outputCsvFile.c_str());
    if (!DownloadFileViaWininet(url, temporary)) {
        PrintRunLog("NASA POWER download failed.\n");
        return false;
    }
    if (!ConvertNasaPowerToPvgisRaw(temporary, outputCsvFile)) {
        PrintRunLog("NASA POWER conversion to PVGIS layout failed: %s\n", temporary.c_str());
        return false;
    }
    return true;
}
