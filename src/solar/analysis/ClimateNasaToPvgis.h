// A NASA POWER hourly answer rewritten in the layout of a PVGIS hourly
// answer, so that one folding serves both services.
#pragma once

#include <string>

// Columns are found by name in the first line naming both ALLSKY_SFC_SW_DWN
// and ALLSKY_SFC_SW_DIFF; a units line after it is skipped. Each hour gives
// Gb = global - diffuse, Gd = diffuse, Gr = 0 and H_sun = global, so that an
// hour with sunshine counts as daylight. Fill values (-999) read as night at
// 25 degrees. True when at least one row was written; the output is replaced
// only then.
bool ConvertNasaPowerToPvgisRaw(const std::string& nasaCsv, const std::string& pvgisRawCsv);
