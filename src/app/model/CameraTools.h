// The view tools of the main form: the zoom that adapts its step, the top
// view, the look tool with its roaming camera "R1", and the observer height.
#pragma once

#include <QString>

struct CameraToolState {
    // The zoom's eye movement in metres, adapted after every zoom.
    double LastCameraDist = 0;
    double step = 1;
    float maxZoomStep = -9;
    float ObserverElevation = 0;
    bool haveObserverFlag = false;
    double GlobalDeltaLookAtZ = 0;
    double DeltaLookAtRotate = 0;
    // Toolkit colour of the form while a roaming camera is drawn; -1 the form's own.
    int formColor = -1;
    // Texts of the look button and the observer label, which the form shows.
    QString LookAtCaption = "Look from point 1 to point 2";
    QString ObserverElevationText = "0.0";
};

CameraToolState& cameraToolState();
void resetCameraToolState();

// Toolkit colour (red in the lowest byte) that marks the roaming camera.
constexpr int ROAMING_FORM_COLOR = 0x80FFFF;

// in above 0 zooms in, otherwise out; never through the view point.
void MyZoomIn(double in);
void ZoomInBtnClick();
void ZoomOutBtnClick();
// Straight down on the model, then drawn.
void MyViewTopClick();

// Follows the checked state of "LookAtBtn": on, it looks from the first
// rubberband point (or the selected measure's first end) to the second
// through "R1"; off, the default camera returns.
void LookAtBtnClick();
// Eye and target of the look tool change places.
void InvertObserverTargetClick();
// ObserverElevation += m, never below 0; 0 cancels the engine's observer.
void SetObserverElevation(float m);
// Eye and target of the roaming camera in the map frame, in status field 0.
void SetStatusbar4Roaming();
void SetRoamingColor();

// The view menu's viewport files, chosen through the file dialogs in the
// model's measurements folder.
void SaveViewportClick();
void RestoreViewportClick();
