// zorvex64-cli rectify and convert, run as a user would: the files they
// write for a small site worked out by hand, and a failure told on stderr.
#include <gtest/gtest.h>

#include <string>

#include "support/CliRunner.h"
#include "support/TestSupport.h"

using testsupport::CliResult;
using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

TEST(RectifyCli, RectifyAndConvertWriteTheirOutputsAndTellAFailedFit) {
    ScratchDir dir;
    const std::string home = "HOME=" + dir.path("home");
    // Local (x, y, z) -> map (1000 - 2y, 2000 + 2x, 50 + 2z); the vertex at
    // x = 30 lands 51 m from the pairs' centre, so --radius 40 drops its face.
    writeTextFile(dir.path("in.obj"), "v 0.0 0 0\nv 10 0 0\nv 10 10 2\nv 30 0 0\nf 1 2 3\nf 2 4 3\n");
    writeTextFile(dir.path("pairs.onc"), "0 0 0 1000 2000 50\n10 0 0 1000 2020 50\n10 10 2 980 2020 54\n"
                                         "0 10 2 980 2000 54\n");

    CliResult r = testsupport::runCli(
        "rectify " + dir.path("in.obj") + " " + dir.path("pairs.onc") + " " + dir.path("out.obj") + " --radius 40", dir,
        home);
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, dir.path("out.obj") + "\n" + dir.path("out.obj.rectify.log") + "\n");
    EXPECT_EQ(readTextFile(dir.path("out.obj")),
              "# Transformed using full 3D Procrustes (uniform scale + 3D rotation + translation)\n"
              "v 1000.0 2000.0 50.0\nv 1000.0 2020.0 50.0\nv 980.0 2020.0 54.0\nv 1000.0 2060.0 50.0\nf 1 2 3\n");
    EXPECT_NE(readTextFile(dir.path("out.obj.rectify.log")).find("  Faces dropped (outside 40.0m): 1\n"),
              std::string::npos);

    // Two pairs only.
    writeTextFile(dir.path("two.onc"), "0 0 0 1000 2000 50\n10 0 0 1000 2020 50\n");
    r = testsupport::runCli("rectify " + dir.path("in.obj") + " " + dir.path("two.onc") + " " + dir.path("bad.obj"),
                            dir, home);
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.out, "");
    EXPECT_NE(r.err.find("ERROR: need >=3 valid pairs, got 2\n"), std::string::npos) << r.err;
    EXPECT_EQ(testsupport::runCli("rectify " + dir.path("in.obj") + " --radius x", dir, home).exitCode, 2);

    // Convert takes the first three pairs: scale 2 from both sides, offset
    // (1000, 2000, 50) from the first pair, no turn at all.
    r = testsupport::runCli("convert " + dir.path("in.obj") + " " + dir.path("pairs.onc") + " " +
                                dir.path("conv.obj"),
                            dir, home);
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, dir.path("conv.obj") + "\n");
    EXPECT_EQ(readTextFile(dir.path("conv.obj")),
              "v 1000.00 2000.00 50.00\nv 1020.00 2000.00 50.00\nv 1020.00 2020.00 54.00\nv 1060.00 2000.00 50.00\n"
              "f 1 2 3\nf 2 4 3\n");
    EXPECT_NE(r.err.find("Continue with transformation?"), std::string::npos);
    EXPECT_EQ(testsupport::runCli("convert " + dir.path("in.obj"), dir, home).exitCode, 2);
}
