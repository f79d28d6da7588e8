// The report's view of the open model and the window, from the session.
#pragma once

#include "solar/analysis/ReportSite.h"

ReportSite CurrentReportSite();
