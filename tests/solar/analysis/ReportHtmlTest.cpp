// The customer's HTML page made from hand-written master CSVs: the figures
// worked out by hand, the colouring of legend and rows, the table's cells,
// the executive summary by country, and the helpers for the embedded picture.
#include <gtest/gtest.h>

#include <cstdio>
#include <mutex>

#include "ClimateTestServer.h"
#include "ReportTestCsv.h"
#include "solar/analysis/ReportHtml.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;
using namespace reporttest;

namespace {

class ReportHtml : public ReportPageTest {
protected:
    void SetUp() override {
        ReportPageTest::SetUp();
        sunGlobalLog().SunGlobalLogfile = std::fopen(dir.path("sun.log").c_str(), "w");
    }

    // 900 (max first), 600 (min), 710: range 300, thirds at 700 and 800.
    std::string threePanels() {
        PanelRow a{"3/417A", 24.5, 179.4, 0.625, "LONGI-HiMO6-LR5", rampMonths(10), 900, 7.0, 100, 1000, false};
        PanelRow b{"12/417B", 10.0, -0.7, 0.625, "JINKO-TIGR", rampMonths(5), 600, 21.0, 300, 1000, true};
        PanelRow c{"1/20A", 24.5, 179.4, 0.550, "LONGI-HiMO6-LR5", rampMonths(1), 710, 0.0, 0, 1000, false};
        return std::string(MASTER_HEADER) + csvRow(a) + csvRow(b) + csvRow(c);
    }
    std::string makePage(const std::string& csvText) {
        writeTextFile(dir.path("report.csv"), csvText);
        const std::string html = CreateQuickHTML(dir.path("report.csv"), site);
        EXPECT_EQ(html, dir.path("report.html"));
        return readTextFile(dir.path("report.html"));
    }
    std::string sunLog() {
        std::fflush(sunGlobalLog().SunGlobalLogfile);
        return readTextFile(dir.path("sun.log"));
    }
};

bool inOrder(const std::string& page, std::initializer_list<const char*> parts) {
    std::size_t at = 0;
    for (const char* part : parts) {
        at = page.find(part, at);
        if (at == std::string::npos) return false;
    }
    return true;
}

}  // namespace

TEST_F(ReportHtml, SummaryFiguresComeFromTheCsv) {
    const std::string page = makePage(threePanels());
    EXPECT_EQ(page.rfind("\xEF\xBB\xBF<!DOCTYPE html>\n<!DOCTYPE html>\n<html>\n<head>\n", 0), 0u);
    EXPECT_NE(page.find("<p><strong>Project Name: Roof [0.85]</strong></p>\n"), std::string::npos);
    EXPECT_NE(page.find("<p>Total Panels: 3</p>\n"), std::string::npos);
    EXPECT_NE(page.find("<p>Total System Power: 1.800 kWp</p>\n"), std::string::npos);
    EXPECT_NE(page.find("<p>Total Annual Energy: <strong>2210</strong> kWh/year</p>\n"), std::string::npos);
    EXPECT_NE(page.find("<p>Specific Yield: <strong>1228</strong> kWh/kWp/year</p>\n"), std::string::npos);
    EXPECT_NE(page.find("Shading Analysis: Multi-point (4 corners + center) | Power optimizer<br>\n"),
              std::string::npos);
    // 400 of 3000 direct sun hours shaded: 13.33 %, of 2210 kWh 294.7 kWh.
    EXPECT_NE(page.find("<p> Shading Loss: 13.33% (294.7 kWh total)</p>\n"), std::string::npos);
    EXPECT_NE(page.find("<p>Average Shaded Hours: 13.3% (133.3 hours per panel)</p>\n"), std::string::npos);
    EXPECT_NE(page.find("<p>Average Direct Sun Hours: 1000.0 hours per panel per year</p>\n"), std::string::npos);
    // No geocoder set: the address is unknown and no executive summary follows.
    EXPECT_NE(page.find("maps?q=32.500000,34.900000"), std::string::npos);
    EXPECT_NE(page.find(">Unknown location 32&deg;30&#39;00.0000&quot;N 34&deg;54&#39;00.0000&quot;E</a>"
                        " (32.500000, 34.900000)</p>\n"),
              std::string::npos);
    EXPECT_EQ(page.find("-summary'"), std::string::npos);
    // Months summed over the panels (10 + 5 + 1 times the month's number).
    EXPECT_NE(page.find("var monthlyData = [16.0, 32.0, 48.0, 64.0, 80.0, 96.0, 112.0, 128.0, 144.0, 160.0, "
                        "176.0, 192.0];"),
              std::string::npos);
    // 0.4 kg a kWh: 884 kg, 42 trees, 2210 miles; summer beats spring here.
    EXPECT_NE(page.find("884 kg CO2"), std::string::npos);
    EXPECT_NE(page.find("42 mature trees"), std::string::npos);
    EXPECT_NE(page.find("2210 miles"), std::string::npos);
    EXPECT_EQ(page.find("Did You Notice Something Surprising?"), std::string::npos);
    EXPECT_TRUE(inOrder(page, {"<h2>System Summary</h2>", "Project visualization image not available",
                               "Panel Performance Color Guide:", "<h2>Complete Panel Analysis</h2>",
                               "id='monthlyChart' width='800' height='400'", "Environmental Impact",
                               "Efficiency Insights", "THE SCIENCE BEHIND YOUR SOLAR ANALYSIS",
                               "Technical Documentation", "</div>\n</body>\n</html>\n"}));
    EXPECT_NE(sunLog().find("HTML report created: " + dir.path("report.html") + "\n"), std::string::npos);
}

