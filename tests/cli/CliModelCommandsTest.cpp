// zorvex64-cli info, ray and ground, run as a user would run them.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "support/CliRunner.h"
#include "support/TestSupport.h"

using testsupport::ScratchDir;
using testsupport::writeTextFile;

using testsupport::CliResult;
using testsupport::runCli;

namespace {

// A 20 m square terrain at file height 40 with a 2 m high box roof over its
// middle, 178000 / 663000 away from the map frame.
void writeSite(const ScratchDir& dir) {
    writeTextFile(dir.path("site/Site.obj"),
                  "# Site\n"
                  "v -10 -10 40\nv 10 -10 40\nv 10 10 40\nv -10 10 40\n"
                  "v -2 -2 42\nv 2 -2 42\nv 2 2 42\nv -2 2 42\n"
                  "g terrain\nf 1 2 3 4\ng roof\nf 5 6 7 8\n");
    writeTextFile(dir.path("site/offset.txt"), "178000.000 663000.000 0.000\n");
    testsupport::writePrjOfEpsg(dir.path("site/Site.PRJ"), 2039);
}

}  // namespace

TEST(CliInfo, PrintsTheFixedKeysOfAModel) {
    ScratchDir dir;
    writeSite(dir);
    const CliResult r = runCli("info " + dir.path("site/Site.obj"), dir);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out,
              "layers: 2\n"
              "vertices: 8\n"
              "faces: 4\n"
              "bounds_file: -10.000 10.000 -10.000 10.000 40.000 42.000\n"
              "offset: 178000.000 663000.000 0.000\n"
              "bounds_map: 177990.000 178010.000 662990.000 663010.000 40.000 42.000\n"
              "epsg: 2039\n");
}

TEST(CliInfo, ModelWithoutSideFilesHasZeroOffsetAndNoSystem) {
    ScratchDir dir;
    writeTextFile(dir.path("m.obj"), "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    const CliResult r = runCli("info " + dir.path("m.obj"), dir);
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_NE(r.out.find("offset: 0.000 0.000 0.000\n"), std::string::npos);
    EXPECT_NE(r.out.find("epsg: -1\n"), std::string::npos);
}

TEST(CliInfo, AnOffsetThatIsNotFiniteIsRefusedAndTheModelStillOpens) {
    ScratchDir dir;
    writeTextFile(dir.path("m.obj"), "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    writeTextFile(dir.path("offset.txt"), "1e400,2,3\n");
    const CliResult r = runCli("info " + dir.path("m.obj"), dir);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_NE(r.out.find("offset: 0.000 0.000 0.000\nbounds_map: 0.000 1.000 0.000 1.000 0.000 0.000\n"),
              std::string::npos)
        << r.out;
    EXPECT_NE(r.err.find("offset.txt: the line \"1e400,2,3\" holds \"1e400\""), std::string::npos) << r.err;
}

TEST(CliRay, ReportsTheHitInTheMapFrame) {
    ScratchDir dir;
    writeSite(dir);
    const std::string model = dir.path("site/Site.obj");
    CliResult r = runCli("ray " + model + " 178000.5 663000.25 100 178000.5 663000.25 0", dir);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "hit 178000.500 663000.250 42.000\n");
    // Skipping past the roof reaches the terrain.
    r = runCli("ray " + model + " 178000.5 663000.25 43 178000.5 663000.25 0 --skip 1.5", dir);
    EXPECT_EQ(r.out, "hit 178000.500 663000.250 40.000\n");
    r = runCli("ray " + model + " 178050 663050 100 178050 663050 0 --first", dir);
    EXPECT_EQ(r.out, "no hit\n");
}

TEST(CliGround, GivesTheHighestSurfaceOrMinus9999) {
    ScratchDir dir;
    writeSite(dir);
    const std::string model = dir.path("site/Site.obj");
    EXPECT_EQ(runCli("ground " + model + " 178001 663001", dir).out, "42.000\n");
    EXPECT_EQ(runCli("ground " + model + " 178008 662995", dir).out, "40.000\n");
    EXPECT_EQ(runCli("ground " + model + " 0 0", dir).out, "-9999\n");
}

TEST(CliErrors, BadArgumentsExitTwoAndFailuresExitOne) {
    ScratchDir dir;
    writeSite(dir);
    const std::string model = dir.path("site/Site.obj");
    EXPECT_EQ(runCli("", dir).exitCode, 2);
    EXPECT_EQ(runCli("frobnicate", dir).exitCode, 2);
    EXPECT_EQ(runCli("ray " + model + " 1 2 3 4 5", dir).exitCode, 2);
    CliResult r = runCli("ray " + model + " 1 2 3 4 5 6x", dir);
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_NE(r.err.find("not a number: 6x"), std::string::npos);
    EXPECT_EQ(runCli("ray " + model + " 1 2 3 4 5 6 --skip", dir).exitCode, 2);
    EXPECT_EQ(runCli("ground " + model + " nan 1", dir).exitCode, 2);
    r = runCli("info " + dir.path("nothing.obj"), dir);
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_NE(r.err.find("Missing\n"), std::string::npos);
    writeTextFile(dir.path("broken.obj"), "v 1 2\n");
    r = runCli("info " + dir.path("broken.obj"), dir);
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_NE(r.err.find("bad vertex at line 1"), std::string::npos);
    EXPECT_EQ(r.out, "");
}

TEST(CliErrors, TheCommandListNamesEachCommandOnce) {
    ScratchDir dir;
    const CliResult r = runCli("--help", dir);
    EXPECT_EQ(r.exitCode, 0);
    // The program's name stands in the heading only; each line is "  NAME ARGUMENTS".
    std::size_t named = 0;
    for (std::size_t at = r.out.find("zorvex64-cli"); at != std::string::npos; at = r.out.find("zorvex64-cli", at + 1))
        ++named;
    EXPECT_EQ(named, 1u) << r.out;
    EXPECT_NE(r.out.find("\n  place MODEL X1 Y1 Z1 X2 Y2 Z2 X3 Y3 Z3 --module NAME"), std::string::npos) << r.out;
}
