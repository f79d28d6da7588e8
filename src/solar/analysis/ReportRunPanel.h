// One panel of a report run: its sun table, shading and energy, score and
// grade, its share of the totals, and its own file updated.
#pragma once

#include "ReportSite.h"

// Works on panels[index]; appends its result to g_combinedResults unless its
// module type is "UnknownType".
void AnalyzeReportPanel(int index, const ReportSite& site);
