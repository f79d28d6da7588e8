// Fitting roof clicks to a plane: the tilted roof worked by hand, the
// uneven roof forced level, the tiled roof with the slope given, and the
// collinear clicks that give no plane.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "app/services/DialogService.h"
#include "solar/design/PanelStore.h"
#include "solar/design/RoofFlatPlane.h"
#include "support/TestSupport.h"

namespace {

PLANE planeOf(std::initializer_list<TGIS_Point3D> points) {
    PLANE plane;
    for (const TGIS_Point3D& p : points) plane.P[plane.Npoints++] = p;
    return plane;
}

// A roof rising 3 m over 4 m northwards: z = 2 + 0.75 (y - 200). Its normal is
// (0, -3, 4) / 5 = (0, -0.6, 0.8), its tilt atan(0.75) = 36.87 degrees.
// d adds a twist (+d, -d, +d, -d at the corners) that no plane can follow,
// so the fit stays the same and d is the largest distance from it.
PLANE tiltedRoof(double d, bool closed) {
    PLANE roof = planeOf({{100, 200, 2 + d, 0}, {108, 200, 2 - d, 0}, {108, 204, 5 + d, 0}, {100, 204, 5 - d, 0}});
    if (closed) roof.P[roof.Npoints++] = roof.P[0];
    return roof;
}

class FlatPlaneTest : public ::testing::Test {
protected:
    void SetUp() override {
        resetPanelStore();
        resetRoofState();
        panelStore().ModelFolder = QString::fromStdString(dir.path(""));
        installDialogService(&dialogs);
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetPanelStore();
        resetRoofState();
    }
    testsupport::ScratchDir dir;
    testsupport::EngineFixtureGuard engine;  // an empty scene: no texture to measure
    ScriptedDialogService dialogs;
};

TEST_F(FlatPlaneTest, TiltedRoofIsLiftedAlongItsNormal) {
    PLANE roof = tiltedRoof(0, true);
    const PLANE flat = FlatPlane(&roof, 0.2f);
    ASSERT_EQ(flat.Npoints, 5);
    const double lift = static_cast<double>(0.2f);
    const double nx = 0, ny = -0.6, nz = 0.8;
    const double tilt = std::acos(nz) * 180 / std::numbers::pi;
    EXPECT_NEAR(tilt, 36.8699, 1e-4);
    for (int i = 0; i < 5; ++i) {
        const double expected[3] = {roof.P[i].X + nx * lift, roof.P[i].Y + ny * lift, roof.P[i].Z + nz * lift};
        EXPECT_NEAR(flat.P[i].X, expected[0], 1e-9);
        EXPECT_NEAR(flat.P[i].Y, expected[1], 1e-9);
        EXPECT_NEAR(flat.P[i].Z, expected[2], 1e-9);
    }
    EXPECT_NEAR(flat.Area, 32.0, 1e-3);
    EXPECT_NEAR(flat.coplanarity, 0, 1e-6);
    EXPECT_TRUE(dialogs.questions().empty());
}

TEST_F(FlatPlaneTest, TwistedCornersKeepTheFitAndGiveTheCoplanarity) {
    roofState().ROOF = 1;
    PLANE roof = tiltedRoof(0.15, true);
    const PLANE flat = FlatPlane(&roof, 0);
    ASSERT_EQ(flat.Npoints, 5);
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(flat.P[i].Z, 2 + 0.75 * (roof.P[i].Y - 200), 1e-9);
    EXPECT_NEAR(flat.coplanarity, 0.15, 1e-6);
    EXPECT_TRUE(dialogs.questions().empty()) << "within 0.2 m no question is asked";
    EXPECT_FALSE(roofState().useHorizontalPlane);
}

TEST_F(FlatPlaneTest, UnevenRoofAsksAndIsLaidLevelEvenOnNo) {
    roofState().ROOF = 1;
    dialogs.pushButton(2);  // No
    PLANE roof = tiltedRoof(0.3, false);
    const PLANE flat = FlatPlane(&roof, 0.5f);
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].title, "Force flat roof at 4.70 ASL");
    EXPECT_TRUE(roofState().useHorizontalPlane);
    ASSERT_EQ(flat.Npoints, 4);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(flat.P[i].X, roof.P[i].X);
        EXPECT_EQ(flat.P[i].Y, roof.P[i].Y);
        EXPECT_NEAR(flat.P[i].Z, 4.7 + 0.5, 1e-9);
    }
    EXPECT_NEAR(flat.Area, 32.0, 1e-4);
    EXPECT_NEAR(flat.coplanarity, 0.3, 1e-6);
}

TEST_F(FlatPlaneTest, ClosedUnevenRoofLevelledAtItsClosingPointOrCancelled) {
    roofState().ROOF = 1;
    dialogs.pushButton(1);  // Yes
    dialogs.pushButton(3);  // Cancel
    PLANE roof = tiltedRoof(0.3, true);
    const PLANE flat = FlatPlane(&roof, 0);
    ASSERT_EQ(flat.Npoints, 4);
    EXPECT_NEAR(flat.P[3].Z, 2.3, 1e-9);
    EXPECT_EQ(FlatPlane(&roof, 0.2f).Npoints, 0);
}

TEST_F(FlatPlaneTest, LevelFourClicksAskForTheTileSlope) {
    // A level 6 x 4 roof given a 30 degree slope: the reference line runs
    // along x, so the far corners rise 4 tan 30 = 2.3094 m.
    roofState().ROOF = 1;
    dialogs.pushText("30");
    PLANE roof = planeOf({{0, 0, 10, 0}, {6, 0, 10, 0}, {6, 4, 10.01, 0}, {0, 4, 10, 0}});
    const PLANE flat = FlatPlane(&roof, 0.1f);
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(roofState().TilesSlopeDegrees, 30);
    EXPECT_EQ(panelStore().GlobalPanel.Color1, 0xFF);
    ASSERT_EQ(flat.Npoints, 4);
    const double rise = 4 * std::tan(std::numbers::pi / 6);
    const double expected[4] = {10, 10, 10 + rise, 10 + rise};
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(flat.P[i].Z, expected[i] + 0.1, 2e-3) << i;
    EXPECT_NEAR(flat.Area, 24.0, 1e-2);
}

TEST_F(FlatPlaneTest, PanelPointsAreNeverAsked) {
    roofState().ROOF = 2;
    PLANE roof = tiltedRoof(0.3, false);
    EXPECT_EQ(FlatPlane(&roof, 0).Npoints, 4);
    EXPECT_TRUE(dialogs.questions().empty());
}

TEST_F(FlatPlaneTest, CollinearClicksGiveNoPlaneAndSayWhyInTheLog) {
    PLANE roof = planeOf({{0, 0, 0, 0}, {1, 1, 1, 0}, {2, 2, 5, 0}, {3, 3, 2, 0}});
    const PLANE flat = FlatPlane(&roof, 0.2f);
    EXPECT_EQ(flat.Npoints, 0);
    const std::string log = testsupport::readTextFile(dir.path("_Flatpanel.log"));
    EXPECT_NE(log.find("Error: Singular matrix (points are collinear). Aborting plane fit.\n"), std::string::npos);
}

}  // namespace
