// zorvex64-cli latlon, en and geoid, run as a user would run them.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "support/CliRunner.h"
#include "support/TestSupport.h"

using testsupport::ScratchDir;
using testsupport::writeTextFile;

using testsupport::CliResult;
using testsupport::runCli;

namespace {

void writeModel(const ScratchDir& dir, bool withPrj) {
    writeTextFile(dir.path("Site.obj"), "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    if (!withPrj) return;
    testsupport::writePrjOfEpsg(dir.path("Site.PRJ"), 2039);
}

}  // namespace

// echo "178500 663500" | cs2cs -f %.9f EPSG:2039 EPSG:4326 gives 32.064021933 34.770714629.
TEST(CliGeo, LatLonAndEnThroughTheModelsPrj) {
    ScratchDir dir;
    writeModel(dir, true);
    const CliResult latlon = runCli("latlon " + dir.path("Site.obj") + " 178500 663500", dir);
    EXPECT_EQ(latlon.exitCode, 0) << latlon.err;
    EXPECT_EQ(latlon.out, "32.064021933 34.770714629\n");
    const CliResult en = runCli("en " + dir.path("Site.obj") + " 32.064021933 34.770714629", dir);
    EXPECT_EQ(en.exitCode, 0) << en.err;
    EXPECT_EQ(en.out, "178500.000 663500.000\n");
}

TEST(CliGeo, ModelWithoutPrjHasNoCoordinateSystem) {
    ScratchDir dir;
    writeModel(dir, false);
    const CliResult r = runCli("latlon " + dir.path("Site.obj") + " 178500 663500", dir);
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err, "no coordinate system\n");
}

// The build writes the raster into the data folder beside the program's.
// gdallocationinfo -valonly -wgs84 /usr/share/proj/egm96_15.gtx 34.770714629 32.064021933 gives 18.9997615814209.
TEST(CliGeo, GeoidFromTheBuildsRaster) {
    const std::filesystem::path raster =
        std::filesystem::path(ZV_CLI_PATH).parent_path().parent_path() / "data" / "GeoidSeparation.tif";
    ASSERT_TRUE(std::filesystem::exists(raster)) << raster << " is made by the target zv_geoid_raster";
    ScratchDir dir;
    const CliResult r = runCli("geoid 32.064021933 34.770714629", dir);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "19.000\n");
}
