// Folding a multi-year hourly answer in PVGIS layout into one average year:
// the hourly climate file "PVGIST_H.csv".
#pragma once

#include <string>

// One row per month, day and UTC hour with sun (H_sun above 0), in order of
// first appearance: "MM-DD,HH:00" and the average beam, diffuse and reflected
// irradiance, then temperature and wind when the answer has them. The sums
// are kept as text with two decimals and six significant digits, so the
// value is cut at every step. A project altitude (OCENTER[2]) above 0 lowers
// the temperature and raises the wind. Returns false, with the message
// shown, when the input is missing or the output cannot be written.
bool CreateHourlyIrradianceFromDownloadedCSV(const std::string& inputCsv, const std::string& outputCsv);
