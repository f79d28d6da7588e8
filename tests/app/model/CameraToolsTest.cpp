// The zoom's step rules, the observer height, viewport files with and
// without the roaming camera, and the grey and sepia textures.
#include <QFileInfo>
#include <QImage>
#include <cmath>

#include "ModelOpenFixture.h"
#include "app/model/CameraTools.h"
#include "app/model/RenderModeMenu.h"
#include "app/model/Viewport.h"
#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"

using testsupport::readTextFile;
using testsupport::writeTextFile;

namespace {

class CameraTools : public ModelOpenFixture {
protected:
    void SetUp() override {
        ModelOpenFixture::SetUp();
        resetCameraToolState();
        char name[AT3D_NAME_SIZE] = {};
        At3d_Add_Roaming_Camera("R1");
        At3d_Roaming_Camera_Get_Name(0, name);
        cameraState().defaultCameraName = cameraState().activeCameraName = name;
    }
    static double distance() {
        double d = 0;
        At3d_GetCameraDistance(&d);
        return d;
    }
    static void setOC(double x, double y, double z) {
        FrameState& f = frameState();
        f.OriginalobjectCenter[0] = x;
        f.OriginalobjectCenter[1] = y;
        f.OriginalobjectCenter[2] = z;
    }
};

}  // namespace

TEST_F(CameraTools, ZoomStopsShortOfTheViewPointAndKeepsItsStepAtLeastTwentyCentimetres) {
    // 1.005 m is below step 1 x 1.01: nothing moves.
    At3d_SetCameraDistance(1.005);
    MyZoomIn(1);
    EXPECT_DOUBLE_EQ(distance(), 1.005);

    At3d_SetCameraDistance(10);
    MyZoomIn(1);
    EXPECT_NEAR(distance(), 9, 1e-6);
    EXPECT_NEAR(cameraToolState().step, 1, 1e-6);
    // Panning follows the zoom's step.
    EXPECT_NEAR(cameraState().cameraStepPan, 1, 1e-6);
    MyZoomIn(-1);
    EXPECT_NEAR(distance(), 10, 1e-6);

    cameraToolState().step = 0.05;
    MyZoomIn(1);
    EXPECT_NEAR(distance(), 9.95, 1e-6);
    EXPECT_DOUBLE_EQ(cameraToolState().step, 0.2);
    EXPECT_NEAR(cameraToolState().maxZoomStep, 1, 1e-6);
}

TEST_F(CameraTools, ObserverElevationNeverGoesBelowGroundAndZeroCancelsTheObserver) {
    SetObserverElevation(1);
    EXPECT_TRUE(engine::engineState().observerActive);
    EXPECT_DOUBLE_EQ(engine::engineState().observerDelta[2], 1);
    EXPECT_EQ(cameraToolState().ObserverElevationText, "1.0");

    SetObserverElevation(-100);
    EXPECT_FLOAT_EQ(cameraToolState().ObserverElevation, 0);
    EXPECT_FALSE(cameraToolState().haveObserverFlag);
    EXPECT_FALSE(engine::engineState().observerActive);
    EXPECT_EQ(cameraToolState().ObserverElevationText, "0.0");
    EXPECT_DOUBLE_EQ(rubberbandState().xyzDeltaArrayObserver[2], 0);
}

TEST_F(CameraTools, SavingWithTheRoamingCameraWritesWhatItShowsUnderRoamingVpt) {
    setOC(1000, 2000, 50);
    At3d_SetCameraFieldOfView(0, 30);
    const double eye[3] = {0, 0, 10}, center[3] = {30, 40, 0}, up = 0, fov = 80;
    At3d_Set_Roaming_Data("R1", eye, center, &up, &fov);
    cameraState().activeCameraID = 1;
    cameraState().activeCameraName = "R1";

    const std::string written = SaveViewport(dir.path("view.vpt"));
    EXPECT_EQ(written, dir.path("view_Roaming.VPT"));
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(dir.path("view.vpt"))));
    // Distance sqrt(30² + 40² + 10²); tilt atan(10 / 50); azimuth atan2(30, 40); the target in the map frame.
    EXPECT_EQ(readTextFile(written),
              "50.990195 30.000000\n"
              "1030.000000 2040.000000 50.000000\n"
              "11.309932 0.000000 36.869898\n");
}

