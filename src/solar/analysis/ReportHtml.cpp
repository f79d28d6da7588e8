#include "ReportHtml.h"

#include <QFileInfo>

#include "ClimateText.h"
#include "ReportHtmlSections.h"
#include "ReportPageCommon.h"
#include "ShadingResultsCache.h"
#include "TechnicalDocumentation.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/OrvoFopen.h"
#include "app/services/SunGlobalLog.h"
#include "scene/FileNameCase.h"

namespace {

constexpr int ROW_FIELDS = 27;
constexpr int POWER = 6;
constexpr int ANNUAL = 21;
constexpr int SHADED_HOURS = 24;
constexpr int DIRECT_SUN_HOURS = 25;

// The page's figures, all from the CSV so that they carry its general loss.
struct PageFigures {
    double minEnergy = 999999;
    double maxEnergy = -999999;
    int panelCount = 0;
    double totalPower = 0;
    double totalAnnual = 0;
    double avgShadedHours = 0;
    double avgDirectSunHours = 0;
    double shadedPercent = 0;
    double specificYield = 0;
    double systemAverage = 0;
    double energyRange = 0;
    bool useUniformColoring = false;
};

PageFigures ComputeFigures(const QStringList& csv) {
    PageFigures f;
    f.panelCount = static_cast<int>(csv.size()) - 1;
    double totalShadedHours = 0;
    double totalDirectSunHours = 0;
    for (const QStringList& row : ReportRows(csv, ROW_FIELDS)) {
        const double energy = ReportNumber(row, ANNUAL, 0);
        if (energy > f.maxEnergy) f.maxEnergy = energy;
        if (energy < f.minEnergy) f.minEnergy = energy;
        f.totalPower += ReportNumber(row, POWER, 3);
        f.totalAnnual += ReportNumber(row, ANNUAL, 3);
        totalShadedHours += ReportNumber(row, SHADED_HOURS, 0);
        totalDirectSunHours += ReportNumber(row, DIRECT_SUN_HOURS, 0);
    }
    if (f.panelCount > 0) {
        f.avgShadedHours = totalShadedHours / f.panelCount;
        f.avgDirectSunHours = totalDirectSunHours / f.panelCount;
    }
    f.shadedPercent = totalShadedHours / totalDirectSunHours * 100;
    f.specificYield = f.totalPower != 0 ? f.totalAnnual / f.totalPower : 0;
    f.systemAverage = f.totalAnnual / f.panelCount;
    f.energyRange = f.maxEnergy - f.minEnergy;
    f.useUniformColoring = f.systemAverage * 0.03 > f.energyRange;
    return f;
}

void WriteHead(std::FILE* file) {
    PutText(file,
            "<!DOCTYPE html>\n<html>\n<head>\n"
            "<title>Solar Panel Analysis Report</title>\n"
            "<meta charset=\"UTF-8\">\n"
            "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1.0\">\n");
    WriteHTMLStyles(file);
    PutText(file,
            "</head>\n<body>\n<div class='container'>\n"
            "<h1>Solar Panel Analysis Report</h1>\n"
            "<div class='created-by'>Created by: Orvo Systems</div>\n");
}

void WritePicture(std::FILE* file, const std::string& imageBase64) {
    if (!imageBase64.empty()) {
        PutText(file, "<div class='project-image'>\n");
        PutText(file, "<img src=\"data:image/jpeg;base64,");
        PutText(file, imageBase64.c_str());
        PutText(file,
                "\" alt=\"Solar Installation\" style=\"width: 100%; max-width: 100%; border: 1px solid #ccc;\">\n");
        PutText(file, "</div>\n");
        return;
    }
    PutText(file,
            "<div class='project-image' style='border: 2px dashed #9aa9c2; padding: 40px; text-align: center;'>\n"
            "<p><em>Project visualization image not available</em></p>\n"
            "</div>\n");
}

// The legend's bands (0.4 and 0.75 of the range) differ from the table's
// thirds; both stand as they are.
void WriteLegend(std::FILE* file, const PageFigures& f) {
    PutText(file, "<div class='summary'>\n");
    if (f.useUniformColoring) {
        PutText(file, "<h3>Panel Performance Analysis:</h3>\n");
        PutFormat(file,
                  "<p><span class='energy-indicator energy-high'></span>"
                  "All panels show consistent performance (%.0f-%.0f kWh/year)</p>\n",
                  f.minEnergy, f.maxEnergy);
        PutFormat(file, "<p><em>Energy variation of %.1f kWh (%.2f%%) is within normal system tolerance.</em></p>\n",
                  f.energyRange, f.energyRange / f.systemAverage * 100);
    } else {
        const double high = f.minEnergy + 0.75 * f.energyRange;
        const double medium = f.minEnergy + 0.4 * f.energyRange;
        PutText(file, "<h3>Panel Performance Color Guide:</h3>\n");
        PutFormat(file, "<p><span class='energy-indicator energy-high'></span>High Energy (%.0f+ kWh/year)</p>\n",
                  high);
        PutFormat(file,
                  "<p><span class='energy-indicator energy-medium'></span>Medium Energy (%.0f-%.0f kWh/year)</p>\n",
                  medium, high);
        PutFormat(file, "<p><span class='energy-indicator energy-low'></span>Lower Energy (%.0f-%.0f kWh/year)</p>\n",
                  f.minEnergy, medium);
    }
    PutText(file, "</div>\n");
}

void WriteDocumentationLink(std::FILE* file, const std::string& csvFilePath, const ReportSite& site) {
    const QString documentation = QString::fromStdString(CreateTechnicalDocumentation(csvFilePath, site));
    PutText(file,
            "<div class='explanation-page'>\n<div class='explanation-title'>Technical Documentation</div>\n"
            "<div class='explanation-subtitle'>Detailed engineering analysis and methodology</div>\n");
    if (!documentation.isEmpty() && QFileInfo::exists(documentation))
        PutText(file, "<p style='text-align: center;'><a href='" + QFileInfo(documentation).fileName().toHtmlEscaped() +
                          "' target='_blank' style='display: inline-block; background: #2563eb; color: #ffffff; "
                          "padding: 10px 22px; border-radius: 8px; text-decoration: none;'>"
                          "Open the technical documentation</a></p>\n");
    else
        PutText(file, "<p style='text-align: center;'>? Technical documentation could not be generated</p>\n");
    PutText(file, "</div>\n");
}

}  // namespace

