#include <cstdio>
#include <cstdarg>
#include <vector>

#include "ReportHtmlSections.h"
#include "ReportPageCommon.h"
#include "ReportRunState.h"
#include "geo/Frames.h"

namespace {

// printf into a text; the callers hold a ClimateCLocale.
QString Formatted(const char* format, ...) __attribute__((format(printf, 1, 2)));
QString Formatted(const char* format, ...) {
    va_list args;
    va_start(args, format);
    va_list again;
    va_copy(again, args);
    const int size = std::vsnprintf(nullptr, 0, format, args);
    va_end(args);
    std::vector<char> text(static_cast<std::size_t>(size > 0 ? size : 0) + 1);
    std::vsnprintf(text.data(), text.size(), format, again);
    va_end(again);
    return QString::fromUtf8(text.data());
}

// Every character beyond ASCII as "&#N;", so the page reads right whatever
// charset a mail client assumes.
QString CharacterReferences(const QString& text) {
    QString out;
    for (const char32_t code : text.toUcs4()) {
        if (code < 128)
            out += QChar(static_cast<char16_t>(code));
        else
            out += "&#" + QString::number(static_cast<unsigned>(code)) + ";";
    }
    return out;
}

struct SummaryTexts {
    const char* cssClass;
    const char* style;
    const char* heading;
    const char* system;
    const char* annual;
    const char* specificYield;
    const char* shadingLoss;
    const char* shadedHours;
    const char* directSun;
    const char* method;
    const char* optimizer;
    const char* stringInverter;
    const char* fivePoints;
    const char* center;
};

const SummaryTexts HEBREW = {
    "hebrew-summary",
    "direction: rtl; text-align: right; background: #fffaf0; border-right: 6px solid #f59e0b;"
    " border-radius: 12px; padding: 20px 26px; margin: 24px 0;",
    "סיכום מנהלים",
    "מערכת סולארית: %.3f קילו-ואט עם %d פאנלים",
    "הפקת אנרגיה שנתית: %.0f קוט\"ש",
    "תפוקה סגולית: %.0f קוט\"ש/קילו-ואט",
    "אובדן מהצללות: %.1f%% (%.0f קוט\"ש סה\"כ)",
    "ממוצע שעות מוצללות: %.1f%% (%.1f שעות לפאנל)",
    "שעות שמש ישירות: %.0f שעות לפאנל בשנה",
    "שיטת חישוב: %s &#124; %s",
    "אופטימייזר",
    "ממיר רגיל",
    "חישוב מרובה נקודות (4 פינות + מרכז)",
    "נקודה יחידה",
};

const SummaryTexts GREEK = {
    "greek-summary",
    "direction: ltr; text-align: left; background: #f0f7ff; border-left: 6px solid #2563eb;"
    " border-radius: 12px; padding: 20px 26px; margin: 24px 0;",
    "Εκτελεστική Περίληψη",
    "Φωτοβολταϊκό Σύστημα: %.3f κιλοβάτ με %d πάνελ",
    "Ετήσια Παραγωγή Ενέργειας: %.0f kWh",
    "Ειδική Απόδοση: %.0f kWh/κιλοβάτ",
    "Απώλειες από Σκίαση: %.1f%% (%.0f kWh συνολικά)",
    "Μέσος Ὄρος ὦρών Σκίασης: %.1f%% (%.1f ώρες ανά πάνελ)",
    "ὦρες Αμέσου Ηλιακού Φωτός: %.0f ώρες ανά πάνελ ετησίως",
    "Μέθοδος Υπολογισμού: %s &#124; %s",
    "Βελτιστοποιητής",
    "Αντιστροφέας Συμβολοσειράς",
    "Υπολογισμός Πολλαπλών Σημείων (4 γωνίες + κέντρο)",
    "Κεντρικό Σημείο",
};

void WriteExecutiveSummary(std::FILE* file, const SummaryTexts& t, double totalPower, int panelCount,
                           double totalAnnual, double specificYield, double shadedPercent, double avgShadedHours,
                           double avgDirectSunHours) {
    const auto paragraph = [file](const QString& text) { PutText(file, "<p>" + CharacterReferences(text) + "</p>\n"); };
    PutText(file, QString("<div class='%1' style='%2'>\n").arg(t.cssClass, t.style));
    PutText(file, "<h2>" + CharacterReferences(QString::fromUtf8(t.heading)) + "</h2>\n");
    paragraph(Formatted(t.system, totalPower, panelCount));
    paragraph(Formatted(t.annual, totalAnnual));
    paragraph(Formatted(t.specificYield, specificYield));
    paragraph(Formatted(t.shadingLoss, shadedPercent, totalAnnual * shadedPercent / 100));
    paragraph(Formatted(t.shadedHours, avgShadedHours / avgDirectSunHours * 100, avgShadedHours));
    paragraph(Formatted(t.directSun, avgDirectSunHours));
    const char* points = reportRun().OnlyCenter ? t.center : t.fivePoints;
    const char* inverter = reportRun().OptimizerType == 0 ? t.stringInverter : t.optimizer;
    PutText(file, "<p style='font-size: 0.85em; color: #666;'>" +
                      CharacterReferences(Formatted(t.method, points, inverter)) + "</p>\n");
    PutText(file, "</div>\n");
}

}  // namespace