TEST_F(CameraTools, AViewportSavedOnOneModelShowsTheSamePlaceOnAnotherOfTheSameArea) {
    setOC(500000, 4000000, 100);
    At3d_SetCameraDistance(120);
    At3d_SetCameraFieldOfView(0, 35);
    At3d_SetCameraViewPoint(1, 2, 3);
    At3d_RotateCamera(0, 40, 0, 250);
    const std::string path = SaveViewport(dir.path("place.vpt"));
    ASSERT_EQ(path, dir.path("place.vpt"));
    EXPECT_EQ(readTextFile(path),
              "120.000000 35.000000\n"
              "500001.000000 4000002.000000 103.000000\n"
              "40.000000 0.000000 250.000000\n");

    // The second model's centre lies 10 m east, 5 m south and 2 m higher.
    setOC(500010, 3999995, 102);
    At3d_SetCameraDistance(7);
    At3d_RotateCamera(0, 90, 0, 0);
    ASSERT_TRUE(RestoreViewport(path));
    double p[3], a[3], d = 0, fov = 0;
    At3d_GetCameraViewPoint(&p[0], &p[1], &p[2]);
    At3d_GetCameraAngles(&a[0], &a[1], &a[2]);
    At3d_GetCameraDistance(&d);
    At3d_GetCameraFieldOfView(&fov);
    testsupport::expectVec(p, -9, 7, 1, 1e-9);
    testsupport::expectVec(a, 40, 0, 250, 1e-9);
    EXPECT_DOUBLE_EQ(d, 120);
    EXPECT_DOUBLE_EQ(fov, 35);
}

TEST_F(CameraTools, TheLookToolNeedsTwoPointsAndSwitchesToR1AndBack) {
    SetControlChecked("LookAtBtn", true);
    LookAtBtnClick();
    EXPECT_FALSE(ControlChecked("LookAtBtn"));
    EXPECT_EQ(cameraState().activeCameraID, 0);

    RubberbandState& r = rubberbandState();
    r.hitFlag1 = r.hitFlag2 = 2;
    const double from[3] = {0, 0, 2}, to[3] = {0, 20, 2};
    std::copy(from, from + 3, r.xyzArray1);
    std::copy(to, to + 3, r.xyzArray2);
    SetControlChecked("LookAtBtn", true);
    LookAtBtnClick();
    EXPECT_EQ(cameraState().activeCameraID, 1);
    EXPECT_EQ(cameraState().activeCameraName, "R1");
    EXPECT_EQ(cameraToolState().LookAtCaption, "Reset view");
    EXPECT_EQ(cameraToolState().formColor, ROAMING_FORM_COLOR);
    double eye[3], center[3], up = 0, fov = 0;
    ASSERT_TRUE(At3d_Get_Roaming_Data("R1", eye, center, &up, &fov, 0));
    testsupport::expectVec(eye, 0, 0, 2);
    // The target is nudged 0.1 m east off the exact line.
    testsupport::expectVec(center, 0.1, 20, 2);
    EXPECT_EQ(mainFormState().statusTexts[3], "Azimuth 0");

    InvertObserverTargetClick();
    ASSERT_TRUE(At3d_Get_Roaming_Data("R1", eye, center, &up, &fov, 0));
    testsupport::expectVec(eye, 0.1, 20, 2);
    EXPECT_EQ(mainFormState().statusTexts[3], "Azimuth 180");

    SetControlChecked("LookAtBtn", false);
    LookAtBtnClick();
    EXPECT_EQ(cameraState().activeCameraID, 0);
    EXPECT_EQ(cameraToolState().LookAtCaption, "Look from point 1 to point 2");
    EXPECT_EQ(cameraToolState().formColor, -1);
}

TEST_F(CameraTools, GreyAndSepiaCopiesAreMadeOnceFromTheColourTexture) {
    QImage colour(4, 2, QImage::Format_RGB32);
    colour.fill(qRgb(200, 100, 50));
    const std::string source = dir.path("tex.jpg");
    ASSERT_TRUE(colour.save(QString::fromStdString(source), "jpg", 100));

    ASSERT_TRUE(MakeGrayTexture(source, dir.path("tex_GRAY.JPG")));
    const QImage gray(QString::fromStdString(dir.path("tex_GRAY.JPG")));
    ASSERT_EQ(gray.size(), QSize(4, 2));
    // 0.299 x 200 + 0.587 x 100 + 0.114 x 50 = 124; JPEG keeps it within a few steps.
    EXPECT_NEAR(qRed(gray.pixel(1, 1)), 124, 4);
    EXPECT_EQ(qRed(gray.pixel(1, 1)), qBlue(gray.pixel(1, 1)));

    ASSERT_TRUE(MakeSepiaTexture(source, dir.path("tex_SEPIA.JPG")));
    const QImage sepia(QString::fromStdString(dir.path("tex_SEPIA.JPG")));
    // Red 0.393 x 200 + 0.769 x 100 + 0.189 x 50 = 164.95; blue 0.272 x 200 + 0.534 x 100 + 0.131 x 50 = 114.35.
    EXPECT_NEAR(qRed(sepia.pixel(1, 1)), 165, 4);
    EXPECT_NEAR(qBlue(sepia.pixel(1, 1)), 114, 4);

    // An existing copy is kept as it is.
    writeTextFile(dir.path("kept_GRAY.JPG"), "old");
    EXPECT_TRUE(MakeGrayTexture(source, dir.path("kept_GRAY.JPG")));
    EXPECT_EQ(readTextFile(dir.path("kept_GRAY.JPG")), "old");
    EXPECT_FALSE(MakeGrayTexture(dir.path("missing.jpg"), dir.path("missing_GRAY.JPG")));
}

