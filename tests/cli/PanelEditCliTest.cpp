// zorvex64-cli panel-edit, panels-save, panels-restore and roof on a small
// site with an Offset: the files each action writes or sets aside, the
// panels' new places read back from their files, the roof plane's figures
// worked out by hand, and bad input.
#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringList>
#include <string>

#include "support/CliRunner.h"
#include "support/TestSupport.h"

using testsupport::CliResult;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

// Terrain at file height 40 with a flat roof at 42 over x, y in -5..5, and
// a roof rising 30 degrees to the north over x 20..30, y -5..5; the map frame
// is 178000 / 663000 away. Panels 1/7, 2/7, 3/7 lie side by side on the flat
// roof (one group), 4/9 apart from them.
class PanelEditCli : public ::testing::Test {
protected:
    ScratchDir dir;
    std::string model, panels;

    void SetUp() override {
        writeTextFile(dir.path("site/Site.obj"),
                      "v -10 -10 40\nv 10 -10 40\nv 10 10 40\nv -10 10 40\n"
                      "v -5 -5 42\nv 5 -5 42\nv 5 5 42\nv -5 5 42\n"
                      "v 20 -5 40\nv 30 -5 40\nv 30 5 45.773502692\nv 20 5 45.773502692\n"
                      "g terrain\nf 1 2 3 4\ng roof\nf 5 6 7 8\ng slope\nf 9 10 11 12\n");
        writeTextFile(dir.path("site/offset.txt"), "178000.000 663000.000 0.000\n");
        model = dir.path("site/Site.obj");
        panels = dir.path("site/PANELS/");
        QDir().mkpath(QString::fromStdString(panels));
        writePanel("1/7", 177996.0, 662996.0);
        writePanel("2/7", 177997.05, 662996.0);
        writePanel("3/7", 177998.1, 662996.0);
        writePanel("4/9", 177996.0, 663002.0);
    }
    CliResult run(const std::string& arguments) {
        return testsupport::runCli(arguments, dir, "HOME=" + dir.path("home"));
    }
    // A flat 1 x 2 m panel 10 cm above the flat roof, south-west corner at (x, y).
    void writePanel(const std::string& name, double x, double y) {
        const std::string file = panels + "Panel-" + QString::fromStdString(name).replace('/', '_').toStdString() + ".dae";
        const QString corners = QString::asprintf("%.3f,%.3f,42.1;%.3f,%.3f,42.1;%.3f,%.3f,42.1;%.3f,%.3f,42.1", x, y, x,
                                                  y + 2, x + 1, y + 2, x + 1, y);
        const CliResult r = run("panel-write " + file + " --name " + name + " --corners '" + corners.toStdString() + "'");
        ASSERT_EQ(r.exitCode, 0) << r.err;
    }
    // CenterX, CenterY, CenterZ of a panel file, as panels-info lists them.
    std::string centre(const std::string& leaf) {
        const CliResult r = run("panels-info " + panels + leaf);
        EXPECT_EQ(r.exitCode, 0) << r.err;
        const QString csv = QString::fromStdString(readTextFile(r.out.substr(0, r.out.size() - 1)));
        const QStringList row = csv.split('\n', Qt::SkipEmptyParts).value(1).split(',');
        return row.mid(row.size() - 3).join(' ').toStdString();
    }
    static std::string readTextFile(const std::string& path) { return testsupport::readTextFile(path); }
    QStringList panelFolder() const {
        return QDir(QString::fromStdString(panels)).entryList(QDir::Files, QDir::Name);
    }
};

TEST_F(PanelEditCli, AMovedPanelIsWrittenAloneWithItsNewCentre) {
    const CliResult r = run("panel-edit " + model + " 1/7 --move 0.5 0.25 0");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "written " + panels + "Panel-1_7.dae\n");
    EXPECT_EQ(centre("Panel-1_7.dae"), "177997.000000 662997.250000 42.100000");
    EXPECT_EQ(centre("Panel-2_7.dae"), "177997.550000 662997.000000 42.100000");
}

TEST_F(PanelEditCli, AGroupIsLiftedTogetherAndTheOtherPanelStays) {
    const CliResult r = run("panel-edit " + model + " 2/7 --lift 0.3 --group");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "written " + panels + "Panel-1_7.dae\nwritten " + panels + "Panel-2_7.dae\nwritten " + panels +
                         "Panel-3_7.dae\n");
    EXPECT_EQ(centre("Panel-3_7.dae"), "177998.600000 662997.000000 42.400000");
}

TEST_F(PanelEditCli, DeletingAGroupSetsItsFilesAside) {
    const CliResult r = run("panel-edit " + model + " 3/7 --delete --group");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "deleted " + panels + "Panel-1_7.dae\ndeleted " + panels + "Panel-2_7.dae\ndeleted " + panels +
                         "Panel-3_7.dae\n");
    EXPECT_EQ(panelFolder(), (QStringList{"Panel-1_7.DA-", "Panel-2_7.DA-", "Panel-3_7.DA-", "Panel-4_9.dae"}));
}

// (9 + 555) % 988 + 1 = 565, numbered above the highest panel.
TEST_F(PanelEditCli, ADuplicateStandsAtTheTargetInAGroupOfItsOwn) {
    const CliResult r = run("panel-edit " + model + " 4/9 --duplicate 177999 663003 42.1");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "written " + panels + "Panel-5_565.dae\n");
    EXPECT_EQ(centre("Panel-5_565.dae"), "177999.000000 663003.000000 42.100000");
}

