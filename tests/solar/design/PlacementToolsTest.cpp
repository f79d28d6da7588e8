// Orientation from clicks and corners, the roof plane tools, the corner snap
// and the neighbour positions, on planes worked out by hand.
#include <gtest/gtest.h>

#include <cmath>

#include "solar/design/PanelGeometryRoof.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelText.h"
#include "solar/design/PlacementOrientation.h"
#include "solar/design/PlacementSnap.h"
#include "support/TestSupport.h"

namespace {

constexpr double kTol = 1e-6;
const double kDeg = std::acos(-1.0) / 180.0;
const double t30 = std::tan(30 * kDeg);

TGIS_Point3D pt(double x, double y, double z) { return TGIS_Point3D{x, y, z, 0}; }

// A 1 x 2 m panel with LL at (x, 0, z) on a flat roof z.
PANEL flatPanel(const char* name, double x, double z) {
    PANEL p;
    SetPanelText(p.Name, name);
    p.Corners[0] = pt(x, 0, z);
    p.Corners[1] = pt(x, 2, z);
    p.Corners[2] = pt(x + 1, 2, z);
    p.Corners[3] = pt(x + 1, 0, z);
    p.CenterPoint = pt(x + 0.5, 1, z);
    p.PP[0] = pt(0, 0, z);
    p.PP[1] = pt(5, 0, z);
    p.PP[2] = pt(0, 5, z);
    p.Active = true;
    return p;
}

PANEL southRoofPanel() {
    PANEL p;
    p.PP[0] = pt(0, 0, 10);
    p.PP[1] = pt(6, 0, 10);
    p.PP[2] = pt(0, 3, 10 + 3 * t30);
    return p;
}

// Normal (sin 45 sin 135, sin 45 cos 135, cos 45): baseline along (1, 1),
// rising 1 m per metre towards the north-west.
TEST(PlacementOrientation, ARoofFacingSouthEastAt45Degrees) {
    const TGIS_Point3D PA[3] = {pt(0, 0, 0), pt(1, 1, 0), pt(-1, 1, std::sqrt(2.0))};
    double tilt = 0, azimuth = 0;
    CalculateOrientation(PA, tilt, azimuth);
    EXPECT_NEAR(tilt, 45, kTol);
    EXPECT_NEAR(azimuth, 135, kTol);
    const TGIS_Point3D reversed[3] = {PA[1], PA[0], PA[2]};
    CalculateOrientation(reversed, tilt, azimuth);
    EXPECT_NEAR(azimuth, 135, kTol);
}

TEST(PlacementOrientation, ANearlyFlatRoofFacesSquareToTheBaseline) {
    // Slope 2 degrees towards the west, baseline to the north: azimD 0 + 90.
    const TGIS_Point3D PA[3] = {pt(0, 0, 0), pt(0, 5, 0), pt(3, 0, 3 * std::tan(2 * kDeg))};
    double tilt = 0, azimuth = 0;
    CalculateOrientation(PA, tilt, azimuth);
    EXPECT_NEAR(tilt, 2, kTol);
    EXPECT_NEAR(azimuth, 90, kTol);

    const TGIS_Point3D line[3] = {pt(0, 0, 0), pt(1, 1, 1), pt(2, 2, 2)};
    CalculateOrientation(line, tilt, azimuth);
    EXPECT_EQ(tilt, 0);
    EXPECT_EQ(azimuth, 0);
}

TEST(PlacementOrientation, APanelsCornersGiveItsOrientationWhicheverWayRound) {
    PANEL p;
    p.Corners[0] = pt(0, 0, 0);
    p.Corners[1] = pt(0, std::cos(30 * kDeg), 0.5);
    p.Corners[2] = pt(1, std::cos(30 * kDeg), 0.5);
    p.Corners[3] = pt(1, 0, 0);
    double tilt = 0, azimuth = 0;
    CalculateOrientation(p, tilt, azimuth);
    EXPECT_NEAR(tilt, 30, kTol);
    EXPECT_NEAR(azimuth, 180, kTol);
    std::swap(p.Corners[1], p.Corners[3]);
    CalculatePanelOrientation(p, azimuth, tilt);
    EXPECT_NEAR(p.DTilt, 30, kTol);
    EXPECT_NEAR(p.DAzimuth, 180, kTol);
}

TEST(PanelGeometryRoof, PointsAreMeasuredAgainstTheRoofPlane) {
    const PANEL p = southRoofPanel();
    EXPECT_NEAR(ProjectPointToRoof(pt(3, 2, 0), p).Z, 10 + 2 * t30, kTol);
    EXPECT_NEAR(DistancePanelPointFromRoof(p, pt(0, 0, 11)), std::cos(30 * kDeg), kTol);

    const TGIS_Point3D lifted = LiftPointAlongPanelNormal(p, pt(1, 1, 50), 0.5f);
    EXPECT_NEAR(DistancePanelPointFromRoof(p, lifted), 0.5, kTol);
    const TGIS_Point3D moved = pt(lifted.X - 1, lifted.Y - 1, lifted.Z - 50);
    EXPECT_NEAR(moved.X, 0, kTol);
    EXPECT_NEAR(moved.Y * std::cos(30 * kDeg) + moved.Z * 0.5, 0, kTol);  // along (0, -sin 30, cos 30)
}

TEST(PanelGeometryRoof, PolygonNormalIsTurnedUpAndRefusesTooFewPoints) {
    const TGIS_Point3D clockwise[5] = {pt(0, 0, 1), pt(0, 1, 1), pt(1, 1, 1), pt(1, 0, 1), pt(0, 0, 1)};
    const TGIS_Point3D n = LiftPointAlongPolygonNormal(clockwise, 5, 0.3f);
    EXPECT_NEAR(n.X, 0, kTol);
    EXPECT_NEAR(n.Z, 0.3, kTol);
    const TGIS_Point3D closedPair[3] = {pt(0, 0, 1), pt(0, 1, 1), pt(0, 0, 1)};
    EXPECT_EQ(LiftPointAlongPolygonNormal(closedPair, 3, 0.3f).Z, 0);
    EXPECT_EQ(FindClosestCorner(flatPanel("1/1", 0, 0), pt(20000, 0, 0)).X, 0);
}

class PlacementSnap : public ::testing::Test {
protected:
    void SetUp() override {
        resetPanelStore();
        resetPlacementSnapState();
        PanelStore& s = panelStore();
        s.panels[0] = flatPanel("1/5", 0, 5);
        s.panels[1] = flatPanel("2/5", 3, 5);
        s.NumPanelsCreated = 2;
    }
    void TearDown() override {
        resetPanelStore();
        resetPlacementSnapState();
    }
    testsupport::EngineFixtureGuard engine;
};

TEST_F(PlacementSnap, ACornerSnapsOntoTheNearestCornerOfTheOtherPanel) {
    const TGIS_Point3D move = SnapTile(pt(0.9, 0.1, 5), pt(3.1, 0.2, 5));
    EXPECT_NEAR(move.X, 2, kTol);  // LR (1, 0) onto LL (3, 0)
    EXPECT_NEAR(move.Y, 0, kTol);
    EXPECT_EQ(placementSnapState().GlobalSnapped[0], 1);
    EXPECT_EQ(placementSnapState().GlobalSnapped[1], 1);
    EXPECT_EQ(placementSnapState().GlobalSnappedTCaption, " Snapped 1 1   2.00 0.00 0.00");

    const TGIS_Point3D free = SnapTile(pt(0.9, 1.9, 5.3), pt(2.0, 3.0, 7));
    EXPECT_NEAR(free.X, 1, kTol);  // UR (1, 2) onto the click
    EXPECT_NEAR(free.Y, 1, kTol);
    EXPECT_EQ(free.Z, 0);  // a flat roof moves flat
    EXPECT_EQ(placementSnapState().GlobalSnapped[1], 0);

    const TGIS_Point3D none = SnapTile(pt(10, 10, 5), pt(3.1, 0.2, 5));
    EXPECT_EQ(none.X, 0);
    EXPECT_EQ(placementSnapState().GlobalSnapped[0], 0);
}

TEST_F(PlacementSnap, NeighbourCentresRunAlongTheLineUpToItsEnd) {
    const PANEL& p = panelStore().panels[0];
    GetNeighbourCenters(p, pt(0.5, 1, 5), pt(2.8, 1, 5));
    ASSERT_EQ(placementSnapState().HowmanyNeighbours, 2);
    EXPECT_NEAR(placementSnapState().GlobalNeighbourPanelCenters[0].X, 1.5, kTol);
    EXPECT_NEAR(placementSnapState().GlobalNeighbourPanelCenters[1].X, 2.5, kTol);
    EXPECT_NEAR(GetNeighbourCenter(p, pt(0.5, 1, 5), pt(2.8, 1, 5)).X, 1.5, kTol);
    EXPECT_EQ(GetNeighbourCenter(p, pt(0.5, 1, 5), pt(0.5, 1.5, 5)).X, 0);  // P2 inside, no neighbour
}

TEST_F(PlacementSnap, APanelWithANeighbourGrowsOnTheFreeSide) {
    panelStore().panels[1] = flatPanel("2/5", 1, 5);
    const PANEL& p = panelStore().panels[0];
    EXPECT_NEAR(GetNeighbourCenter(p, pt(0.5, 1, 5), pt(1.5, 1, 5)).X, -0.5, kTol);
}

}  // namespace
