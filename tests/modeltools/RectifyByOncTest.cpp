// "Rectify by ONC": the log written to the byte for a small site worked out
// by hand, every way the log stops, a fit that must give back a scale, turn
// and shift we put on a generated model, and a stopped pass.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "modeltools/ModelToolProgress.h"
#include "modeltools/RectifyByOnc.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

// A 10 m square with two corners raised 2 m; in the map it is twice as
// large, turned a quarter to the left and moved to (1000, 2000, 50):
// (x, y, z) -> (1000 - 2y, 2000 + 2x, 50 + 2z).
const char* kSquareOnc =
    "# square corners\n"
    "0 0 0 1000 2000 50\n"
    "\n"
    "10 0 0 1000 2020 50\n"
    "10 10 2 980 2020 54\n"
    "0 10 2 980 2000 54\n";

std::string header(const ScratchDir& dir, const char* radius) {
    return "RectifyOBJByONC LOG (Full 3D Procrustes)\nOBJIN=" + dir.path("in.obj") + "\nOBJOUT=" + dir.path("out.obj") +
           "\nONC=" + dir.path("pairs.onc") + "\nRadius=" + radius + "\n\n";
}

const char* kSquareFit =
    "ONC file (raw lines):\n"
    "  # square corners\n"
    "  0 0 0 1000 2000 50\n"
    "  \n"
    "  10 0 0 1000 2020 50\n"
    "  10 10 2 980 2020 54\n"
    "  0 10 2 980 2000 54\n"
    "=== CONSTRAINED 3D TRANSFORMATION ===\n"
    "For flat terrain with small buildings: preserve vertical Z-axis\n"
    "XY: 2D Procrustes (scale + rotation + translation)\n"
    "Z:  Uniform scaling only (preserves vertical direction)\n"
    "Control points: 4\n"
    "\n"
    "Step 1: 2D Procrustes transformation for XY plane\n"
    "  XY Procrustes parameters:\n"
    "    Scale: 2.000000000\n"
    "    Rotation: 90.000000 degrees\n"
    "    Translation: (1000.000000, 2000.000000)\n"
    "    Rotation matrix: [0.000000 -1.000000; 1.000000 0.000000]\n"
    "    Point 1: Local(0.000,0.000) ? Pred(1000.000,2000.000) vs Target(1000.000,2000.000) Error=0.000\n"
    "    Point 2: Local(10.000,0.000) ? Pred(1000.000,2020.000) vs Target(1000.000,2020.000) Error=0.000\n"
    "    Point 3: Local(10.000,10.000) ? Pred(980.000,2020.000) vs Target(980.000,2020.000) Error=0.000\n"
    "    Point 4: Local(0.000,10.000) ? Pred(980.000,2000.000) vs Target(980.000,2000.000) Error=0.000\n"
    "    XY RMS Error: 0.000000 meters\n"
    "\n"
    "Step 2: Z transformation (uniform scaling, preserves vertical)\n"
    "  Z centroids: Local 1.000000 ? World 52.000000\n"
    "  Z scale: 2.000000000 (same as XY)\n"
    "  Z offset: 52.000000 - 2.000000000 * 1.000000 = 50.000000\n"
    "  Z formula: Z' = 2.000000000 * z + 50.000000\n"
    "  Z transformation verification:\n"
    "    Point 1: Local_Z=0.000 ? Pred_Z=50.000 vs Target_Z=50.000 Error=0.000\n"
    "    Point 2: Local_Z=0.000 ? Pred_Z=50.000 vs Target_Z=50.000 Error=0.000\n"
    "    Point 3: Local_Z=2.000 ? Pred_Z=54.000 vs Target_Z=54.000 Error=0.000\n"
    "    Point 4: Local_Z=2.000 ? Pred_Z=54.000 vs Target_Z=54.000 Error=0.000\n"
    "    Z RMS Error: 0.000000 meters\n"
    "\n"
    "Step 3: Final constrained 3D transformation\n"
    "  Rotation matrix (XY rotation + Z preserved):\n"
    "    [  0.000000  -1.000000   0.000000]\n"
    "    [  1.000000   0.000000   0.000000]\n"
    "    [  0.000000   0.000000   1.000000]\n"
    "  Uniform scale factor: 2.000000000\n"
    "  Translation vector: (1000.000000, 2000.000000, 50.000000)\n"
    "  Final transformation: P_world = 2.000000 * R * P_local + t\n"
    "\n"
    "=== CONSTRAINED 3D TRANSFORMATION VERIFICATION ===\n"
    "Applying: P_world = scale * R * P_local + t (with Z-axis preserved)\n"
    "\n"
    "Point   Local (x,y,z)           Predicted (x,y,z)        Target (x,y,z)          3D Error\n"
    "-----   ----------------        ------------------       ----------------        --------\n"
    "1       (   0.00,   0.00,   0.00)   (   1000.00,   2000.00,  50.00)   (   1000.00,   2000.00,  50.00)      0.000\n"
    "2       (  10.00,   0.00,   0.00)   (   1000.00,   2020.00,  50.00)   (   1000.00,   2020.00,  50.00)      0.000\n"
    "3       (  10.00,  10.00,   2.00)   (    980.00,   2020.00,  54.00)   (    980.00,   2020.00,  54.00)      0.000\n"
    "4       (   0.00,  10.00,   2.00)   (    980.00,   2000.00,  54.00)   (    980.00,   2000.00,  54.00)      0.000\n"
    "\n"
    "Constrained 3D Transformation Summary:\n"
    "  RMS Error: 0.000000 meters\n"
    "  Max Error: 0.000000 meters\n"
    "  Scale factor: 2.000000000 (uniform)\n"
    "  Z-axis preserved: Buildings will be vertical\n"
    "  ? EXCELLENT: Constrained transformation very accurate (<1m RMS)\n";

