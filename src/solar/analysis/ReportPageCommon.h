// What the customer's report and the engineers' page share: the master CSV
// read back as rows, the project's name, the site's place as text, and the
// small writing helpers of both pages.
#pragma once

#include <QString>
#include <QStringList>
#include <cstdio>
#include <string>
#include <vector>

#include "ReportSite.h"

// The CSV's path with its extension replaced: ".html", "_TechnicalDocumentation.html".
std::string ReportPathWithExtension(const std::string& csvFilePath, const char* extension);

// The rows after the header line that hold at least minFields fields.
std::vector<QStringList> ReportRows(const QStringList& lines, int minFields);
// A field as a number; a missing or unreadable field gives the fallback.
double ReportNumber(const QStringList& fields, int index, double fallback);
int ReportInteger(const QStringList& fields, int index, int fallback);

// The model's file name without extension, or else the CSV's.
QString ReportProjectName(const std::string& csvFilePath, const ReportSite& site);

// The site at OCENTERLat, OCENTERLon: the geocoder's address and country,
// and latitude and longitude as degree texts made safe for the page.
struct ReportLocation {
    QString address;
    QString country;
    QString latitude;
    QString longitude;
    QString attribution;  // the geocoder's credit, with an address it gave
};
ReportLocation GetReportLocation();

// "Multi-point (4 corners + center)" or "Single-point", after OnlyCenter.
QString ShadingMethodText();
// "String inverter" or "Power optimizer", after OptimizerType.
QString InverterText();
// Now, as yyyy-mm-dd hh:nn.
QString ReportDateText();

// The text as UTF-8.
void PutText(std::FILE* file, const QString& text);
void PutText(std::FILE* file, const char* text);
// printf into the page; numbers in "C" notation (the callers hold a ClimateCLocale).
void PutFormat(std::FILE* file, const char* format, ...) __attribute__((format(printf, 2, 3)));