TEST_F(PanelEditCli, ARestoreBringsTheSavedPanelsBackAndSetsNewerOnesAside) {
    const CliResult saved = run("panels-save " + model);
    ASSERT_EQ(saved.exitCode, 0) << saved.err;
    const QString file = QString::fromStdString(saved.out).trimmed();
    EXPECT_TRUE(QRegularExpression("/site/Panels_\\d{8}_\\d{6}\\.dae$").match(file).hasMatch()) << saved.out;

    ASSERT_EQ(run("panel-edit " + model + " 1/7 --delete --group").exitCode, 0);
    ASSERT_EQ(run("panel-edit " + model + " 4/9 --move 1 0 0").exitCode, 0);
    ASSERT_EQ(run("panel-edit " + model + " 4/9 --duplicate 177999 663003 42.1").exitCode, 0);

    const CliResult r = run("panels-restore " + model + " " + file.toStdString());
    ASSERT_EQ(r.exitCode, 0) << r.err;
    const QStringList lines = QString::fromStdString(r.out).split('\n', Qt::SkipEmptyParts);
    EXPECT_EQ(lines.size(), 5);
    EXPECT_TRUE(lines.contains(QString::fromStdString("written " + panels + "Panel-1_7.dae")));
    EXPECT_TRUE(lines.contains(QString::fromStdString("written " + panels + "Panel-4_9.dae")));
    EXPECT_EQ(lines.last().toStdString(), "deleted " + panels + "Panel-5_565.dae");
    EXPECT_EQ(centre("Panel-4_9.dae"), "177996.500000 663003.000000 42.100000");
    EXPECT_EQ(centre("Panel-2_7.dae"), "177997.550000 662997.000000 42.100000");
    EXPECT_TRUE(panelFolder().contains("Panel-5_565.DA-"));
}

TEST_F(PanelEditCli, SavingWithoutPanelsSaysSo) {
    QDir(QString::fromStdString(panels)).removeRecursively();
    const CliResult r = run("panels-save " + model);
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_NE(r.err.find("No panels to save"), std::string::npos) << r.err;
}

TEST_F(PanelEditCli, BadInputIsRefusedWithTheUsageOrTheReason) {
    EXPECT_EQ(run("panel-edit " + model + " 1/7").exitCode, 2);
    EXPECT_EQ(run("panel-edit " + model + " 1/7 --delete --lift 1").exitCode, 2);
    EXPECT_EQ(run("panel-edit " + model + " 1/7 --move 1 2").exitCode, 2);
    EXPECT_EQ(run("panel-edit " + model + " 1/7 --move 1 x 2").exitCode, 2);
    EXPECT_EQ(run("panel-edit " + model + " 1/7 --duplicate 1 2 3 --group").exitCode, 2);
    const CliResult unknown = run("panel-edit " + model + " 8/7 --delete");
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_NE(unknown.err.find("error: no panel 8/7"), std::string::npos) << unknown.err;
    EXPECT_EQ(run("panels-restore " + model).exitCode, 2);
    const CliResult missing = run("panels-restore " + model + " " + dir.path("site/Panels_none.dae"));
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_NE(missing.err.find("Missing"), std::string::npos);
    // Nothing was touched by the refusals.
    EXPECT_EQ(panelFolder(), (QStringList{"Panel-1_7.dae", "Panel-2_7.dae", "Panel-3_7.dae", "Panel-4_9.dae"}));
}

// 8 x 8 m in plan on a 30 degree roof facing south: 64 / cos 30 on the slope.
TEST_F(PanelEditCli, ARoofOutlineOnASlopeGivesItsPlaneAndFiles) {
    const CliResult r = run("roof " + model + " 178021 662996 178029 662996 178029 663004 178021 663004");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    const QStringList lines = QString::fromStdString(r.out).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 9) << r.out;
    EXPECT_EQ(lines.mid(0, 6).join('\n').toStdString(),
              "normal 0.0000 -0.5000 0.8660\ntilt 30.00\nazimuth 180.00\narea 73.90\nplan-area 64.00\n"
              "coplanarity 0.000");
    EXPECT_TRUE(QRegularExpression("^outline .*/site/Measurements/\\d{8}_\\d{6}\\.POL$").match(lines[6]).hasMatch());
    EXPECT_TRUE(QRegularExpression("^shape .*/site/Measurements/\\d{8}_\\d{6}\\.SHP$").match(lines[7]).hasMatch());
    const QRegularExpression roof("^roof (.*/site/PANELS/\\d+_FlatRoof_1\\.DAE)$");
    const auto match = roof.match(lines[8]);
    ASSERT_TRUE(match.hasMatch()) << lines[8].toStdString();
    EXPECT_TRUE(QFileInfo::exists(match.captured(1)));
}

TEST_F(PanelEditCli, AFlatRoofOutlineIsLevelAndFacesNowhere) {
    const CliResult r = run("roof " + model + " 177997 662997 178001 662997 178001 663000 177997 663000");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out.substr(0, r.out.find("coplanarity")),
              "normal 0.0000 0.0000 1.0000\ntilt 0.00\nazimuth 0.00\narea 12.00\nplan-area 12.00\n");
}

TEST_F(PanelEditCli, ARoofNeedsFourPointsOnTheMesh) {
    EXPECT_EQ(run("roof " + model + " 177997 662997 178001 662997 178001 663000").exitCode, 2);
    EXPECT_EQ(run("roof " + model + " 177997 662997 178001 662997 178001 663000 177997").exitCode, 2);
    const CliResult off = run("roof " + model + " 177997 662997 178001 662997 178001 663000 178100 663100");
    EXPECT_EQ(off.exitCode, 1);
    EXPECT_NE(off.err.find("error: no mesh under 178100.000 663100.000"), std::string::npos) << off.err;
}

}  // namespace
