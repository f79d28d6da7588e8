// Polygon geometry of roof planes against values worked out by hand.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "solar/design/RoofGeometry.h"
#include "support/TestSupport.h"

namespace {

PLANE planeOf(std::initializer_list<TGIS_Point3D> points) {
    PLANE plane;
    for (const TGIS_Point3D& p : points) plane.P[plane.Npoints++] = p;
    return plane;
}

// 4 m wide, rising 4 m over 3 m: the sloped side is 5 m, so 20 m2, 12 m2 in
// plan, and the normal (0, -4, 3) / 5.
const TGIS_Point3D kSloped[] = {{0, 0, 0, 0}, {4, 0, 0, 0}, {4, 3, 4, 0}, {0, 3, 4, 0}};

TEST(RoofArea, LShapeInPlanAndSlopedRectangleIn3D) {
    PLANE plane = planeOf({{0, 0, 1, 0}, {4, 0, 2, 0}, {4, 1, 3, 0}, {1, 1, 4, 0}, {1, 3, 5, 0}, {0, 3, 6, 0}});
    EXPECT_NEAR(CalculatePlaneArea(&plane), 6.0, 1e-12);  // 4 x 1 strip plus a 1 x 2 leg
    plane.P[plane.Npoints++] = plane.P[0];
    EXPECT_NEAR(CalculatePlaneArea(&plane), 6.0, 1e-12);
    const PLANE sloped = planeOf({kSloped[0], kSloped[1], kSloped[2], kSloped[3]});
    EXPECT_NEAR(CalculatePlaneArea(&sloped), 12.0, 1e-12);
    EXPECT_NEAR(Calculate3DPolygonArea(kSloped, 4), 20.0, 1e-9);
    EXPECT_EQ(Calculate3DPolygonArea(kSloped, 2), 0);
}

TEST(RoofNormal, FollowsTheWindingAndFallsBackToUp) {
    double n[3];
    Calculate3DPolygonNormal(kSloped, 4, n[0], n[1], n[2]);
    testsupport::expectVec(n, 0, -0.8, 0.6, 1e-12);
    const TGIS_Point3D reversed[] = {kSloped[3], kSloped[2], kSloped[1], kSloped[0]};
    Calculate3DPolygonNormal(reversed, 4, n[0], n[1], n[2]);
    testsupport::expectVec(n, 0, 0.8, -0.6, 1e-12);
    const TGIS_Point3D line[] = {{0, 0, 0, 0}, {1, 1, 1, 0}, {2, 2, 2, 0}};
    Calculate3DPolygonNormal(line, 3, n[0], n[1], n[2]);
    testsupport::expectVec(n, 0, 0, 1);
}

TEST(ConvexPolygon, VerticesAndEdgesCountAsInsideInBothWindings) {
    const TGIS_Point3D ccw[] = {{0, 0, 0, 0}, {2, 0, 0, 0}, {2, 1, 0, 0}, {0, 1, 0, 0}};
    const TGIS_Point3D cw[] = {ccw[3], ccw[2], ccw[1], ccw[0]};
    for (const TGIS_Point3D* polygon : {ccw, cw}) {
        for (int i = 0; i < 4; ++i) EXPECT_TRUE(IsPointInsideConvexPolygon(polygon[i], polygon, 4));
        EXPECT_TRUE(IsPointInsideConvexPolygon({1, 0, 0, 0}, polygon, 4));
        EXPECT_FALSE(IsPointInsideConvexPolygon({1, -1e-6, 0, 0}, polygon, 4));
        EXPECT_FALSE(IsPointInsideConvexPolygon({3, 0, 0, 0}, polygon, 4));  // on an edge's line, beyond it
    }
    EXPECT_FALSE(IsPointInsideConvexPolygon({0, 0, 0, 0}, ccw, 2));
}

TEST(ExpandPolygon, SquareCornersMoveAlongTheirBisector) {
    // The outward perpendiculars of a right corner are 90 degrees apart, their
    // mean 45 degrees from each; s = sin(22.5 deg) = 0.382683, so the corner
    // moves 3 / s = 7.8394 m along the diagonal: 5.5433 m in X and in Y.
    const double d = 5.54328;
    const TGIS_Point3D ccw[] = {{0, 0, 5, 0}, {10, 0, 5, 0}, {10, 10, 5, 0}, {0, 10, 5, 0}};
    const TGIS_Point3D cw[] = {ccw[3], ccw[2], ccw[1], ccw[0]};
    for (const TGIS_Point3D* square : {ccw, cw}) {
        const std::vector<TGIS_Point3D> out = ExpandPolygon3D(square, 4, 3, nullptr);
        ASSERT_EQ(out.size(), 4u);
        for (int i = 0; i < 4; ++i) {
            EXPECT_NEAR(out[i].X, square[i].X + (square[i].X < 5 ? -d : d), 1e-5);
            EXPECT_NEAR(out[i].Y, square[i].Y + (square[i].Y < 5 ? -d : d), 1e-5);
            EXPECT_NEAR(out[i].Z, 5, 1e-12);
        }
    }
}

TEST(ExpandPolygon, StraightVertexMovesThePlainThreeMetresAndTiltedRoofsStayInPlane) {
    const TGIS_Point3D flat[] = {{0, 0, 0, 0}, {5, 0, 0, 0}, {10, 0, 0, 0}, {10, 10, 0, 0}, {0, 10, 0, 0}};
    const std::vector<TGIS_Point3D> out = ExpandPolygon3D(flat, 5, 3, nullptr);
    EXPECT_NEAR(out[1].X, 5, 1e-12);
    EXPECT_NEAR(out[1].Y, -3, 1e-12);
    for (const TGIS_Point3D& p : ExpandPolygon3D(kSloped, 4, 3, nullptr)) EXPECT_NEAR(p.Z, 4.0 / 3.0 * p.Y, 1e-9);
}

TEST(ExpandPolygon, LogsTheAreasAndLeavesShortPolygonsAlone) {
    testsupport::ScratchDir dir;
    std::FILE* log = std::fopen(dir.path("expand.log").c_str(), "w");
    ExpandPolygon3D(kSloped, 3, 2.5f, log);
    EXPECT_EQ(ExpandPolygon3D(kSloped, 2, 3, log)[1].X, 4);
    std::fclose(log);
    const std::string text = testsupport::readTextFile(dir.path("expand.log"));
    EXPECT_NE(text.find("\n3D AREA SUMMARY:\n"), std::string::npos);
    EXPECT_NE(text.find("WARNING: Polygon has < 3 points, returning unchanged\n"), std::string::npos);
}

TEST(ProjectPoint, TakesTheHeightOfTheNearestVertexInPlan) {
    const PLANE plane = planeOf({{0, 0, 1, 0}, {10, 0, 2, 0}, {10, 10, 3, 0}, {0, 10, 4, 0}});
    const TGIS_Point3D p = ProjectPoint(&plane, {8, 7, 100, 0});
    EXPECT_EQ(p.X, 8);
    EXPECT_EQ(p.Y, 7);
    EXPECT_EQ(p.Z, 3);
}

}  // namespace
