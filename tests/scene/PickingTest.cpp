// Picking on the mesh: points under pixels with their texture colour, the
// rubberband and its notifications, the obstruction point, and right-click
// selection of list items.
#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <cmath>
#include <string>
#include <vector>

#include "scene/engine/CameraMath.h"
#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"
#include "support/SceneBuilders.h"
#include "support/TestSupport.h"

namespace {

using engine::engineState;
using testsupport::expectRgb;
using testsupport::makeRectangle;
using testsupport::makeWallX;

struct Notice {
    void* window;
    int message, wParam, lParam;
};

std::vector<Notice>& notices() {
    static std::vector<Notice> list;
    return list;
}

void recordNotice(void* window, int message, int wParam, int lParam) {
    notices().push_back({window, message, wParam, lParam});
}

void setScene(std::vector<engine::Layer> layers) {
    engineState().layers = std::move(layers);
    engine::invalidateHitIndex();
}

// Straight down on (vx, vy, 0) from 10 m, 90 degrees, 101 x 101 px: one
// pixel is 20 / 101 m on the ground and pixel 50 is the centre.
void topView(double vx, double vy) {
    At3d_ViewTop();
    At3d_SetCameraViewPoint(vx, vy, 0);
    At3d_SetCameraDistance(10);
    At3d_SetCameraFieldOfView(0, 90);
    At3d_Size(101, 101);
}

class PickingTest : public ::testing::Test {
protected:
    testsupport::EngineFixtureGuard guard;
    testsupport::ScratchDir dir;

    void SetUp() override {
        notices().clear();
        At3d_Set_Notify_Function(recordNotice);
        At3d_Init_Mesh_Location(reinterpret_cast<void*>(0x1234), 777);
    }
    void TearDown() override { At3d_Set_Notify_Function(nullptr); }

    // 2 x 2 PNG: red top-left, green top-right, blue bottom-left, yellow bottom-right.
    std::string quadrantTexture() {
        QImage image(2, 2, QImage::Format_RGB32);
        image.setPixelColor(0, 0, QColor(255, 0, 0));
        image.setPixelColor(1, 0, QColor(0, 255, 0));
        image.setPixelColor(0, 1, QColor(0, 0, 255));
        image.setPixelColor(1, 1, QColor(255, 255, 0));
        const std::string path = dir.path("quadrants.png");
        EXPECT_TRUE(image.save(QString::fromStdString(path), "PNG"));
        return path;
    }

