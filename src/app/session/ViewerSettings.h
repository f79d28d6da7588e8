// The session's switches and fixed values: what the settings file sets and
// the initial values the other Parts start from.
#pragma once

struct ViewerSettings {
    int useTexturesFlag = 1;
    int alwaysShowCameraCursorFlag = 0;
    int touchScreenInputFlag = 0;
    bool ConfiguredForSolar = false;
    // Cap on a texture's edge; the settings file may lower it.
    int REDUCEJPGSIZE = 16384;
    int MEASUREOROBSERVER = 1;
    int LastSelectedLine = -1;
    int SelectedIDX = -1;
    int StatusbarHeight = 30;
    // Colours are the toolkit's: red in the lowest byte, so 16711680 is blue.
    int At3d_StatusBar_COLOR = 16711680;
    int GlobalColor = 16711680;
    int SphereColor = 16711680;
    float NorthArrowSize = 8;
    double GlobalVideoRotationStep = 5;
    double DeltaStation = 222;
    double DistToFacade = 10;
    // Height of a flythrough above the model, metres.
    double FlytroughAlt = 100;
    int FRAMERATE = 25;
    double GlobalFlyTroughInclanation = 45;
    double oglXyzUp[3] = {0, 1, 0};
};

ViewerSettings& viewerSettings();
void resetViewerSettings();
