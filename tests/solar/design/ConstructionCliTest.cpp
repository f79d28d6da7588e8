// zorvex64-cli construction and svg, run as a script would run them.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/CliRunner.h"
#include "support/TestSupport.h"

using testsupport::CliResult;
using testsupport::readTextFile;
using testsupport::runCli;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

TEST(ConstructionCli, SvgPrintsThePathAndRefusesBadArguments) {
    ScratchDir dir;
    const std::string csv = dir.path("frame.csv");
    writeTextFile(csv, "0,0,100,0\n");
    const CliResult ok = runCli("svg " + csv + " --header 'Frame A' --footer Customer", dir);
    ASSERT_EQ(ok.exitCode, 0) << ok.err;
    EXPECT_EQ(ok.out, dir.path("frame.svg") + "\n");
    const std::string svg = readTextFile(dir.path("frame.svg"));
    EXPECT_NE(svg.find(">Frame A</text>"), std::string::npos);
    EXPECT_NE(svg.find(">Customer</text>"), std::string::npos);

    EXPECT_EQ(runCli("svg", dir).exitCode, 2);
    EXPECT_EQ(runCli("svg " + csv + " --colour red", dir).exitCode, 2);
    EXPECT_EQ(runCli("svg " + dir.path("none.csv"), dir).exitCode, 1);
    writeTextFile(dir.path("comments.csv"), "// nothing\n");
    EXPECT_EQ(runCli("svg " + dir.path("comments.csv"), dir).exitCode, 1);
}

TEST(ConstructionCli, FlatRoofPanelsGiveTableFrameAndDrawing) {
    ScratchDir dir;
    const std::filesystem::path site = std::filesystem::path(dir.root()) / "site";
    std::filesystem::copy(std::string(ZV_SOURCE_DIR) + "/samples/site", site, std::filesystem::copy_options::recursive);
    std::filesystem::remove_all(site / "PANELS");  // the site's own placed panels
    const std::string model = (site / "DemoSite.obj").string();
    EXPECT_EQ(runCli("construction " + model, dir).exitCode, 1);  // no panels yet

    // Two portrait panels side by side, 8 degrees up to the north, a metre above the ground.
    const char* corners[2] = {
        "'178500,663500,45.5;178500,663501.6835,45.7366;178501,663501.6835,45.7366;178501,663500,45.5'",
        "'178501.02,663500,45.5;178501.02,663501.6835,45.7366;178502.02,663501.6835,45.7366;178502.02,663500,45.5'"};
    for (int k = 0; k < 2; ++k) {
        const std::string name = std::to_string(k + 1) + "/7";
        const CliResult w = runCli("panel-write " + (site / "PANELS").string() + "/Panel-" + std::to_string(k + 1) +
                                       "_7.dae --name " + name + " --corners " + corners[k],
                                   dir);
        ASSERT_EQ(w.exitCode, 0) << w.err;
    }
    const CliResult r = runCli("construction " + model, dir);
    ASSERT_EQ(r.exitCode, 0) << r.err;
    const std::string table = (site / "DemoSite_GroupA_P(2).csv").string();
    const std::string frame = (site / "Reports" / "A_P(2).csv").string();
    const std::string svg = (site / "Reports" / "A_P(2).svg").string();
    EXPECT_EQ(r.out, "group " + table + "\nframe " + frame + "\nsvg " + svg + "\n");
    EXPECT_EQ(readTextFile(table), "0,1\n");
    EXPECT_EQ(readTextFile(frame).rfind("// ===================== CSV for CSV2SVG =====================\n", 0), 0u);
    EXPECT_NE(readTextFile(svg).find("<g id='viewport'"), std::string::npos);
}

}  // namespace
