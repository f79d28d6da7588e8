// Crop and clean passes on small OBJ files whose faces sit at chosen places
// against the outline and the regions.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "geo/Frames.h"
#include "modeltools/CleanModel.h"
#include "modeltools/CropModel.h"
#include "modeltools/PolygonAngles.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

// Eight vertices, then faces referring to them by v/t.
const char* kVertices =
    "mtllib m.mtl\n"
    "v 1 1 0\n"     // 1 inside the 4x4 square
    "v 6 1 0\n"     // 2 outside
    "v 6 3 0\n"     // 3 outside
    "v -1 2 0\n"    // 4 outside, left
    "v 5 2 0\n"     // 5 outside, right
    "v 2 -1 0\n"    // 6 outside, below
    "v 0 2 0\n"     // 7 on the left side
    "v -2 3 0\n"    // 8 outside
    "vt 0 0\n"
    "usemtl a\n";

const std::vector<double> kSquareX = {0, 4, 4, 0, 0};
const std::vector<double> kSquareY = {0, 0, 4, 4, 0};
const double kNoCenter[3] = {0, 0, 0};

class CropCleanTest : public ::testing::Test {
protected:
    void SetUp() override { resetFrameState(); }
    ScratchDir dir;
};

}  // namespace

TEST(PolygonAngles, InsideOutsideAndBorderOfASquare) {
    EXPECT_EQ(inpolygon(kSquareX.data(), kSquareY.data(), 5, 2, 2), 0);
    EXPECT_EQ(inpolygon(kSquareX.data(), kSquareY.data(), 5, 5, 2), 1);
    EXPECT_EQ(inpolygon(kSquareX.data(), kSquareY.data(), 5, 0, 2), -1);
    EXPECT_EQ(inpolygon(kSquareX.data(), kSquareY.data(), 5, 4, 4), -1);
    EXPECT_NEAR(polaranglej(-1, -1), 225, 1e-5);
    EXPECT_DOUBLE_EQ(polaranglej(0, -3), 270);
    EXPECT_DOUBLE_EQ(signedanglej(0, 0, 1, 0, 0, 1), 90);
    EXPECT_DOUBLE_EQ(signedanglej(0, 0, 0, 1, 1, 0), -90);
}

TEST_F(CropCleanTest, CropKeepsAFaceWithOneCornerInsideAndDropsCrossingAndBorderFaces) {
    writeTextFile(dir.path("m.obj"), std::string(kVertices) +
                                         "f 1/1 2/1 3/1\n"         // one corner inside: stays
                                         "f 4/1/2 5/1/2 6/1/2\n"   // crosses the square, no corner in: goes
                                         "f 7/1 4/1 8/1\n"         // a corner on the side only: goes
                                         "f 1/1/3 2/1/3 3/1/3\n"); // stays, without its normals
    const CropResult result = CropObjFile(dir.path("m.obj"), dir.path("out.obj"), kSquareX, kSquareY, kNoCenter);
    EXPECT_EQ(result.faces, 4);
    EXPECT_EQ(result.kept, 2);
    EXPECT_EQ(readTextFile(dir.path("out.obj")), std::string(kVertices) + "f 1/1 2/1 3/1\nf 1/1 2/1 3/1\n");
}

TEST_F(CropCleanTest, FacesReachingMoreThanTenUnitsNeverStay) {
    writeTextFile(dir.path("m.obj"),
                  "v 0 0 0\nv 10 0 0\nv 0 1 0\nv 10.01 0 0\nv 0 -10 0\n"
                  "f 1 2 3\nf 1 4 3\nf 1 3 5\n");
    const std::vector<double> x = {-50, 50, 50, -50, -50}, y = {-50, -50, 50, 50, -50};
    const CropResult inside = CropObjFile(dir.path("m.obj"), dir.path("a.obj"), x, y, kNoCenter);
    EXPECT_EQ(inside.kept, 1);
    EXPECT_NE(readTextFile(dir.path("a.obj")).find("f 1 2 3\n"), std::string::npos);
    // With no outline the length rule alone trims the margin.
    const CropResult margin = CropObjFile(dir.path("m.obj"), dir.path("b.obj"), {}, {}, kNoCenter);
    EXPECT_EQ(margin.kept, 1);
}

TEST_F(CropCleanTest, VerticesAreTestedAboutTheModelCentre) {
    writeTextFile(dir.path("m.obj"), "v 1001 2001 0\nv 1002 2001 0\nv 1001 2002 0\nf 1 2 3\n");
    const double center[3] = {1000, 2000, 0};
    EXPECT_EQ(CropObjFile(dir.path("m.obj"), dir.path("a.obj"), kSquareX, kSquareY, center).kept, 1);
    EXPECT_EQ(CropObjFile(dir.path("m.obj"), dir.path("b.obj"), kSquareX, kSquareY, kNoCenter).kept, 0);
}