std::string CreateQuickHTML(const std::string& csvFilePath, const ReportSite& site) {
    const ClimateCLocale cNumbers;
    const std::string htmlPath = ReportPathWithExtension(csvFilePath, ".html");
    std::FILE* file = ORVOfopen(QString::fromStdString(htmlPath), "w");
    if (!file) return "";
    PutText(file, "\xEF\xBB\xBF<!DOCTYPE html>\n");

    QStringList csv;
    if (!ReadCSVData(csvFilePath, csv)) {
        std::fclose(file);
        MyShowMessage("Failed to create HTML");
        return "";
    }

    // The run saves the picture as ".JPG"; found whatever its case.
    const std::string image = ReportPathWithExtension(csvFilePath, ".jpg");
    const std::string foundImage = FindFileNoCase(image);
    const std::string imageBase64 = ConvertImageToBase64(foundImage.empty() ? image : foundImage);
    const ReportLocation location = GetReportLocation();
    const PageFigures f = ComputeFigures(csv);

    WriteHead(file);
    WriteSystemSummary(file, csvFilePath, csv, f.totalPower, f.totalAnnual, f.shadedPercent, f.avgShadedHours,
                       f.avgDirectSunHours, f.specificYield, location, site);
    if (location.country.compare("Israel", Qt::CaseInsensitive) == 0)
        WriteHebrewExecutiveSummary(file, f.totalPower, f.panelCount, f.totalAnnual, f.specificYield,
                                    f.shadedPercent, f.avgShadedHours, f.avgDirectSunHours);
    else if (location.country.compare("Greece", Qt::CaseInsensitive) == 0 ||
             location.country.compare("Cyprus", Qt::CaseInsensitive) == 0)
        WriteGreekExecutiveSummary(file, f.totalPower, f.panelCount, f.totalAnnual, f.specificYield,
                                   f.shadedPercent, f.avgShadedHours, f.avgDirectSunHours);
    WritePicture(file, imageBase64);
    WriteLegend(file, f);
    WriteDataTable(file, csv);
    WriteColumnSortScript(file);
    WriteMonthlyChart(file, csv);
    WriteEnvironmentalAndEfficiencySection(file, f.totalAnnual, csv);
    WriteScienceSection(file);
    WriteDocumentationLink(file, csvFilePath, site);
    PutText(file, "</div>\n</body>\n</html>\n");
    std::fclose(file);

    PrintSunLog("HTML report created: %s\n", htmlPath.c_str());
    if (!imageBase64.empty()) PrintSunLog("Image successfully embedded - should work in Gmail!\n");
    if (location.address != "Unknown location") PrintSunLog("Location address resolved during generation\n");
    return htmlPath;
}
