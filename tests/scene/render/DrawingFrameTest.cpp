// The camera's matrices put every point on the pixel the engine's own
// projection (the one picking uses) gives it, for any camera.
#include <gtest/gtest.h>

#include <QVector4D>

#include "scene/engine/CameraMath.h"
#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"
#include "scene/render/DrawingFrame.h"
#include "support/TestSupport.h"

namespace {

using engine::engineState;

// Pixel of an engine point through the renderer's matrices, the vertex
// given relative to origin as the renderer uploads it.
bool drawnPixel(const render::ViewMatrices& view, const double origin[3], const double point[3], int width,
                int height, double& x, double& y) {
    const double shifted[3] = {point[0] - origin[0], point[1] - origin[1], point[2] - origin[2]};
    double drawn[3];
    render::toDrawing(shifted, drawn);
    const QVector4D clip = view.projection * render::modelViewAt(view, origin) *
                           QVector4D(float(drawn[0]), float(drawn[1]), float(drawn[2]), 1.0f);
    if (clip.w() <= 0) return false;
    x = (clip.x() / clip.w() + 1.0) * 0.5 * width;
    y = (1.0 - clip.y() / clip.w()) * 0.5 * height;
    return true;
}

class DrawingFrameTest : public ::testing::Test {
protected:
    testsupport::EngineFixtureGuard guard;

    void expectSamePixels(int width, int height) {
        At3d_Size(width, height);
        const engine::ViewFrame frame = engine::currentViewFrame(engineState());
        const double box[6] = {-50, 50, -50, 50, -10, 30};
        const render::ViewMatrices view = render::viewMatrices(frame, width, height, box);
        const double points[][3] = {{0, 0, 0}, {12.5, -30, 4}, {-40, 45, 25}, {33, 8, -9}};
        const double origin[3] = {5, -7, 2};
        for (const auto& p : points) {
            double ex = 0, ey = 0, dx = 0, dy = 0;
            ASSERT_TRUE(engine::projectToScreen(engineState(), p, ex, ey));
            ASSERT_TRUE(drawnPixel(view, origin, p, width, height, dx, dy));
            EXPECT_NEAR(dx, ex, 0.01) << p[0] << " " << p[1] << " " << p[2];
            EXPECT_NEAR(dy, ey, 0.01) << p[0] << " " << p[1] << " " << p[2];
        }
    }
};

TEST_F(DrawingFrameTest, OrbitCameraWithTiltAzimuthAndRollMatchesPicking) {
    At3d_SetCameraViewPoint(3, -4, 1);
    At3d_SetCameraDistance(150);
    At3d_SetCameraFieldOfView(0, 50);
    At3d_RotateCamera(0, 35, 12, 217);
    expectSamePixels(640, 400);
}

TEST_F(DrawingFrameTest, RoamingCameraMatchesPicking) {
    ASSERT_EQ(At3d_Add_Roaming_Camera("R1"), 1);
    const double eye[3] = {-80, -90, 20}, centre[3] = {10, 5, 0}, up = 5, fov = 80;
    ASSERT_EQ(At3d_Set_Roaming_Data("R1", eye, centre, &up, &fov), 1);
    ASSERT_EQ(At3d_Switch_OGL_Camera("R1"), 1);
    expectSamePixels(300, 500);
}

TEST_F(DrawingFrameTest, ClipPlanesHoldTheSceneInFrontOfTheEye) {
    engine::ViewFrame frame{};
    frame.eye[1] = -100;  // 100 m south of a box of 20 m, looking north
    frame.forward[1] = 1;
    frame.up[2] = 1;
    frame.right[0] = 1;
    frame.fieldOfView = 45;
    const double box[6] = {-10, 10, -10, 10, 0, 20};
    float nearPlane = 0, farPlane = 0;
    render::clipPlanes(frame, box, nearPlane, farPlane);
    EXPECT_GT(nearPlane, 80.0f);  // the nearest face is 90 m away
    EXPECT_LT(nearPlane, 90.0f);
    EXPECT_GT(farPlane, 110.0f);  // the farthest 110 m
    EXPECT_LT(farPlane, 115.0f);

    frame.eye[1] = 0;  // inside the box: the near plane comes close, never to 0
    render::clipPlanes(frame, box, nearPlane, farPlane);
    EXPECT_GT(nearPlane, 0.0f);
    EXPECT_LT(nearPlane, 0.01f);
    EXPECT_GT(farPlane, 10.0f);
}

}  // namespace