TEST_F(CropCleanTest, ALineLongerThanTheBufferIsReadInPieces) {
    // The piece after the first 99 characters reads as a face of its own,
    // outside the square, and goes; the head of the line stays.
    const std::string head = "#" + std::string(98, 'x');
    writeTextFile(dir.path("m.obj"), std::string(kVertices) + head + "f 2/1 3/1 5/1\n" + "f 1/1 2/1 3/1\n");
    const CropResult result = CropObjFile(dir.path("m.obj"), dir.path("out.obj"), kSquareX, kSquareY, kNoCenter);
    EXPECT_EQ(result.faces, 2);
    EXPECT_EQ(readTextFile(dir.path("out.obj")), std::string(kVertices) + head + "f 1/1 2/1 3/1\n");
}

TEST_F(CropCleanTest, KeptFacesAreWrittenInOneSpellingWhateverTheirInput) {
    writeTextFile(dir.path("m.obj"), std::string(kVertices) +
                                         "f 1/1 2/1 3/1\n"
                                         "f 1/1  2/1 3/1\n"
                                         "f 1/1\t2/1 3/1\n"
                                         "f 01/1 2/1 3/1\n"
                                         "f 1/1 2/1 3/1\r\n"
                                         "f 1/1 2/1 3/1 \n"
                                         "f 1//4 2//4 3//4\n"
                                         "f 1 2/1 3/1\n"
                                         "f 1/1 2/1 3/99999999999\n"  // not a face: copied as it stands
                                         "f 1/1 2/1 3/1");
    const CropResult result = CropObjFile(dir.path("m.obj"), dir.path("out.obj"), {}, {}, kNoCenter);
    EXPECT_EQ(result.faces, 9);
    EXPECT_EQ(result.kept, 9);
    std::string faces;
    for (int i = 0; i < 6; ++i) faces += "f 1/1 2/1 3/1\n";
    EXPECT_EQ(readTextFile(dir.path("out.obj")), std::string(kVertices) + faces +
                                                     "f 1 2 3\n"
                                                     "f 1/0 2/1 3/1\n"
                                                     "f 1/1 2/1 3/99999999999\n"
                                                     "f 1/1 2/1 3/1\n");
}

TEST_F(CropCleanTest, CleanDropsFacesWithTwoCornersInRegions) {
    writeTextFile(dir.path("m.obj"),
                  "v 0 0 0\nv 1 0 0\nv 0 1 0\n"     // 1-3 all in region A
                  "v 10 0 0\nv 20 0 0\nv 30 0 0\n"  // 4 in A? no; 4 in B, 5 in C, 6 nowhere
                  "v 50 0 0\n"                      // 7 in two overlapping regions D and E
                  "f 1 2 3\n"                       // three corners in A: goes
                  "f 4 5 6\n"                       // corners in two different regions: goes
                  "f 7 6 6\n"                       // one corner in two overlapping regions: goes
                  "f 6 4 6\n");                     // one corner in one region: stays
    std::vector<CLEAN> regions = {{1, 0, 0, 0, 2}, {1, 10, 0, 0, 1}, {1, 20, 0, 0, 1}, {1, 50, 0, 0, 1},
                                  {1, 50.5f, 0, 0, 1}};
    const CleanResult result = CleanObjFile(dir.path("m.obj"), dir.path("out.obj"), regions, kNoCenter);
    EXPECT_EQ(result.faces, 4);
    EXPECT_EQ(result.dropped, 3);
    const std::string out = readTextFile(dir.path("out.obj"));
    EXPECT_EQ(out.substr(out.find("f ")), "f 6 4 6\n");
}

TEST_F(CropCleanTest, ListEndingInKindTwoAppliesElevationsToEveryRegion) {
    // Map frame: the model's vertices sit 100 below the regions' elevations
    // except the last face.
    frameState().Offset[2] = 0;
    writeTextFile(dir.path("m_Todelete.txt"), "1 0.00 0.00 50.00 5.00\n2 100.00 0.00 50.00 5.00\n");
    const std::vector<CLEAN> regions = ReadCleanRegions(dir.path("m_Todelete.txt"));
    ASSERT_EQ(regions.size(), 2u);
    EXPECT_EQ(regions[0].MA, 2);
    writeTextFile(dir.path("m.obj"), "v 0 0 10\nv 1 0 10\nv 0 1 10\nv 0 0 60\nv 1 0 60\nv 0 1 60\nf 1 2 3\nf 4 5 6\n");
    const CleanResult result = CleanObjFile(dir.path("m.obj"), dir.path("out.obj"), regions, kNoCenter);
    EXPECT_EQ(result.dropped, 1);
    const std::string out = readTextFile(dir.path("out.obj"));
    EXPECT_EQ(out.substr(out.find("f ")), "f 1 2 3\n");
}

TEST_F(CropCleanTest, RegionListStaysSortedAndUnique) {
    const std::string list = dir.path("x_Todelete.txt");
    ASSERT_TRUE(WriteTodeleteLines(list, {"2 5.00 5.00 1.00 2.00", "1 9.00 9.00 0.00 2.00", "2 5.00 5.00 1.00 2.00"}));
    EXPECT_EQ(readTextFile(list), "1 9.00 9.00 0.00 2.00\n2 5.00 5.00 1.00 2.00\n");
}
