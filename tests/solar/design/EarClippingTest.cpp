// Ear clipping of roof outlines and the roof polygon file: every concave
// outline becomes n-2 triangles that cover exactly its area, and the engine
// loads the file as a roof layer.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "scene/engine_interface.h"
#include "solar/design/PanelDaeEarClipping.h"
#include "solar/design/PanelDaePolygon.h"
#include "support/TestSupport.h"

namespace {

using testsupport::readTextFile;

TGIS_Point3D pt(double x, double y, double z) { return {x, y, z, 0}; }

// An L-shaped roof with a notch: concave at two corners, 8 corners, plan area
// 10 x 8 - 6 x 4 - 1 x 2 = 54 m2 (worked out from the rectangles).
std::vector<TGIS_Point3D> lRoof() {
    return {pt(0, 0, 5), pt(10, 0, 5), pt(10, 4, 5), pt(4, 4, 5),
            pt(4, 8, 5), pt(1, 8, 5),  pt(1, 6, 5),  pt(0, 6, 5)};
}

double triangleArea3D(const TGIS_Point3D& a, const TGIS_Point3D& b, const TGIS_Point3D& c) {
    const double ux = b.X - a.X, uy = b.Y - a.Y, uz = b.Z - a.Z;
    const double vx = c.X - a.X, vy = c.Y - a.Y, vz = c.Z - a.Z;
    const double nx = uy * vz - uz * vy, ny = uz * vx - ux * vz, nz = ux * vy - uy * vx;
    return 0.5 * std::sqrt(nx * nx + ny * ny + nz * nz);
}

// Signed plan area of a triangle: positive when counter-clockwise from above.
double planArea(const TGIS_Point3D& a, const TGIS_Point3D& b, const TGIS_Point3D& c) {
    return 0.5 * ((b.X - a.X) * (c.Y - a.Y) - (c.X - a.X) * (b.Y - a.Y));
}

// n-2 triangles, all turned up, with areas adding up to the outline's: had
// one triangle strayed outside, or two overlapped, the sum would be larger.
void expectCovers(const std::vector<TGIS_Point3D>& P, double area) {
    const auto triangles = EarClipPolygon(P.data(), int(P.size()));
    ASSERT_EQ(triangles.size(), P.size() - 2);
    double sum = 0;
    for (const auto& t : triangles) {
        EXPECT_GT(planArea(P[t[0]], P[t[1]], P[t[2]]), 1e-9);
        sum += triangleArea3D(P[t[0]], P[t[1]], P[t[2]]);
    }
    EXPECT_NEAR(sum, area, 1e-9);
}

TEST(EarClipping, ConcaveRoofGivesNMinusTwoTrianglesCoveringItsArea) { expectCovers(lRoof(), 54); }

TEST(EarClipping, ClockwiseOutlineIsCutTheSameAndTurnedUp) {
    std::vector<TGIS_Point3D> P = lRoof();
    std::reverse(P.begin(), P.end());
    expectCovers(P, 54);
}

TEST(EarClipping, TiltedRoofIsCutInItsOwnPlane) {
    // The L roof tilted 30 degrees about the x axis: its true area is 54 / cos 30.
    std::vector<TGIS_Point3D> P = lRoof();
    for (TGIS_Point3D& p : P) p.Z = 5 + p.Y * std::tan(M_PI / 6);
    expectCovers(P, 54 / std::cos(M_PI / 6));
}

TEST(EarClipping, WallFacingEastIsCutAlongItsOwnAxes) {
    // An arrow-shaped outline in the plane x = 3, concave at (3, 2, 1).
    const std::vector<TGIS_Point3D> P = {pt(3, 0, 0), pt(3, 4, 0), pt(3, 4, 3), pt(3, 2, 1), pt(3, 0, 3)};
    const auto triangles = EarClipPolygon(P.data(), 5);
    ASSERT_EQ(triangles.size(), 3u);
    double sum = 0;
    for (const auto& t : triangles) sum += triangleArea3D(P[t[0]], P[t[1]], P[t[2]]);
    EXPECT_NEAR(sum, 4 * 3 - 0.5 * 4 * 2, 1e-9);
}

TEST(EarClipping, TooFewPointsGiveNoTriangles) {
    const std::vector<TGIS_Point3D> P = {pt(0, 0, 0), pt(1, 0, 0)};
    EXPECT_TRUE(EarClipPolygon(P.data(), 2).empty());
    EXPECT_TRUE(EarClipPolygon(nullptr, 5).empty());
}

TEST(RoofPolygonTilt, PointsTurnAboutTheRaisedBaseline) {
    // Baseline along x from (0,0,10) to (4,0,9.5); the far edge 3 m across it.
    TGIS_Point3D P[4] = {pt(0, 0, 10), pt(4, 0, 9.5), pt(4, 3, 7), pt(0, 3, 12)};
    ApplyTiltToPanel(P, 4, 30, 0, nullptr);
    for (int i = 0; i < 2; ++i) EXPECT_DOUBLE_EQ(P[i].Z, 10.05);
    // 3 cos 30 = 2.598076 across, 3 sin 30 = 1.5 up; the place along x stays.
    testsupport::expectVec(&P[2].X, 4, 3 * std::sqrt(3.0) / 2, 11.55, 1e-12);
    testsupport::expectVec(&P[3].X, 0, 3 * std::sqrt(3.0) / 2, 11.55, 1e-12);
}

TEST(RoofPolygonFile, EngineLoadsItAsARoofLayerOfTriangles) {
    testsupport::ScratchDir dir;
    std::vector<TGIS_Point3D> P = lRoof();
    P.push_back(P.front());  // a closing repeat is dropped
    const std::string file = dir.path("Site_FlatRoof_1.dae");
    ASSERT_TRUE(CreatePolygonDAE(QString::fromStdString(file), P.data(), int(P.size()), 60, 0x00FF00, 0, 54));
    const std::string text = readTextFile(file);
    EXPECT_NE(text.find("        <triangles material=\"roof_polygon_material\" count=\"6\">\n"), std::string::npos);
    EXPECT_NE(text.find("<float_array id=\"roof_polygon_positions_array\" count=\"24\">"), std::string::npos);
    EXPECT_NE(text.find("            <diffuse><color>0.00 1.00 0.00 1.0</color></diffuse>\n"), std::string::npos);
    EXPECT_NE(text.find("            <transparency><float>0.60</float></transparency>\n"), std::string::npos);
    EXPECT_NE(text.find("      <node id=\"roof_polygon_node\" name=\"roof_polygon\">\n        <extra>\n"
                        "          <technique profile=\"roof_polygon_data\">\n"
                        "            <type>roof_surface</type>\n"),
              std::string::npos);

    testsupport::EngineFixtureGuard guard;
    ASSERT_EQ(At3d_Read(AT3D_READ_DAE, file.c_str(), 1.0), 1);
    char name[AT3D_NAME_SIZE] = {};
    ASSERT_NE(At3d_GetNextLayer(nullptr, name), nullptr);
    EXPECT_STREQ(name, "Site_FlatRoof_1_roof_polygon_geometry");
    EXPECT_EQ(At3d_FaceCount(name), 6);
    // Laid level 0.05 m above the higher baseline end.
    double xyz[3];
    ASSERT_EQ(At3d_GetVertex(0, name, xyz), 1);
    EXPECT_NEAR(xyz[2], 5.05, 1e-6);
}

}  // namespace
