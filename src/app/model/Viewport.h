// The view as the open sequence needs it: the full view, viewport files and
// the camera values fetched from the engine, the azimuth and north arrow.
#pragma once

#include <string>

// A viewport file is three lines: "%lf %lf" distance and field of view,
// "%lf %lf %lf" the view point in the map frame, "%lf %lf %lf" the angles.
// With a roaming camera active the file takes "_Roaming.VPT" as extension
// and holds what that camera shows. Returns the path written, "" on failure.
std::string SaveViewport(const std::string& path);
// Reads a viewport file back into the engine and draws; false when it
// can't be read.
bool RestoreViewport(const std::string& path);

// The model's home view when its folder holds "Home.vpt"; otherwise from
// the top, turned 45 degrees about X, and drawn.
void FullViewBtnClick();

// The camera values of cameraState() from the engine.
// Refreshes the camera globals from the engine and fills the camera edit fields.
void GetCameraData();
// The camera edit fields: each reads its field into the session value; a
// field that does not read as a number keeps the value it had.
double GetCameraStepAngle();
double GetCameraStepFOV();
int GetCameraRotateSpeed();

// Names of the camera edit fields on the main form.
inline constexpr const char* CAMERA_STEP_ANGLE_EDIT = "CameraStepAngleEdit";
inline constexpr const char* CAMERA_STEP_FOV_EDIT = "CameraStepFOVEdit";
inline constexpr const char* CAMERA_ROTATE_SPEED_EDIT = "CameraRotateSpeedEdit";
void GetCameraAnglesClick();

// "Azimuth %.0f" in the fourth status text and the north arrow turned to match.
void DisplayAzimuth();
void ShowNorthArrow(float Azim);
