// The engine's whole state: the scene, its lists, the camera and the flags.
// One owner, one accessor; tests start from resetEngineState().
#pragma once

#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "../engine_interface.h"
#include "HitIndex.h"
#include "Layer.h"

namespace engine {

struct RubberbandPoint {
    int hitFlag = 0;
    double xyz[3] = {0, 0, 0};
    int screenX = 0;
    int screenY = 0;
    float rgb[3] = {0, 0, 0};
};

struct RubberbandLook {
    float rgbLine[3] = {1, 0, 0};
    float rgbPoint1[3] = {1, 0, 1};
    float rgbPoint2[3] = {0, 1, 1};
    float lineWidth = 2;
    float pointSize = 7;
    int depthTest = 0;
    int points = 1;
    float rgbObstruction[3] = {0, 1, 0};
    float obstructionPointSize = 10;
    int obstructionDisplay = 1;
    double obstructionSkipDistance = 0;
    float rgbObserverLine[3] = {1, 1, 0};
    float rgbObserverPoint[3] = {1, 1, 0};
    float observerWidth = 2;
    float observerSize = 7;
    int observerLineFlag = 1;
    int observerPointFlag = 1;
};

struct MeasureListLook {
    float rgbLine[3] = {0, 0, 1};
    float rgbPoint1[3] = {0, 1, 0};
    float rgbPoint2[3] = {1, 0, 0};
    float lineWidth = 2;
    float pointSize = 7;
    int depthTest = 0;
    int points = 0;
    float rgbSelected[3] = {1, 0, 1};
    float rgbObstruction[3] = {0, 1, 0};
    float obstructionPointSize = 8;
    int obstructionDisplay = 1;
};

struct BillboardItem {
    BILLBOARD_DATA data{};        // imagePtr stays null: the pixels live in image
    std::vector<UInt8> image;     // the engine's own copy
};

struct SphereMarker {
    std::string name;
    double diameter = 1;
    double position[3] = {0, 0, 0};
    float rgb1[3] = {1, 0, 0};
    float rgb2[3] = {1, 1, 1};
    int color2Flag = 0;
    int interval = 500;
    int strobeFlag = 0;
    int visibleFlag = 1;
};

struct ViewDecal {
    std::string name;
    std::string path;
    std::string typeName;  // "Top_Left", "Top_Right" or "Anywhere"
    float size = 10;       // percent of the surface
    int useFrame = 0;
    float rotateAngle = 0;
    float screenX = 0;     // percent, for "Anywhere"
    float screenY = 0;
    int visible = 1;
};

// The default camera orbits its view point: the eye stands `distance` away,
// looking along azimuth angles[2] (degrees from north, clockwise) and tilted
// angles[0] degrees down from the horizon; angles[1] rolls about the view axis.
struct OrbitCamera {
    double angles[3] = {45, 0, 0};
    double viewPoint[3] = {0, 0, 0};
    double fieldOfView = 45;       // vertical, degrees
    double distance = 100;
    double initialDistance = 100;
    double homeViewPoint[3] = {0, 0, 0};
    int rotateSpeed = 0;
    double dragRotateSpeed = 0;
    int zoomSpeed = 5;
    int panX = 0;                  // last absolute pan, pixels
    int panZ = 0;
};

struct RoamingCamera {
    std::string name;
    double eye[3] = {0, 0, 0};
    double center[3] = {0, 1, 0};
    double upRotation = 0;
    double fieldOfView = 80;
};

struct StatusBar {
    int shown = 0;
    int height = 0;
    std::string text;
    int fontColor = 0xFFFFFF;
    int fontSize = 14;
};

constexpr const char* DEFAULT_CAMERA_NAME = "Default";

struct EngineState {
    bool started = false;
    void* parentWindow = nullptr;
    int width = 0;   // drawing surface, pixels
    int height = 0;
    std::array<int, AT3D_FLAG_COUNT> flags{};
    std::string producedBy;
    int maxTextureExponent = 15;
    float colorMapLow[3] = {0, 0, 1};    // entry 271
    float colorMapHigh[3] = {1, 0, 0};   // entry 268
    int framesDrawn = 0;                 // frames actually drawn (no-draw suppresses)

    std::vector<Layer> layers;
    bool turnedForDrawing = false;       // the OBJ quarter turn is in force

    // Hit index: built lazily at the first query after a change.
    std::unique_ptr<HitIndex> hitIndex;
    std::atomic<bool> hitIndexReady{false};
    std::mutex hitIndexMutex;

    void* notifyWindow = nullptr;
    int notifyMessage = 0;
    RubberbandPoint rubberband[5];       // 1 first end, 2 second end, 3 obstruction, 4 observer
    bool observerActive = false;
    double observerDelta[3] = {0, 0, 0};
    RubberbandLook rubberbandLook;

    std::vector<MEASURE_DATA> measures;
    int selectedMeasure = -1;
    MeasureListLook measureLook;
    std::vector<BillboardItem> billboards;
    int selectedBillboard = -1;
    std::vector<SphereMarker> spheres;
    int selectedSphere = -1;

    OrbitCamera camera;
    std::vector<RoamingCamera> roamingCameras;  // index 0 is the default camera's slot
    int activeCamera = 0;

    StatusBar statusBar;
    std::vector<ViewDecal> decals;
};

EngineState& engineState();
void resetEngineState();

// Marks the scene changed: the hit index is rebuilt at the next query.
void invalidateHitIndex();
// The index for the present scene, built if needed; null when the scene has
// no triangles. Safe to call from several threads.
const HitIndex* currentHitIndex();

// Index of the layer of that name, or -1.
int findLayer(const char* name);

// Logs one printf-style line through the host's log function.
void engineLog(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Posts a notification to the target of At3d_Init_Mesh_Location.
void notifyHost(int wParam);

// Copies a name into an 80-byte buffer, cut and terminated.
void copyName(char* destination, const std::string& source);

}  // namespace engine