    // Textured 10 x 10 ground at z = 0 from the origin, and a plain one east of it.
    void texturedGround() {
        engine::Layer ground = makeRectangle("Ground", 0, 0, 10, 10, 0);
        ground.texturePath = quadrantTexture();
        engine::Layer plain = makeRectangle("Plain", 10, 0, 20, 10, 0);
        plain.texCoords.clear();
        plain.diffuse[0] = 0.2f;
        plain.diffuse[1] = 0.4f;
        plain.diffuse[2] = 0.6f;
        setScene({ground, plain});
    }
};

TEST_F(PickingTest, PixelHitsGiveLayerPointAndTextureColour) {
    texturedGround();
    topView(7.5, 2.5);
    int hit = -1;
    double xyz[3];
    char layer[AT3D_NAME_SIZE], clone[AT3D_NAME_SIZE] = "junk";
    float rgb[3];

    // Centre pixel: the view point, in the bottom-right quadrant (yellow).
    ASSERT_EQ(At3d_Get_Mesh_Location_At_Point(50, 50, &hit, xyz, layer, clone, rgb), 1);
    EXPECT_EQ(hit, AT3D_HIT);
    EXPECT_NEAR(xyz[0], 7.5, 1e-4);
    EXPECT_NEAR(xyz[1], 2.5, 1e-4);
    EXPECT_NEAR(xyz[2], 0, 1e-5);
    EXPECT_STREQ(layer, "Ground");
    EXPECT_STREQ(clone, "");
    expectRgb(rgb, 1, 1, 0);

    // 25 px left and up: (7.5 - 25.25 * 20/101 ...) about (2.5, 7.5), red.
    ASSERT_EQ(At3d_Get_Mesh_Location_At_Point(25, 25, &hit, xyz, layer, clone, rgb), 1);
    EXPECT_NEAR(xyz[0], 7.5 - 25 * 20.0 / 101, 1e-4);
    EXPECT_NEAR(xyz[1], 2.5 + 25 * 20.0 / 101, 1e-4);
    expectRgb(rgb, 1, 0, 0);
    // Up only: top-right, green. Left only: bottom-left, blue.
    ASSERT_EQ(At3d_Get_Mesh_Location_At_Point(50, 25, &hit, xyz, layer, clone, rgb), 1);
    expectRgb(rgb, 0, 1, 0);
    ASSERT_EQ(At3d_Get_Mesh_Location_At_Point(25, 50, &hit, xyz, layer, clone, rgb), 1);
    expectRgb(rgb, 0, 0, 1);

    // East of x = 10: the untextured layer answers with its diffuse colour.
    ASSERT_EQ(At3d_Get_Mesh_Location_At_Point(75, 50, &hit, xyz, layer, clone, rgb), 1);
    EXPECT_STREQ(layer, "Plain");
    EXPECT_NEAR(xyz[0], 7.5 + 25 * 20.0 / 101, 1e-4);
    expectRgb(rgb, 0.2f, 0.4f, 0.6f);

    // West of x = 0: nothing there.
    ASSERT_EQ(At3d_Get_Mesh_Location_At_Point(0, 50, &hit, xyz, layer, clone, rgb), 0);
    EXPECT_EQ(hit, 0);

    At3d_Size(0, 0);
    hit = -1;
    EXPECT_EQ(At3d_Get_Mesh_Location_At_Point(50, 50, &hit, xyz, layer, clone, rgb), 0);
    EXPECT_EQ(hit, 0);
}

TEST_F(PickingTest, NoSceneNoHit) {
    topView(0, 0);
    int hit = -1;
    double xyz[3];
    EXPECT_EQ(At3d_Get_Mesh_Location_At_Point(50, 50, &hit, xyz, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(hit, 0);
}

TEST_F(PickingTest, RubberbandMeasureSequenceAndNotifications) {
    texturedGround();
    topView(7.5, 2.5);
    int hit;
    double xyz[3];
    int sx, sy;
    float rgb[3];

    ASSERT_EQ(At3d_Mouse_Down(50, 50, 1), 0);  // mode off: ignored
    EXPECT_EQ(At3d_Get_Mesh_Location(1, &hit, xyz, &sx, &sy, rgb), 0);
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_MEASURE);

    ASSERT_EQ(At3d_Mouse_Down(50, 50, 1), 1);
    EXPECT_TRUE(notices().empty());
    ASSERT_EQ(At3d_Get_Mesh_Location(1, &hit, xyz, &sx, &sy, rgb), 1);
    EXPECT_NEAR(xyz[0], 7.5, 1e-4);
    EXPECT_EQ(sx, 50);
    EXPECT_EQ(sy, 50);
    expectRgb(rgb, 1, 1, 0);
    EXPECT_EQ(At3d_Get_Mesh_Location(2, &hit, xyz, &sx, &sy, rgb), 0);

    ASSERT_EQ(At3d_Mouse_Down(25, 25, 1), 1);
    ASSERT_EQ(notices().size(), 1u);
    EXPECT_EQ(notices()[0].window, reinterpret_cast<void*>(0x1234));
    EXPECT_EQ(notices()[0].message, 777);
    EXPECT_EQ(notices()[0].wParam, AT3D_NOTIFY_RUBBERBAND);
    EXPECT_EQ(notices()[0].lParam, 1);
    ASSERT_EQ(At3d_Get_Mesh_Location(2, &hit, xyz, &sx, &sy, rgb), 1);
    EXPECT_EQ(sx, 25);
    expectRgb(rgb, 1, 0, 0);

    // A click off the mesh changes nothing and posts nothing.
    ASSERT_EQ(At3d_Mouse_Down(0, 50, 1), 0);
    EXPECT_EQ(notices().size(), 1u);
    EXPECT_EQ(At3d_Get_Mesh_Location(2, &hit, xyz, &sx, &sy, rgb), 1);

    // A third click starts again: new point 1, no point 2, no notification.
    ASSERT_EQ(At3d_Mouse_Down(75, 50, 1), 1);
    EXPECT_EQ(notices().size(), 1u);
    ASSERT_EQ(At3d_Get_Mesh_Location(1, &hit, xyz, &sx, &sy, rgb), 1);
    EXPECT_EQ(sx, 75);
    EXPECT_EQ(At3d_Get_Mesh_Location(2, &hit, xyz, &sx, &sy, rgb), 0);
    EXPECT_EQ(hit, 0);

    // Pause: clicks are ignored.
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_PAUSE);
    EXPECT_EQ(At3d_Mouse_Down(50, 50, 1), 0);
    EXPECT_EQ(At3d_Get_Mesh_Location(2, &hit, xyz, &sx, &sy, rgb), 0);

    EXPECT_EQ(At3d_Get_Mesh_Location(0, &hit, xyz, &sx, &sy, rgb), 0);
    EXPECT_EQ(At3d_Get_Mesh_Location(5, &hit, xyz, &sx, &sy, rgb), 0);
}

TEST_F(PickingTest, SwitchingPickingOnFromOffStartsANewLine) {
    texturedGround();
    topView(7.5, 2.5);
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_MEASURE);
    ASSERT_EQ(At3d_Mouse_Down(50, 50, 1), 1);
    // The tool was put away after one click: its end must not start the next line.
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_OFF);
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_MEASURE);
    int hit, sx, sy;
    double xyz[3];
    EXPECT_EQ(At3d_Get_Mesh_Location(1, &hit, xyz, &sx, &sy, nullptr), 0);
    ASSERT_EQ(At3d_Mouse_Down(25, 25, 1), 1);
    EXPECT_TRUE(notices().empty());
    ASSERT_EQ(At3d_Get_Mesh_Location(1, &hit, xyz, &sx, &sy, nullptr), 1);
    EXPECT_EQ(sx, 25);
    // A pause and its continuation keep the line.
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_PAUSE);
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_MEASURE);
    EXPECT_EQ(At3d_Get_Mesh_Location(1, &hit, xyz, &sx, &sy, nullptr), 1);
}

