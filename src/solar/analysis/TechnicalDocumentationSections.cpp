#include "TechnicalDocumentationSections.h"

#include <QFileInfo>

#include "ClimateServices.h"
#include "ReportPageCommon.h"
#include "ReportRunState.h"
#include "geo/Frames.h"

namespace {

const char* const STYLE_SHEET = R"CSS(<style>
body { margin: 0; padding: 24px; font-family: 'Segoe UI', Arial, sans-serif; color: #1f2937; background: #eef2f7;
  line-height: 1.55; }
.container { max-width: 1100px; margin: 0 auto; background: #ffffff; border-radius: 12px; padding: 32px 40px;
  box-shadow: 0 6px 24px rgba(15, 23, 42, 0.10); }
.header { background: linear-gradient(135deg, #1e3a8a, #2563eb); color: #ffffff; border-radius: 10px;
  padding: 24px 28px; margin-bottom: 28px; }
.header h1 { margin: 0 0 10px 0; }
.header p { margin: 4px 0; }
.section { border-top: 2px solid #e2e8f0; padding: 12px 0 8px 0; margin-top: 24px; }
.section h2 { color: #1e3a8a; }
.section h3 { color: #1e40af; }
.formula { background: #f1f5f9; border-left: 4px solid #2563eb; font-family: Consolas, 'Courier New', monospace;
  white-space: pre-wrap; padding: 12px 16px; margin: 12px 0; border-radius: 6px; }
.parameter { border-collapse: collapse; width: 100%; margin: 12px 0; }
.parameter th, .parameter td { border: 1px solid #cbd5e1; padding: 6px 10px; text-align: left; }
.parameter th { background: #1e3a8a; color: #ffffff; }
.step { background: #f8fafc; border-left: 4px solid #22c55e; padding: 8px 14px; margin: 8px 0; border-radius: 4px; }
.info { background: #eff6ff; border: 1px solid #bfdbfe; padding: 10px 14px; border-radius: 6px; margin: 12px 0; }
.warning { background: #fffbeb; border: 1px solid #fcd34d; padding: 10px 14px; border-radius: 6px; margin: 12px 0; }
.code { background: #0f172a; color: #e2e8f0; font-family: Consolas, 'Courier New', monospace; padding: 12px 16px;
  border-radius: 6px; margin: 12px 0; overflow-x: auto; }
.toc { background: #f8fafc; border: 1px solid #e2e8f0; border-radius: 8px; padding: 14px 24px; }
.toc a { display: block; color: #2563eb; text-decoration: none; padding: 3px 0; }
.toc a:hover { text-decoration: underline; }
</style>
)CSS";

struct TocEntry {
    const char* anchor;
    const char* title;
};

constexpr TocEntry SECTIONS[] = {
    {"overview", "1. System Overview"},          {"methodology", "2. Calculation Methodology"},
    {"pvgis", "3. PVGIS Data Integration"},      {"panel-params", "4. Panel Parameters"},
    {"solar-geometry", "5. Solar Geometry"},     {"shading", "6. Shading Analysis Process"},
    {"energy-calc", "7. Energy Calculations"},   {"temperature", "8. Temperature Effects"},
    {"performance", "9. Performance Metrics"},   {"validation", "10. Quality Assurance"},
};

void SectionStart(std::FILE* file, int index) {
    PutFormat(file, "<div class='section' id='%s'>\n<h2>%s</h2>\n", SECTIONS[index].anchor, SECTIONS[index].title);
}

void SectionEnd(std::FILE* file) { PutText(file, "</div>\n"); }

void OneSentenceSection(std::FILE* file, int index, const char* sentence) {
    SectionStart(file, index);
    PutFormat(file, "<p>%s</p>\n", sentence);
    SectionEnd(file);
}

}  // namespace

void WriteDocumentationHeader(std::FILE* file, const QString& projectName, const QString& locationAddress,
                              const QString& safeLAT, const QString& safeLON) {
    PutText(file,
            "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"UTF-8\">\n"
            "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1.0\">\n"
            "<title>Solar Analysis Technical Documentation</title>\n");
    PutText(file, STYLE_SHEET);
    PutText(file, "</head>\n<body>\n<div class='container'>\n<div class='header'>\n"
                  "<h1>Solar Analysis Technical Documentation</h1>\n");
    PutText(file, "<p>Comprehensive Technical Analysis for Project: " + projectName.toHtmlEscaped() + "</p>\n");
    PutText(file, "<p>Location: " + locationAddress + " (" + safeLAT + ", " + safeLON + ")</p>\n");
    PutText(file, "<p>Generated: " + ReportDateText() + "</p>\n");
    PutText(file, "</div>\n");
}

void WriteTableOfContents(std::FILE* file) {
    PutText(file, "<div class='toc'>\n<h2>Table of Contents</h2>\n");
    for (const TocEntry& entry : SECTIONS) PutFormat(file, "<a href='#%s'>%s</a>\n", entry.anchor, entry.title);
    PutText(file, "</div>\n");
}

void WriteSystemOverview(std::FILE* file, double totalPower, int panelCount, double totalAnnual) {
    SectionStart(file, 0);
    PutText(file, "<table class='parameter'>\n<tr><th>Parameter</th><th>Value</th></tr>\n");
    PutFormat(file, "<tr><td>Total System Power</td><td>%.2f kWp</td></tr>\n", totalPower);
    PutFormat(file, "<tr><td>Number of Panels</td><td>%d</td></tr>\n", panelCount);
    PutFormat(file, "<tr><td>Average Panel Power</td><td>%.0f W</td></tr>\n", 1000 * totalPower / panelCount);
    PutFormat(file, "<tr><td>Annual Energy Production</td><td>%.0f kWh</td></tr>\n", totalAnnual);
    PutFormat(file, "<tr><td>Specific Yield</td><td>%.0f kWh/kWp</td></tr>\n", totalAnnual / totalPower);
    PutText(file, "<tr><td>Shading Analysis</td><td>" + ShadingMethodText() + " | " + InverterText() +
                      "</td></tr>\n</table>\n");
    PutText(file,
            "<ul>\n"
            "<li>Every panel is analysed on its own, for every daylight hour of a full year.</li>\n"
            "<li>Shading is found by casting rays through the 3D model of the site.</li>\n"
            "<li>Irradiance comes from measured hourly satellite data of the site.</li>\n"
            "<li>All energies include the general system losses of the installation.</li>\n"
            "</ul>\n");
    SectionEnd(file);
}

void WriteMethodologySection(std::FILE* file) {
    const double realFactor = reportRun().REALFACTOR;
    SectionStart(file, 1);
    PutText(file,
            "<h3>Hourly Analysis Process</h3>\n"
            "<div class='step'>Step 1: compute the sun's altitude and azimuth for the hour at the site.</div>\n"
            "<div class='step'>Step 2: find the angle of incidence of the sunlight on the panel's plane.</div>\n"
            "<div class='step'>Step 3: cast rays from the panel towards the sun to test for obstructions.</div>\n"
            "<div class='step'>Step 4: transpose the hour's irradiance onto the panel and convert it to energy."
            "</div>\n"
            "<h3>Master Energy Equation</h3>\n<div class='formula'>");
    PutFormat(file, "E_hour = G_total x A_panel x Efficiency_temp-adjusted x IAM x Shading_factor x %.2f\n",
              realFactor);
    PutText(file,
            "Where:\n"
            "- G_total = beam + diffuse + reflected irradiance on the panel plane (W/m2)\n"
            "- A_panel = panel area (m2)\n"
            "- IAM = incidence angle modifier\n");
    PutFormat(file, "- Real factor = %.2f (empirical correction for real-world losses)\n", realFactor);
    PutText(file, "</div>\n");
    SectionEnd(file);
}

void WritePVGISSection(std::FILE* file) {
    SectionStart(file, 2);
    PutText(file,
            "<p>Hourly irradiance and weather of the site come from the PVGIS service of the European "
            "Commission's Joint Research Centre.</p>\n"
            "<table class='parameter'>\n<tr><th>Parameter</th><th>Meaning</th><th>Unit</th></tr>\n"
            "<tr><td>Gb(i)</td><td>Beam (direct) irradiance</td><td>W/m2</td></tr>\n"
            "<tr><td>Gd(i)</td><td>Diffuse irradiance</td><td>W/m2</td></tr>\n"
            "<tr><td>Gr(i)</td><td>Ground-reflected irradiance</td><td>W/m2</td></tr>\n"
            "<tr><td>T2m</td><td>Air temperature at 2 m</td><td>&deg;C</td></tr>\n"
            "<tr><td>WS10m</td><td>Wind speed at 10 m</td><td>m/s</td></tr>\n"
            "<tr><td>H_sun</td><td>Sun height</td><td>degrees</td></tr>\n"
            "</table>\n"
            "<h3>Data Processing Workflow</h3>\n<div class='code'>");
    PutText(file, QString::fromStdString(ServiceUrl(PvgisServiceAddress(), "/api/v5_3/seriescalc")).toHtmlEscaped() +
                      "?<br>\n");
    PutFormat(file, "lat=%.6f&lon=%.6f<br>\n", frameState().MapCenterLat, frameState().MapCenterLon);
    PutText(file,
            "&amp;outputformat=csv&amp;startyear=2018&amp;endyear=2023&amp;components=1<br>\n"
            "</div>\n"
            "<div class='step'>The hourly series of several years is folded into one typical year, averaging "
            "each hour of each day over five years.</div>\n"
            "<h3>Data Quality</h3>\n"
            "<div class='info'>PVGIS derives its series from satellite observations validated against ground "
            "stations; typical uncertainty of the yearly irradiation is a few percent.</div>\n");
    SectionEnd(file);
}

void WritePanelAndGeometrySections(std::FILE* file) {
    OneSentenceSection(file, 3,
                       "The analysis uses the module DMXXXG12RT-B66HSW-625: 625 W rated power, 23.1% efficiency, "
                       "2382x1134 mm.");
    OneSentenceSection(file, 4,
                       "The sun's altitude and azimuth are computed for every hour of the year from the site's "
                       "latitude and longitude with standard astronomical formulas.");
}

void WriteShadingSection(std::FILE* file) {
    SectionStart(file, 5);
    PutText(file,
            "<div class='step'>1. For each hour the sun's direction is found and hours with an angle of "
            "incidence above 84 degrees are filtered out.</div>\n"
            "<div class='step'>2. Rays start at the panel's test points: its center, and its four corners "
            "in the multi-point analysis.</div>\n"
            "<div class='step'>3. Each ray is cast towards the sun through the full 3D mesh of the site, "
            "skipping the first half metre so the panel does not shade itself.</div>\n"
            "<div class='step'>4. A hit marks the point as obstructed for the hour; the hour's shading is the "
            "share of obstructed points.</div>\n"
            "<div class='code'>int hit = At3d_Get_Line_Mesh_Intersection_Point(rayStart, rayEnd, 0.5, hitPoint, 1);"
            "</div>\n"
            "<h3>Shading Loss Model</h3>\n"
            "<div class='info'>An obstructed hour loses its beam irradiance while diffuse light still reaches "
            "the panel; with power optimizers each panel loses only its own share, with a string inverter the "
            "weakest panel limits its string.</div>\n");
    SectionEnd(file);
}

void WriteClosingSections(std::FILE* file, double totalPower, double totalAnnual) {
    OneSentenceSection(file, 6,
                       "Hourly energies are summed per month and per year for each panel, then over all panels "
                       "for the system.");
    OneSentenceSection(file, 7,
                       "Cell temperature follows the air temperature and irradiance, and output changes by "
                       "-0.29% per degree Celsius above 25&deg;C.");
    SectionStart(file, 8);
    PutFormat(file,
              "<p>System specific yield: %.0f kWh/kWp. Capacity factor: %.1f%%. Performance within expected "
              "ranges for Israel.</p>\n",
              totalAnnual / totalPower, totalAnnual / (totalPower * 8760) * 100);
    SectionEnd(file);
    OneSentenceSection(file, 9,
                       "Every result is checked for plausibility against the site's climate and the installed "
                       "power before the report is issued.");
}

void WriteFooter(std::FILE* file, const std::string& csvFilePath) {
    const QFileInfo report(QString::fromStdString(ReportPathWithExtension(csvFilePath, ".html")));
    PutText(file, "<div class='section'>\n<h2>Executive Summary</h2>\n"
                  "<p>Client-friendly overview with charts and key metrics</p>\n");
    if (report.exists())
        PutText(file, "<p><a href='" + report.fileName().toHtmlEscaped() +
                          "' target='_blank'>Open the summary report</a></p>\n");
    else
        PutText(file, "<p>? Summary report not found</p>\n");
    PutText(file, "</div>\n<div class='info'>\n<h3>Analysis Complete</h3>\n"
                  "<p><strong>Generated by:</strong> Orvo Systems Solar Analysis Engine</p>\n"
                  "<p><strong>Date:</strong> " +
                      ReportDateText() + "</p>\n</div>\n</div>\n</body>\n</html>\n");
}
