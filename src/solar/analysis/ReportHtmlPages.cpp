#include "ReportHtmlSections.h"
#include "ReportPageCommon.h"

namespace {

constexpr int ROW_FIELDS = 25;
constexpr int MARCH = 11;
constexpr int APRIL = 12;
constexpr int JUNE = 14;
constexpr int JULY = 15;
constexpr int AUGUST = 16;

void FeatureBlock(std::FILE* file, const char* title, const QString& text) {
    PutText(file, "<div class='feature-block'>\n<div class='feature-title'>");
    PutText(file, title);
    PutText(file, "</div>\n<div class='feature-text'>" + text + "</div>\n</div>\n");
}

void PageStart(std::FILE* file, const char* title, const char* subtitle) {
    PutText(file, "<div class='explanation-page'>\n<div class='explanation-title'>");
    PutText(file, title);
    PutText(file, "</div>\n");
    if (subtitle) {
        PutText(file, "<div class='explanation-subtitle'>");
        PutText(file, subtitle);
        PutText(file, "</div>\n");
    }
    PutText(file, "<div class='explanation-content'>\n");
}

void PageEnd(std::FILE* file) { PutText(file, "</div>\n</div>\n"); }

void WriteSpringPage(std::FILE* file, double springAvg, double summerAvg) {
    PageStart(file, "Did You Notice Something Surprising?", "Why Spring Beats Summer in Solar Output");
    FeatureBlock(file, "Spring out-produces summer on your roof",
                 QString::asprintf("Your panels average %.1f kWh a month in March and April, but only %.1f kWh a "
                                   "month from June to August, although summer days are longer.",
                                   springAvg, summerAvg));
    FeatureBlock(file, "The Science Behind It",
                 "Solar cells lose efficiency as they heat up: every degree above 25&deg;C costs a fraction of a "
                 "percent of output. Spring brings strong, clear sunshine with cool air, so the cells run near "
                 "their best, while summer heat, haze and dust take away part of the extra light.");
    FeatureBlock(file, "This is Normal &amp; Optimal",
                 "A spring peak is the signature of a well designed system in a warm climate. Nothing needs to be "
                 "changed: the annual total already accounts for every season.");
    PageEnd(file);
}

void WriteEnvironmentPage(std::FILE* file, double totalAnnual) {
    const double co2Saved = 0.4 * totalAnnual;
    const int trees = static_cast<int>(co2Saved / 21);
    const double miles = co2Saved / 0.4;
    PageStart(file, "Environmental Impact", "What your system gives back every year");
    FeatureBlock(file, "Annual CO2 Reduction", QString::asprintf("%.0f kg CO2", co2Saved) +
                                                   " kept out of the air, against power from the grid.");
    FeatureBlock(file, "Trees Equivalent",
                 QString::asprintf("%d mature trees", trees) + " would be needed to absorb the same amount.");
    FeatureBlock(file, "Transportation Impact",
                 QString::asprintf("%.0f miles", miles) + " of driving in an average car, avoided.");
    PageEnd(file);
}

void WriteEfficiencyPage(std::FILE* file) {
    PageStart(file, "Efficiency Insights", "Keeping your system at its best");
    FeatureBlock(file, "Panel Degradation Over Time",
                 "Quality modules lose about half a percent of output a year; after 25 years they still deliver "
                 "well over 80 percent of their rated power.");
    FeatureBlock(file, "Maintenance Recommendations",
                 "Clean the panels when dust or bird droppings build up, keep nearby trees trimmed, and have "
                 "connections and the inverter checked once a year.");
    FeatureBlock(file, "Performance Monitoring",
                 "Compare the monthly production of your inverter with the chart of this report: a drop of more "
                 "than a few percent points to soiling, new shade or a fault.");
    PageEnd(file);
}

}  // namespace

void WriteEnvironmentalAndEfficiencySection(std::FILE* file, double totalAnnual, const QStringList& csv) {
    double spring = 0;
    double summer = 0;
    const std::vector<QStringList> rows = ReportRows(csv, ROW_FIELDS);
    for (const QStringList& row : rows) {
        spring += ReportNumber(row, MARCH, 0) + ReportNumber(row, APRIL, 0);
        summer += ReportNumber(row, JUNE, 0) + ReportNumber(row, JULY, 0) + ReportNumber(row, AUGUST, 0);
    }
    const double count = static_cast<double>(rows.size());
    const double springAvg = rows.empty() ? 0 : spring / (2 * count);
    const double summerAvg = rows.empty() ? 0 : summer / (3 * count);
    if (springAvg - summerAvg > 2) WriteSpringPage(file, springAvg, summerAvg);
    WriteEnvironmentPage(file, totalAnnual);
    WriteEfficiencyPage(file);
}

void WriteScienceSection(std::FILE* file) {
    PutText(file,
            "<div class='explanation-page' style='position: relative; overflow: hidden;'>\n"
            "<div class='floating-particles'>\n"
            "<div class='particle' style='left: 10%; animation-delay: 0s;'></div>\n"
            "<div class='particle' style='left: 35%; animation-delay: 2s;'></div>\n"
            "<div class='particle' style='left: 60%; animation-delay: 4s;'></div>\n"
            "<div class='particle' style='left: 85%; animation-delay: 6s;'></div>\n"
            "</div>\n"
            "<div class='explanation-title'>THE SCIENCE BEHIND YOUR SOLAR ANALYSIS</div>\n"
            "<div class='explanation-subtitle'>Every Hour. Every Shadow. Every Ray of Light.</div>\n"
            "<div class='explanation-content'>\n");
    FeatureBlock(file, "Precision Sun Tracking",
                 "The sun's position is computed for every hour of the year at your exact site, from its "
                 "latitude and longitude, so each panel sees the real path of the sun.");
    FeatureBlock(file, "Advanced Shading Intelligence",
                 "For every daylight hour rays are cast from each panel towards the sun through a full 3D model of "
                 "your building and its surroundings: chimneys, trees and neighbours all cast their true shadows.");
    FeatureBlock(file, "Mathematical Precision",
                 "Beam, diffuse and reflected light are transposed onto each panel's own tilt and orientation, "
                 "with the angle of incidence, cell temperature and system losses taken into account.");
    FeatureBlock(file, "Autonomous Drone Technology",
                 "The 3D model comes from drone photography, measured to centimetres, so the roof you see in this "
                 "report is the roof that stands.");
    FeatureBlock(file, "Real-World Accuracy",
                 "Multi-year hourly climate records of your site replace textbook averages, so cloudy seasons "
                 "and clear ones weigh as they really do.");
    FeatureBlock(file, "Panel-by-Panel Analysis",
                 "Each panel is analysed on its own, hour by hour, which shows exactly where energy is gained and "
                 "where shade takes it away.");
    PutText(file,
            "<p class='math-precision'>This is solar analysis at its finest - where cutting-edge technology meets "
            "real-world precision.</p>\n"
            "</div>\n</div>\n");
}