TEST_F(PickingTest, ContinueModeChainsSegments) {
    texturedGround();
    topView(7.5, 2.5);
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_CONTINUE);
    int hit, sx, sy;
    double xyz[3];
    ASSERT_EQ(At3d_Mouse_Down(50, 50, 1), 1);
    ASSERT_EQ(At3d_Mouse_Down(25, 25, 1), 1);
    ASSERT_EQ(At3d_Mouse_Down(75, 50, 1), 1);  // the old point 2 becomes point 1
    ASSERT_EQ(notices().size(), 2u);
    EXPECT_EQ(notices()[1].wParam, AT3D_NOTIFY_RUBBERBAND);
    ASSERT_EQ(At3d_Get_Mesh_Location(1, &hit, xyz, &sx, &sy, nullptr), 1);
    EXPECT_EQ(sx, 25);
    EXPECT_EQ(sy, 25);
    ASSERT_EQ(At3d_Get_Mesh_Location(2, &hit, xyz, &sx, &sy, nullptr), 1);
    EXPECT_EQ(sx, 75);
    ASSERT_EQ(At3d_Mouse_Down(50, 25, 1), 1);
    EXPECT_EQ(notices().size(), 3u);
    At3d_Get_Mesh_Location(1, &hit, xyz, &sx, &sy, nullptr);
    EXPECT_EQ(sx, 75);
}

TEST_F(PickingTest, ObserverFollowsPointOne) {
    texturedGround();
    topView(7.5, 2.5);
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_MEASURE);
    const double delta[3] = {0, 0, 1.7};
    ASSERT_EQ(At3d_Add_Mesh_Location_Observer(delta, 1), 1);
    int hit;
    double xyz[3];
    EXPECT_EQ(At3d_Get_Mesh_Location(4, &hit, xyz, nullptr, nullptr, nullptr), 0);  // no point 1 yet
    ASSERT_EQ(At3d_Mouse_Down(50, 50, 1), 1);
    ASSERT_EQ(At3d_Get_Mesh_Location(4, &hit, xyz, nullptr, nullptr, nullptr), 1);
    EXPECT_NEAR(xyz[0], 7.5, 1e-4);
    EXPECT_NEAR(xyz[2], 1.7, 1e-5);
    ASSERT_EQ(At3d_Cancel_Mesh_Location_Observer(), 1);
    EXPECT_EQ(At3d_Get_Mesh_Location(4, &hit, xyz, nullptr, nullptr, nullptr), 0);
    EXPECT_FALSE(engineState().observerActive);
}

