// The hourly climate file of a site: reused when it lies beside the model,
// else fetched from PVGIS (from NASA POWER when PVGIS cannot be reached) and
// folded into one average year. Addresses come from ClimateServices.
#pragma once

#include <string>

// The path of modelFolder's "PVGIST_H.csv" (any case) when it exists, without
// a download, however old and wherever the model now lies; else downloads
// the six years 2018-2023 at OCENTERLat, OCENTERLon into ORVO_T
// "PVGIST_R.csv" and folds them into modelFolder's "PVGIST_H.csv". Empty on
// failure, after showing the service's error line (an answer of fewer than
// 10 lines) or "Failed" (both services failed).
std::string DownloadPVGISTdata(const std::string& modelFolder);

// The PVGIS hourly series of the horizontal plane, its three components.
bool DownloadPVGIS_WinInet(double lat, double lon, const std::string& outputCsvFile);

// The NASA POWER hourly series into "NASA_POWER_raw.csv" beside the output,
// then rewritten in PVGIS layout into the output.
bool DownloadNASA_WinInet(double lat, double lon, const std::string& outputCsvFile);
