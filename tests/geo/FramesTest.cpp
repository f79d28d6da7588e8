// The local and map frames and the ground under a point.
#include <gtest/gtest.h>

#include "geo/Frames.h"
#include "scene/engine_interface.h"
#include "support/SceneBuilders.h"
#include "support/TestSupport.h"

using testsupport::addLayer;
using testsupport::makeSquare;

namespace {

class Frames : public ::testing::Test {
protected:
    testsupport::EngineFixtureGuard engine;
    void SetUp() override {
        resetFrameState();
        FrameState& f = frameState();
        f.OriginalobjectCenter[0] = 178000;
        f.OriginalobjectCenter[1] = 663000;
        f.OriginalobjectCenter[2] = 40;
        f.Offset[0] = 1000;
        f.Offset[1] = 2000;
        f.Offset[2] = 3;
        // Ground at local 0 and a 10 m roof 5 m above its middle: an overhang.
        addLayer(makeSquare("ground", 0, 0, 0, 100));
        addLayer(makeSquare("roof", 0, 0, 5, 10));
    }
    void TearDown() override { resetFrameState(); }
};

}  // namespace

TEST_F(Frames, LocalOriginShowsTheCentrePlusTheOffset) {
    EXPECT_EQ(OC(0), 179000);
    EXPECT_EQ(OC(1), 665000);
    EXPECT_EQ(OC(2), 43);
    const double v1[3] = {0, 0, 1}, v2[3] = {0, 0, -1};
    double hit[3];
    ASSERT_GT(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 0, hit, 0), 0);
    EXPECT_DOUBLE_EQ(hit[0] + OC(0), 179000);
    EXPECT_DOUBLE_EQ(hit[1] + OC(1), 665000);
    EXPECT_DOUBLE_EQ(hit[2] + OC(2), 43);
}

TEST_F(Frames, MapQueryGivesTheHighestSurfaceLocalQueryTheLowestAndOffTheModelMinus9999) {
    EXPECT_DOUBLE_EQ(GetZFromXY(179001, 665002), 48);
    EXPECT_DOUBLE_EQ(GetZFromXYLocal(1, 2), 0);
    // Beside the roof both find the ground.
    EXPECT_DOUBLE_EQ(GetZFromXY(179020, 665000), 43);
    EXPECT_DOUBLE_EQ(GetZFromXYLocal(20, 0), 0);
    EXPECT_EQ(GetZFromXY(179000 + 80, 665000), -9999);
    EXPECT_EQ(GetZFromXYLocal(80, 0), -9999);
    // A map point taken for a local one misses the model entirely.
    EXPECT_EQ(GetZFromXYLocal(179000, 665000), -9999);
}
