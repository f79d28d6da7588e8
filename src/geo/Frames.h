// The frames of the open model: map = file + Offset, local = file -
// OriginalobjectCenter, so map = local + OC.
#pragma once

struct FrameState {
    double OriginalobjectCenter[3] = {0, 0, 0};
    double Offset[3] = {0, 0, 0};
    // The centre that places the model on the globe: it holds no Offset.
    double OCENTER[3] = {0, 0, 0};
    double OCENTERLat = 0;
    double OCENTERLon = 0;
    // Where the model really lies: the geographic position of OCENTER + Offset.
    // The site of its climate and of its reports.
    double MapCenterLat = 0;
    double MapCenterLon = 0;
    double LOCALCENTER[3] = {0, 0, 0};
    double OriginalModelMinMax[6] = {0, 0, 0, 0, 0, 0};
    double BeforeRotateCenter[3] = {0, 0, 0};
    double BeforeRotateModelMinMax[6] = {0, 0, 0, 0, 0, 0};
    double AfterRotateCenter[3] = {0, 0, 0};
    double AfterRotateModelMinMax[6] = {0, 0, 0, 0, 0, 0};
    double SCALE = 1;
    // The factor the engine's vertices carry now: ApplyScale brings it to SCALE.
    double scaleInForce = 1;
    // The last shift found between the model and its true position.
    double ModelSHIFTX = 0;
    double ModelSHIFTY = 0;
    double ModelSHIFTZ = 0;
    // The shift of the last shifted copy written.
    double ShiftXYZ[3] = {0, 0, 0};
};

FrameState& frameState();
void resetFrameState();

// Shift from the local frame to the map frame on axis I (0 east, 1 north, 2 up).
double OC(int I);

// Ground height under a map point, from a ray coming down from high above:
// the highest surface. -9999 where no mesh lies.
double GetZFromXY(double X, double Y);
// The same in the local frame with the ray going up: the lowest surface.
double GetZFromXYLocal(double X, double Y);

// Scales the model about the local origin so that it stands SCALE times as
// large as read; OC stays, so map points of the centre keep their place.
void ApplyScale();