TEST_F(CameraTools, TheViewportMenuWritesAndReadsTheChosenFile) {
    modelSession().MEASUREMENTSFOLDER = dir.root();
    At3d_SetCameraDistance(42);
    dialogs.pushFile(QString::fromStdString(dir.path("corner")));
    SaveViewportClick();
    // A name without extension takes the filter's ".vpt".
    ASSERT_TRUE(QFileInfo::exists(QString::fromStdString(dir.path("corner.vpt"))));
    EXPECT_EQ(readTextFile(dir.path("corner.vpt")).substr(0, 10), "42.000000 ");

    At3d_SetCameraDistance(7);
    dialogs.pushFile(QString::fromStdString(dir.path("corner.vpt")));
    RestoreViewportClick();
    EXPECT_DOUBLE_EQ(distance(), 42);
    // A cancelled dialog leaves the view alone.
    At3d_SetCameraDistance(7);
    dialogs.pushCancel();
    RestoreViewportClick();
    EXPECT_DOUBLE_EQ(distance(), 7);
}

TEST_F(CameraTools, DrawingSwitchesToggleTheirFlagsAndHighAccuracyColoursTheHelp) {
    mainFormState().OriginalLabelForHelpColor = 0x123456;
    const int accuracy = At3d_ReadFlag(LIBFLAG_INTEGRATED_GPU);
    Highaccuracy1Click();
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_INTEGRATED_GPU), accuracy ? 0 : 1);
    EXPECT_EQ(mainFormState().helpLabelColor, accuracy ? 0x123456 : HIGH_ACCURACY_COLOR);
    Highaccuracy1Click();
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_INTEGRATED_GPU), accuracy);

    const int culling = At3d_ReadFlag(LIBFLAG_BACKFACE_CULL);
    BackfaceCullingBtnClick();
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_BACKFACE_CULL), culling ? 0 : 1);
    EXPECT_EQ(ControlChecked("BackfaceCullingBtn"), culling == 0);

    DepthFlagBtnClick();
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_MEASURE_DEPTH), 1);
    EXPECT_TRUE(ControlChecked("DepthFlagBtn"));

    Usetexture1Click();
    EXPECT_EQ(viewerSettings().useTexturesFlag, 0);
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_USE_TEXTURES), 0);
}

TEST_F(CameraTools, CameraEditFieldsShowTheStepsAndTypedNumbersBecomeThem) {
    cameraState().cameraStepAngle = 5;
    At3d_SetCameraRotateSpeed(3);
    GetCameraData();
    EXPECT_EQ(EditText(CAMERA_STEP_ANGLE_EDIT), "5");
    EXPECT_EQ(EditText(CAMERA_ROTATE_SPEED_EDIT), "3");

    EditTextTyped(CAMERA_STEP_ANGLE_EDIT, " 12.5 ");
    EXPECT_DOUBLE_EQ(GetCameraStepAngle(), 12.5);
    EXPECT_DOUBLE_EQ(cameraState().cameraStepAngle, 12.5);
    // A bad number keeps the step it had.
    EditTextTyped(CAMERA_STEP_ANGLE_EDIT, "ten");
    EXPECT_DOUBLE_EQ(GetCameraStepAngle(), 12.5);
    EditTextTyped(CAMERA_STEP_FOV_EDIT, "2");
    EXPECT_DOUBLE_EQ(GetCameraStepFOV(), 2);
    EditTextTyped(CAMERA_ROTATE_SPEED_EDIT, "7");
    EXPECT_EQ(GetCameraRotateSpeed(), 7);
}
