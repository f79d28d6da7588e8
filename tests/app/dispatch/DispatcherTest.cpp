// The dispatcher on a started engine: the key table, the wheel, the arrow
// keys' limits, mouse navigation, the routes of a click by mode flags, the
// engine's notifications, the digitise menu and the timer's help text.
#include <Qt>
#include <cmath>

#include "app/dispatch/AppMessage.h"
#include "app/dispatch/DigitiseMenu.h"
#include "app/session/DispatchState.h"
#include "app/dispatch/KeyCodes.h"
#include "app/dispatch/Timer1Timer.h"
#include "app/dispatch/ViewPanelClick.h"
#include "app/model/Viewport.h"
#include "app/model/CameraTools.h"
#include "app/model/ModelOpenFixture.h"
#include "measure/BillboardMenu.h"
#include "measure/DigitiseState.h"
#include "solar/design/PanelFormLogic.h"
#include "app/services/OrvoDialogs.h"
#include "oblique/FacadeStore.h"
#include "oblique/ObliqueHooks.h"
#include "scene/engine_interface.h"
#include "support/SceneBuilders.h"

namespace {

// The fixture's panel is 100 x 80 pixels; the surface starts above the engine's 30-pixel strip.
constexpr int CENTRE_X = 50, CENTRE_Y = 40, STRIP = 30;

class Dispatcher : public ModelOpenFixture {
protected:
    void SetUp() override {
        ModelOpenFixture::SetUp();
        resetDispatchState();
        resetDigitiseState();
        resetPanelFormState();
        resetCameraToolState();
        resetDialogState();
        // A 10 m square at height 2 under a camera 100 m above it.
        testsupport::addLayer(testsupport::makeSquare("roof", 0, 0, 2, 10));
        At3d_SetCameraViewPoint(0, 0, 0);
        At3d_SetCameraDistance(100);
        At3d_RotateCamera(0, 90, 0, 0);
        FrameState& f = frameState();
        f.OriginalobjectCenter[0] = 700000;
        f.OriginalobjectCenter[1] = 3600000;
        f.OriginalobjectCenter[2] = 10;
    }
    static AppMsg key(int code, bool shift = false) {
        AppMsg msg;
        msg.message = WM_KEYDOWN;
        msg.wParam = code;
        msg.shift = shift;
        return msg;
    }
    static AppMsg move(int x, int y, int buttons) {
        AppMsg msg;
        msg.message = WM_MOUSEMOVE;
        msg.x = x;
        msg.y = y;
        msg.wParam = buttons;
        return msg;
    }
    static ClickRoute click(int x, int y, int button = 1, bool shift = false, bool alt = false, bool ctrl = false) {
        ClickInput in;
        in.Button = button;
        in.Shift = shift;
        in.Alt = alt;
        in.Ctrl = ctrl;
        in.X = x;
        in.Y_IN = y + STRIP;
        return ViewPanelMouseActivate(in);
    }
    static double angle(int axis) {
        double a[3];
        At3d_GetCameraAngles(&a[0], &a[1], &a[2]);
        return a[axis];
    }
    static double distance() {
        double d = 0;
        At3d_GetCameraDistance(&d);
        return d;
    }
};

}  // namespace

TEST(KeyCodes, OnlyTheNumberPadsPlusAndMinusZoom) {
    EXPECT_EQ(KeyCodeFromQt(Qt::Key_Plus, true), KEY_ADD);
    EXPECT_EQ(KeyCodeFromQt(Qt::Key_Minus, true), KEY_SUBTRACT);
    EXPECT_EQ(KeyCodeFromQt(Qt::Key_Plus, false), 0);
    EXPECT_EQ(KeyCodeFromQt(Qt::Key_A, false), 0);
}

TEST_F(Dispatcher, TheWheelZoomsOnlyOverTheMainForm) {
    AppMsg wheel;
    wheel.message = WM_MOUSEWHEEL;
    wheel.wParam = 120;
    wheel.overMainForm = false;
    EXPECT_FALSE(AppMessage(wheel).Handled);
    EXPECT_DOUBLE_EQ(distance(), 100);

    wheel.overMainForm = true;
    EXPECT_TRUE(AppMessage(wheel).Handled);
    EXPECT_NEAR(distance(), 99, 1e-6);
    wheel.wParam = -120;
    EXPECT_TRUE(AppMessage(wheel).Handled);
    EXPECT_NEAR(distance(), 100, 1e-6);
}

