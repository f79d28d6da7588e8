// The default orbit camera, the roaming cameras and the camera geometry
// (rays, projection, fitting), against hand-worked values.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "scene/engine/CameraMath.h"
#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"
#include "support/TestSupport.h"

namespace {

using engine::engineState;

using testsupport::expectVec;

class CameraTest : public ::testing::Test {
protected:
    testsupport::EngineFixtureGuard guard;

    // Straight down on (vx, vy, 0) from height `distance`, 90 degree field.
    void topView(double vx, double vy, double distance, int width, int height) {
        ASSERT_EQ(At3d_ViewTop(), 1);
        ASSERT_EQ(At3d_SetCameraViewPoint(vx, vy, 0), 1);
        ASSERT_EQ(At3d_SetCameraDistance(distance), 1);
        ASSERT_EQ(At3d_SetCameraFieldOfView(0, 90), 1);
        ASSERT_EQ(At3d_Size(width, height), 1);
    }
};

TEST_F(CameraTest, OrbitFrameForAzimuth90Tilt30) {
    ASSERT_EQ(At3d_RotateCamera(0, 30, 0, 90), 1);
    ASSERT_EQ(At3d_SetCameraViewPoint(1, 2, 3), 1);
    ASSERT_EQ(At3d_SetCameraDistance(10), 1);

    // forward = (cos 30, 0, -sin 30): looking east and down; the eye stands
    // 10 m back along it, i.e. west of and above the view point.
    const engine::ViewFrame f = engine::currentViewFrame(engineState());
    expectVec(f.forward, std::sqrt(3.0) / 2, 0, -0.5);
    expectVec(f.eye, 1 - 5 * std::sqrt(3.0), 2, 8);
    expectVec(f.up, 0.5, 0, std::sqrt(3.0) / 2);
    expectVec(f.right, 0, -1, 0);  // looking east, south is to the right

    double eye[3], center[3], roll = -1, fov = 0;
    ASSERT_EQ(At3d_Get_Roaming_Data("Default", eye, center, &roll, &fov, 0), 1);
    expectVec(eye, 1 - 5 * std::sqrt(3.0), 2, 8);
    expectVec(center, 1, 2, 3);
    EXPECT_EQ(roll, 0);
    EXPECT_EQ(fov, engineState().camera.fieldOfView);
}

TEST_F(CameraTest, RollTurnsUpTowardsRight) {
    ASSERT_EQ(At3d_RotateCamera(0, 0, 90, 0), 1);  // looking north, rolled 90
    const engine::ViewFrame f = engine::currentViewFrame(engineState());
    expectVec(f.forward, 0, 1, 0);
    expectVec(f.up, 1, 0, 0);
    expectVec(f.right, 0, 0, -1);
}

TEST_F(CameraTest, PresetsSetAnglesAndKeepDistanceAndViewPoint) {
    struct Preset {
        int (*call)();
        double tilt, azimuth;
        double forward[3];
    };
    const Preset presets[] = {
        {At3d_ViewTop, 90, 0, {0, 0, -1}},  {At3d_ViewBottom, -90, 0, {0, 0, 1}},
        {At3d_ViewFront, 0, 0, {0, 1, 0}},  {At3d_ViewBack, 0, 180, {0, -1, 0}},
        {At3d_ViewLeft, 0, 90, {1, 0, 0}},  {At3d_ViewRight, 0, 270, {-1, 0, 0}},
    };
    for (const Preset& p : presets) {
        SCOPED_TRACE(p.azimuth + 1000 * p.tilt);
        ASSERT_EQ(At3d_RotateCamera(0, 12, 34, 56), 1);
        ASSERT_EQ(At3d_SetCameraViewPoint(4, 5, 6), 1);
        ASSERT_EQ(At3d_SetCameraDistance(20), 1);
        ASSERT_EQ(p.call(), 1);
        double x, y, z;
        ASSERT_EQ(At3d_GetCameraAngles(&x, &y, &z), 1);
        EXPECT_EQ(x, p.tilt);
        EXPECT_EQ(y, 0);
        EXPECT_EQ(z, p.azimuth);
        double d = 0;
        At3d_GetCameraDistance(&d);
        EXPECT_EQ(d, 20);
        ASSERT_EQ(At3d_GetCameraViewPoint(&x, &y, &z), 1);
        EXPECT_EQ(x, 4);
        EXPECT_EQ(y, 5);
        EXPECT_EQ(z, 6);
        const engine::ViewFrame f = engine::currentViewFrame(engineState());
        expectVec(f.forward, p.forward[0], p.forward[1], p.forward[2], 1e-12);
        expectVec(f.eye, 4 - 20 * p.forward[0], 5 - 20 * p.forward[1], 6 - 20 * p.forward[2], 1e-9);
    }
    // The top view keeps north up and east to the right on the screen.
    At3d_ViewTop();
    const engine::ViewFrame top = engine::currentViewFrame(engineState());
    expectVec(top.right, 1, 0, 0);
    expectVec(top.up, 0, 1, 0);
}

TEST_F(CameraTest, RotateSetsOrAddsAndWrapsAzimuth) {
    double x, y, z;
    ASSERT_EQ(At3d_RotateCamera(0, 30, 5, 350), 1);
    ASSERT_EQ(At3d_RotateCamera(1, 10, 1, 20), 1);
    At3d_GetCameraAngles(&x, &y, &z);
    EXPECT_DOUBLE_EQ(x, 40);
    EXPECT_DOUBLE_EQ(y, 6);
    EXPECT_DOUBLE_EQ(z, 10);
    ASSERT_EQ(At3d_RotateCamera(1, 0, 0, -20), 1);
    At3d_GetCameraAngles(&x, &y, &z);
    EXPECT_DOUBLE_EQ(z, 350);
    EXPECT_EQ(At3d_RotateCamera(2, 0, 0, 0), 0);
    EXPECT_EQ(At3d_GetCameraAngles(nullptr, &y, &z), 0);
}

TEST_F(CameraTest, FieldOfViewModesAndClamp) {
    double fov = 0;
    ASSERT_EQ(At3d_SetCameraFieldOfView(0, 60), 1);
    ASSERT_EQ(At3d_SetCameraFieldOfView(1, 15), 1);
    At3d_GetCameraFieldOfView(&fov);
    EXPECT_DOUBLE_EQ(fov, 75);
    At3d_SetCameraFieldOfView(0, 200);
    At3d_GetCameraFieldOfView(&fov);
    EXPECT_DOUBLE_EQ(fov, 170);
    At3d_SetCameraFieldOfView(1, -500);
    At3d_GetCameraFieldOfView(&fov);
    EXPECT_DOUBLE_EQ(fov, 1);
    EXPECT_EQ(At3d_SetCameraFieldOfView(3, 50), 0);
    At3d_GetCameraFieldOfView(&fov);
    EXPECT_DOUBLE_EQ(fov, 1);
}

TEST_F(CameraTest, PanMovesAlongRightAndUpByPixelScale) {
    // Front view: right = east, up = Z. 10 m away, 90 degrees, 200 px high:
    // one pixel is 2 * 10 * tan(45) / 200 = 0.1 m.
    At3d_ViewFront();
    At3d_SetCameraViewPoint(1, 2, 3);
    At3d_SetCameraDistance(10);
    At3d_SetCameraFieldOfView(0, 90);
    At3d_Size(300, 200);
    double x, y, z;
    auto viewPoint = [] { return engineState().camera.viewPoint; };

    ASSERT_EQ(At3d_PanCamera(1, 100, 0), 1);
    At3d_GetCameraViewPoint(&x, &y, &z);
    expectVec(viewPoint(), 11, 2, 3, 1e-9);
    ASSERT_EQ(At3d_PanCamera(1, 0, -50), 1);
    At3d_GetCameraViewPoint(&x, &y, &z);
    expectVec(viewPoint(), 11, 2, -2, 1e-9);

    // Absolute: moves by the difference to the last absolute values.
    ASSERT_EQ(At3d_PanCamera(0, 30, 0), 1);
    At3d_GetCameraViewPoint(&x, &y, &z);
    EXPECT_NEAR(x, 14, 1e-9);
    ASSERT_EQ(At3d_PanCamera(0, 20, 10), 1);
    At3d_GetCameraViewPoint(&x, &y, &z);
    expectVec(viewPoint(), 13, 2, -1, 1e-9);
    EXPECT_EQ(engineState().camera.panX, 20);
    EXPECT_EQ(engineState().camera.panZ, 10);
    EXPECT_EQ(At3d_PanCamera(5, 1, 1), 0);

    // The same pan in a top view moves north instead of up.
    At3d_ViewTop();
    At3d_SetCameraViewPoint(0, 0, 0);
    At3d_PanCamera(1, 0, 100);
    At3d_GetCameraViewPoint(&x, &y, &z);
    expectVec(viewPoint(), 0, 10, 0, 1e-9);
}

TEST_F(CameraTest, ZoomStopsShortOfTheViewPointAndHonoursReverseFlag) {
    double d = 0;
    At3d_SetCameraDistance(1);
    ASSERT_EQ(At3d_ZoomIn(5), 1);
    At3d_GetCameraDistance(&d);
    EXPECT_DOUBLE_EQ(d, 0.1);
    At3d_ZoomOut(2);
    At3d_GetCameraDistance(&d);
    EXPECT_NEAR(d, 2.1, 1e-12);

    ASSERT_EQ(At3d_WriteFlag(LIBFLAG_REVERSE_ZOOM, 1), 1);
    At3d_ZoomIn(1);
    At3d_GetCameraDistance(&d);
    EXPECT_NEAR(d, 3.1, 1e-12);
    At3d_ZoomOut(10);
    At3d_GetCameraDistance(&d);
    EXPECT_DOUBLE_EQ(d, 0.1);
}

TEST_F(CameraTest, ZoomResetAndCentringReturnToHome) {
    auto& camera = engineState().camera;
    camera.homeViewPoint[0] = 1;
    camera.homeViewPoint[1] = 2;
    camera.homeViewPoint[2] = 3;
    ASSERT_EQ(At3d_SetCameraInitialDistance(50), 1);
    At3d_SetCameraViewPoint(10, 20, 30);

    ASSERT_EQ(At3d_CenterX(), 1);
    expectVec(camera.viewPoint, 1, 20, 30);
    ASSERT_EQ(At3d_CenterZ(), 1);
    expectVec(camera.viewPoint, 1, 20, 3);

    At3d_SetCameraDistance(7);
    At3d_Size(100, 100);
    At3d_PanCamera(0, 40, 40);
    ASSERT_EQ(At3d_ZoomReset(), 1);
    double d = 0;
    At3d_GetCameraDistance(&d);
    EXPECT_EQ(d, 50);
    expectVec(camera.viewPoint, 1, 2, 3);
    EXPECT_EQ(camera.panX, 0);
    EXPECT_EQ(camera.panZ, 0);
    EXPECT_EQ(At3d_SetCameraDistance(0), 0);
    EXPECT_EQ(At3d_SetCameraInitialDistance(-1), 0);
}

TEST_F(CameraTest, PixelRaysAndProjection) {
    double origin[3], dir[3];
    int px = 0, py = 0;
    EXPECT_FALSE(engine::pixelRay(engineState(), 0, 0, origin, dir));  // no surface yet

    // 201 x 101 px, 90 degrees vertical: half width 201/101 at unit depth,
    // metres per pixel at the ground 20 / 101.
    topView(5, 5, 10, 201, 101);
    ASSERT_TRUE(engine::pixelRay(engineState(), 100, 50, origin, dir));
    expectVec(origin, 5, 5, 10);
    expectVec(dir, 0, 0, -1, 1e-12);

    const double east[3] = {13, 5, 0};  // 100.5 + 8 / 20 * 101 = 140.9
    ASSERT_TRUE(engine::projectToPixel(engineState(), east, px, py));
    EXPECT_EQ(px, 140);
    EXPECT_EQ(py, 50);
    const double north[3] = {5, 10, 0};  // 50.5 - 5 / 20 * 101 = 25.25
    ASSERT_TRUE(engine::projectToPixel(engineState(), north, px, py));
    EXPECT_EQ(px, 100);
    EXPECT_EQ(py, 25);
    const double behind[3] = {5, 5, 11};
    EXPECT_FALSE(engine::projectToPixel(engineState(), behind, px, py));

    // A pixel's ray meets the ground where that point projects back to it.
    ASSERT_TRUE(engine::pixelRay(engineState(), 30, 80, origin, dir));
    const double t = -origin[2] / dir[2];
    const double ground[3] = {origin[0] + t * dir[0], origin[1] + t * dir[1], 0};
    ASSERT_TRUE(engine::projectToPixel(engineState(), ground, px, py));
    EXPECT_EQ(px, 30);
    EXPECT_EQ(py, 80);
    // 70 px left of centre is west, 30 px below is south.
    EXPECT_NEAR(ground[0], 5 - 70 * 20.0 / 101, 1e-9);
    EXPECT_NEAR(ground[1], 5 - 30 * 20.0 / 101, 1e-9);
}

TEST_F(CameraTest, SceneBoundsAndFit) {
    double box[6];
    EXPECT_FALSE(engine::sceneBounds(engineState(), box));

    engine::Layer a;
    a.name = "a";
    a.positions = {0, 0, 0, 2, 4, 1};
    engine::Layer b;
    b.name = "b";
    b.lineVertices = {1, 1, 4};
    engineState().layers = {a, b};
    ASSERT_TRUE(engine::sceneBounds(engineState(), box));
    const double expected[6] = {0, 2, 0, 4, 0, 4};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(box[i], expected[i]) << i;

    // Centre (1, 2, 2), radius sqrt(1 + 4 + 4) = 3; at 60 degrees
    // distance = 3 / sin(30) * 1.1 = 6.6.
    At3d_SetCameraFieldOfView(0, 60);
    At3d_SetCameraViewPoint(9, 9, 9);
    engine::fitCameraToScene(engineState());
    const auto& camera = engineState().camera;
    expectVec(camera.homeViewPoint, 1, 2, 2);
    expectVec(camera.viewPoint, 1, 2, 2);
    EXPECT_NEAR(camera.distance, 6.6, 1e-9);
    EXPECT_NEAR(camera.initialDistance, 6.6, 1e-9);

    // A tiny scene still gets the minimum distance of 1.
    engine::Layer dot;
    dot.positions = {3, 3, 3};
    engineState().layers = {dot};
    engine::fitCameraToScene(engineState());
    EXPECT_EQ(camera.distance, 1);
    expectVec(camera.viewPoint, 3, 3, 3);
}

TEST_F(CameraTest, RoamingCameraListAndData) {
    char name[AT3D_NAME_SIZE];
    EXPECT_EQ(At3d_Roaming_Camera_Count(), 1);
    ASSERT_EQ(At3d_Roaming_Camera_Get_Name(0, name), 1);
    EXPECT_STREQ(name, "Default");
    ASSERT_EQ(At3d_Add_Roaming_Camera("Walk"), 1);
    ASSERT_EQ(At3d_Add_Roaming_Camera("Fly"), 1);
    EXPECT_EQ(At3d_Add_Roaming_Camera("Walk"), 0);
    EXPECT_EQ(At3d_Add_Roaming_Camera("Default"), 0);
    EXPECT_EQ(At3d_Roaming_Camera_Count(), 3);
    ASSERT_EQ(At3d_Roaming_Camera_Get_Name(2, name), 1);
    EXPECT_STREQ(name, "Fly");
    EXPECT_EQ(At3d_Roaming_Camera_Get_Name(3, name), 0);

    const double eye[3] = {1, 2, 3}, center[3] = {4, 6, 3};
    const double roll = 5, fov = 70;
    ASSERT_EQ(At3d_Set_Roaming_Data("Fly", eye, center, &roll, &fov), 1);
    double e[3], c[3], r = 0, f = 0;
    ASSERT_EQ(At3d_Get_Roaming_Data("Fly", e, c, &r, &f, 1), 1);
    expectVec(e, 1, 2, 3);
    expectVec(c, 4, 6, 3);
    EXPECT_EQ(r, 5);
    EXPECT_EQ(f, 70);
    EXPECT_EQ(At3d_Get_Roaming_Data("Nobody", e, c, &r, &f, 0), 0);
    EXPECT_EQ(At3d_Set_Roaming_Data("Nobody", eye, center, &roll, &fov), 0);

    // Setting the default slot places the orbit camera: eye 10 m west of
    // the centre at the same height means azimuth 90, tilt 0, distance 10.
    const double dEye[3] = {-10, 0, 0}, dCenter[3] = {0, 0, 0};
    ASSERT_EQ(At3d_Set_Roaming_Data("Default", dEye, dCenter, nullptr, nullptr), 1);
    const auto& camera = engineState().camera;
    EXPECT_NEAR(camera.angles[2], 90, 1e-9);
    EXPECT_NEAR(camera.angles[0], 0, 1e-9);
    EXPECT_NEAR(camera.distance, 10, 1e-12);
}

TEST_F(CameraTest, RoamingMovesActOnTheActiveCameraOnly) {
    ASSERT_EQ(At3d_Add_Roaming_Camera("Walk"), 1);
    const double eye[3] = {0, 0, 0}, center[3] = {0, 10, 0};
    ASSERT_EQ(At3d_Set_Roaming_Data("Walk", eye, center, nullptr, nullptr), 1);

    EXPECT_EQ(At3d_Move_Roaming_Turn(90), 0);  // default camera active
    EXPECT_EQ(At3d_Move_Roaming_RightLeft(1), 0);
    EXPECT_EQ(At3d_Switch_OGL_Camera("Nobody"), 0);
    ASSERT_EQ(At3d_Switch_OGL_Camera("Walk"), 1);

    // Clockwise from above: a centre north of the eye goes east of it.
    ASSERT_EQ(At3d_Move_Roaming_Turn(90), 1);
    double e[3], c[3];
    At3d_Get_Roaming_Data("Walk", e, c, nullptr, nullptr, 1);
    expectVec(e, 0, 0, 0);
    expectVec(c, 10, 0, 0, 1e-9);
    expectVec(engine::currentViewFrame(engineState()).forward, 1, 0, 0, 1e-9);

    // Facing east, right is south.
    ASSERT_EQ(At3d_Move_Roaming_RightLeft(2), 1);
    At3d_Get_Roaming_Data("Walk", e, c, nullptr, nullptr, 1);
    expectVec(e, 0, -2, 0, 1e-9);
    expectVec(c, 10, -2, 0, 1e-9);
    ASSERT_EQ(At3d_Move_Roaming_RightLeft(-5), 1);
    At3d_Get_Roaming_Data("Walk", e, c, nullptr, nullptr, 1);
    expectVec(e, 0, 3, 0, 1e-9);

    ASSERT_EQ(At3d_Switch_OGL_Camera("Default"), 1);
    EXPECT_EQ(At3d_Move_Roaming_Turn(10), 0);
}

}  // namespace
