// The report's table sorted in a real browser: headless Chromium loads the
// page with a script that clicks headers and writes the row order into the
// page, and the dumped page is read back. Without Chromium the test fails:
// the sorting lives in the page's scripts and nothing else can run them.
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <cstdlib>

#include "ReportTestCsv.h"
#include "solar/analysis/ReportHtml.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;
using namespace reporttest;

namespace {

QString FindChromium() {
    if (const char* given = std::getenv("ZV_CHROMIUM")) return given;
    for (const char* name : {"chromium", "chromium-browser", "google-chrome"}) {
        const QString found = QStandardPaths::findExecutable(name);
        if (!found.isEmpty()) return found;
    }
    return {};
}

// Clicks after the page's own handlers are attached, and records each order
// of the first column in a div of its own.
const char* const CLICKS = R"JS(<script>
window.addEventListener('load', function () {
  function header(label) { return document.querySelector("#panelTable th[data-label='" + label + "']"); }
  function record(id, text) {
    var div = document.createElement('div');
    div.id = id;
    div.textContent = text;
    document.body.appendChild(div);
  }
  function order() {
    return Array.prototype.map.call(document.getElementById('panelTable').tBodies[0].rows,
      function (row) { return row.cells[0].textContent.trim(); }).join(' ');
  }
  header('Annual (kWh)').click(); record('annual-up', order());
  header('Annual (kWh)').click(); record('annual-down', order());
  header('Panel ID').click(); record('panel-id', order());
  var arrow = header('Panel ID').querySelector('.sort-arrow');
  record('arrow', arrow ? String(arrow.textContent.charCodeAt(0)) : 'none');
  record('annual-label', header('Annual (kWh)').textContent);
});
</script>
)JS";

std::string Recorded(const std::string& dom, const std::string& id) {
    const std::string open = "<div id=\"" + id + "\">";
    const std::size_t start = dom.find(open);
    if (start == std::string::npos) return "missing";
    const std::size_t end = dom.find("</div>", start);
    return dom.substr(start + open.size(), end - start - open.size());
}

}  // namespace

TEST(ReportHtmlBrowser, HeaderClicksSortTheRows) {
    const QString chromium = FindChromium();
    ASSERT_FALSE(chromium.isEmpty()) << "Chromium is missing: install the 'chromium' package "
                                        "(scripts/install-deps.sh lists it) or set ZV_CHROMIUM to a Chrome binary";

    resetReportTestState();
    ScratchDir dir;
    ReportSite site;
    site.modelFileName = dir.path("Roof.obj");
    writeTextFile(dir.path("report.csv"),
                  std::string(MASTER_HEADER) + csvRow({"3/417A", 25, 180, 0.625, "M", rampMonths(10), 900}) +
                      csvRow({"12/417B", 25, 180, 0.625, "M", rampMonths(5), 600}) +
                      csvRow({"1/20A", 25, 180, 0.625, "M", rampMonths(7), 710}) +
                      csvRow({"2/5B", 25, 180, 0.625, "M", rampMonths(8), 800}));
    ASSERT_EQ(CreateQuickHTML(dir.path("report.csv"), site), dir.path("report.html"));
    std::string page = readTextFile(dir.path("report.html"));
    const std::size_t end = page.rfind("</body>");
    ASSERT_NE(end, std::string::npos);
    page.insert(end, CLICKS);
    writeTextFile(dir.path("clicked.html"), page);

    QProcess browser;
    browser.start(chromium, {"--headless", "--no-sandbox", "--disable-gpu", "--no-first-run",
                             "--disable-background-networking", "--disable-component-update", "--disable-sync",
                             "--user-data-dir=" + QString::fromStdString(dir.path("profile")), "--dump-dom",
                             "file://" + QString::fromStdString(dir.path("clicked.html"))});
    ASSERT_TRUE(browser.waitForStarted()) << chromium.toStdString() << " did not start";
    ASSERT_TRUE(browser.waitForFinished(120000)) << "Chromium did not finish";
    const std::string dom = browser.readAllStandardOutput().toStdString();
    ASSERT_EQ(browser.exitCode(), 0) << browser.readAllStandardError().toStdString();

    resetReportTestState();
    EXPECT_EQ(Recorded(dom, "annual-up"), "12/417B 1/20A 2/5B 3/417A");
    EXPECT_EQ(Recorded(dom, "annual-down"), "3/417A 2/5B 1/20A 12/417B");
    // The group letter first, then the number before "/"; a plain numeric
    // sort of "2/5B" (25) would have put it first.
    EXPECT_EQ(Recorded(dom, "panel-id"), "1/20A 3/417A 2/5B 12/417B");
    EXPECT_EQ(Recorded(dom, "arrow"), "9650");
    EXPECT_EQ(Recorded(dom, "annual-label"), "Annual (kWh)");
}