TEST_F(Dispatcher, ArrowsTiltWithinZeroAndNinetyUnlessIndoor) {
    // Down at 90 stays at 90.
    EXPECT_TRUE(AppMessage(key(KEY_DOWN)).Handled);
    EXPECT_NEAR(angle(0), 90, 1e-9);
    At3d_RotateCamera(0, 20, 0, 0);
    AppMessage(key(KEY_UP));
    EXPECT_NEAR(angle(0), 15, 1e-9);
    AppMessage(key(KEY_DOWN));
    EXPECT_NEAR(angle(0), 20, 1e-9);
    // Up below the 5-degree step stays put, except indoors.
    At3d_RotateCamera(0, 3, 0, 0);
    AppMessage(key(KEY_UP));
    EXPECT_NEAR(angle(0), 3, 1e-9);
    modelSession().INDOOR = true;
    AppMessage(key(KEY_UP));
    EXPECT_NEAR(angle(0), -2, 1e-9);
    // Right turns the azimuth by the step; the status shows it.
    At3d_RotateCamera(0, 45, 0, 10);
    AppMessage(key(KEY_RIGHT));
    EXPECT_NEAR(angle(2), 15, 1e-9);
    EXPECT_EQ(mainFormState().statusTexts[3], "Azimuth 15");
    EXPECT_NEAR(dispatchState().CAMERAZANGLE, 15, 1e-9);
    // The step is what the operator typed in the step angle field.
    EditTextTyped(CAMERA_STEP_ANGLE_EDIT, "30");
    AppMessage(key(KEY_RIGHT));
    EXPECT_NEAR(angle(2), 45, 1e-9);
}

TEST_F(Dispatcher, KeysPanZoomAndStopAsTheTableSays) {
    double before[3], after[3];
    At3d_GetCameraViewPoint(&before[0], &before[1], &before[2]);
    AppMessage(key(KEY_HOME));
    At3d_GetCameraViewPoint(&after[0], &after[1], &after[2]);
    EXPECT_GT(std::hypot(after[0] - before[0], after[1] - before[1]), 1);
    AppMessage(key(KEY_ADD));
    EXPECT_NEAR(distance(), 99, 1e-6);
    AppMessage(key(KEY_SUBTRACT));
    EXPECT_NEAR(distance(), 100, 1e-6);

    // A recording leaves every key but Esc doing nothing; Esc stops it.
    dispatchState().keep_goingAVI = true;
    EXPECT_FALSE(AppMessage(key(KEY_ADD)).Handled);
    EXPECT_NEAR(distance(), 100, 1e-6);
    EXPECT_TRUE(AppMessage(key(KEY_ESCAPE)).Handled);
    EXPECT_FALSE(dispatchState().keep_goingAVI);

    // A long operation eats every key.
    dialogState().STOPKEYACTIVITY = true;
    EXPECT_TRUE(AppMessage(key(KEY_ADD)).Handled);
    EXPECT_NEAR(distance(), 100, 1e-6);
}

