#include "ReportPageCommon.h"

#include <QDateTime>
#include <QFileInfo>
#include <cmath>
#include <cstdarg>

#include "LocationAddress.h"
#include "ReportHtml.h"
#include "ReportRunState.h"
#include "ShadingResultsCache.h"
#include "geo/Frames.h"
#include "geo/LatLonText.h"

std::string ReportPathWithExtension(const std::string& csvFilePath, const char* extension) {
    const std::size_t slash = csvFilePath.find_last_of("/\\");
    const std::size_t dot = csvFilePath.find_last_of('.');
    const bool hasExtension = dot != std::string::npos && (slash == std::string::npos || dot > slash);
    return (hasExtension ? csvFilePath.substr(0, dot) : csvFilePath) + extension;
}

std::vector<QStringList> ReportRows(const QStringList& lines, int minFields) {
    std::vector<QStringList> rows;
    for (qsizetype i = 1; i < lines.size(); ++i) {
        QStringList fields = ParseCSVLine(lines[i]);
        if (fields.size() >= minFields) rows.push_back(std::move(fields));
    }
    return rows;
}

double ReportNumber(const QStringList& fields, int index, double fallback) {
    if (index >= fields.size()) return fallback;
    bool ok = false;
    const double value = fields[index].trimmed().toDouble(&ok);
    return ok ? value : fallback;
}

int ReportInteger(const QStringList& fields, int index, int fallback) {
    if (index >= fields.size()) return fallback;
    bool ok = false;
    const int value = fields[index].trimmed().toInt(&ok);
    return ok ? value : fallback;
}

QString ReportProjectName(const std::string& csvFilePath, const ReportSite& site) {
    const QString name = QFileInfo(QString::fromStdString(site.modelFileName)).completeBaseName();
    if (!name.isEmpty()) return name;
    return QFileInfo(QString::fromStdString(csvFilePath)).completeBaseName();
}

ReportLocation GetReportLocation() {
    const double lat = frameState().MapCenterLat;
    const double lon = frameState().MapCenterLon;
    std::string country;
    ReportLocation location;
    location.address = QString::fromStdString(GetLocationAddress(lat, lon, country));
    location.country = QString::fromStdString(country);
    if (location.address != "Unknown location")
        location.attribution = QString::fromStdString(GeocodingAttribution());
    location.latitude = CleanHTMLText(GisLatitudeToStr(lat * M_PI / 180.0));
    location.longitude = CleanHTMLText(GisLongitudeToStr(lon * M_PI / 180.0));
    return location;
}

QString ShadingMethodText() {
    return reportRun().OnlyCenter ? "Single-point" : "Multi-point (4 corners + center)";
}

QString InverterText() { return reportRun().OptimizerType == 0 ? "String inverter" : "Power optimizer"; }

QString ReportDateText() { return QDateTime::currentDateTime().toString("yyyy-MM-dd hh:mm"); }

void PutText(std::FILE* file, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), file);
}

void PutText(std::FILE* file, const char* text) { std::fputs(text, file); }

void PutFormat(std::FILE* file, const char* format, ...) {
    va_list args;
    va_start(args, format);
    std::vfprintf(file, format, args);
    va_end(args);
}

QString CleanHTMLText(const QString& text) {
    QString clean = text;
    clean.replace("?", "&deg;");
    clean.replace(QChar(0x00B0), "&deg;");
    clean.replace(QChar(0x00BF), "&deg;");
    clean.replace("\"", "&quot;");
    clean.replace("'", "&#39;");
    clean.replace(QChar(0x2013), "-");
    clean.replace(QChar(0x2014), "-");
    clean.replace(QChar(0x2026), "...");
    return clean;
}
