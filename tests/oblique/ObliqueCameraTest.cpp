// World to picture through hand-built cameras, the lens terms inside the
// inner frame only, and the way back from a pixel to the mesh.
#include <gtest/gtest.h>

#include <cmath>

#include "ObliqueFixture.h"
#include "oblique/ObliqueGeometry.h"
#include "support/SceneBuilders.h"

namespace {

// A 3600 x 2400 picture on a 36 mm sensor (100 pixels a millimetre), 50 mm
// lens, principal point 0.1 mm right and 0.2 mm down of the centre: at
// picture (1810, -1220).
OBLIQUE camera(double x, double y, float z) {
    OBLIQUE O;
    O.Qxorg = x;
    O.Qyorg = y;
    O.Qzorg = z;
    O.fpc = 50;
    O.QW_mm = 36;
    O.Width = 3600;
    O.Height = 2400;
    O.QScale = 100;
    O.QPicX00 = 1800;
    O.QPicY00 = -1200;
    O.QPicX0 = 1810;
    O.QPicY0 = -1220;
    O.Xmin = 0, O.Xmax = 3600, O.Ymin = -2400, O.Ymax = 0;
    O.q11 = O.q22 = O.q33 = 1;
    return O;
}

// Looking north, 45 degrees down: the axis is (0, s, s) in (east, north,
// down), the picture's up (0, s, -s).
OBLIQUE northCamera(double x, double y, float z) {
    OBLIQUE O = camera(x, y, z);
    const double s = std::sqrt(0.5);
    O.q11 = 1, O.q12 = 0, O.q13 = 0;
    O.q21 = 0, O.q22 = s, O.q23 = -s;
    O.q31 = 0, O.q32 = s, O.q33 = s;
    return O;
}

}  // namespace

TEST(World2Pic, ANadirCameraPutsEastRightAndNorthUp) {
    // 10 m east and 10 m south, 100 m below: 5 mm right and 5 mm down of the principal point.
    double px, py;
    Ob_World2Pic(1010, 1990, 0, camera(1000, 2000, 100), px, py);
    EXPECT_NEAR(px, 1810 + 500, 1e-6);
    EXPECT_NEAR(py, -1220 - 500, 1e-6);
}

TEST(World2Pic, AQuarterTurnOfTheMatrixTurnsThePicture) {
    OBLIQUE O = camera(1000, 2000, 100);
    O.q11 = 0, O.q12 = 1, O.q21 = -1, O.q22 = 0;
    // t1 = pb = 20, t2 = -pa = -10, over t3 = 100, times 50 mm.
    double px, py;
    Ob_World2Pic(1010, 2020, 0, O, px, py);
    EXPECT_NEAR(px, 1810 + 1000, 1e-6);
    EXPECT_NEAR(py, -1220 - 500, 1e-6);
}

TEST(World2Pic, RadialTermsMoveAPointInsideTheFrame) {
    OBLIQUE O = camera(1000, 2000, 100);
    O.RadialK1 = 0.001;
    O.RadialK2 = 1e-5;
    // xcc = 5, ycc = -5: R2 = 50, Distort = 0.05 + 0.025 = 0.075, 37.5 pixels each way.
    double px, py;
    Ob_World2Pic(1010, 1990, 0, O, px, py);
    EXPECT_NEAR(px, 2310 + 37.5, 1e-4);
    EXPECT_NEAR(py, -1720 - 37.5, 1e-4);
}

TEST(World2Pic, WithoutK1TheOtherTermsHaveNoEffect) {
    OBLIQUE O = camera(1000, 2000, 100);
    O.RadialK2 = 0.01;
    O.RadialK3 = 0.01;
    double px, py;
    Ob_World2Pic(1010, 1990, 0, O, px, py);
    EXPECT_NEAR(px, 2310, 1e-6);
    EXPECT_NEAR(py, -1720, 1e-6);
}

TEST(World2Pic, TheLensTermsReachTheInnerFrameButNotBeyond) {
    // 6400 pixels over 50 mm (128 a millimetre), lens 49 mm, centre 3200:
    // the inner frame starts at 64 pixels, where xcc = -24.5 mm.
    OBLIQUE O = camera(0, 0, 100);
    O.fpc = 49;
    O.Width = 6400;
    O.Height = 4000;
    O.QScale = 128;
    O.QPicX0 = 3200;
    O.QPicY0 = -2000;
    O.Xmax = 6400;
    O.Ymin = -4000;
    O.RadialK1 = 0.0001;
    double px, py;
    Ob_World2Pic(-50, 0, 0, O, px, py);
    // R2 = 600.25, Distort = 0.060025: -24.5 x 0.060025 x 128 = -188.2384 pixels.
    EXPECT_NEAR(px, 64 - 188.2384, 1e-3);
    EXPECT_NEAR(py, -2000, 1e-9);
    // A hair further out: no lens term at all.
    Ob_World2Pic(-50.01, 0, 0, O, px, py);
    EXPECT_NEAR(px, 3200 - 49 * 0.5001 * 128, 1e-3);
}

namespace {

// A flat ground of 400 m at map height 40, the model centre far from the origin.
class Pic2WorldOnMesh : public ObliqueFixture {
protected:
    static constexpr double CX = 180000, CY = 660000, CZ = 40;
    void SetUp() override {
        ObliqueFixture::SetUp();
        testsupport::addLayer(testsupport::makeSquare("ground", 0, 0, 0, 400));
        frameState().OriginalobjectCenter[0] = CX;
        frameState().OriginalobjectCenter[1] = CY;
        frameState().OriginalobjectCenter[2] = CZ;
    }
};

}  // namespace

TEST_F(Pic2WorldOnMesh, TheAxisOfATiltedCameraMeetsTheGroundAtItsTarget) {
    const OBLIQUE O = northCamera(CX, CY - 100, CZ + 100);
    double px, py;
    Ob_World2Pic(CX, CY, CZ, O, px, py);
    EXPECT_NEAR(px, 1810, 1e-6);
    EXPECT_NEAR(py, -1220, 1e-6);
    double wx, wy, wz;
    EXPECT_NEAR(Pic2World(1810, -1220, O, wx, wy, wz), 100 * std::sqrt(2.0), 1e-3);
    EXPECT_NEAR(wx, CX, 1e-3);
    EXPECT_NEAR(wy, CY, 1e-3);
    EXPECT_NEAR(wz, CZ, 1e-3);
}

TEST_F(Pic2WorldOnMesh, Pic2WorldInvertsWorld2PicOnTheGround) {
    const OBLIQUE O = northCamera(CX + 3.25, CY - 120.5, CZ + 90);
    for (const auto& [x, y] : {std::pair{CX + 10, CY + 5}, std::pair{CX - 30, CY - 40}, std::pair{CX + 60, CY + 80}}) {
        double px, py, wx, wy, wz;
        Ob_World2Pic(x, y, CZ, O, px, py);
        ASSERT_GT(Pic2World(px, py, O, wx, wy, wz), 0);
        EXPECT_NEAR(wx, x, 1e-3);
        EXPECT_NEAR(wy, y, 1e-3);
        EXPECT_NEAR(wz, CZ, 1e-3);
    }
}

TEST_F(Pic2WorldOnMesh, ARayOffTheMeshGivesNoDistance) {
    // 32 mm above the axis the ray falls 12 degrees: it meets the ground's
    // height some 460 m ahead, beyond the 300 m of mesh in front.
    const OBLIQUE O = northCamera(CX, CY - 100, CZ + 100);
    double wx, wy, wz;
    EXPECT_EQ(Pic2World(1810, 2000, O, wx, wy, wz), 0);
}
