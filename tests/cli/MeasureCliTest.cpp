// zorvex64-cli measure, digitise, billboard and measurements, run as a user
// would run them on a small site with an Offset: figures worked out by hand,
// the files each kind of outline writes, and bad input.
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QRegularExpression>
#include <string>

#include "support/CliRunner.h"
#include "support/TestSupport.h"

using testsupport::CliResult;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

// A 20 m square terrain at file height 40 with a 4 m flat roof top at 42
// over its middle, 178000 / 663000 away from the map frame.
class MeasureCli : public ::testing::Test {
protected:
    ScratchDir dir;
    std::string model;

    void SetUp() override {
        writeTextFile(dir.path("site/Site.obj"),
                      "v -10 -10 40\nv 10 -10 40\nv 10 10 40\nv -10 10 40\n"
                      "v -2 -2 42\nv 2 -2 42\nv 2 2 42\nv -2 2 42\n"
                      "g terrain\nf 1 2 3 4\ng roof\nf 5 6 7 8\n");
        writeTextFile(dir.path("site/offset.txt"), "178000.000 663000.000 0.000\n");
        model = dir.path("site/Site.obj");
    }
    CliResult run(const std::string& arguments) {
        return testsupport::runCli(arguments, dir, "HOME=" + dir.path("home"));
    }
};

}  // namespace

TEST_F(MeasureCli, ALineUnderTheRoofIsFreeAndItsFiguresAreThePlaneOnes) {
    const CliResult r = run("measure " + model + " 177995 662995 41 178005 663005 41");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "dist2d 14.14\ndist3d 14.14\ndz 0.00\nazimuth 45.00\nslope 0.00\nobstruction none\n");
}

TEST_F(MeasureCli, ARisingLineHasItsSlopeAndAzimuth) {
    // 4 m west and 3 m north, 3 m up: 5 m in plan, atan(3/5), azimuth 360 - atan(4/3).
    const CliResult r = run("measure " + model + " 177995 663000 41 177991 663003 44");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "dist2d 5.00\ndist3d 5.83\ndz 3.00\nazimuth 306.87\nslope 30.96\nobstruction none\n");
}

TEST_F(MeasureCli, AVerticalLineHasNoSlopeAndMeetsTheRoofInTheMapFrame) {
    const CliResult r = run("measure " + model + " 178000 663000 45 178000 663000 30");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out,
              "dist2d 0.00\ndist3d 15.00\ndz -15.00\nazimuth 0.00\nslope none\n"
              "obstruction 3.00 178000.00 663000.00 42.00\n");
}

TEST_F(MeasureCli, BadInputIsRefusedWithTheUsageOrTheReason) {
    EXPECT_EQ(run("measure " + model + " 1 2 3 4 5").exitCode, 2);
    EXPECT_EQ(run("measure " + model + " 1 2 3 4 5 x").exitCode, 2);
    const CliResult missing = run("measure " + dir.path("none.obj") + " 1 2 3 4 5 6");
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_NE(missing.err.find("Missing"), std::string::npos);
}

TEST_F(MeasureCli, APolygonGoesToItsFileAndItsShapeClosedOnTheMesh) {
    const std::string pol = dir.path("site/Measurements/lot.POL");
    const CliResult r = run("digitise " + model + " polygon 177995 662995 178005 662995 178005 663005 --out " + pol);
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, pol + "\n" + dir.path("site/Measurements/lot.SHP") + "\n");

    const CliResult list = run("measurements " + pol);
    ASSERT_EQ(list.exitCode, 0) << list.err;
    const QStringList lines = QString::fromStdString(list.out).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 3);
    const QRegularExpression outline("^POL_\\d+-(\\d),1,4.000,0.000,0.000,1.000,");
    EXPECT_TRUE(outline.match(lines[0]).hasMatch()) << lines[0].toStdString();
    EXPECT_TRUE(lines[0].endsWith(",177995.000,662995.000,40.000,178005.000,662995.000,40.000,10.000"));
    // The closing edge runs back to the first point.
    EXPECT_TRUE(lines[2].endsWith(",178005.000,663005.000,40.000,177995.000,662995.000,40.000,14.142"));
}