TEST_F(PickingTest, ObstructionOnTheLineOfSight) {
    // Ground 20 x 10 with a 5 m wall across it at x = 10; looking down on
    // the wall's middle from 20 m.
    setScene({makeRectangle("Ground", 0, 0, 20, 10, 0), makeWallX("Wall", 10, 0, 10, 0, 5)});
    At3d_ViewTop();
    At3d_SetCameraViewPoint(10, 5, 0);
    At3d_SetCameraDistance(20);
    At3d_SetCameraFieldOfView(0, 90);
    At3d_Size(101, 101);

    double xyz[3];
    int hit = 0, sx = -1, sy = -1;
    float rgb[3];
    EXPECT_EQ(At3d_Get_Mesh_Obstruction_Point(xyz, &sx, &sy, rgb), -1);  // no ends

    // Ends 1 m up on either side of the wall.
    auto& rb = engineState().rubberband;
    rb[1].hitFlag = AT3D_HIT;
    rb[1].xyz[0] = 5;
    rb[1].xyz[1] = 5;
    rb[1].xyz[2] = 1;
    EXPECT_EQ(At3d_Get_Mesh_Obstruction_Point(xyz, &sx, &sy, rgb), -1);  // one end only
    rb[2] = rb[1];
    rb[2].xyz[0] = 15;
    ASSERT_EQ(At3d_Get_Mesh_Obstruction_Point(xyz, &sx, &sy, rgb), 1);
    EXPECT_NEAR(xyz[0], 10, 1e-4);
    EXPECT_NEAR(xyz[1], 5, 1e-4);
    EXPECT_NEAR(xyz[2], 1, 1e-4);
    EXPECT_EQ(sx, 50);
    EXPECT_EQ(sy, 50);
    expectRgb(rgb, 0.8f, 0.8f, 0.8f);  // the wall's diffuse colour
    EXPECT_EQ(At3d_Get_Mesh_Location(3, &hit, xyz, nullptr, nullptr, nullptr), 1);

    // From an observer 3 m above point 1 the line drops to 2.5 m at the wall.
    const double low[3] = {0, 0, 3};
    At3d_Add_Mesh_Location_Observer(low, 1);
    ASSERT_EQ(At3d_Get_Mesh_Obstruction_Point(xyz, &sx, &sy, rgb), 1);
    EXPECT_NEAR(xyz[2], 2.5, 1e-4);
    // 10 m above, it passes the wall at 6 m: clear, and the stored point goes.
    const double high[3] = {0, 0, 10};
    At3d_Add_Mesh_Location_Observer(high, 1);
    EXPECT_EQ(At3d_Get_Mesh_Obstruction_Point(xyz, &sx, &sy, rgb), 0);
    EXPECT_EQ(At3d_Get_Mesh_Location(3, &hit, xyz, nullptr, nullptr, nullptr), 0);
    At3d_Cancel_Mesh_Location_Observer();

    // Hits nearer than the skip distance don't count (the wall is 5 m away).
    ASSERT_EQ(At3d_Set_Mesh_Obstruction_Parameters(nullptr, 10, 1, 6.0), 1);
    EXPECT_EQ(At3d_Get_Mesh_Obstruction_Point(xyz, &sx, &sy, rgb), 0);
    EXPECT_EQ(At3d_Set_Mesh_Obstruction_Parameters(nullptr, 10, 1, -1.0), 0);
    ASSERT_EQ(At3d_Set_Mesh_Obstruction_Parameters(nullptr, 10, 1, 0.0), 1);

    // Without the wall the line is clear.
    engineState().layers[1].outputFlag = false;
    engine::invalidateHitIndex();
    EXPECT_EQ(At3d_Get_Mesh_Obstruction_Point(xyz, &sx, &sy, rgb), 0);
}