TEST_F(ReportHtml, LegendUsesFractionsWhileRowsUseThirds) {
    const std::string page = makePage(threePanels());
    EXPECT_NE(page.find("High Energy (825+ kWh/year)"), std::string::npos);
    EXPECT_NE(page.find("Medium Energy (720-825 kWh/year)"), std::string::npos);
    EXPECT_NE(page.find("Lower Energy (600-720 kWh/year)"), std::string::npos);
    // 710 lies in the legend's lower band but above the first third (700).
    EXPECT_NE(page.find("<tr class='energy-medium'>\n<td data-value='1'>1/20A</td>"), std::string::npos);
    EXPECT_NE(page.find("<tr class='energy-high'>\n<td data-value='3'>3/417A</td>"), std::string::npos);
    EXPECT_NE(page.find("<tr class='energy-low'>\n<td data-value='12'>12/417B</td>"), std::string::npos);
    EXPECT_NE(page.find("energy-medium'></span>Good</td>"), std::string::npos);
    EXPECT_NE(page.find("energy-low'></span>Needs Attention</td>"), std::string::npos);
}

TEST_F(ReportHtml, TableCellsTruncateCutAndShowTheBifacialGainOfAWhiteRoof) {
    const std::string page = makePage(threePanels());
    EXPECT_NE(page.find("<td class='number'>0.625</td>\n<td title=\"LONGI-HiMO6-LR5\">LONGI-HiMO...</td>\n"
                        "<td data-value='25'>25/179</td>\n<td class='number'><strong>900.0</strong></td>\n"
                        "<td class='number'>10.0</td>"),
              std::string::npos);
    // -0.7 + 0.5 truncates to 0, not -1; a module of 10 characters stays whole.
    EXPECT_NE(page.find("<td title=\"JINKO-TIGR\">JINKO-TIGR</td>\n<td data-value='10'>10/0</td>"),
              std::string::npos);
    EXPECT_NE(page.find("<td class='number'>21.0</td>\n<td class='number'>300</td>\n<td class='number'>1000</td>"),
              std::string::npos);
    // 600 kWh of a white roof shows 2 % more once again: 12.0 kWh.
    EXPECT_NE(page.find("<td>Flat</td>\n<td class='number'>+2%</td><td class='number'>12.0</td>\n</tr>"),
              std::string::npos);
    EXPECT_NE(page.find("<td>Tiled</td>\n<td>-</td><td>-</td>\n</tr>"), std::string::npos);
    EXPECT_NE(page.find("<th class='sortable' data-column='4' data-type='number' data-label='Annual (kWh)'>"),
              std::string::npos);
    EXPECT_NE(page.find("<th class='sortable' data-column='23' data-type='number' data-label='Bifacial Energy'>"),
              std::string::npos);
    EXPECT_NE(page.find("</tbody></table>\n<script>"), std::string::npos);
}

TEST_F(ReportHtml, OnePanelIsUniformAndEveryRowExcellent) {
    PanelRow p{"5/1C", 30, 180, 0.6, "X", {1, 2, 30, 30, 5, 10, 10, 10, 5, 5, 5, 5}, 500, 0, 0, 900, false};
    const std::string page = makePage(std::string(MASTER_HEADER) + csvRow(p));
    EXPECT_NE(page.find("<h3>Panel Performance Analysis:</h3>\n"), std::string::npos);
    // One row is both the minimum and the maximum: a range of 0.
    EXPECT_NE(page.find("All panels show consistent performance (500-500 kWh/year)"), std::string::npos);
    EXPECT_NE(page.find("Energy variation of 0.0 kWh (0.00%) is within normal system tolerance."), std::string::npos);
    EXPECT_NE(page.find("<tr class='energy-high'>"), std::string::npos);
    EXPECT_NE(page.find("energy-high'></span>Excellent</td>"), std::string::npos);
    // March and April average 30.0, June to August 10.0.
    EXPECT_NE(page.find("Did You Notice Something Surprising?"), std::string::npos);
    EXPECT_NE(page.find("30.0 kWh a month in March and April, but only 10.0 kWh"), std::string::npos);
}