TEST_F(Dispatcher, TheRoamingColumnMovesTheLookToolsCamera) {
    RubberbandState& r = rubberbandState();
    r.hitFlag1 = r.hitFlag2 = 2;
    r.xyzArray1[2] = 2;
    r.xyzArray2[1] = 20;
    r.xyzArray2[2] = 2;
    At3d_Add_Roaming_Camera("R1");
    SetControlChecked("LookAtBtn", true);
    LookAtBtnClick();
    ASSERT_EQ(cameraState().activeCameraID, 1);
    AppMessage(key(KEY_PRIOR, true));
    double eye[3], center[3], up = 0, fov = 0;
    At3d_Get_Roaming_Data("R1", eye, center, &up, &fov, 0);
    EXPECT_NEAR(eye[2], 12, 1e-9);
    EXPECT_NEAR(center[2], 12, 1e-9);
    AppMessage(key(KEY_UP));
    At3d_Get_Roaming_Data("R1", eye, center, &up, &fov, 0);
    EXPECT_NEAR(eye[2], 12, 1e-9);
    EXPECT_NEAR(center[2], 14, 1e-9);

    // A left drag to the right turns the look 5 degrees clockwise about the eye: azimuth 0 becomes 5.
    DispatchState& d = dispatchState();
    d.LastMousexPos = CENTRE_X;
    d.LastMouseyPos = CENTRE_Y;
    AppMsg down;
    down.message = WM_LBUTTONDOWN;
    AppMessage(down);
    AppMessage(move(CENTRE_X + 10, CENTRE_Y, MK_LBUTTON));
    AppMsg upMsg;
    upMsg.message = WM_LBUTTONUP;
    AppMessage(upMsg);
    At3d_Get_Roaming_Data("R1", eye, center, &up, &fov, 0);
    EXPECT_NEAR(std::atan2(center[0] - eye[0], center[1] - eye[1]) * 180 / M_PI,
                std::atan2(0.1, 20) * 180 / M_PI + 5, 1e-9);
    EXPECT_EQ(mainFormState().statusTexts[3], "Azimuth 5");
    // The orbit camera stayed where it was.
    EXPECT_NEAR(angle(2), 0, 1e-9);
}

TEST_F(Dispatcher, LeftDragRotatesRightDragPansBothButtonsZoom) {
    AppMsg down;
    down.message = WM_LBUTTONDOWN;
    AppMessage(down);
    DispatchState& d = dispatchState();
    d.LastMousexPos = CENTRE_X;
    d.LastMouseyPos = CENTRE_Y;
    // Left and up: the view turns and tilts up by the 5-degree step.
    EXPECT_TRUE(AppMessage(move(CENTRE_X + 10, CENTRE_Y, MK_LBUTTON)).Handled);
    EXPECT_NEAR(angle(2), 5, 1e-9);
    EXPECT_EQ(d.LRUD, 'R');
    EXPECT_EQ(d.KamaLMouseMove, 1);
    EXPECT_TRUE(mainFormState().statusTexts[0].startsWith(" 1 "));
    EXPECT_TRUE(AppMessage(move(CENTRE_X + 10, CENTRE_Y - 10, MK_LBUTTON)).Handled);
    EXPECT_NEAR(angle(0), 85, 1e-9);
    // No movement: passed on.
    EXPECT_FALSE(AppMessage(move(CENTRE_X + 10, CENTRE_Y - 10, MK_LBUTTON)).Handled);

    AppMessage(move(CENTRE_X + 10, CENTRE_Y - 20, MK_LBUTTON | MK_RBUTTON));
    EXPECT_NEAR(distance(), 99, 1e-6);

    double before[3], after[3];
    At3d_GetCameraViewPoint(&before[0], &before[1], &before[2]);
    AppMessage(move(CENTRE_X + 30, CENTRE_Y - 20, MK_RBUTTON));
    At3d_GetCameraViewPoint(&after[0], &after[1], &after[2]);
    EXPECT_GT(std::hypot(after[0] - before[0], after[1] - before[1]), 1);
    EXPECT_NEAR(angle(2), 5, 1e-9);
}

