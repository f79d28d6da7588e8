#include "AppMessage.h"

#include <QFileInfo>
#include <QString>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>

#include "DigitiseMenu.h"
#include "KeyCodes.h"
#include "app/session/DispatchState.h"
#include "app/model/CameraTools.h"
#include "app/model/ModelSession.h"
#include "app/model/Viewport.h"
#include "app/services/OrvoDialogs.h"
#include "app/session/CameraState.h"
#include "app/session/MainFormState.h"
#include "app/session/RubberbandState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Frames.h"
#include "geo/Units.h"
#include "measure/BillboardMenu.h"
#include "measure/BillboardPlacing.h"
#include "measure/BillboardState.h"
#include "measure/Billboards.h"
#include "measure/MeasureDisplay.h"
#include "measure/Measuring.h"
#include "oblique/FacadeStore.h"
#include "oblique/ObliqueHooks.h"
#include "motion/Flythrough.h"
#include "scene/EngineSession.h"
#include "scene/engine_interface.h"

namespace {

double normalisedDegrees(double angle) {
    angle = std::fmod(angle, 360.0);
    return angle < 0 ? angle + 360 : angle;
}

void fetchAngles(DispatchState& d) {
    CameraState& c = cameraState();
    At3d_GetCameraAngles(&c.cameraXAngle, &c.cameraYAngle, &c.cameraZAngle);
    d.CAMERAXANGLE = c.cameraXAngle;
    d.CAMERAYANGLE = c.cameraYAngle;
    d.CAMERAZANGLE = c.cameraZAngle;
}

void onLButtonDown(DispatchState& d) {
    d.CAMERASTEPANGLE = GetCameraStepAngle();
    fetchAngles(d);
    d.CAMERAYANGLE = 0;
    At3d_Camera_Rotate_Set_Speed(0);
}

// The drag turned the roaming camera as displayed: that view becomes its data.
void onLButtonUp() {
    if (!ControlChecked("LookAtBtn")) return;
    CameraState& c = cameraState();
    double eye[3], center[3], up = 0, fov = 0;
    if (!At3d_Get_Roaming_Data(c.roamingCameraName.c_str(), eye, center, &up, &fov, 1)) return;
    At3d_Set_Roaming_Data(c.roamingCameraName.c_str(), eye, center, &up, &fov);
    SetStatusbar4Roaming();
}

void showPointUnderCursor(DispatchState& d) {
    int hitFlag = 0;
    double xyz[3] = {0, 0, 0};
    char layer[AT3D_NAME_SIZE] = {}, clone[AT3D_NAME_SIZE] = {};
    float rgb[3] = {0, 0, 0};
    if (!At3d_Get_Mesh_Location_At_Point(d.MousexPos, d.MouseyPos, &hitFlag, xyz, layer, clone, rgb) || !hitFlag) {
        SSetTextAt3(0, QString::asprintf(" %d  No XYZ location found at click.", d.KamaLMouseMove));
        return;
    }
    const double x = xyz[0] + OC(0), y = xyz[1] + OC(1), z = xyz[2] + OC(2);
    const double dx = x - d.GlobalX1, dy = y - d.GlobalY1, dz = z - d.GlobalZ1;
    const double azimuth = normalisedDegrees(azimD(d.GlobalX1, d.GlobalY1, x, y));
    const double turned = normalisedDegrees(azimuth - d.CAMERAZANGLE);
    SSetTextAt3(0, QString::asprintf(" %d %.2lf %.2lf %.2lf D: %.2f Az: %.0f AzS: %.0f  ", d.KamaLMouseMove, x, y, z,
                                     std::sqrt(dx * dx + dy * dy + dz * dz), azimuth, turned));
}

bool onMouseMove(DispatchState& d, const AppMsg& msg) {
    if (!msg.overMainForm) return false;
    const int DX = msg.x - d.LastMousexPos, DY = msg.y - d.LastMouseyPos;
    if (DX == 0 && DY == 0) return false;
    d.MousexPos = msg.x;
    d.MouseyPos = msg.y;
    d.LastMousexPos = msg.x;
    d.LastMouseyPos = msg.y;
    d.MouseLB = (msg.wParam & MK_LBUTTON) != 0;
    d.MouseRB = (msg.wParam & MK_RBUTTON) != 0;
    if (d.MouseLB) {
        ++d.KamaLMouseMove;
        showPointUnderCursor(d);
    }
    if (std::abs(DX) > std::abs(DY))
        d.LRUD = DX > 0 ? 'R' : 'L';
    else
        d.LRUD = DY > 0 ? 'D' : 'U';
    if (d.MouseLB && d.MouseRB) {
        MyZoomIn(d.LRUD == 'U' || d.LRUD == 'R' ? 1 : -1);
        return true;
    }
    if (d.MouseRB) {
        // Dragging with the right button carries the scene with the cursor.
        At3d_PanCamera(1, -DX, DY);
        At3d_RenderOpenGLScene();
        return true;
    }
    if (!d.MouseLB) return false;
    if (ControlChecked("SelectMeasuringBtn") || ControlChecked("MeasureButton")) return true;
    const bool looking = ControlChecked("LookAtBtn");
    if (d.LRUD == 'U' && !looking) {
        d.CAMERAXANGLE -= d.CAMERASTEPANGLE;
        if (!(d.CAMERAXANGLE > 0)) d.CAMERAXANGLE = 0;
    } else if (d.LRUD == 'D' && !looking) {
        d.CAMERAXANGLE += d.CAMERASTEPANGLE;
        if (!(d.CAMERAXANGLE < 90)) d.CAMERAXANGLE = 90;
    } else if (d.LRUD == 'L') {
        d.CAMERAZANGLE -= d.CAMERASTEPANGLE;
    } else if (d.LRUD == 'R') {
        d.CAMERAZANGLE += d.CAMERASTEPANGLE;
    }
    if (d.DigiArmed) return true;
    if (cameraState().activeCameraID != 0) {
        // The look tool's camera turns about its eye instead of the orbit camera.
        if (d.LRUD == 'L' || d.LRUD == 'R')
            At3d_Move_Roaming_Turn(d.LRUD == 'R' ? d.CAMERASTEPANGLE : -d.CAMERASTEPANGLE);
        At3d_RenderOpenGLScene();
        DisplayAzimuth();
        return true;
    }
    At3d_RotateCamera(0, d.CAMERAXANGLE, d.CAMERAYANGLE, d.CAMERAZANGLE);
    GetCameraAnglesClick();
    At3d_RenderOpenGLScene();
    DisplayAzimuth();
    return true;
}

void moveRoamingZ(double eyeDelta, double targetDelta) {
    CameraState& c = cameraState();
    double eye[3], center[3], up = 0, fov = 0;
    if (!At3d_Get_Roaming_Data(c.activeCameraName.c_str(), eye, center, &up, &fov, 0)) return;
    eye[2] += eyeDelta;
    center[2] += targetDelta;
    At3d_Set_Roaming_Data(c.activeCameraName.c_str(), eye, center, &up, &fov);
}

double modelHeight() {
    const FrameState& f = frameState();
    return f.OriginalModelMinMax[5] - f.OriginalModelMinMax[4];
}

// The flythrough's column: its way points belong to the flythrough itself.
bool flythroughKey(int key) {
    static const std::map<int, FlyKey> keys = {
        {KEY_PRIOR, FlyKey::PageUp}, {KEY_NEXT, FlyKey::PageDown}, {KEY_LEFT, FlyKey::Left},
        {KEY_RIGHT, FlyKey::Right},  {KEY_UP, FlyKey::Up},         {KEY_DOWN, FlyKey::Down},
        {KEY_ADD, FlyKey::NumPlus},  {KEY_SUBTRACT, FlyKey::NumMinus}, {KEY_W, FlyKey::Forward},
        {KEY_F8, FlyKey::Forward},   {KEY_S, FlyKey::Back},        {KEY_F4, FlyKey::Back}};
    const auto found = keys.find(key);
    if (found == keys.end()) return false;
    FlyTroughKey(found->second);
    return true;
}

bool roamingKey(int key, bool shift, double step) {
    const double lift = shift ? 10 : 1;
    switch (key) {
    case KEY_HOME: At3d_Move_Roaming_RightLeft(modelHeight() / 100); return true;
    case KEY_END: At3d_Move_Roaming_RightLeft(-modelHeight() / 100); return true;
    case KEY_PRIOR: moveRoamingZ(lift, lift); return true;
    case KEY_NEXT: moveRoamingZ(-lift, -lift); return true;
    case KEY_LEFT: At3d_Move_Roaming_Turn(-step); return true;
    case KEY_RIGHT: At3d_Move_Roaming_Turn(step); return true;
    case KEY_UP: moveRoamingZ(0, 2); return true;
    case KEY_DOWN: moveRoamingZ(0, -2); return true;
    default: return false;
    }
}

bool orbitKey(int key, double step) {
    const CameraState& c = cameraState();
    const int pan = static_cast<int>(c.cameraStepPan);
    const bool indoor = modelSession().INDOOR;
    switch (key) {
    case KEY_HOME: At3d_PanCamera(1, 5 * pan, 0); return true;
    case KEY_END: At3d_PanCamera(1, -5 * pan, 0); return true;
    case KEY_PRIOR: At3d_PanCamera(1, 0, pan); return true;
    case KEY_NEXT: At3d_PanCamera(1, 0, -pan); return true;
    case KEY_LEFT: At3d_RotateCamera(1, 0, 0, -step); return true;
    case KEY_RIGHT: At3d_RotateCamera(1, 0, 0, step); return true;
    case KEY_UP:
        if (c.cameraXAngle + 0.001 > step || indoor) At3d_RotateCamera(1, -step, 0, 0);
        return true;
    case KEY_DOWN:
        if (std::floor(c.cameraXAngle + step + 0.1) <= 90 || indoor) At3d_RotateCamera(1, step, 0, 0);
        return true;
    case KEY_ADD: MyZoomIn(1); return true;
    case KEY_SUBTRACT: MyZoomIn(-1); return true;
    default: return false;
    }
}

// Esc puts every armed tool away, whatever it was doing.
void escapeArmedTools(DispatchState& d) {
    if (d.DigiArmed) AbortpopupClick();
    ReleaseMeasureTools();
    ReleaseBillboardTools();
    d.MOVEBILLBOARD = 0;
    if (ControlChecked("SelectMeasuringBtn")) {
        SetControlChecked("SelectMeasuringBtn", false);
        SelectMeasuringBtnClick();
    }
}

bool onKeyDown(DispatchState& d, const AppMsg& msg) {
    if (dialogState().STOPKEYACTIVITY) return true;
    const int key = msg.wParam;
    if (key == KEY_ESCAPE) {
        d.keep_goingAVI = false;
        escapeArmedTools(d);
        return true;
    }
    if (d.keep_goingAVI) return false;
    d.CAMERASTEPANGLE = GetCameraStepAngle();
    fetchAngles(d);
    bool changed = false;
    if (d.KamaFTWP > 0)
        changed = flythroughKey(key);
    else if (cameraState().activeCameraID != 0)
        changed = roamingKey(key, msg.shift, d.CAMERASTEPANGLE);
    else
        changed = orbitKey(key, d.CAMERASTEPANGLE);
    if (!changed) return false;
    fetchAngles(d);
    d.CAMERAYANGLE = 0;
    GetCameraAnglesClick();
    d.CAMERAZANGLE = cameraState().cameraZAngle;
    // The walk keeps its own status line of the way point.
    if (cameraState().activeCameraID != 0 && d.KamaFTWP == 0) SetStatusbar4Roaming();
    At3d_RenderOpenGLScene();
    DisplayAzimuth();
    return true;
}

AppPopup onEngineNotify(DispatchState& d, const AppMsg& msg) {
    if (!engineSession().dllOpen || msg.lParam != 1) return AppPopup::None;
    const int w = msg.wParam;
    if (w == AT3D_NOTIFY_RUBBERBAND) {
        Display_Rubberband_Data(AT3D_NOTIFY_RUBBERBAND);
        return AppPopup::None;
    }
    if (w >= AT3D_NOTIFY_SPHERE_BASE) {
        const int index = w - AT3D_NOTIFY_SPHERE_BASE;
        char name[AT3D_NAME_SIZE] = {};
        if (!At3d_Sphere_Marker_Get_Name(index, name)) return AppPopup::None;
        d.GlobalSelectedIdx = index;
        d.GlobalMeasureOrBilboard = 3;
        SSetTextAt3(3, QString("Sphere ") + name);
        return AppPopup::PopupMenu1;
    }
    if (w >= AT3D_NOTIFY_BILLBOARD_BASE) {
        const int index = w - AT3D_NOTIFY_BILLBOARD_BASE;
        BILLBOARD_DATA data{};
        const bool read = Get_Billboard_Data(index, &data);
        delete[] data.imagePtr;
        if (!read) return AppPopup::None;
        d.GlobalSelectedIdx = index;
        d.GlobalMeasureOrBilboard = 2;
        billboardState().Billboard_Selected_IDText = QString::fromUtf8(data.id);
        SSetTextAt3(3, "Billboard " + StripID(billboardState().Billboard_Selected_IDText));
        return AppPopup::PopupMenu1;
    }
    if (w >= AT3D_NOTIFY_MEASURE_BASE) {
        const int index = w - AT3D_NOTIFY_MEASURE_BASE;
        MEASURE_DATA item{};
        if (!Get_MeasureList_Item(index, &item)) return AppPopup::None;
        d.GlobalSelectedIdx = index;
        d.GlobalMeasureOrBilboard = 1;
        Display_Measure_Data(index, item);
        // The lines of facade photographs are named by their pictures: such a line opens its photograph.
        const QString picture = QString::fromUtf8(item.id);
        if (!picture.isEmpty() && QFileInfo(picture).isFile()) {
            FacadeState& f = facadeState();
            f.Facade1X = item.vertex1[0] + OC(0), f.Facade1Y = item.vertex1[1] + OC(1), f.Facade1Z = item.vertex1[2] + OC(2);
            f.Facade2X = item.vertex2[0] + OC(0), f.Facade2Y = item.vertex2[1] + OC(1), f.Facade2Z = item.vertex2[2] + OC(2);
            if (obliqueHooks().showPhotoBigWindow) obliqueHooks().showPhotoBigWindow(picture, 0, 0);
            return AppPopup::None;
        }
        return AppPopup::PopupMenu1;
    }
    return AppPopup::None;
}

}  // namespace

AppMessageResult AppMessage(const AppMsg& msg) {
    DispatchState& d = dispatchState();
    switch (msg.message) {
    case MSG_SHIFT_RIGHT_POPUP: return {true, AppPopup::ShiftRightClickPopupmenu};
    case WM_MOUSEWHEEL:
        if (!msg.overMainForm) return {};
        MyZoomIn(msg.wParam > 0 ? 0.5 : -0.5);
        return {true};
    case WM_LBUTTONDOWN: onLButtonDown(d); return {};
    case WM_LBUTTONUP: onLButtonUp(); return {};
    case WM_MOUSEMOVE: return {onMouseMove(d, msg)};
    case WM_KEYDOWN: return {onKeyDown(d, msg)};
    case MSG_ENGINE_NOTIFY: {
        const AppPopup popup = onEngineNotify(d, msg);
        return {true, popup};
    }
    default: return {};
    }
}

PopupMenu1Items PopupMenu1Popup() {
    const int kind = dispatchState().GlobalMeasureOrBilboard;
    return {kind != 3, kind == 2, kind != 3};
}
