#include "CameraTools.h"

#include <QString>
#include <algorithm>
#include <cmath>
#include <string>

#include "ModelSession.h"
#include "Viewport.h"
#include "app/services/FileDialogs.h"
#include "app/session/CameraState.h"
#include "app/session/MainFormState.h"
#include "app/session/RubberbandState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Frames.h"
#include "geo/Units.h"
#include "scene/EngineSession.h"
#include "scene/engine_interface.h"

namespace {

CameraToolState& toolState() {
    static CameraToolState state;
    return state;
}

constexpr double MIN_ZOOM_STEP = 0.2;
const QString VIEWPORT_FILTER = "Viewport|*.vpt|All|*.*";
const QString LOOK_HELP = "\t Lmouse or L/R arrows to rotate, Up/Down to tilt, PgUp/PgDn/Home/End to pan ";

double engineDistance() {
    double distance = 0;
    At3d_GetCameraDistance(&distance);
    return distance;
}

void adaptZoomStep(CameraToolState& z) {
    z.step = std::fabs(engineDistance() - z.LastCameraDist);
    if (z.step < MIN_ZOOM_STEP) z.step = MIN_ZOOM_STEP;
    if (z.step > z.maxZoomStep) z.maxZoomStep = static_cast<float>(z.step);
}

void setCaption(QString CameraToolState::*text, const char* control, const QString& value) {
    toolState().*text = value;
    mainFormHost().controlChanged(control);
}

bool roamingActive() { return cameraState().activeCameraID != 0; }

void setRoamingData() {
    CameraState& c = cameraState();
    const RubberbandState& r = rubberbandState();
    At3d_Set_Roaming_Data(c.roamingCameraName.c_str(), r.xyzArray1, r.xyzArray2, &c.roaming_Up_Rotation,
                          &c.roaming_FieldOfView);
}

// Ends of the look: both rubberband points, or the selected measure's ends.
bool lookPointsKnown() {
    RubberbandState& r = rubberbandState();
    const int selected = viewerSettings().SelectedIDX;
    if (selected >= 0) {
        MEASURE_DATA item{};
        if (Get_MeasureList_Item(selected, &item)) {
            for (int i = 0; i < 3; ++i) {
                r.xyzArray1[i] = item.vertex1[i];
                r.xyzArray2[i] = item.vertex2[i];
            }
            r.xyzArray1[2] += r.xyzDeltaArrayObserver[2];
            return true;
        }
    }
    return r.hitFlag1 == 2 && r.hitFlag2 == 2;
}

}  // namespace

CameraToolState& cameraToolState() { return toolState(); }
void resetCameraToolState() { toolState() = CameraToolState{}; }

void MyZoomIn(double in) {
    CameraToolState& z = toolState();
    z.LastCameraDist = engineDistance();
    if (in > 0) {
        if (z.LastCameraDist > z.step * 1.01) {
            At3d_ZoomIn(static_cast<float>(z.step));
            adaptZoomStep(z);
        }
    } else {
        At3d_ZoomOut(static_cast<float>(z.step));
        adaptZoomStep(z);
    }
    cameraState().cameraStepPan = z.step;
    GetCameraAnglesClick();
    At3d_SetCameraZoomSpeed(5 * z.maxZoomStep > engineDistance() ? 3 : 5);
    At3d_RenderOpenGLScene();
}

void ZoomInBtnClick() { MyZoomIn(1); }
void ZoomOutBtnClick() { MyZoomIn(-1); }

void MyViewTopClick() {
    At3d_ViewTop();
    GetCameraAnglesClick();
    At3d_RenderOpenGLScene();
    DisplayAzimuth();
}

