// The report run: from the menu through every panel's sun table, shading and
// energy to the master CSV, the scene picture and the HTML report.
#pragma once

#include <string>

#include "ReportSite.h"

// Sets OnlyCenter and OptimizerType, asks for the energy loss, ensures the
// climate file, groups the panels and runs the report; opens the page with
// the desktop's opener. Returns the HTML path, or "" when it ended early.
std::string DoReport(const ReportSite& site, bool onlyCenter, int optimizerType);

// Every live panel through sun table, shading and energy; the master CSV,
// the scene picture and the HTML report. climateInUse() holds the climate.
// Returns the HTML path, or "" (after the text's message).
std::string GenerateMultipleComprehensiveReportCSV(const ReportSite& site);

// The run's file names, all from the run log's name.
std::string MasterCsvName();  // the log's name with ".csv"
std::string ScenePictureName(const std::string& csvName);  // ".JPG"

// "Timestamp: yyyy-mm-dd hh:nn:ss" into the run log.
void LogTimestamp();