void WriteSystemSummary(std::FILE* file, const std::string& csvFilePath, const QStringList& csv, double totalPower,
                        double totalAnnual, double shadedPercent, double avgShadedHours, double avgDirectSunHours,
                        double specificYield, const ReportLocation& where, const ReportSite& site) {
    const int panelCount = static_cast<int>(csv.size()) - 1;
    const QString name = site.customer.isEmpty() ? ReportProjectName(csvFilePath, site) : site.customer;
    PutText(file, "<div class='summary'>\n<h2>System Summary</h2>\n");
    PutText(file, "<p><strong>" + Formatted("Project Name: %s [%.2f]", name.toHtmlEscaped().toUtf8().constData(),
                                            static_cast<double>(reportRun().REALFACTOR)) +
                      "</strong></p>\n");

    QString location = where.address + " " + where.latitude + " " + where.longitude;
    location.replace("?", "&deg;");
    location.replace(QChar(0x00B0), "&deg;");
    const double lat = frameState().MapCenterLat;
    const double lon = frameState().MapCenterLon;
    PutText(file, Formatted("<p class='location-info'><strong>Location:</strong> "
                            "<a href='https://www.google.com/maps?q=%.6f,%.6f' target='_blank' "
                            "title='Click to view location on Google Maps - Decimal coordinates: %.6f, %.6f'>",
                            lat, lon, lat, lon) +
                      location + Formatted("</a> (%.6f, %.6f)", lat, lon));
    if (!where.attribution.isEmpty()) PutText(file, "<br><small>" + where.attribution.toHtmlEscaped() + "</small>");
    PutText(file, "</p>\n");

    PutFormat(file, "<p>Total Panels: %d</p>\n", panelCount);
    PutFormat(file, "<p>Total System Power: %.3f kWp</p>\n", totalPower);
    PutFormat(file, "<p>Total Annual Energy: <strong>%.0f</strong> kWh/year</p>\n", totalAnnual);
    PutFormat(file, "<p>Specific Yield: <strong>%.0f</strong> kWh/kWp/year</p>\n", specificYield);
    PutText(file, "<p>");
    PutText(file, Formatted("Shading Analysis: %s | %s<br>\n", ShadingMethodText().toUtf8().constData(),
                            InverterText().toUtf8().constData()));
    PutText(file, "</p>\n");
    PutFormat(file, "<p> Shading Loss: %.2f%% (%.1f kWh total)</p>\n", shadedPercent,
              shadedPercent / 100 * totalAnnual);
    PutFormat(file, "<p>Average Shaded Hours: %.1f%% (%.1f hours per panel)</p>\n",
              avgShadedHours / avgDirectSunHours * 100, avgShadedHours);
    PutFormat(file, "<p>Average Direct Sun Hours: %.1f hours per panel per year</p>\n", avgDirectSunHours);
    PutText(file, "<p>Generated: " + ReportDateText() + "</p>\n");
    PutText(file, "</div>\n");
}

void WriteHebrewExecutiveSummary(std::FILE* file, double totalPower, int panelCount, double totalAnnual,
                                 double specificYield, double shadedPercent, double avgShadedHours,
                                 double avgDirectSunHours) {
    WriteExecutiveSummary(file, HEBREW, totalPower, panelCount, totalAnnual, specificYield, shadedPercent,
                          avgShadedHours, avgDirectSunHours);
}

void WriteGreekExecutiveSummary(std::FILE* file, double totalPower, int panelCount, double totalAnnual,
                                double specificYield, double shadedPercent, double avgShadedHours,
                                double avgDirectSunHours) {
    WriteExecutiveSummary(file, GREEK, totalPower, panelCount, totalAnnual, specificYield, shadedPercent,
                          avgShadedHours, avgDirectSunHours);
}