TEST_F(MeasureCli, AnAreaPrintsItsSizeAndWritesNothing) {
    const CliResult r = run("digitise " + model + " area 177995 662995 178005 662995 178005 663005");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "area 50.0\n");
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(dir.path("site/Measurements/T.POL"))));
}

TEST_F(MeasureCli, ALineIsSavedUnderATimeStampWithItsLineShape) {
    const CliResult r = run("digitise " + model + " line 177995 662995 178005 662995 178005 663005");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    const QStringList lines = QString::fromStdString(r.out).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].contains(QRegularExpression("/Measurements/\\d{8}_\\d{6}\\.LIN$"))) << r.out;
    EXPECT_EQ(lines[1], lines[0] + ".SHP");
    EXPECT_EQ(run("measurements " + lines[0].toStdString()).out.size() > 0, true);
}

TEST_F(MeasureCli, ACircleIsThirtySixSegments) {
    const std::string pol = dir.path("c.POL");
    ASSERT_EQ(run("digitise " + model + " circle 178000 663000 178004 663000 --out " + pol).exitCode, 0);
    const CliResult list = run("measurements " + pol);
    EXPECT_EQ(QString::fromStdString(list.out).count('\n'), 36);
}

TEST_F(MeasureCli, DigitisingFailsClearly) {
    const CliResult roof = run("digitise " + model + " roof 177995 662995 178005 662995");
    EXPECT_EQ(roof.exitCode, 1);
    EXPECT_NE(roof.err.find("At least 3 point needed"), std::string::npos);
    const CliResult off = run("digitise " + model + " line 177000 662995 178005 662995");
    EXPECT_EQ(off.exitCode, 1);
    EXPECT_NE(off.err.find("no mesh under 177000.000 662995.000"), std::string::npos);
    EXPECT_EQ(run("digitise " + model + " spiral 1 2 3 4").exitCode, 2);
    EXPECT_EQ(run("digitise " + model + " line 1 2 3").exitCode, 2);
    EXPECT_EQ(run("digitise " + model + " circle 1 2 3 4 5 6").exitCode, 2);
}

TEST_F(MeasureCli, ABillboardIsSavedAndListedInTheMapFrame) {
    const std::string blb = dir.path("g.BLB");
    const CliResult r = run("billboard " + model + " 178000 663000 42 Gate --out " + blb + " --static");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    const QRegularExpression size("^width (\\d+) height (\\d+)\n$");
    const QRegularExpressionMatch m = size.match(QString::fromStdString(r.out));
    ASSERT_TRUE(m.hasMatch()) << r.out;
    const CliResult list = run("measurements " + blb);
    ASSERT_EQ(list.exitCode, 0) << list.err;
    EXPECT_TRUE(QString::fromStdString(list.out)
                    .startsWith("Gate," + m.captured(1) + "," + m.captured(2) + ",1,1,1,178000.000,663000.000,42.000,"))
        << list.out;
    EXPECT_TRUE(QString::fromStdString(list.out).endsWith(",2.000\n"));
}

TEST_F(MeasureCli, AnIconBillboardCarriesItsIconInItsIdAndASphereIsNoBillboard) {
    const std::string blb = dir.path("i.BLB");
    ASSERT_EQ(run("billboard " + model + " 178000 663000 42 Post --out " + blb + " --icon flag").exitCode, 0);
    EXPECT_TRUE(QString::fromStdString(run("measurements " + blb).out)
                    .contains(QRegularExpression("^Post\\|FLAG\\d+,")));
    const CliResult sphere = run("billboard " + model + " 178000 663000 42 Ball --out " + blb + " --icon SPHERE");
    EXPECT_EQ(sphere.exitCode, 1);
    EXPECT_NE(sphere.err.find("sphere marker"), std::string::npos);
    EXPECT_EQ(run("billboard " + model + " 178000 663000 42 Post --out " + blb + " --icon NOSUCH").exitCode, 1);
    EXPECT_EQ(run("billboard " + model + " 178000 663000 42 Post").exitCode, 2);
    EXPECT_EQ(run("billboard " + model + " 178000 663000 42 Post --out x --colour red").exitCode, 2);
    EXPECT_EQ(run("measurements " + dir.path("none.MES")).exitCode, 1);
}