TEST_F(ReportHtml, PictureBesideTheCsvIsEmbeddedAndDocumentationLinked) {
    writeTextFile(dir.path("report.JPG"), "foo");
    const std::string page = makePage(threePanels());
    EXPECT_NE(page.find("<img src=\"data:image/jpeg;base64,Zm9v\" alt=\"Solar Installation\""), std::string::npos);
    EXPECT_NE(page.find("<a href='report_TechnicalDocumentation.html' target='_blank'"), std::string::npos);
    // The report exists while the documentation is written, so it links back.
    EXPECT_NE(readTextFile(dir.path("report_TechnicalDocumentation.html")).find("<a href='report.html'"),
              std::string::npos);
}

TEST_F(ReportHtml, CustomerReplacesTheProjectName) {
    site.customer = "Cohen Family";
    EXPECT_NE(makePage(threePanels()).find("Project Name: Cohen Family [0.85]"), std::string::npos);
}

TEST_F(ReportHtml, HeaderOnlyCsvHasNoPanels) {
    const std::string page = makePage(MASTER_HEADER);
    EXPECT_NE(page.find("<p>Total Panels: 0</p>\n"), std::string::npos);
    EXPECT_EQ(page.find("<tr class="), std::string::npos);
    EXPECT_NE(page.find("<p>Specific Yield: <strong>0</strong> kWh/kWp/year</p>\n"), std::string::npos);
    EXPECT_NE(page.find("nan% ("), std::string::npos);
}

TEST_F(ReportHtml, UnreadableCsvFailsWithAMessage) {
    EXPECT_EQ(CreateQuickHTML(dir.path("missing.csv"), site), "");
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].kind, ScriptedDialogService::Question::Message);
    EXPECT_EQ(dialogs.questions()[0].text, "Failed to create HTML");
}

TEST_F(ReportHtml, ExecutiveSummaryFollowsTheSiteCountry) {
    LocalHttpServer server;
    std::mutex mutex;
    std::string country;
    server.server().Get("/data/reverse-geocode-client", [&](const httplib::Request&, httplib::Response& r) {
        std::lock_guard<std::mutex> lock(mutex);
        r.set_content("{\"city\": \"Town\", \"principalSubdivision\": \"\", \"countryName\": \"" + country + "\"}",
                      "application/json");
    });
    ASSERT_TRUE(server.start());
    ORVOINI().writeString("Services", "Geocoding", server.base());
    ORVOINI().writeString("Services", "GeocodingApi", "client");

    country = "CYPRUS";
    std::string page = makePage(threePanels());
    EXPECT_NE(page.find("<div class='greek-summary' style='direction: ltr;"), std::string::npos);
    EXPECT_NE(page.find("<h2>&#917;&#954;&#964;&#949;&#955;&#949;&#963;&#964;&#953;&#954;&#942; "
                        "&#928;&#949;&#961;&#943;&#955;&#951;&#968;&#951;</h2>"),
              std::string::npos);
    EXPECT_NE(page.find("<p>&#934;&#969;&#964;&#959;&#946;&#959;&#955;&#964;&#945;&#970;&#954;&#972; "
                        "&#931;&#973;&#963;&#964;&#951;&#956;&#945;: 1.800 &#954;&#953;&#955;&#959;&#946;&#940;"
                        "&#964; &#956;&#949; 3 &#960;&#940;&#957;&#949;&#955;</p>"),
              std::string::npos);
    EXPECT_NE(page.find("&#954;&#941;&#957;&#964;&#961;&#959;) &#124; &#914;&#949;&#955;&#964;&#953;&#963;&#964;"
                        "&#959;&#960;&#959;&#953;&#951;&#964;&#942;&#962;</p>"),
              std::string::npos);
    EXPECT_EQ(page.find("hebrew-summary"), std::string::npos);

    country = "Israel";
    reportRun().OnlyCenter = true;
    reportRun().OptimizerType = 0;
    page = makePage(threePanels());
    EXPECT_NE(page.find("<div class='hebrew-summary' style='direction: rtl; text-align: right;"), std::string::npos);
    EXPECT_NE(page.find("<h2>&#1505;&#1497;&#1499;&#1493;&#1501; &#1502;&#1504;&#1492;&#1500;&#1497;&#1501;</h2>"),
              std::string::npos);
    EXPECT_NE(page.find("&#1504;&#1511;&#1493;&#1491;&#1492; &#1497;&#1495;&#1497;&#1491;&#1492; &#124; "
                        "&#1502;&#1502;&#1497;&#1512; &#1512;&#1490;&#1497;&#1500;</p>"),
              std::string::npos);
    EXPECT_NE(page.find("Shading Analysis: Single-point | String inverter<br>"), std::string::npos);
    EXPECT_NE(page.find(">Town\r, Israel\r,  32&deg;30&#39;"), std::string::npos);

    country = "Germany";
    page = makePage(threePanels());
    EXPECT_EQ(page.find("-summary'"), std::string::npos);
    // That service asks no credit.
    EXPECT_EQ(page.find("OpenStreetMap"), std::string::npos);
}

