// The camera as the session knows it: the orbit camera's values fetched
// from the engine, their steps, and the roaming cameras.
#pragma once

#include <string>

struct CameraState {
    double cameraXViewpoint = 0, cameraYViewpoint = 0, cameraZViewpoint = 0;
    double cameraFieldOfView = 30;
    double cameraStepFOV = 1;
    int cameraRotateSpeed = 1;
    int cameraZoomSpeed = 0;
    double cameraXAngle = 0, cameraYAngle = 0, cameraZAngle = 0;
    double cameraStepAngle = 5;
    double cameraXPan = 0, cameraZPan = 0;
    double cameraStepPan = 1;
    int reversePanDirectionFlag = 0;
    int reverseZoomDirectionFlag = 0;
    double cameraInitialDistance = 0;
    double cameraDistance = 0;

    // Camera 0 is the engine's orbit camera; "R1" the roaming one of the look tool.
    std::string roamingCameraName = "R1";
    std::string defaultCameraName;
    std::string activeCameraName;
    int cameraTotal = 0;
    int cameraID = 0;
    int activeCameraID = 0;
    double roaming_FieldOfView = 80;
    double roaming_Up_Rotation = 0;
    double moveAheadBack_Step = 1;
    double moveRightLeft_Step = 0.1;
    double moveUpDown_Step = 1;
    int haveSavedLookAtFlag = 0;
};

CameraState& cameraState();
void resetCameraState();
