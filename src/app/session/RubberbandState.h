// The engine's rubberband (two picked points, the obstruction between them,
// the observer above the first) as the session keeps it, and the look of
// the measure list.
#pragma once

struct RubberbandState {
    float rgbLineArray[3] = {1, 0, 0};
    float rgbPoint1Array[3] = {1, 0, 1};
    float rgbPoint2Array[3] = {0, 1, 1};
    float rgbObstructionArray[3] = {0, 1, 0};
    float lineWidth = 2;
    float pointSize = 7;
    float pointObstructionSize = 10;
    int depthTestFlag = 0;
    int pointsFlag = 1;
    int obstructionDisplayFlag = 1;
    // Hits nearer the observer than this are the observer's own ground.
    double obstructionSkipDistance = 0.5;

    // 2 once the engine's observer point was fetched, 1 while there is none.
    int hitFlagObserver = 1;
    float observerWidth = 1;
    float observerSize = 3;
    int observerLineFlag = 1;
    int observerPointFlag = 1;
    float rgbLineObserverArray[3] = {0, 0, 1};
    float rgbPointObserverArray[3] = {0, 0, 1};

    int screenX0 = 0, screenX1 = 0, screenX2 = 0;
    int screenY0 = 0, screenY1 = 0, screenY2 = 0;
    int screenXObstruction = 0, screenYObstruction = 0;
    int hitFlag0 = 0, hitFlag1 = 0, hitFlag2 = 0, hitFlagObstruction = 0;
    double xyzArray0[3] = {0, 0, 0};
    double xyzArray1[3] = {0, 0, 0};
    double xyzArray2[3] = {0, 0, 0};
    double xyzArrayObstruction[3] = {0, 0, 0};
    double xyzArrayObserver[3] = {0, 0, 0};
    int screenXObserver = 0, screenYObserver = 0;
    double xyzDeltaArray[3] = {0, 0, 0};
    double XYZDeltaArrayObstruction[3] = {0, 0, 0};
    double xyzDeltaArrayObserver[3] = {0, 0, 0};
    double xyzDeltaArrayNoData[3] = {0, 0, 0};
    double rubberbandDistance = 0;
    double obstructionDistance = 0;
    double nodataDistance = 0;

    // The measure list's look; each model open sets it again.
    float rgbLineArray_ML[3] = {0, 0, 0};
    float rgbPoint1Array_ML[3] = {0, 0, 0};
    float rgbPoint2Array_ML[3] = {0, 0, 0};
    float pointSize_ML = 8;
    int pointsFlag_ML = 1;
    float lineWidth_ML = 6;
    int depthTestFlag_ML = 0;
};

RubberbandState& rubberbandState();
void resetRubberbandState();
