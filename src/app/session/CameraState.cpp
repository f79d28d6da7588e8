#include "CameraState.h"

CameraState& cameraState() {
    static CameraState state;
    return state;
}

void resetCameraState() { cameraState() = CameraState{}; }
