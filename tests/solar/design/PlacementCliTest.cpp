// zorvex64-cli place on a flat square roof at z 5, as a script would run it.
#include <gtest/gtest.h>

#include <QDir>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include "support/CliRunner.h"
#include "support/TestSupport.h"

namespace {

using testsupport::CliResult;
using testsupport::runCli;
using testsupport::ScratchDir;

const char* const kModule = " --module 'ZV-M54 410 Black'";

class PlacementCli : public ::testing::Test {
protected:
    void SetUp() override {
        testsupport::writeTextFile(dir.path("roof.obj"),
                                   "v -10 -10 5\nv 10 -10 5\nv 10 10 5\nv -10 10 5\nf 1 2 3 4\n");
    }
    CliResult place(const std::string& arguments) {
        return runCli("place " + dir.path("roof.obj") + " " + arguments, dir, "HOME=" + dir.root());
    }
    ScratchDir dir;
};

// Baseline 4.7 m: floor(4.72 / 1.154) = 4 panels of 1.134 m, 8 degrees above
// the flat roof: the upper edge 1.722 cos 8 = 1.705 m back and 1.722 sin 8 =
// 0.240 m up.
TEST_F(PlacementCli, PrintsOneLinePerPanelWrittenIntoPanels) {
    const CliResult r = place(std::string("0 0 5 4.7 0 5 0 2 5 --lift 0") + kModule);
    ASSERT_EQ(r.exitCode, 0) << r.err;
    const QStringList lines = QString::fromStdString(r.out).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 4);
    const QString panels = QString::fromStdString(dir.path("PANELS/"));
    const QRegularExpression form("^(\\d+)/(\\d+) (\\S+) 8\\.00 180\\.00 (\\S+)$");
    for (int i = 0; i < 4; ++i) {
        const auto m = form.match(lines[i]);
        ASSERT_TRUE(m.hasMatch()) << lines[i].toStdString();
        EXPECT_EQ(m.captured(1).toInt(), i + 1);
        EXPECT_EQ(m.captured(3), panels + "Panel-" + m.captured(1) + "_" + m.captured(2) + ".dae");
        const double x = i * 1.154;
        EXPECT_EQ(m.captured(4),
                  QString::asprintf("%.3f,0.000,5.000;%.3f,1.705,5.240;%.3f,1.705,5.240;%.3f,0.000,5.000", x, x,
                                    x + 1.134, x + 1.134));
    }
    EXPECT_EQ(QDir(panels).entryList({"*.dae"}).size(), 4);

    // A second placement numbers on from the panels already in the folder.
    const CliResult again = place(std::string("0 5 5 2 5 5 0 7 5") + kModule);
    ASSERT_EQ(again.exitCode, 0) << again.err;
    EXPECT_EQ(QString::fromStdString(again.out).left(2), "5/");
}

TEST_F(PlacementCli, ASlopingTiledBaselineNeedsAnAnswer) {
    const std::string points = "0 0 5 4 0 5.2 0 3 6.9 --roof tile";
    const CliResult r = place(points + kModule);
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.out.empty());
    EXPECT_NE(r.err.find("Please select what to fix"), std::string::npos);
    EXPECT_TRUE(QDir(QString::fromStdString(dir.path("PANELS"))).entryList({"*.dae"}).isEmpty());

    const CliResult fixed = place(points + " --tilt 35 --fix tilt" + kModule);
    ASSERT_EQ(fixed.exitCode, 0) << fixed.err;
}

TEST_F(PlacementCli, BadArgumentsAndUnknownModules) {
    EXPECT_EQ(place("0 0 5 4.7 0 5 0 2").exitCode, 2);
    EXPECT_EQ(place(std::string("0 0 5 4.7 0 5 0 2 5 --pairing triple") + kModule).exitCode, 2);
    EXPECT_EQ(place("0 0 5 4.7 0 5 0 2 5 --module 'No Such Module'").exitCode, 1);
    EXPECT_EQ(place(std::string("0 0 5 1 1 5 2 2 5") + kModule).exitCode, 1);  // collinear
}

}  // namespace
