// The master CSV of a report run: one row per analysed panel, energies with
// the general loss (REALFACTOR) applied. The HTML pages work from it alone.
#pragma once

#include <string>
#include <vector>

#include "SolarRecords.h"

extern const char* const MASTER_CSV_HEADER;

// One row, as the file holds it, ending in "\n".
std::string MasterCsvRow(const CombinedPanelResults& r, float realFactor);
// Header and rows through a temporary and a rename; false when it cannot be written.
bool WriteMasterCSV(const std::string& path, const std::vector<CombinedPanelResults>& results, float realFactor);
