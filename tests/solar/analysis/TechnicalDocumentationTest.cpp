// The engineers' page beside the report: the project's figures in its fixed
// text, the contents and anchors, the link back to the report, and the
// question for a CSV that is gone.
#include <gtest/gtest.h>

#include "ReportTestCsv.h"
#include "solar/analysis/TechnicalDocumentation.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::writeTextFile;
using namespace reporttest;

namespace {

class TechnicalDocumentation : public ReportPageTest {
protected:

    // Two panels of 0.625 kW, 900 and 600 kWh: 1.25 kWp, 1500 kWh.
    std::string twoPanels() {
        return std::string(MASTER_HEADER) + csvRow({"3/417A", 25, 180, 0.625, "M", {}, 900, 0, 0, 1000, false}) +
               csvRow({"12/417B", 25, 180, 0.625, "M", {}, 600, 0, 0, 1000, true});
    }
    std::string makePage(const std::string& csvText) {
        writeTextFile(dir.path("run.csv"), csvText);
        const std::string page = CreateTechnicalDocumentation(dir.path("run.csv"), site);
        EXPECT_EQ(page, dir.path("run_TechnicalDocumentation.html"));
        return readTextFile(dir.path("run_TechnicalDocumentation.html"));
    }
};

}  // namespace

TEST_F(TechnicalDocumentation, ProjectFiguresFillTheFixedText) {
    const std::string page = makePage(twoPanels());
    EXPECT_NE(page.find("<p>Comprehensive Technical Analysis for Project: Roof</p>\n"), std::string::npos);
    EXPECT_NE(page.find("<p>Location: Unknown location (32&deg;30&#39;00.0000&quot;N, 34&deg;54&#39;00.0000&quot;E)"
                        "</p>\n"),
              std::string::npos);
    EXPECT_NE(page.find("<td>1.25 kWp</td>"), std::string::npos);
    EXPECT_NE(page.find("<td>Number of Panels</td><td>2</td>"), std::string::npos);
    EXPECT_NE(page.find("<td>625 W</td>"), std::string::npos);
    EXPECT_NE(page.find("<td>1500 kWh</td>"), std::string::npos);
    EXPECT_NE(page.find("<td>1200 kWh/kWp</td>"), std::string::npos);
    EXPECT_NE(page.find("Multi-point (4 corners + center) | Power optimizer"), std::string::npos);
    EXPECT_NE(page.find("E_hour = G_total x A_panel x Efficiency_temp-adjusted x IAM x Shading_factor x 0.85\n"),
              std::string::npos);
    EXPECT_NE(page.find("- Real factor = 0.85 (empirical correction for real-world losses)\n"), std::string::npos);
    EXPECT_NE(page.find("lat=32.500000&lon=34.900000<br>\n"), std::string::npos);
    // 1500 / 1.25 = 1200; 1500 / (1.25 x 8760) = 13.7 %.
    EXPECT_NE(page.find("<p>System specific yield: 1200 kWh/kWp. Capacity factor: 13.7%. Performance within "
                        "expected ranges for Israel.</p>\n"),
              std::string::npos);
}

TEST_F(TechnicalDocumentation, TenContentsLinksReachTheirSections) {
    const std::string page = makePage(twoPanels());
    const char* anchors[][2] = {{"overview", "1. System Overview"},
                                {"methodology", "2. Calculation Methodology"},
                                {"pvgis", "3. PVGIS Data Integration"},
                                {"panel-params", "4. Panel Parameters"},
                                {"solar-geometry", "5. Solar Geometry"},
                                {"shading", "6. Shading Analysis Process"},
                                {"energy-calc", "7. Energy Calculations"},
                                {"temperature", "8. Temperature Effects"},
                                {"performance", "9. Performance Metrics"},
                                {"validation", "10. Quality Assurance"}};
    std::size_t previous = 0;
    for (const auto& anchor : anchors) {
        EXPECT_NE(page.find(std::string("<a href='#") + anchor[0] + "'>" + anchor[1] + "</a>"), std::string::npos);
        const std::size_t section = page.find(std::string("id='") + anchor[0] + "'>\n<h2>" + anchor[1] + "</h2>");
        ASSERT_NE(section, std::string::npos) << anchor[0];
        EXPECT_GT(section, previous) << anchor[0];
        previous = section;
    }
}

TEST_F(TechnicalDocumentation, FooterLinksTheReportOnlyWhenItExists) {
    std::string page = makePage(twoPanels());
    EXPECT_NE(page.find("<p>? Summary report not found</p>"), std::string::npos);
    EXPECT_EQ(page.find("<a href='run.html'"), std::string::npos);

    // A second call overwrites the page, now with the report beside it.
    writeTextFile(dir.path("run.html"), "report");
    page = makePage(twoPanels());
    EXPECT_NE(page.find("<a href='run.html' target='_blank'>"), std::string::npos);
    EXPECT_EQ(page.find("Summary report not found"), std::string::npos);
    EXPECT_EQ(page.find("<!DOCTYPE html>"), page.rfind("<!DOCTYPE html>"));
    EXPECT_EQ(page.substr(page.size() - 16), "</body>\n</html>\n");
}

TEST_F(TechnicalDocumentation, HeaderOnlyCsvDividesByZero) {
    const std::string page = makePage(MASTER_HEADER);
    EXPECT_NE(page.find("<td>Number of Panels</td><td>0</td>"), std::string::npos);
    EXPECT_NE(page.find("<td>Average Panel Power</td><td>-nan W</td>"), std::string::npos);
}

TEST_F(TechnicalDocumentation, MissingCsvIsAskedForAndCancelGivesNothing) {
    dialogs.pushCancel();
    EXPECT_EQ(CreateTechnicalDocumentation(dir.path("gone.csv"), site), "");
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].kind, ScriptedDialogService::Question::File);

    writeTextFile(dir.path("other.csv"), twoPanels());
    dialogs.pushFile(QString::fromStdString(dir.path("other.csv")));
    EXPECT_EQ(CreateTechnicalDocumentation(dir.path("gone.csv"), site), dir.path("other_TechnicalDocumentation.html"));
}
