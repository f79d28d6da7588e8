// The parts of the customer's page, each written into the open page in the
// order CreateQuickHTML calls them. The list holds the master CSV's lines.
#pragma once

#include <QString>
#include <QStringList>
#include <cstdio>
#include <string>

#include "ReportPageCommon.h"
#include "ReportSite.h"

void WriteHTMLStyles(std::FILE* file);
void WriteSystemSummary(std::FILE* file, const std::string& csvFilePath, const QStringList& csv, double totalPower,
                        double totalAnnual, double shadedPercent, double avgShadedHours, double avgDirectSunHours,
                        double specificYield, const ReportLocation& location, const ReportSite& site);
void WriteHebrewExecutiveSummary(std::FILE* file, double totalPower, int panelCount, double totalAnnual,
                                 double specificYield, double shadedPercent, double avgShadedHours,
                                 double avgDirectSunHours);
void WriteGreekExecutiveSummary(std::FILE* file, double totalPower, int panelCount, double totalAnnual,
                                double specificYield, double shadedPercent, double avgShadedHours,
                                double avgDirectSunHours);
// The table of all panels and its own sort script.
void WriteDataTable(std::FILE* file, const QStringList& csv);
// The plain sort by data-column that runs first on a header click.
void WriteColumnSortScript(std::FILE* file);
// "Monthly Energy Production": the canvas and the script that draws it.
void WriteMonthlyChart(std::FILE* file, const QStringList& csv);
void WriteEnvironmentalAndEfficiencySection(std::FILE* file, double totalAnnual, const QStringList& csv);
void WriteScienceSection(std::FILE* file);
