#include "Viewport.h"

#include <QSaveFile>
#include <QString>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>

#include "CameraTools.h"
#include "ModelPaths.h"
#include "ModelSession.h"
#include "app/session/CameraState.h"
#include "app/session/MainFormState.h"
#include "app/session/StartupState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Frames.h"
#include "geo/Units.h"
#include "scene/EngineSession.h"
#include "scene/FileNameCase.h"
#include "scene/engine_interface.h"

namespace {

bool roamingActive() { return cameraState().activeCameraID > 0; }

// The roaming camera's eye and target turned into the orbit camera's terms.
void cameraFromRoaming(CameraState& c) {
    double eye[3], center[3], up = 0, fov = 0;
    if (!At3d_Get_Roaming_Data(c.activeCameraName.c_str(), eye, center, &up, &fov, 1)) return;
    const double dx = center[0] - eye[0], dy = center[1] - eye[1], dz = center[2] - eye[2];
    c.cameraZAngle = azimD(eye[0], eye[1], center[0], center[1]);
    c.cameraDistance = std::sqrt(dx * dx + dy * dy + dz * dz);
    const double d = std::max(0.1, std::sqrt(dx * dx + dy * dy));
    c.cameraXAngle = -std::atan(dz / d) * 180 / M_PI;
    c.cameraXViewpoint = center[0];
    c.cameraYViewpoint = center[1];
    c.cameraZViewpoint = center[2];
}

}  // namespace

std::string SaveViewport(const std::string& path) {
    CameraState& c = cameraState();
    At3d_GetCameraDistance(&c.cameraDistance);
    At3d_GetCameraFieldOfView(&c.cameraFieldOfView);
    At3d_GetCameraViewPoint(&c.cameraXViewpoint, &c.cameraYViewpoint, &c.cameraZViewpoint);
    At3d_GetCameraAngles(&c.cameraXAngle, &c.cameraYAngle, &c.cameraZAngle);
    std::string target = path;
    if (roamingActive()) {
        target = WithExtension(path, "_Roaming.VPT");
        cameraFromRoaming(c);
    }
    char text[512];
    std::snprintf(text, sizeof text, "%lf %lf\n%lf %lf %lf\n%lf %lf %lf\n", c.cameraDistance, c.cameraFieldOfView,
                  c.cameraXViewpoint + OC(0), c.cameraYViewpoint + OC(1), c.cameraZViewpoint + OC(2), c.cameraXAngle,
                  c.cameraYAngle, c.cameraZAngle);
    QSaveFile file(QString::fromStdString(target));
    if (!file.open(QIODevice::WriteOnly)) return "";
    file.write(text);
    return file.commit() ? target : "";
}

bool RestoreViewport(const std::string& path) {
    std::ifstream in(path);
    std::string line1, line2, line3;
    if (!std::getline(in, line1) || !std::getline(in, line2) || !std::getline(in, line3)) return false;
    CameraState& c = cameraState();
    double distance = 0, fov = 0, p[3] = {0, 0, 0}, a[3] = {0, 0, 0};
    if (std::sscanf(line1.c_str(), "%lf%lf", &distance, &fov) != 2 ||
        std::sscanf(line2.c_str(), "%lf%lf%lf", &p[0], &p[1], &p[2]) != 3 ||
        std::sscanf(line3.c_str(), "%lf%lf%lf", &a[0], &a[1], &a[2]) != 3)
        return false;
    c.cameraDistance = distance;
    c.cameraFieldOfView = fov;
    c.cameraXViewpoint = p[0] - OC(0);
    c.cameraYViewpoint = p[1] - OC(1);
    c.cameraZViewpoint = p[2] - OC(2);
    At3d_WriteFlag_LIBFLAG_NO_DRAW(1);
    At3d_SetCameraDistance(distance);
    At3d_SetCameraFieldOfView(0, fov);
    At3d_SetCameraViewPoint(c.cameraXViewpoint, c.cameraYViewpoint, c.cameraZViewpoint);
    At3d_RotateCamera(0, a[0], a[1], a[2]);
    At3d_WriteFlag_LIBFLAG_NO_DRAW(0);
    At3d_RenderOpenGLScene();
    GetCameraAnglesClick();
    return true;
}