TEST_F(Dispatcher, AClickTakesTheFirstRouteItsFlagsAndKeysMatch) {
    DispatchState& d = dispatchState();
    // The corner of the view shows no mesh.
    EXPECT_EQ(click(2, 2), ClickRoute::NoMesh);
    d.MOVEBILLBOARD = 2;
    EXPECT_EQ(click(2, 2, 1, true), ClickRoute::MoveBillboard);
    d.MOVEBILLBOARD = 0;

    EXPECT_EQ(click(CENTRE_X, CENTRE_Y), ClickRoute::None);
    EXPECT_NEAR(d.GlobalZ1, 12, 1e-6);
    EXPECT_EQ(d.GlobalLayerName1, "roof");

    EXPECT_EQ(click(CENTRE_X, CENTRE_Y, 1, true), ClickRoute::SessionPoint);
    // Local from here on; the map point is local + OC.
    EXPECT_NEAR(d.GlobalZ1, 2, 1e-6);
    EXPECT_NEAR(d.FromModel_X - d.GlobalX1, 700000, 1e-6);
    EXPECT_NEAR(d.FromModel_Z, 12, 1e-6);
    EXPECT_TRUE(mainFormState().statusTexts[0].startsWith("  X 70000"));
    EXPECT_EQ(d.clipboardText, mainFormState().statusTexts[0]);

    EXPECT_EQ(click(CENTRE_X, CENTRE_Y, 1, false, true), ClickRoute::SessionPoint);
    modelSession().KamaOblique = 3;
    EXPECT_EQ(click(CENTRE_X, CENTRE_Y, 1, false, true), ClickRoute::ObliqueLookup);
    EXPECT_EQ(click(CENTRE_X, CENTRE_Y, 1, false, false, true), ClickRoute::ObliqueCount);
    // The count ran on the clicked map point; the model's catalogue holds no camera near it.
    EXPECT_TRUE(mainFormState().statusTexts[2].startsWith("700000.")) << mainFormState().statusTexts[2].toStdString();
    EXPECT_TRUE(mainFormState().statusTexts[2].endsWith("  Visible from 0 Cameras out of 3"));
    d.BILLBOARDMODE = true;
    EXPECT_EQ(click(CENTRE_X, CENTRE_Y, 1, true), ClickRoute::PlaceBillboard);
    EXPECT_EQ(click(CENTRE_X, CENTRE_Y, 2, true), ClickRoute::Handover);
    EXPECT_TRUE(d.clipboardText.startsWith("  700000"));
    d.DigiArmed = true;
    EXPECT_EQ(click(CENTRE_X, CENTRE_Y), ClickRoute::Digitise);
}

TEST_F(Dispatcher, ASelectedMeasureAsksForItsMenuWithoutMove) {
    const float red[3] = {1, 0, 0};
    const double a[3] = {0, 0, 0}, b[3] = {1, 1, 1};
    ASSERT_TRUE(At3d_MeasureList_Add_Item("M1", 1, 0, 0, 2, red, a, b, a, a));
    AppMsg note;
    note.message = MSG_ENGINE_NOTIFY;
    note.wParam = AT3D_NOTIFY_MEASURE_BASE;
    note.lParam = 1;
    const AppMessageResult result = AppMessage(note);
    EXPECT_TRUE(result.Handled);
    EXPECT_EQ(result.popup, AppPopup::PopupMenu1);
    EXPECT_EQ(dispatchState().GlobalMeasureOrBilboard, 1);
    EXPECT_EQ(dispatchState().GlobalSelectedIdx, 0);
    EXPECT_FALSE(PopupMenu1Popup().Move);
    EXPECT_TRUE(PopupMenu1Popup().Hyperlinks);

    // An item that isn't there selects nothing.
    note.wParam = AT3D_NOTIFY_MEASURE_BASE + 5;
    EXPECT_EQ(AppMessage(note).popup, AppPopup::None);
}

TEST_F(Dispatcher, TheLineOfAFacadePhotographOpensItsPictureInsteadOfTheMenu) {
    const std::string picture = dir.path("IMG_7.JPG");
    testsupport::writeTextFile(picture, "x");
    QStringList shown;
    obliqueHooks().showPhotoBigWindow = [&shown](const QString& JPG, double DistXY, double DistZ) {
        shown << QString::asprintf("%s %.1f %.1f", JPG.toUtf8().constData(), DistXY, DistZ);
    };
    const float blue[3] = {0, 0, 1};
    const double camera[3] = {1, 2, 3}, target[3] = {4, 5, 6};
    ASSERT_TRUE(At3d_MeasureList_Add_Item(picture.c_str(), 1, 0, 0, 2, blue, camera, target, camera, camera));
    AppMsg note;
    note.message = MSG_ENGINE_NOTIFY;
    note.wParam = AT3D_NOTIFY_MEASURE_BASE;
    note.lParam = 1;
    EXPECT_EQ(AppMessage(note).popup, AppPopup::None);
    EXPECT_EQ(shown, QStringList{QString::fromStdString(picture) + " 0.0 0.0"});
    // The camera and the point it looks at, in the map frame.
    const FacadeState& f = facadeState();
    EXPECT_DOUBLE_EQ(f.Facade1X, 700001);
    EXPECT_DOUBLE_EQ(f.Facade1Y, 3600002);
    EXPECT_DOUBLE_EQ(f.Facade1Z, 13);
    EXPECT_DOUBLE_EQ(f.Facade2X, 700004);
    EXPECT_DOUBLE_EQ(f.Facade2Z, 16);
    resetObliqueHooks();
    resetFacadeState();
}