class RectifyByOnc : public ::testing::Test {
protected:
    ScratchDir dir;
    std::string in = dir.path("in.obj"), out = dir.path("out.obj"), onc = dir.path("pairs.onc");
    std::string log() const { return readTextFile(RectifyLogPath(out)); }
    void TearDown() override { resetModelToolHooks(); }
};

}  // namespace

TEST_F(RectifyByOnc, TheSquareSiteGivesTheLogAndTheModelWorkedOutByHand) {
    // The first vertex carries 2 decimals; the last vertex lies 51 m from the
    // pairs' centre (990, 2010) in the map, so its face is dropped at 35 m.
    writeTextFile(onc, kSquareOnc);
    writeTextFile(in,
                  "mtllib site.mtl\n"
                  "v 0.00 0 0\n"
                  "v 10 0 0.5\n"
                  "v 10 10 1\n"
                  "vt 0.5 0.5\n"
                  "v 0 10 1\n"
                  "v 30 0 0\n"
                  "usemtl roof\r\n"
                  "f 1/1 2/1 3/1\n"
                  "f 1/1 3/1 4/1\n"
                  "f 2 5 3");
    const RectifyResult r = RectifyOBJByONC(in, out, onc, 35);
    ASSERT_TRUE(r.written);
    EXPECT_EQ(r.error, "");

    EXPECT_EQ(readTextFile(out),
              "# Transformed using full 3D Procrustes (uniform scale + 3D rotation + translation)\n"
              "v 1000.00 2000.00 50.00\n"
              "v 1000.00 2020.00 51.00\n"
              "v 980.00 2020.00 52.00\n"
              "v 980.00 2000.00 52.00\n"
              "v 1000.00 2060.00 50.00\n"
              "mtllib site.mtl\n"
              "vt 0.5 0.5\n"
              "usemtl roof\n"
              "f 1/1 2/1 3/1\n"
              "f 1/1 3/1 4/1\n");
    EXPECT_EQ(log(), header(dir, "35.000000") + kSquareFit +
                         "\n"
                         "OBJ processing:\n"
                         "  Total vertices: 5\n"
                         "\n"
                         "3D Transformation Results:\n"
                         "  Input bounds:  X[0.000, 30.000] Y[0.000, 10.000] Z[0.000, 1.000]\n"
                         "  Output bounds: X[980.000, 1000.000] Y[2000.000, 2060.000] Z[50.000, 52.000]\n"
                         "  Scale factor: 2.000000 (uniform for all axes)\n"
                         "\n"
                         "Sample transformed vertices:\n"
                         "  #1: (1000.000, 2000.000, 50.000)\n"
                         "  #2: (1000.000, 2020.000, 51.000)\n"
                         "  #3: (980.000, 2020.000, 52.000)\n"
                         "  #4: (980.000, 2000.000, 52.000)\n"
                         "  #5: (1000.000, 2060.000, 50.000)\n"
                         "\n"
                         "Output Summary:\n"
                         "  Vertices transformed: 5\n"
                         "  Faces kept: 2\n"
                         "  Faces dropped (outside 35.0m): 1\n"
                         "\n"
                         "=== TRANSFORMATION SUCCESS ===\n"
                         "Full 3D Procrustes transformation completed!\n"
                         "- Uniform scale factor: 2.000000\n"
                         "- 3D rotation applied to handle model tilt\n"
                         "- Single unified transformation (no separate XY/Z)\n"
                         "- Buildings should now be upright and properly scaled\n"
                         "? Transformation quality: EXCELLENT (RMS < 2m)\n");
}