void FullViewBtnClick() {
    for (int field = 0; field < 3; ++field) SSetTextAt3(field, "");
    if (!modelSession().GlobalModelFileName.empty()) {
        const std::string home = FindFileNoCase(ModelFolder() + "Home.vpt");
        if (!home.empty() && RestoreViewport(home)) return;
    }
    // A measure or observer pick in progress ends with the full view.
    for (const char* button : {"MeasureButton", "SelectObservertargetBtn"}) {
        if (!ControlChecked(button)) continue;
        SetControlChecked(button, false);
        At3d_WriteFlag(LIBFLAG_MESH_LOCATION, MESH_LOCATION_OFF);
    }
    if (ControlChecked("LookAtBtn")) {
        SetControlChecked("LookAtBtn", false);
        LookAtBtnClick();
    }
    At3d_ZoomReset();
    At3d_ViewTop();
    At3d_RotateCamera(0, 45, 0, 0);
    GetCameraAnglesClick();
    At3d_WriteFlag_LIBFLAG_NO_DRAW(0);
    At3d_RenderOpenGLScene();
    SetBusyCursor(false);
    At3d_WriteFlag(LIBFLAG_VIEW_289, 1);
    At3d_WriteFlag(LIBFLAG_HOLD_INPUT, 0);
    DisplayAzimuth();
}

void GetCameraData() {
    CameraState& c = cameraState();
    At3d_GetCameraViewPoint(&c.cameraXViewpoint, &c.cameraYViewpoint, &c.cameraZViewpoint);
    At3d_GetCameraFieldOfView(&c.cameraFieldOfView);
    At3d_GetCameraAngles(&c.cameraXAngle, &c.cameraYAngle, &c.cameraZAngle);
    At3d_GetCameraDistance(&c.cameraDistance);
    At3d_GetCameraInitialDistance(&c.cameraInitialDistance);
    At3d_GetCameraRotateSpeed(&c.cameraRotateSpeed);
    At3d_GetCameraZoomSpeed(&c.cameraZoomSpeed);
    SetEditText(CAMERA_STEP_ANGLE_EDIT, QString::number(c.cameraStepAngle));
    SetEditText(CAMERA_STEP_FOV_EDIT, QString::number(c.cameraStepFOV));
    SetEditText(CAMERA_ROTATE_SPEED_EDIT, QString::number(c.cameraRotateSpeed));
}

namespace {

// The field's number, or the value it had when the text is no number.
double numberOfField(const char* name, double current) {
    bool ok = false;
    const double value = EditText(name).trimmed().toDouble(&ok);
    return ok ? value : current;
}

}  // namespace

double GetCameraStepAngle() {
    CameraState& c = cameraState();
    c.cameraStepAngle = numberOfField(CAMERA_STEP_ANGLE_EDIT, c.cameraStepAngle);
    return c.cameraStepAngle;
}

double GetCameraStepFOV() {
    CameraState& c = cameraState();
    c.cameraStepFOV = numberOfField(CAMERA_STEP_FOV_EDIT, c.cameraStepFOV);
    return c.cameraStepFOV;
}

int GetCameraRotateSpeed() {
    CameraState& c = cameraState();
    c.cameraRotateSpeed = static_cast<int>(numberOfField(CAMERA_ROTATE_SPEED_EDIT, c.cameraRotateSpeed));
    return c.cameraRotateSpeed;
}

void GetCameraAnglesClick() {
    CameraState& c = cameraState();
    At3d_GetCameraAngles(&c.cameraXAngle, &c.cameraYAngle, &c.cameraZAngle);
}

void DisplayAzimuth() {
    const CameraState& c = cameraState();
    double azimuth = std::fmod(c.cameraZAngle, 360.0);
    if (azimuth < 0) azimuth += 360;
    if (roamingActive()) {
        double eye[3], center[3], up = 0, fov = 0;
        if (At3d_Get_Roaming_Data(c.activeCameraName.c_str(), eye, center, &up, &fov, 1))
            azimuth = azimD(eye[0], eye[1], center[0], center[1]);
    }
    SSetTextAt3(3, QString::asprintf("Azimuth %.0f", azimuth));
    ShowNorthArrow(static_cast<float>(azimuth));
}

void ShowNorthArrow(float Azim) {
    At3d_View_Decal_Set_Data("NothrArrow", startupState().NORTHARROW.c_str(), "Top_Right",
                             viewerSettings().NorthArrowSize, 0, Azim, 0, 0, 1);
}
