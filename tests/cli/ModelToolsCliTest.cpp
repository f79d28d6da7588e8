// zorvex64-cli crop, mark, clean and export on a small site with an Offset:
// the files each writes, as the model menu writes them.
#include <gtest/gtest.h>

#include <QFileInfo>
#include <string>

#include "support/CliRunner.h"
#include "support/TestSupport.h"

using testsupport::CliResult;
using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

// A 20 m terrain square at 40 (two long triangles) and a 4 m roof at 42
// (two short ones), 178000 / 663000 away from the map frame.
class ModelToolsCli : public ::testing::Test {
protected:
    ScratchDir dir;
    std::string model;

    void SetUp() override {
        writeTextFile(dir.path("site/Site.obj"),
                      "v -10 -10 40\nv 10 -10 40\nv 10 10 40\nv -10 10 40\n"
                      "v -2 -2 42\nv 2 -2 42\nv 2 2 42\nv -2 2 42\n"
                      "g terrain\nf 1 2 3\nf 1 3 4\ng roof\nf 5 6 7\nf 5 7 8\n");
        writeTextFile(dir.path("site/offset.txt"), "178000.000 663000.000 0.000\n");
        writeTextFile(dir.path("site/Site.prj"), "PROJCS[\"x\"]");
        model = dir.path("site/Site.obj");
    }
    CliResult run(const std::string& arguments) {
        return testsupport::runCli(arguments, dir, "HOME=" + dir.path("home"));
    }
    bool exists(const std::string& name) const { return QFileInfo::exists(QString::fromStdString(dir.path(name))); }
};

}  // namespace

TEST_F(ModelToolsCli, CropByMapPointsKeepsTheRoofAndWritesItsOutline) {
    writeTextFile(dir.path("outline.txt"),
                  "177997 662997 42\n178003 662997 42\n178003 663003 42\n177997 663003 42\n");
    const CliResult r = run("crop " + model + " roof " + dir.path("outline.txt"));
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, dir.path("site/Site_Site_roof_Cropped.obj") + "\nfaces 2 of 4\n");
    const std::string cropped = readTextFile(dir.path("site/Site_Site_roof_Cropped.obj"));
    EXPECT_EQ(cropped.substr(cropped.find("f ")), "f 5 6 7\nf 5 7 8\n");
    EXPECT_EQ(readTextFile(dir.path("site/Site_Site_roof_Cropped.LIN")),
              "            177997.0  662997.0     42.00 11 59\n"
              "            178003.0  662997.0     42.00 11 59\n"
              "            178003.0  663003.0     42.00 11 59\n"
              "            177997.0  663003.0     42.00 11 59\n"
              "            177997.0  662997.0     42.00 11 59\n");
    EXPECT_EQ(readTextFile(dir.path("site/Site_Site_roof_Cropped.PRJ")), "PROJCS[\"x\"]");
}

TEST_F(ModelToolsCli, CropToTheMarginDropsLongFacesAndWritesNoOutline) {
    const CliResult r = run("crop " + model + " edge --margin");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, dir.path("site/Site_Site_edge_Cropped.obj") + "\nfaces 2 of 4\n");
    EXPECT_FALSE(exists("site/Site_Site_edge_Cropped.LIN"));
}

TEST_F(ModelToolsCli, MarkedRegionAboveTheRoofCleansTheRoofAway) {
    CliResult r = run("mark " + model + " above 178000 663000 42 --range 5");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, dir.path("site/Site_Todelete.txt") + "\nregions 1\n");
    EXPECT_EQ(readTextFile(dir.path("site/Site_Todelete.txt")), "2 178000.00 663000.00 42.00 5.00\n");
    r = run("clean " + model + " tidy");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, dir.path("site/Site_tidy_Cleaned.obj") + "\nfaces cleaned 2 of 4\n");
    const std::string cleaned = readTextFile(dir.path("site/Site_tidy_Cleaned.obj"));
    EXPECT_EQ(cleaned.substr(cleaned.find("f ")), "f 1 2 3\nf 1 3 4\ng roof\n");
}

TEST_F(ModelToolsCli, CleanWithoutRegionsFailsAndWritesNothing) {
    const CliResult r = run("clean " + model + " tidy");
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_FALSE(exists("site/Site_tidy_Cleaned.obj"));
}

TEST_F(ModelToolsCli, ExportWritesRealCoordinatesAndNamesAColladaByItsPanels) {
    CliResult r = run("export " + model + " " + dir.path("out/copy.obj"));
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_NE(readTextFile(dir.path("out/copy.obj")).find("v -2.000000 -2.000000 42.000000\n"), std::string::npos);
    EXPECT_EQ(readTextFile(dir.path("out/copy.PRJ")), "PROJCS[\"x\"]");
    r = run("export " + model + " " + dir.path("out/scene.dae"));
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, dir.path("out/scene_(0).DAE") + "\n");
}