TEST_F(Dispatcher, DigitiseItemsArmTheirModesAndAbortDisarms) {
    Roofs1Click();
    const DispatchState& d = dispatchState();
    const double& BlockDepth = panelFormState().BlockDepth;
    EXPECT_TRUE(d.DigiArmed);
    EXPECT_DOUBLE_EQ(BlockDepth, 0.1);
    EXPECT_EQ(d.DIGITIZELINEORPOLYGON, 2);
    EXPECT_EQ(viewerSettings().GlobalColor, 255);
    EXPECT_EQ(mainFormState().LabelForHelpCaption,
              " \t Click to start 4+ points for flat plane or 3 points for panels. Rightclick to finish.");

    // The block's height, then its colour.
    dialogs.pushText("7.5");
    dialogs.pushColor(0x00FF00);
    BlockMenuClick();
    EXPECT_DOUBLE_EQ(BlockDepth, 7.5);
    EXPECT_EQ(dialogs.questions()[dialogs.questions().size() - 2].text, "Block height (in meters)");
    EXPECT_EQ(viewerSettings().GlobalColor, 0x00FF00);
    dialogs.pushCancel();
    dialogs.pushCancel();
    BlockMenuClick();
    EXPECT_DOUBLE_EQ(BlockDepth, 5);
    EXPECT_EQ(viewerSettings().GlobalColor, 0x00FF00);

    // A polygon after an unfinished roof is no roof.
    Polygonwiththickness1Click();
    EXPECT_EQ(d.IsPolygon, 2);
    EXPECT_EQ(d.DIGITIZELINEORPOLYGON, 2);
    EXPECT_DOUBLE_EQ(BlockDepth, 0);
    AbortpopupClick();
    EXPECT_FALSE(d.DigiArmed);
}

TEST_F(Dispatcher, TheTimerWaitsForTheModelThenChecksTheProjectExtent) {
    Timer1Timer();
    EXPECT_EQ(mainFormState().LabelForHelpCaption, "Waiting for the model to be loaded:     0 seconds");
    engineSession().fileLoaded = 1;
    modelSession().RegularHelp = "help";
    double* m = frameState().OriginalModelMinMax;
    m[0] = 100, m[1] = 200, m[2] = 100, m[3] = 200;
    ORVOINI().writeString("Orvo", "Last Extent", "150 300 150 300 0 10 1");
    Timer1Timer();
    EXPECT_EQ(mainFormState().LabelForHelpCaption, "help");
    EXPECT_FALSE(dispatchState().outsideProjectExtent);
    ORVOINI().writeString("Orvo", "Last Extent", "500 600 100 200 0 10 1");
    Timer1Timer();
    EXPECT_TRUE(dispatchState().outsideProjectExtent);
}

TEST_F(Dispatcher, TheSelectToolReleasesThePickingToolsAndArmsRightClickSelection) {
    SetControlChecked("MeasureButton", true);
    At3d_WriteFlag(LIBFLAG_MESH_LOCATION, 1);
    SetControlChecked("SelectMeasuringBtn", true);
    SelectMeasuringBtnClick();
    EXPECT_FALSE(ControlChecked("MeasureButton"));
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_MESH_LOCATION), 0);
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_SELECT_MEASURE), 1);
    SetControlChecked("SelectMeasuringBtn", false);
    SelectMeasuringBtnClick();
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_SELECT_MEASURE), 0);
}
