// Render modes of flag 79, the strobe of sphere markers and where a
// billboard's picture stands.
#include <gtest/gtest.h>

#include <cmath>

#include "scene/render/BillboardGeometry.h"
#include "scene/render/RenderModes.h"
#include "support/TestSupport.h"

namespace {

using render::RenderMode;
using testsupport::expectRgb;
using testsupport::expectVec;

TEST(RenderModes, TheThreeValuesOfTheSwitch) {
    EXPECT_EQ(render::renderModeFromFlag(0), RenderMode::Textured);
    EXPECT_EQ(render::renderModeFromFlag(3), RenderMode::HeightColour);
    EXPECT_EQ(render::renderModeFromFlag(8), RenderMode::Wireframe);
    EXPECT_EQ(render::renderModeFromFlag(5), RenderMode::Textured);
    EXPECT_EQ(render::renderModeFromFlag(-1), RenderMode::Textured);
}

TEST(RenderModes, StrobeTakesTurnsEveryInterval) {
    engine::SphereMarker marker;
    marker.rgb1[0] = 1, marker.rgb1[1] = 0, marker.rgb1[2] = 0;
    marker.rgb2[0] = 0, marker.rgb2[1] = 0, marker.rgb2[2] = 1;
    marker.interval = 400;
    float rgb[3];
    render::sphereColourAt(marker, 1000, rgb);
    expectRgb(rgb, 1, 0, 0);  // steady
    marker.color2Flag = 1;
    render::sphereColourAt(marker, 1000, rgb);
    expectRgb(rgb, 0, 0, 1);

    marker.strobeFlag = 1;
    const struct { long long ms; float blue; } turns[] = {{0, 0}, {399, 0}, {400, 1}, {799, 1}, {800, 0}, {1250, 1}};
    for (const auto& turn : turns) {
        render::sphereColourAt(marker, turn.ms, rgb);
        EXPECT_FLOAT_EQ(rgb[2], turn.blue) << turn.ms;
    }
    marker.interval = 0;  // no interval, no strobe: the steady colour
    render::sphereColourAt(marker, 400, rgb);
    expectRgb(rgb, 0, 0, 1);
}

BILLBOARD_DATA billboard(int pivotType, int isStatic, double azimuth) {
    BILLBOARD_DATA data{};
    data.imageWidth = 200;
    data.imageHeight = 100;
    data.height = 2;  // so 4 m wide
    data.pivotTypeFlag = pivotType;
    data.staticFlag = isStatic;
    data.pivot[0] = 10, data.pivot[1] = 20, data.pivot[2] = 5;
    data.rotationStatic[1] = azimuth;
    return data;
}

engine::ViewFrame lookingNorth() {
    engine::ViewFrame frame{};
    frame.forward[1] = 1;
    frame.up[2] = 1;
    frame.right[0] = 1;
    frame.fieldOfView = 45;
    return frame;
}

TEST(BillboardGeometry, FacingTheViewerAndPivotTypes) {
    render::BillboardQuad quad;
    ASSERT_TRUE(render::billboardQuad(billboard(2, 0, 0), lookingNorth(), quad));
    expectVec(quad.corners[0], 8, 20, 5);  // bottom edge centred on the pivot
    expectVec(quad.corners[2], 12, 20, 7);
    ASSERT_TRUE(render::billboardQuad(billboard(0, 0, 0), lookingNorth(), quad));
    expectVec(quad.corners[0], 8, 20, 4);  // centred
    ASSERT_TRUE(render::billboardQuad(billboard(1, 0, 0), lookingNorth(), quad));
    expectVec(quad.corners[0], 10, 20, 5);  // bottom-left corner on the pivot
    expectVec(quad.corners[1], 14, 20, 5);

    engine::ViewFrame down = lookingNorth();  // from above the picture lies flat, up to the north
    down.forward[1] = 0, down.forward[2] = -1;
    down.up[2] = 0, down.up[1] = 1;
    ASSERT_TRUE(render::billboardQuad(billboard(2, 0, 0), down, quad));
    expectVec(quad.corners[3], 8, 22, 5);
}

TEST(BillboardGeometry, StaticPicturesKeepTheirAzimuth) {
    render::BillboardQuad quad;
    // Made while the camera looked east (90): the picture's right runs south.
    ASSERT_TRUE(render::billboardQuad(billboard(2, 1, 90), lookingNorth(), quad));
    expectVec(quad.corners[0], 10, 22, 5, 1e-9);
    expectVec(quad.corners[1], 10, 18, 5, 1e-9);
    expectVec(quad.corners[2], 10, 18, 7, 1e-9);

    BILLBOARD_DATA empty = billboard(2, 0, 0);
    empty.imageHeight = 0;
    EXPECT_FALSE(render::billboardQuad(empty, lookingNorth(), quad));
    empty = billboard(2, 0, 0);
    empty.height = 0;
    EXPECT_FALSE(render::billboardQuad(empty, lookingNorth(), quad));
}

}  // namespace