void LookAtBtnClick() {
    CameraToolState& t = toolState();
    CameraState& c = cameraState();
    t.GlobalDeltaLookAtZ = 0;
    t.DeltaLookAtRotate = 0;
    for (int field = 0; field < 3; ++field) SSetTextAt3(field, "");
    bool on = ControlChecked("LookAtBtn");
    if (on && !lookPointsKnown()) {
        SetControlChecked("LookAtBtn", false);
        At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_OFF);
        on = false;
    }
    if (on) {
        const std::string& folder = modelSession().MEASUREMENTSFOLDER;
        if (!folder.empty()) SaveViewport(folder + "Snap.VPT");
        // Keeps the line of sight off the exact vertical.
        rubberbandState().xyzArray2[0] += 0.1;
        setRoamingData();
        c.activeCameraName = c.roamingCameraName;
        c.activeCameraID = 1;
        setCaption(&CameraToolState::LookAtCaption, "LookAtBtn", "Reset view");
        SetHelpCaption(LOOK_HELP);
    } else {
        setCaption(&CameraToolState::LookAtCaption, "LookAtBtn", "Look from point 1 to point 2");
        c.activeCameraID = 0;
        c.activeCameraName = c.defaultCameraName;
        SetHelpCaption(modelSession().RegularHelp);
    }
    At3d_Switch_OGL_Camera(c.activeCameraName.c_str());
    At3d_WriteFlag(LIBFLAG_HOLD_INPUT, 0);
    SetRoamingColor();
    if (on) SetStatusbar4Roaming();
    At3d_RenderOpenGLScene();
    DisplayAzimuth();
}

void InvertObserverTargetClick() {
    RubberbandState& r = rubberbandState();
    for (int i = 0; i < 3; ++i) std::swap(r.xyzArray1[i], r.xyzArray2[i]);
    if (!roamingActive()) return;
    setRoamingData();
    SetStatusbar4Roaming();
    At3d_RenderOpenGLScene();
    DisplayAzimuth();
}

void SetObserverElevation(float m) {
    CameraToolState& t = toolState();
    RubberbandState& r = rubberbandState();
    t.ObserverElevation = std::max(0.0f, t.ObserverElevation + m);
    setCaption(&CameraToolState::ObserverElevationText, "ObserverElevationlabel",
               QString::asprintf("%.1f", t.ObserverElevation));
    r.xyzDeltaArrayObserver[2] = t.ObserverElevation;
    t.haveObserverFlag = t.ObserverElevation != 0;
    if (t.haveObserverFlag)
        At3d_Add_Mesh_Location_Observer(r.xyzDeltaArrayObserver, r.hitFlagObserver);
    else
        At3d_Cancel_Mesh_Location_Observer();
    if (roamingActive()) {
        CameraState& c = cameraState();
        double eye[3] = {r.xyzArray1[0], r.xyzArray1[1], r.xyzArray1[2] + t.ObserverElevation};
        At3d_Set_Roaming_Data(c.roamingCameraName.c_str(), eye, r.xyzArray2, &c.roaming_Up_Rotation,
                              &c.roaming_FieldOfView);
        SetStatusbar4Roaming();
        DisplayAzimuth();
    }
    At3d_RenderOpenGLScene();
}

void SetStatusbar4Roaming() {
    const CameraState& c = cameraState();
    double eye[3], center[3], up = 0, fov = 0;
    if (!At3d_Get_Roaming_Data(c.roamingCameraName.c_str(), eye, center, &up, &fov, 1)) return;
    const double dx = center[0] - eye[0], dy = center[1] - eye[1], dz = center[2] - eye[2];
    SSetTextAt3(0, QString::asprintf(" Eye %.2f %.2f %.2f Target %.2f %.2f %.2f D: %.2f Az: %.0f ", eye[0] + OC(0),
                                     eye[1] + OC(1), eye[2] + OC(2), center[0] + OC(0), center[1] + OC(1),
                                     center[2] + OC(2), std::sqrt(dx * dx + dy * dy + dz * dz),
                                     azimD(eye[0], eye[1], center[0], center[1])));
}

void SetRoamingColor() {
    toolState().formColor = roamingActive() ? ROAMING_FORM_COLOR : -1;
    mainFormHost().controlChanged("FormAt3");
}

void SaveViewportClick() {
    QString file = QString::fromStdString(modelSession().MEASUREMENTSFOLDER) + "View.vpt";
    if (!OrvoSaveFile(file, "vpt", VIEWPORT_FILTER, "Save viewport", 1)) return;
    const std::string written = SaveViewport(file.toStdString());
    SSetTextAt3(0, written.empty() ? "Viewport not saved" : QString::fromStdString(written));
}

void RestoreViewportClick() {
    QString file;
    if (OrvoOpenFile(file, "vpt", VIEWPORT_FILTER, "Restore viewport",
                     QString::fromStdString(modelSession().MEASUREMENTSFOLDER)))
        RestoreViewport(file.toStdString());
    DisplayAzimuth();
}