TEST_F(RectifyByOnc, EachFailureEndsTheLogWithItsErrorAndWritesNoModel) {
    writeTextFile(in, "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");

    // No ONC file at all.
    RectifyResult r = RectifyOBJByONC(in, out, onc, 35);
    EXPECT_FALSE(r.written);
    EXPECT_EQ(log(), header(dir, "35.000000") + "ERROR: cannot load ONC\n");

    // Two good pairs and a short line, which is no pair.
    writeTextFile(onc, "0 0 0 10 10 0\n1 2 3\n5 0 0 15 10 0\n");
    r = RectifyOBJByONC(in, out, onc, 0);
    EXPECT_EQ(r.error, "ERROR: need >=3 valid pairs, got 2");
    EXPECT_EQ(log(), header(dir, "0.000000") +
                         "ONC file (raw lines):\n  0 0 0 10 10 0\n  1 2 3\n  5 0 0 15 10 0\n"
                         "ERROR: need >=3 valid pairs, got 2\n");

    // Every pair at one local point: nothing to turn or scale by.
    const std::string stopAtStep1 =
        "Control points: 3\n\nStep 1: 2D Procrustes transformation for XY plane\n";
    writeTextFile(onc, "4 4 0 10 10 0\n4 4 1 20 10 0\n4 4 2 10 20 0\n");
    r = RectifyOBJByONC(in, out, onc, 35);
    EXPECT_EQ(r.error, "ERROR: degenerate local XY spread");
    EXPECT_TRUE(log().ends_with(stopAtStep1 + "ERROR: degenerate local XY spread\n")) << log();

    // Spread locally but all at one map point.
    writeTextFile(onc, "0 0 0 10 10 0\n4 0 0 10 10 0\n0 4 0 10 10 0\n");
    r = RectifyOBJByONC(in, out, onc, 35);
    EXPECT_TRUE(log().ends_with(stopAtStep1 + "ERROR: degenerate XY covariance\n")) << log();

    // Good pairs; the model is missing, then has no vertices.
    writeTextFile(onc, "0 0 0 10 10 0\n4 0 0 14 10 0\n0 4 0 10 14 0\n");
    const std::string verdict = "  ? EXCELLENT: Constrained transformation very accurate (<1m RMS)\n";
    r = RectifyOBJByONC(dir.path("none.obj"), out, onc, 35);
    EXPECT_TRUE(log().ends_with(verdict + "ERROR: cannot load OBJ\n")) << log();
    writeTextFile(in, "# nothing\nvt 0 0\n");
    r = RectifyOBJByONC(in, out, onc, 35);
    EXPECT_TRUE(log().ends_with(verdict + "ERROR: no vertices in OBJ\n")) << log();
    EXPECT_FALSE(std::filesystem::exists(out));

    // The output's name is taken by a folder.
    writeTextFile(in, "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    std::filesystem::create_directories(out);
    r = RectifyOBJByONC(in, out, onc, 35);
    EXPECT_FALSE(r.written);
    EXPECT_EQ(r.error, "ERROR: cannot open OBJOUT for write");
    EXPECT_TRUE(std::filesystem::is_directory(out));
}

TEST_F(RectifyByOnc, AKnownScaleTurnAndShiftAreRecoveredAndApplied) {
    // Our own placement of a generated model: scale 1.25, a turn of 33
    // degrees about Z, a shift to UTM-sized coordinates.
    const double s = 1.25, angle = 33.0, tx = 650000.5, ty = 3500000.25, tz = 120.75;
    const double c = std::cos(angle * M_PI / 180), sn = std::sin(angle * M_PI / 180);
    auto place = [&](double x, double y, double z, double* w) {
        w[0] = s * (c * x - sn * y) + tx;
        w[1] = s * (sn * x + c * y) + ty;
        w[2] = s * z + tz;
    };
    std::vector<std::array<double, 3>> vertices;
    std::ostringstream obj;
    obj << "v 1.123456 -2.5 3\n";  // 6 decimals on the first vertex set them for all
    vertices.push_back({1.123456, -2.5, 3});
    for (int i = 0; i < 40; ++i) {
        const double x = -20 + i * 1.1, y = 15 - i * 0.7, z = (i % 7) * 0.5;
        char line[128];
        std::snprintf(line, sizeof line, "v %.1f %.1f %.1f\n", x, y, z);
        obj << line;
        std::array<double, 3> read{};
        std::sscanf(line, "v %lf %lf %lf", &read[0], &read[1], &read[2]);
        vertices.push_back(read);
    }
    obj << "# " << std::string(5000, 'x') << "\n";
    for (int i = 1; i + 2 <= 41; ++i) obj << "f " << i << " " << i + 1 << " " << i + 2 << "\n";
    writeTextFile(in, obj.str());

    // Five vertices become control points, a comment among them.
    std::ostringstream pairs;
    pairs << "# pairs measured on the ortho\n";
    for (int k : {1, 9, 17, 25, 40}) {
        double w[3];
        place(vertices[k][0], vertices[k][1], vertices[k][2], w);
        char line[200];
        std::snprintf(line, sizeof line, "%.1f %.1f %.1f %.9f %.9f %.9f\n", vertices[k][0], vertices[k][1],
                      vertices[k][2], w[0], w[1], w[2]);
        pairs << line;
    }
    writeTextFile(onc, pairs.str());

    const RectifyResult r = RectifyOBJByONC(in, out, onc, 0);
    ASSERT_TRUE(r.written) << log();
    EXPECT_EQ(r.fit.pairs, 5);
    EXPECT_NEAR(r.fit.scale, s, 1e-6);
    EXPECT_NEAR(r.fit.rotationDegrees, angle, 1e-6);
    EXPECT_NEAR(r.fit.tx, tx, 1e-6);
    EXPECT_NEAR(r.fit.ty, ty, 1e-6);
    EXPECT_NEAR(r.fit.tz, tz, 1e-6);
    EXPECT_NEAR(r.fit.rmsError, 0, 1e-6);
    const std::string text = log();
    EXPECT_NE(text.find("Control points: 5\n"), std::string::npos);
    EXPECT_NE(text.find("  # pairs measured on the ortho\n"), std::string::npos);
    EXPECT_NE(text.find("  Total faces: 39 (no radius filtering)\n"), std::string::npos);

    std::istringstream lines(readTextFile(out));
    std::string line;
    std::getline(lines, line);
    std::size_t v = 0;
    while (std::getline(lines, line) && line.starts_with("v ")) {
        ASSERT_LT(v, vertices.size());
        double w[3], got[3];
        place(vertices[v][0], vertices[v][1], vertices[v][2], w);
        ASSERT_EQ(std::sscanf(line.c_str(), "v %lf %lf %lf", &got[0], &got[1], &got[2]), 3);
        for (int a = 0; a < 3; ++a) EXPECT_NEAR(got[a], w[a], 1.5e-6) << line;
        std::istringstream words(line.substr(2));
        std::string word;
        while (words >> word) EXPECT_EQ(word.size() - word.find('.') - 1, 6u) << line;
        ++v;
    }
    EXPECT_EQ(v, vertices.size());
    // The long comment is cut to 4095 characters; every face stays.
    EXPECT_EQ(line, "# " + std::string(4093, 'x'));
    int faces = 0;
    while (std::getline(lines, line)) faces += line.starts_with("f ");
    EXPECT_EQ(faces, 39);
}

TEST_F(RectifyByOnc, AStoppedPassLeavesTheEarlierOutputAndLogAsTheyWere) {
    writeTextFile(onc, kSquareOnc);
    std::string obj;
    for (int i = 0; i < 70000; ++i) obj += "v " + std::to_string(i % 100) + " 1 2\n";
    writeTextFile(in, obj);
    writeTextFile(out, "earlier output\n");
    writeTextFile(RectifyLogPath(out), "earlier log\n");
    int asked = 0;
    modelToolHooks().cancelled = [&] { return ++asked == 2; };
    const RectifyResult r = RectifyOBJByONC(in, out, onc, 35);
    EXPECT_TRUE(r.cancelled);
    EXPECT_FALSE(r.written);
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(readTextFile(out), "earlier output\n");
    EXPECT_EQ(log(), "earlier log\n");
    for (const auto& entry : std::filesystem::directory_iterator(dir.root()))
        EXPECT_EQ(entry.path().string().find(".part-"), std::string::npos) << entry.path();
}