// An address from OpenStreetMap's data carries the credit its terms ask for;
// without an address there is nothing to credit.
TEST_F(ReportHtml, AnAddressFromNominatimIsCreditedBesideTheLocation) {
    LocalHttpServer server;
    bool answer = true;
    server.server().Get("/reverse", [&answer](const httplib::Request&, httplib::Response& r) {
        if (answer)
            r.set_content("{\"address\": {\"town\": \"Kfar\", \"state\": \"Center\", \"country\": \"Germany\"}}",
                          "application/json");
        else
            r.status = 503;
    });
    ASSERT_TRUE(server.start());
    ORVOINI().writeString("Services", "Geocoding", server.base());
    ORVOINI().writeString("Services", "GeocodingApi", "nominatim");
    std::string page = makePage(threePanels());
    EXPECT_NE(page.find(">Kfar\r, Center\r, Germany\r,  "), std::string::npos);
    EXPECT_NE(page.find("<br><small>Address data \u00a9 OpenStreetMap contributors</small></p>"), std::string::npos);

    answer = false;
    frameState().MapCenterLat += 0.01;  // another place: not among the answers kept
    page = makePage(threePanels());
    EXPECT_NE(page.find(">Unknown location "), std::string::npos);
    EXPECT_EQ(page.find("OpenStreetMap"), std::string::npos);
}

TEST(ReportHtmlText, CleanHtmlTextMakesCoordinateTextsSafe) {
    // The degree sign, "?" and the inverted question mark all become "&deg;".
    EXPECT_EQ(CleanHTMLText(QString::fromUtf8("32\xC2\xB0" "15'48.9\"N ? \xC2\xBF "
                                              "a\xE2\x80\x93" "b\xE2\x80\x94" "c\xE2\x80\xA6")),
              "32&deg;15&#39;48.9&quot;N &deg; &deg; a-b-c...");
}

TEST(ReportHtmlText, Base64MatchesTheStandardVectors) {
    const auto encode = [](const std::string& text) {
        return Base64Encode(reinterpret_cast<const unsigned char*>(text.data()), static_cast<int>(text.size()));
    };
    EXPECT_EQ(encode(""), "");
    EXPECT_EQ(encode("f"), "Zg==");
    EXPECT_EQ(encode("fo"), "Zm8=");
    EXPECT_EQ(encode("foo"), "Zm9v");
    EXPECT_EQ(encode("foob"), "Zm9vYg==");
    EXPECT_EQ(encode("fooba"), "Zm9vYmE=");
    EXPECT_EQ(encode("foobar"), "Zm9vYmFy");
    EXPECT_EQ(encode("\xFB\xEF\xBE\xFF\xFF\xFF"), "++++////");
}

TEST(ReportHtmlText, ImageUpToFiveMillionBytesIsEmbedded) {
    ScratchDir dir;
    resetSunGlobalLog();
    sunGlobalLog().SunGlobalLogfile = std::fopen(dir.path("sun.log").c_str(), "w");
    writeTextFile(dir.path("limit.jpg"), std::string(5000000, '\0'));
    const std::string encoded = ConvertImageToBase64(dir.path("limit.jpg"));
    EXPECT_EQ(encoded.size(), 6666668u);
    EXPECT_EQ(encoded.substr(encoded.size() - 4), "AAA=");  // 5000000 = 3 x 1666666 + 2

    writeTextFile(dir.path("over.jpg"), std::string(5000001, '\0'));
    EXPECT_EQ(ConvertImageToBase64(dir.path("over.jpg")), "");
    EXPECT_EQ(ConvertImageToBase64(dir.path("none.jpg")), "");
    std::fflush(sunGlobalLog().SunGlobalLogfile);
    const std::string log = readTextFile(dir.path("sun.log"));
    EXPECT_NE(log.find("Base64 encoding complete: 5000000 input bytes -> 6666668 output chars\n"), std::string::npos);
    EXPECT_NE(log.find("ERROR: Image too large for email embedding (5000001 bytes)\n"), std::string::npos);
    EXPECT_NE(log.find("Image file not found: " + dir.path("none.jpg") + "\n"), std::string::npos);
    resetSunGlobalLog();
}