TEST_F(PickingTest, ClipMovesPointTwoToTheObstruction) {
    setScene({makeRectangle("Ground", 0, 0, 20, 10, 0), makeWallX("Wall", 10, 0, 10, 0, 5)});
    topView(10, 5);
    auto& rb = engineState().rubberband;
    EXPECT_EQ(At3d_Clip_At_Mesh_Obstruction_Point(), 0);
    rb[1].hitFlag = AT3D_HIT;
    rb[1].xyz[0] = 5;
    rb[1].xyz[2] = 1;
    rb[1].xyz[1] = 5;
    rb[2] = rb[1];
    rb[2].xyz[0] = 15;

    ASSERT_EQ(At3d_Clip_At_Mesh_Obstruction_Point(), 1);  // found without asking first
    int hit = 0;
    double xyz[3];
    ASSERT_EQ(At3d_Get_Mesh_Location(2, &hit, xyz, nullptr, nullptr, nullptr), 1);
    EXPECT_NEAR(xyz[0], 10, 1e-4);
    EXPECT_NEAR(xyz[2], 1, 1e-4);
    EXPECT_EQ(At3d_Get_Mesh_Location(3, &hit, xyz, nullptr, nullptr, nullptr), 0);
    // The line now ends at the wall: nothing left in the way.
    EXPECT_EQ(At3d_Get_Mesh_Obstruction_Point(xyz, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(At3d_Clip_At_Mesh_Obstruction_Point(), 0);
}

TEST_F(PickingTest, RightClickSelectsTheNearestItem) {
    topView(0, 0);
    // Line 0 runs 1 m north of the centre (screen y 45.45), line 1 0.6 m
    // south (53.53). The click's centre (50.5, 52.5) is 7.05 px from line 0
    // and 1.03 px from line 1.
    const double a1[3] = {-5, 1, 0}, a2[3] = {5, 1, 0};
    const double b1[3] = {-5, -0.6, 0}, b2[3] = {5, -0.6, 0};
    ASSERT_EQ(At3d_MeasureList_Add_Item("north", 1, 0, 0, 1, nullptr, a1, a2, nullptr, nullptr), 1);
    ASSERT_EQ(At3d_MeasureList_Add_Item("south", 1, 0, 0, 1, nullptr, b1, b2, nullptr, nullptr), 1);
    const double spherePos[3] = {3, 3, 0};  // screen (65.65, 35.35)
    ASSERT_EQ(At3d_Sphere_Marker_Add("ball", 1, spherePos, nullptr, nullptr, 0, 500, 0, 1), 1);
    const double far[3] = {40, 40, 0}, bbPos[3] = {-3, -3, 0};  // second one at screen (35.35, 65.65)
    ASSERT_EQ(At3d_Measure_Billboard_Add_Item("far", nullptr, 0, 0, 0, 0, 0, 1, 0, 0, nullptr, 1, 1, far, nullptr,
                                              nullptr),
              1);
    ASSERT_EQ(At3d_Measure_Billboard_Add_Item("sign", nullptr, 0, 0, 0, 0, 0, 1, 0, 0, nullptr, 1, 1, bbPos,
                                              nullptr, nullptr),
              1);

    EXPECT_EQ(At3d_Mouse_Down(50, 52, 2), 0);  // selection is off
    At3d_WriteFlag(LIBFLAG_SELECT_MEASURE, 1);

    ASSERT_EQ(At3d_Mouse_Down(50, 52, 2), 1);
    EXPECT_EQ(At3d_MeasureList_Get_Selected(), 1);
    ASSERT_EQ(notices().size(), 1u);
    EXPECT_EQ(notices()[0].wParam, AT3D_NOTIFY_MEASURE_BASE + 1);

    // A hidden line can't be picked: the other one, 7.05 px away, wins.
    engineState().measures[1].visible_Flag = 0;
    ASSERT_EQ(At3d_Mouse_Down(50, 52, 2), 1);
    EXPECT_EQ(At3d_MeasureList_Get_Selected(), 0);
    EXPECT_EQ(notices().back().wParam, AT3D_NOTIFY_MEASURE_BASE + 0);

    // Nothing within 8 px: no change, no notification.
    EXPECT_EQ(At3d_Mouse_Down(50, 70, 2), 0);
    EXPECT_EQ(At3d_MeasureList_Get_Selected(), 0);
    EXPECT_EQ(notices().size(), 2u);

    ASSERT_EQ(At3d_Mouse_Down(65, 35, 2), 1);
    EXPECT_EQ(At3d_Sphere_Marker_Get_Selected(), 0);
    EXPECT_EQ(At3d_MeasureList_Get_Selected(), -1);
    EXPECT_EQ(notices().back().wParam, AT3D_NOTIFY_SPHERE_BASE + 0);

    ASSERT_EQ(At3d_Mouse_Down(35, 65, 2), 1);
    EXPECT_EQ(At3d_Measure_Billboard_Get_Selected(), 1);
    EXPECT_EQ(At3d_Sphere_Marker_Get_Selected(), -1);
    EXPECT_EQ(notices().back().wParam, AT3D_NOTIFY_BILLBOARD_BASE + 1);
    EXPECT_EQ(notices().size(), 4u);
}

}  // namespace
