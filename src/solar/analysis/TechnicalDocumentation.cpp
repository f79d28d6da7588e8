#include "TechnicalDocumentation.h"

#include <QFileInfo>

#include "ClimateText.h"
#include "ReportPageCommon.h"
#include "ShadingResultsCache.h"
#include "TechnicalDocumentationSections.h"
#include "app/services/FileDialogs.h"
#include "app/services/OrvoFopen.h"
#include "app/services/SunGlobalLog.h"

namespace {

constexpr int ROW_FIELDS = 25;
constexpr int POWER = 6;
constexpr int ANNUAL = 21;

// The given CSV, or one the operator picks when it is gone; "" on cancel.
std::string ChooseCsv(const std::string& csvFilePath) {
    const QString given = QString::fromStdString(csvFilePath);
    if (QFileInfo(given).isFile()) return csvFilePath;
    QString chosen = given;
    if (!OrvoOpenFile(chosen, "CSV", "Image file (*.CSV)|*.CSV", "Open the CSV file (input)",
                      QFileInfo(given).absolutePath()))
        return "";
    return chosen.toStdString();
}

}  // namespace

std::string CreateTechnicalDocumentation(const std::string& csvFilePath, const ReportSite& site) {
    const ClimateCLocale cNumbers;
    const std::string csvPath = ChooseCsv(csvFilePath);
    if (csvPath.empty()) return "";
    const std::string outputPath = ReportPathWithExtension(csvPath, "_TechnicalDocumentation.html");
    std::FILE* file = ORVOfopen(QString::fromStdString(outputPath), "w");
    if (!file) {
        PrintSunLog("ERROR: Cannot create technical documentation file: %s\n", outputPath.c_str());
        return "";
    }
    QStringList csv;
    if (!ReadCSVData(csvPath, csv)) {
        std::fclose(file);
        return "";
    }

    const QString projectName = ReportProjectName(csvPath, site);
    const ReportLocation location = GetReportLocation();
    double totalPower = 0;
    double totalAnnual = 0;
    int panelCount = 0;
    for (const QStringList& row : ReportRows(csv, ROW_FIELDS)) {
        totalPower += ReportNumber(row, POWER, 0);
        totalAnnual += ReportNumber(row, ANNUAL, 0);
        ++panelCount;
    }

    const QString address =
        location.attribution.isEmpty() ? location.address : location.address + " (" + location.attribution + ")";
    WriteDocumentationHeader(file, projectName, address, location.latitude, location.longitude);
    WriteTableOfContents(file);
    WriteSystemOverview(file, totalPower, panelCount, totalAnnual);
    WriteMethodologySection(file);
    WritePVGISSection(file);
    WritePanelAndGeometrySections(file);
    WriteShadingSection(file);
    WriteClosingSections(file, totalPower, totalAnnual);
    WriteFooter(file, csvPath);
    std::fclose(file);
    PrintSunLog("Technical documentation created: %s\n", outputPath.c_str());
    return outputPath;
}
