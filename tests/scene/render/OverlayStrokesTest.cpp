// The lists as lines and points: what is drawn, in which colour and size,
// and whether the mesh may hide it.
#include <gtest/gtest.h>

#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"
#include "scene/render/OverlayStrokes.h"
#include "support/TestSupport.h"

namespace {

using engine::engineState;
using testsupport::expectRgb;
using testsupport::expectVec;

class OverlayStrokesTest : public ::testing::Test {
protected:
    testsupport::EngineFixtureGuard guard;
    const double a[3] = {0, 0, 0}, b[3] = {10, 0, 0}, observer[3] = {0, 0, 1.7}, obstruction[3] = {5, 0, 1};
    const float blue[3] = {0, 0, 1};

    void addItem(int visible, int withObserver, int withObstruction) {
        At3d_MeasureList_Add_Item("m", visible, withObserver, withObstruction, 3, blue, a, b, observer, obstruction);
    }
};

TEST_F(OverlayStrokesTest, MeasureListIsDrawnOnlyWhenShown) {
    addItem(1, 0, 0);
    EXPECT_TRUE(render::overlayStrokes(engineState()).onTop.empty());
    At3d_WriteFlag(LIBFLAG_SHOW_MEASURES, 1);
    const render::StrokeSet set = render::overlayStrokes(engineState());
    ASSERT_EQ(set.onTop.size(), 1u);
    EXPECT_TRUE(set.depthTested.empty());
    const render::Stroke& line = set.onTop[0];
    EXPECT_TRUE(line.line);
    EXPECT_FLOAT_EQ(line.size, 3);
    expectRgb(line.rgb, 0, 0, 1);
    expectVec(line.b, 10, 0, 0);
}

TEST_F(OverlayStrokesTest, SelectionHiddenItemsPointsObserverAndObstruction) {
    At3d_WriteFlag(LIBFLAG_SHOW_MEASURES, 1);
    addItem(0, 1, 1);  // hidden: nothing of it is drawn
    addItem(1, 1, 1);
    const float green[3] = {0, 1, 0}, red[3] = {1, 0, 0}, magenta[3] = {1, 0, 1};
    At3d_MeasureList_Set_Parameters(blue, green, red, 2, 9, 0, 1);
    At3d_MeasureList_Set_Selected_Color(magenta);
    const float grey[3] = {0.5f, 0.5f, 0.5f};
    At3d_MeasureList_Set_Obstruction_Parameters(grey, 11, 1);
    engineState().selectedMeasure = 1;

    const std::vector<render::Stroke> strokes = render::overlayStrokes(engineState()).onTop;
    // line, two end points, observer stem and point, obstruction point
    ASSERT_EQ(strokes.size(), 6u);
    expectRgb(strokes[0].rgb, 1, 0, 1);
    expectRgb(strokes[1].rgb, 0, 1, 0);
    EXPECT_FLOAT_EQ(strokes[1].size, 9);
    expectRgb(strokes[2].rgb, 1, 0, 0);
    EXPECT_TRUE(strokes[3].line);
    expectVec(strokes[3].b, 0, 0, 1.7);
    EXPECT_FALSE(strokes[4].line);
    expectVec(strokes[4].a, 0, 0, 1.7);
    expectRgb(strokes[5].rgb, 0.5f, 0.5f, 0.5f);
    EXPECT_FLOAT_EQ(strokes[5].size, 11);
    expectVec(strokes[5].a, 5, 0, 1);

    At3d_MeasureList_Set_Obstruction_Parameters(grey, 11, 0);
    EXPECT_EQ(render::overlayStrokes(engineState()).onTop.size(), 5u);
    // The list's own depth setting hides it behind the mesh as LIBFLAG_MEASURE_DEPTH does.
    engineState().measureLook.depthTest = 1;
    EXPECT_EQ(render::overlayStrokes(engineState()).depthTested.size(), 5u);
}

TEST_F(OverlayStrokesTest, RubberbandShowsWhileMeasuringWithItsObserver) {
    engine::RubberbandPoint* rb = engineState().rubberband;
    const auto twoEnds = [rb] {
        rb[1].hitFlag = rb[2].hitFlag = AT3D_HIT;
        rb[2].xyz[0] = 10;
    };
    twoEnds();
    EXPECT_TRUE(render::overlayStrokes(engineState()).onTop.empty());  // mesh location off

    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_MEASURE);
    twoEnds();
    std::vector<render::Stroke> strokes = render::overlayStrokes(engineState()).onTop;
    ASSERT_EQ(strokes.size(), 3u);  // the line and both ends
    expectRgb(strokes[0].rgb, 1, 0, 0);

    engineState().observerActive = true;
    rb[4].hitFlag = AT3D_HIT;
    rb[4].xyz[2] = 1.7;
    rb[3].hitFlag = AT3D_HIT;
    strokes = render::overlayStrokes(engineState()).onTop;
    // line, stem, line of sight, two ends, observer point, obstruction point
    ASSERT_EQ(strokes.size(), 7u);
    expectVec(strokes[2].a, 0, 0, 1.7);
    expectVec(strokes[2].b, 10, 0, 0);

    engineState().rubberbandLook.depthTest = 1;
    EXPECT_EQ(render::overlayStrokes(engineState()).depthTested.size(), 7u);
}

TEST_F(OverlayStrokesTest, BillboardStemsRunFromTheFootToThePivot) {
    At3d_WriteFlag(LIBFLAG_SHOW_BILLBOARDS, 1);
    const UInt8 pixel[4] = {0, 0, 0, 255};
    const double position[3] = {1, 2, 3}, pivot[3] = {1, 2.5, 3}, rotation[3] = {0, 0, 0};
    const float rgb[3] = {0, 1, 1};
    At3d_Measure_Billboard_Add_Item("b", pixel, 1, 1, 1, 2, 0, 1, 1, 0, rgb, 4, 1, position, pivot, rotation);
    At3d_Measure_Billboard_Add_Item("hidden", pixel, 1, 1, 1, 2, 0, 0, 1, 0, rgb, 4, 1, position, pivot, rotation);
    const std::vector<render::Stroke> strokes = render::overlayStrokes(engineState()).depthTested;
    ASSERT_EQ(strokes.size(), 1u);
    expectVec(strokes[0].a, 1, 2, 3);
    expectVec(strokes[0].b, 1, 2.5, 3);
    EXPECT_FLOAT_EQ(strokes[0].size, 4);
}

}  // namespace
