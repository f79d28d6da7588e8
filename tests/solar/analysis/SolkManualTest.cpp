// The planner's manual: which pictures it asks for and remembers, where the
// page goes, how missing pictures show, and that its tabs switch in a real
// browser.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>

#include "app/services/DialogService.h"
#include "app/services/OrvoIni.h"
#include "solar/analysis/SolkManual.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::writeTextFile;

namespace {

class SolkManual : public ::testing::Test {
protected:
    void SetUp() override {
        resetOrvoIni();
        installDialogService(&dialogs);
        for (int i = 0; i < MANUAL_PICTURE_COUNT; ++i)
            pictures[std::size_t(i)] = QString::fromStdString(dir.path("shots/p" + std::to_string(i) + ".jpg"));
        // Three bytes a picture: their base64 is four characters.
        for (const QString& p : pictures) writeTextFile(p.toStdString(), "ab" + p.right(5).left(1).toStdString());
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetOrvoIni();
    }
    testsupport::ScratchDir dir;
    ScriptedDialogService dialogs;
    ManualPictures pictures;
};

}  // namespace

TEST_F(SolkManual, AFirstRunAsksForEachPictureAndASecondRunAsksNothing) {
    for (const QString& p : pictures) dialogs.pushFile(p);
    const std::string page = CreateSOLK_Manual();
    EXPECT_EQ(page, dir.path("shots/SOLK_Manual.html"));
    ASSERT_EQ(dialogs.questions().size(), 7u);
    EXPECT_EQ(dialogs.questions()[0].title, "Open the 3D Model image file");
    EXPECT_EQ(dialogs.questions()[6].title, "Open the Reference Plane image file");
    EXPECT_EQ(dialogs.questions()[5].folder, QString::fromStdString(dir.path("shots")));
    EXPECT_EQ(ORVOINI().readString("UserSelections", "MenuPath", ""), pictures[MANUAL_MENU].toStdString());
    const std::string first = readTextFile(page);
    EXPECT_NE(first.find("<img src=\"data:image/jpeg;base64,YWI1\" alt=\"Menu\">"), std::string::npos);

    // A picture gone since: its placeholder, and no question.
    QFile::remove(pictures[MANUAL_MENU]);
    EXPECT_EQ(CreateSOLK_Manual(), page);
    EXPECT_EQ(dialogs.questions().size(), 7u);
    const std::string second = readTextFile(page);
    EXPECT_EQ(second.find("base64,YWI1"), std::string::npos);
    EXPECT_NE(second.find("(Image will be embedded when Menu JPG is available)"), std::string::npos);
}

TEST_F(SolkManual, ACancelledQuestionWritesNoPage) {
    dialogs.pushFile(pictures[0]);
    dialogs.pushCancel();
    EXPECT_EQ(CreateSOLK_Manual(), "");
    EXPECT_FALSE(QFile::exists(QString::fromStdString(dir.path("shots/SOLK_Manual.html"))));
    EXPECT_EQ(ORVOINI().readString("UserSelections", "ModelPath", "unset"), "unset");
}

// The page in headless Chromium, inside a frame that presses "Main Menu" and
// then "Analysis & Reports" and writes down which tab shows after each press.
TEST_F(SolkManual, ItsTabsSwitchInABrowser) {
    const std::string page = dir.path("SOLK_Manual.html");
    ASSERT_TRUE(WriteSOLK_Manual(page, ManualPictures{}));
    writeTextFile(dir.path("check.html"), R"HTML(<html><body><pre id="seen"></pre>
<iframe id="m" src="SOLK_Manual.html"></iframe>
<script>
document.getElementById('m').onload = function () {
  var d = this.contentDocument, seen = [];
  var shown = function () {
    return Array.prototype.filter.call(d.querySelectorAll('.tab-content'), function (t) {
      return getComputedStyle(t).display !== 'none'; }).map(function (t) { return t.id; }).join('+'); };
  seen.push(shown());
  d.querySelectorAll('.tab-button')[2].click(); seen.push(shown());
  d.querySelectorAll('.tab-button')[5].click(); seen.push(shown());
  document.getElementById('seen').textContent = 'TABS ' + seen.join(' ');
};
</script></body></html>)HTML");
    QProcess chromium;
    chromium.start("chromium", {"--headless", "--no-sandbox", "--disable-gpu", "--no-first-run",
                                "--disable-background-networking", "--disable-component-update", "--disable-sync",
                                "--allow-file-access-from-files", "--user-data-dir=" + QString::fromStdString(dir.path("profile")),
                                "--virtual-time-budget=5000", "--dump-dom",
                                QString::fromStdString("file://" + dir.path("check.html"))});
    ASSERT_TRUE(chromium.waitForFinished(60000));
    EXPECT_NE(chromium.readAllStandardOutput().indexOf("TABS overview menu analysis"), -1);
}
