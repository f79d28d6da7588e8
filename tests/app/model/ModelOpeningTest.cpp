// Opening a model headless: side files and the frames that follow from them.
#include <gtest/gtest.h>

#include "app/model/ModelOpening.h"
#include "geo/Frames.h"
#include "scene/engine_interface.h"
#include "support/TestSupport.h"

using testsupport::EngineFixtureGuard;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

const char* SQUARE =
    "# Model\n"
    "v 100 200 10\nv 110 200 10\nv 110 210 20\nv 100 210 20\n"
    "f 1 2 3 4\n";

class ModelOpening : public ::testing::Test {
protected:
    EngineFixtureGuard engine;
    ScratchDir dir;
    void SetUp() override { resetFrameState(); }
};

}  // namespace

TEST_F(ModelOpening, OffsetLineWithCommasReadsAsThreeNumbers) {
    writeTextFile(dir.path("offset.txt"), "100,200,30\nignored line\n");
    double offset[3] = {0, 0, 0};
    ASSERT_TRUE(ReadOffsetFile(dir.path("offset.txt"), offset));
    EXPECT_EQ(offset[0], 100);
    EXPECT_EQ(offset[1], 200);
    EXPECT_EQ(offset[2], 30);
}

TEST_F(ModelOpening, AnOffsetWordThatIsNotAFiniteNumberEndsTheLineWithAMessage) {
    double offset[3] = {1, 2, 3};
    std::string problem;
    writeTextFile(dir.path("offset.txt"), "1e400,2,3\r\n");
    ASSERT_TRUE(ReadOffsetFile(dir.path("offset.txt"), offset, &problem));
    EXPECT_EQ(problem, dir.path("offset.txt") +
                           ": the line \"1e400,2,3\" holds \"1e400\", which is not a finite number; the offset is "
                           "1.000 2.000 3.000");
    // The words before it count; the entries from it on keep what they had.
    writeTextFile(dir.path("offset.txt"), "178000.5 nan -7\n");
    ASSERT_TRUE(ReadOffsetFile(dir.path("offset.txt"), offset, &problem));
    EXPECT_EQ(offset[0], 178000.5);
    EXPECT_EQ(offset[1], 2);
    EXPECT_EQ(offset[2], 3);
    EXPECT_NE(problem.find("holds \"nan\""), std::string::npos) << problem;
    problem.clear();
    writeTextFile(dir.path("offset.txt"), " -1.5e3,+2 \n");
    ASSERT_TRUE(ReadOffsetFile(dir.path("offset.txt"), offset, &problem));
    EXPECT_EQ(offset[0], -1500);
    EXPECT_EQ(offset[1], 2);
    EXPECT_EQ(offset[2], 3);
    EXPECT_EQ(problem, "");
}

TEST_F(ModelOpening, OffsetTxtCountsOverZuzWhateverTheCase) {
    writeTextFile(dir.path("m.obj"), SQUARE);
    writeTextFile(dir.path("m.ZUZ"), "1 2 3\n");
    EXPECT_EQ(FindOffsetFile(dir.path("m.obj")), dir.path("m.ZUZ"));
    writeTextFile(dir.path("Offset.TXT"), "4 5 6\n");
    EXPECT_EQ(FindOffsetFile(dir.path("m.obj")), dir.path("Offset.TXT"));
}

TEST_F(ModelOpening, FramesFollowFromCentreAndOffset) {
    writeTextFile(dir.path("m.obj"), SQUARE);
    writeTextFile(dir.path("m.zuz"), "178000.5 663000.25 -3\n");
    OpenedModel opened;
    ASSERT_TRUE(OpenModelHeadless(dir.path("m.obj"), opened));
    const FrameState& f = frameState();
    EXPECT_DOUBLE_EQ(f.OriginalobjectCenter[0], 105);
    EXPECT_DOUBLE_EQ(f.OriginalobjectCenter[1], 205);
    EXPECT_DOUBLE_EQ(f.OriginalobjectCenter[2], 15);
    EXPECT_DOUBLE_EQ(OC(0), 178105.5);
    EXPECT_DOUBLE_EQ(OC(2), 12);
    EXPECT_DOUBLE_EQ(f.OriginalModelMinMax[0], 178100.5);
    EXPECT_DOUBLE_EQ(f.OriginalModelMinMax[5], 17);
    EXPECT_DOUBLE_EQ(f.BeforeRotateModelMinMax[0], 100);
    EXPECT_NEAR(f.LOCALCENTER[0], 0, 1e-12);
    // The engine now holds the local frame.
    double v[3];
    At3d_GetVertex(0, "m", v);
    EXPECT_DOUBLE_EQ(v[0], -5);
    // Ground under the map point of the first corner's neighbourhood.
    EXPECT_NEAR(GetZFromXY(178105.5 + 0.1, 663205.25), 12, 1e-9);
    EXPECT_EQ(GetZFromXY(0, 0), -9999);
}

TEST_F(ModelOpening, AnOffsetIsOnlyEverReplacedNeverReset) {
    writeTextFile(dir.path("a/m.obj"), SQUARE);
    writeTextFile(dir.path("a/offset.txt"), "10 20 30\n");
    writeTextFile(dir.path("b/n.obj"), SQUARE);
    OpenedModel opened;
    ASSERT_TRUE(OpenModelHeadless(dir.path("a/m.obj"), opened));
    ASSERT_TRUE(OpenModelHeadless(dir.path("b/n.obj"), opened));
    EXPECT_EQ(opened.offsetPath, "");
    EXPECT_EQ(frameState().Offset[0], 10);
    EXPECT_EQ(frameState().Offset[2], 30);
}

TEST_F(ModelOpening, UnreadableModelLeavesFileLoadedZero) {
    writeTextFile(dir.path("bad.obj"), "v 1 2\n");
    OpenedModel opened;
    EXPECT_FALSE(OpenModelHeadless(dir.path("bad.obj"), opened));
    EXPECT_EQ(opened.fileLoaded, 0);
    EXPECT_FALSE(OpenModelHeadless(dir.path("model.xyz"), opened));
}

TEST_F(ModelOpening, ExtensionsMapToReadTypesInAnyCase) {
    EXPECT_EQ(ModelTypeOfExtension("a/B.OBJ"), AT3D_READ_OBJ);
    EXPECT_EQ(ModelTypeOfExtension("x.Dae"), AT3D_READ_DAE);
    EXPECT_EQ(ModelTypeOfExtension("dir.obj/file"), -1);
    EXPECT_EQ(ModelTypeOfExtension("x.shp"), -1);
}
