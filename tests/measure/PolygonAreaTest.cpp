// Areas of polygons against areas worked out by hand: tilted, vertical and
// plan polygons, the closing point given again, and the signs of the 2D kin.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "measure/PolygonArea.h"

namespace {

double area3D(std::vector<MyPoint> points) {
    const int n = int(points.size());
    points.resize(points.size() + 2);
    return area3D_Polygon(n, points.data());
}

}  // namespace

TEST(PolygonArea, ARoofPlaneTiltedThirtyDegreesHasItsSlopedArea) {
    // 4 m along the eaves, 3 m in plan up the slope: 4 x 3 / cos 30.
    const double rise = 3 * std::tan(30 * M_PI / 180);
    EXPECT_NEAR(area3D({{0, 0, 0}, {4, 0, 0}, {4, 3, rise}, {0, 3, rise}}), 4 * 3 / std::cos(30 * M_PI / 180), 1e-9);
}

TEST(PolygonArea, AWallIsMeasuredInItsOwnPlane) {
    // A wall 2 m wide and 5 m high along x: its normal is y, which is dropped.
    EXPECT_NEAR(area3D({{10, 7, 0}, {12, 7, 0}, {12, 7, 5}, {10, 7, 5}}), 10, 1e-9);
    // The same wall along y, wound the other way round.
    EXPECT_NEAR(area3D({{3, 0, 5}, {3, 2, 5}, {3, 2, 0}, {3, 0, 0}}), 10, 1e-9);
}

TEST(PolygonArea, ATriangleSteeperThanFortyFiveDegreesKeepsItsArea) {
    // Right triangle with legs 3 (along x) and 4 up a plane rising 60 degrees.
    const double angle = 60 * M_PI / 180;
    const MyPoint a{0, 0, 0}, b{3, 0, 0}, c{0, 4 * std::cos(angle), 4 * std::sin(angle)};
    EXPECT_NEAR(area3D({a, b, c}), 6, 1e-9);
}

TEST(PolygonArea, TheClosingPointGivenAgainChangesNothing) {
    EXPECT_NEAR(area3D({{0, 0, 1}, {5, 0, 1}, {5, 2, 1}, {0, 2, 1}, {0, 0, 1}}), 10, 1e-9);
}

TEST(PolygonArea, FewerThanThreePointsOrAFirstTripleInLineHaveNoArea) {
    EXPECT_EQ(area3D({{0, 0, 0}, {1, 1, 1}}), 0);
    // The plane comes from the first three points: in line, they give none.
    EXPECT_EQ(area3D({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {2, 2, 0}}), 0);
}

TEST(PolygonArea, PlanAreaAndOrientationHaveTheSignOfTheTurn) {
    std::vector<MyPoint> ccw{{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 3, 0}, {}};
    EXPECT_NEAR(area2D_Polygon(4, ccw.data()), 12, 1e-12);
    EXPECT_GT(orientation2D_Polygon(4, ccw.data()), 0);
    std::vector<MyPoint> cw{{0, 0, 0}, {0, 3, 0}, {4, 3, 0}, {4, 0, 0}, {}};
    EXPECT_NEAR(area2D_Polygon(4, cw.data()), -12, 1e-12);
    EXPECT_LT(orientation2D_Polygon(4, cw.data()), 0);

    const MyPoint a{0, 0, 0}, b{2, 0, 0}, c{0, 2, 0};
    EXPECT_NEAR(area2D_Triangle(a, b, c), 2, 1e-12);
    EXPECT_NEAR(area2D_Triangle(a, c, b), -2, 1e-12);
    EXPECT_GT(isLeft(a, b, c), 0);
    EXPECT_EQ(isLeft(a, b, MyPoint{5, 0, 0}), 0);
}
