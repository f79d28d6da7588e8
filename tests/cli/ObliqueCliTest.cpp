// zorvex64-cli oblique, oblique-visible and pic2world on a generated site
// whose catalogue the open finds below the model.
#include <gtest/gtest.h>

#include "oblique/CatalogueWriter.h"
#include "support/CliRunner.h"
#include "support/TestSupport.h"

using testsupport::CliResult;
using testsupport::readTextFile;
using testsupport::writeTextFile;

namespace {

// A 200 m ground at height 40 around (180000, 660000), no offset, with a
// wall 30 m high 20 m east of the middle. The catalogue's nadir cameras
// (50 mm lens, 100 pixels a millimetre, 3600 x 2400 pixels) see a point d
// metres from their plan position 5000 d / height pixels from the centre.
class ObliqueCli : public ::testing::Test {
protected:
    static constexpr double CX = 180000, CY = 660000, CZ = 40;
    testsupport::ScratchDir dir;
    std::string model;

    void SetUp() override {
        model = dir.path("site/Site.obj");
        writeTextFile(model,
                      "v 179900 659900 40\nv 180100 659900 40\nv 180100 660100 40\nv 179900 660100 40\n"
                      "v 180020 659900 40\nv 180020 660100 40\nv 180020 660100 70\nv 180020 659900 70\n"
                      "g ground\nf 1 2 3 4\ng wall\nf 5 6 7 8\n");
        writeCatalogue(dir.path("site/OBLIQUE/F1/oblixoblix.shp"),
                       {camera("A.jpg", 3, 0, 100, 0, 90),       // 150 pixels west of the centre
                        camera("B.jpg", 0, 1, 100, 0, 90),       // 50 pixels below it
                        camera("C.jpg", 0, 2, 100, 180, 45),     // looks south, 100 pixels below
                        camera("D.jpg", 40, 0, 20, 0, 90)});     // outside its picture, behind the wall
    }
    TestShot camera(const std::string& name, double east, double north, double height, int azimuth, int incl) {
        TestShot s = shotAt(name, CX, CY, 50);
        s.qxorg = CX + east, s.qyorg = CY + north, s.qzorg = CZ + height;
        s.azimuth = azimuth;
        s.inclination = incl;
        writeTextFile(dir.path("site/OBLIQUE/F1/" + name), "x");
        return s;
    }
    CliResult cli(const std::string& arguments) {
        return testsupport::runCli(arguments, dir, "HOME=" + dir.path("home"));
    }
};

}  // namespace

TEST_F(ObliqueCli, ThePhotographsOfAPointRankByItsDistanceFromTheirCentre) {
    CliResult r = cli("oblique " + model + " 180000 660000 40");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out,
              " 4 Oblique images. Azimuth 0  2 relevants   \n"
              "1 OBLIQUE/F1/B.jpg 1800.0 -1250.0 50 0 90\n"
              "2 OBLIQUE/F1/A.jpg 1650.0 -1200.0 150 0 90\n");
    // The open listed the catalogue it found beside the model.
    EXPECT_EQ(readTextFile(dir.path("site/OblixOblix.txt")), dir.path("site/OBLIQUE/F1/oblixoblix.shp") + "\n");

    // Looking south the camera that looks south joins the steep ones.
    r = cli("oblique " + model + " 180000 660000 40 --view-azimuth 180");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out,
              " 4 Oblique images. Azimuth 180  3 relevants   \n"
              "1 OBLIQUE/F1/B.jpg 1800.0 -1250.0 50 0 90\n"
              "2 OBLIQUE/F1/C.jpg 1800.0 -1300.0 100 180 45\n"
              "3 OBLIQUE/F1/A.jpg 1650.0 -1200.0 150 0 90\n");
}

TEST_F(ObliqueCli, OnlyCamerasWithAFreeLineToThePointAreVisible) {
    const CliResult r = cli("oblique-visible " + model + " 180000 660000 40");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    // 100.04 m, 100.00 m and 100.02 m away; 0.01 mm a pixel x 100 m / 50 mm = 2 cm a pixel.
    EXPECT_EQ(r.out,
              "Distance,Res (cm/pix) ,Image\n"
              "  100.04     2.00    A.jpg\n"
              "  100.00     2.00    B.jpg\n"
              "  100.02     2.00    C.jpg\n");
}

TEST_F(ObliqueCli, APixelGoesBackToThePointOfTheMeshItShows) {
    CliResult r = cli("pic2world " + model + " A.jpg 1650 -1200");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "180000.000 660000.000 40.000\n");
    // 236 m west of the camera: beyond the ground.
    r = cli("pic2world " + model + " A.jpg -10000 -1200");
    EXPECT_EQ(r.out, "no hit\n");
    r = cli("pic2world " + model + " Z.jpg 1650 -1200");
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_NE(r.err.find("no photograph Z.jpg"), std::string::npos) << r.err;
}

TEST_F(ObliqueCli, WithoutACatalogueTheOpkListGivesTheNearCamerasLookingTheWayOfTheView) {
    const std::string room = dir.path("indoor/Room.obj");
    writeTextFile(room, "v 179990 659990 40\nv 180010 659990 40\nv 180010 660010 40\nf 1 2 3\n");
    // Omega 45 with phi and kappa 0 looks north, 45 degrees up; P2 is 20 m away.
    writeTextFile(dir.path("indoor/OBLIXS/OPK.TXT"),
                  "Name X Y Z Omega Phi Kappa\n\n"
                  "P1 180000 659995 45 45 0 0\n"
                  "P2 180000 659980 45 45 0 0\n");
    writeTextFile(dir.path("indoor/OBLIXS/P1.jpg"), "x");
    writeTextFile(dir.path("indoor/OBLIXS/P2.jpg"), "x");
    const CliResult r = cli("oblique " + room + " 180000 660000 40");
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, " 2 images. Azimuth 0  1 relevants\n1 OBLIXS/P1.jpg - - 5.00 0 0\n");
    EXPECT_EQ(readTextFile(dir.path("indoor/OBLIXS/Room.OPK")).substr(0, 3), "P1 ");
}

TEST_F(ObliqueCli, AModelWithoutPhotographsIsAHandledFailure) {
    writeTextFile(dir.path("bare/Bare.obj"), "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    const CliResult r = cli("oblique " + dir.path("bare/Bare.obj") + " 0 0 0");
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.out, "");
    EXPECT_NE(r.err.find("no oblique photographs"), std::string::npos) << r.err;
}
