// The measure list, the billboards and the sphere markers.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "EngineState.h"

using engine::EngineState;
using engine::engineState;

namespace {

double length3(const double a[3], const double b[3]) {
    const double dx = b[0] - a[0], dy = b[1] - a[1], dz = b[2] - a[2];
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

void copy3(double* destination, const double* source) {
    for (int i = 0; i < 3; ++i) destination[i] = source ? source[i] : 0.0;
}

void copy3f(float* destination, const float* source, const float* fallback) {
    for (int i = 0; i < 3; ++i) destination[i] = source ? source[i] : fallback[i];
}

// A name as the engine keeps it: cut like every 80-byte name buffer.
std::string cutName(const char* name) {
    char buffer[AT3D_NAME_SIZE];
    engine::copyName(buffer, name ? std::string(name) : std::string());
    return std::string(buffer);
}

// Selection index after removing item `removed` from its list.
void adjustSelection(int& selected, int removed) {
    if (selected == removed)
        selected = -1;
    else if (selected > removed)
        --selected;
}

// ---- Measure items ----

bool fillMeasure(MEASURE_DATA& item, const char* id, int visible, int observer, int obstruction, float lineWidth,
                 const float* rgb, const double* vertex1, const double* vertex2, const double* observerPoint,
                 const double* obstructionPoint) {
    if (!vertex1 || !vertex2) return false;
    if (observer && !observerPoint) return false;
    if (obstruction && !obstructionPoint) return false;
    std::memset(&item, 0, sizeof item);
    engine::copyName(item.id, id ? std::string(id) : std::string());
    item.visible_Flag = visible;
    item.observer_Flag = observer;
    item.obstruction_Flag = obstruction;
    item.lineWidth = lineWidth;
    copy3f(item.rgb_Line_Array, rgb, engineState().measureLook.rgbLine);
    copy3(item.vertex1, vertex1);
    copy3(item.vertex2, vertex2);
    copy3(item.observer, observerPoint);
    copy3(item.obstruction, obstructionPoint);
    item.distance = length3(item.vertex1, item.vertex2);
    item.obstruction_Distance =
        obstruction ? length3(observer ? item.observer : item.vertex1, item.obstruction) : 0.0;
    return true;
}

bool validMeasureIndex(int index) { return index >= 0 && index < int(engineState().measures.size()); }

// ---- Billboards ----

// Checks the image arguments and computes its byte size; false for a size
// that can't be stored.
bool imageBytes(const UInt8* imagePtr, int width, int height, int alpha, long long& bytes) {
    bytes = 0;
    if (!imagePtr) return true;
    if (width <= 0 || height <= 0) return false;
    bytes = BillboardRowBytes(width, alpha) * height;
    return bytes <= std::numeric_limits<Int32>::max();
}

void fillBillboardData(BILLBOARD_DATA& data, const char* name, int pivotPosition, int staticFlag, int visible,
                       int oglReplace, int typeFlag, const float* rgb, float lineWidth, double height,
                       const double* position, const double* pivot, const double* rotation) {
    static const float white[3] = {1, 1, 1};
    engine::copyName(data.id, name ? std::string(name) : std::string());
    data.pivotTypeFlag = pivotPosition;
    data.staticFlag = staticFlag;
    data.visibleFlag = visible;
    data.oglReplaceFlag = oglReplace;
    data.typeFlag = typeFlag;
    copy3f(data.rgb_Line_Array, rgb, white);
    data.lineWidth = lineWidth;
    data.height = height;
    copy3(data.position, position);
    copy3(data.pivot, pivot);
    copy3(data.rotationStatic, rotation);
    data.imagePtr = nullptr;
}

void setBillboardImage(engine::BillboardItem& item, const UInt8* imagePtr, int width, int height, int alpha,
                       long long bytes) {
    item.image.assign(imagePtr, imagePtr + bytes);
    item.data.imageSize = Int32(bytes);
    item.data.imageWidth = imagePtr ? width : 0;
    item.data.imageHeight = imagePtr ? height : 0;
    item.data.alphaFlag = alpha;
}

bool validBillboardIndex(int index) { return index >= 0 && index < int(engineState().billboards.size()); }

// ---- Sphere markers ----

int findSphere(const char* name) {
    if (!name || !*name) return -1;
    const std::string wanted = cutName(name);
    const auto& spheres = engineState().spheres;
    for (std::size_t i = 0; i < spheres.size(); ++i)
        if (spheres[i].name == wanted) return int(i);
    return -1;
}

}  // namespace

// ==== Measure list ====

int At3d_MeasureList_Add_Item(const char* id, int visible, int observer, int obstruction, float lineWidth,
                              const float* rgb, const double* vertex1, const double* vertex2,
                              const double* observerPoint, const double* obstructionPoint) {
    MEASURE_DATA item;
    if (!fillMeasure(item, id, visible, observer, obstruction, lineWidth, rgb, vertex1, vertex2, observerPoint,
                     obstructionPoint))
        return 0;
    engineState().measures.push_back(item);
    return 1;
}

int At3d_MeasureList_Add_Current(const char* id, float lineWidth, const float* rgb) {
    const EngineState& state = engineState();
    const auto& rb = state.rubberband;
    if (rb[1].hitFlag != AT3D_HIT || rb[2].hitFlag != AT3D_HIT) return 0;
    double observer[3] = {0, 0, 0};
    const bool hasObserver = state.observerActive;
    if (hasObserver) {
        if (rb[4].hitFlag == AT3D_HIT)
            copy3(observer, rb[4].xyz);
        else
            for (int i = 0; i < 3; ++i) observer[i] = rb[1].xyz[i] + state.observerDelta[i];
    }
    const bool hasObstruction = rb[3].hitFlag == AT3D_HIT;
    return At3d_MeasureList_Add_Item(id, 1, hasObserver ? 1 : 0, hasObstruction ? 1 : 0, lineWidth, rgb,
                                     rb[1].xyz, rb[2].xyz, observer, rb[3].xyz);
}

int At3d_MeasureList_Get_Item(int index, char* id, int* visible, int* observer, int* obstruction,
                              float* lineWidth, float* rgb, double* vertex1, double* vertex2,
                              double* observerPoint, double* obstructionPoint) {
    if (!validMeasureIndex(index)) return 0;
    const MEASURE_DATA& item = engineState().measures[std::size_t(index)];
    if (id) engine::copyName(id, item.id);
    if (visible) *visible = item.visible_Flag;
    if (observer) *observer = item.observer_Flag;
    if (obstruction) *obstruction = item.obstruction_Flag;
    if (lineWidth) *lineWidth = item.lineWidth;
    if (rgb) std::memcpy(rgb, item.rgb_Line_Array, sizeof item.rgb_Line_Array);
    if (vertex1) copy3(vertex1, item.vertex1);
    if (vertex2) copy3(vertex2, item.vertex2);
    if (observerPoint) copy3(observerPoint, item.observer);
    if (obstructionPoint) copy3(obstructionPoint, item.obstruction);
    return 1;
}

int At3d_MeasureList_Get_Distances(int index, double* distance, double* obstructionDistance) {
    if (!validMeasureIndex(index)) return 0;
    const MEASURE_DATA& item = engineState().measures[std::size_t(index)];
    if (distance) *distance = item.distance;
    if (obstructionDistance) *obstructionDistance = item.obstruction_Distance;
    return 1;
}

int At3d_MeasureList_Replace_Item(int index, const char* id, int visible, int observer, int obstruction,
                                  float lineWidth, const float* rgb, const double* vertex1,
                                  const double* vertex2, const double* observerPoint,
                                  const double* obstructionPoint) {
    if (!validMeasureIndex(index)) return 0;
    MEASURE_DATA item;
    if (!fillMeasure(item, id, visible, observer, obstruction, lineWidth, rgb, vertex1, vertex2, observerPoint,
                     obstructionPoint))
        return 0;
    engineState().measures[std::size_t(index)] = item;
    return 1;
}

// flag is a redraw hint of the host; the item is removed either way.
int At3d_MeasureList_Delete_Item(int index, int flag) {
    if (!validMeasureIndex(index)) return 0;
    EngineState& state = engineState();
    state.measures.erase(state.measures.begin() + index);
    adjustSelection(state.selectedMeasure, index);
    return 1;
}

int At3d_MeasureList_Get_Count() { return int(engineState().measures.size()); }

int At3d_MeasureList_Clear() {
    EngineState& state = engineState();
    state.measures.clear();
    state.selectedMeasure = -1;
    return 1;
}

int At3d_MeasureList_Set_Visible_All(int show) {
    for (MEASURE_DATA& item : engineState().measures) item.visible_Flag = show ? 1 : 0;
    return 1;
}

int At3d_MeasureList_Set_Parameters(const float* rgbLine, const float* rgbPoint1, const float* rgbPoint2,
                                    float lineWidth, float pointSize, int depthTest, int points) {
    auto& look = engineState().measureLook;
    copy3f(look.rgbLine, rgbLine, look.rgbLine);
    copy3f(look.rgbPoint1, rgbPoint1, look.rgbPoint1);
    copy3f(look.rgbPoint2, rgbPoint2, look.rgbPoint2);
    look.lineWidth = lineWidth;
    look.pointSize = pointSize;
    look.depthTest = depthTest;
    look.points = points;
    return 1;
}

int At3d_MeasureList_Set_Selected_Color(const float* rgb) {
    if (!rgb) return 0;
    auto& look = engineState().measureLook;
    copy3f(look.rgbSelected, rgb, look.rgbSelected);
    return 1;
}

int At3d_MeasureList_Set_Obstruction_Parameters(const float* rgb, float pointSize, int display) {
    auto& look = engineState().measureLook;
    copy3f(look.rgbObstruction, rgb, look.rgbObstruction);
    look.obstructionPointSize = pointSize;
    look.obstructionDisplay = display;
    return 1;
}

int At3d_MeasureList_Cancel_Selected_Line() {
    engineState().selectedMeasure = -1;
    return 1;
}

int At3d_MeasureList_Get_Selected() { return engineState().selectedMeasure; }

// ==== Billboards ====

int At3d_Measure_Billboard_Add_Item(const char* name, const UInt8* imagePtr, int imageWidth, int imageHeight,
                                    int alphaFlag, int pivotPosition, int staticFlag, int visible,
                                    int oglReplace, int typeFlag, const float* rgb, float lineWidth,
                                    double height, const double* position, const double* pivot,
                                    const double* rotation) {
    if (!position) return 0;
    long long bytes = 0;
    if (!imageBytes(imagePtr, imageWidth, imageHeight, alphaFlag, bytes)) return 0;
    engine::BillboardItem item;
    fillBillboardData(item.data, name, pivotPosition, staticFlag, visible, oglReplace, typeFlag, rgb, lineWidth,
                      height, position, pivot, rotation);
    setBillboardImage(item, imagePtr, imageWidth, imageHeight, alphaFlag, bytes);
    engineState().billboards.push_back(std::move(item));
    return 1;
}

int At3d_Measure_Billboard_Get_Image_Size(int index, char* name, int* width, int* height, int* alpha) {
    if (!validBillboardIndex(index)) return 0;
    const BILLBOARD_DATA& data = engineState().billboards[std::size_t(index)].data;
    if (name) engine::copyName(name, data.id);
    if (width) *width = data.imageWidth;
    if (height) *height = data.imageHeight;
    if (alpha) *alpha = data.alphaFlag;
    return 1;
}

int At3d_Measure_Billboard_Get_Item(int index, char* name, UInt8* imagePtr, int imageSize, int* alphaFlag,
                                    int* pivotTypeFlag, int* staticFlag, int* visibleFlag,
                                    int* oglReplaceFlag, int* typeFlag, float* rgb, float* lineWidth,
                                    double* height, double* position, double* pivot, double* rotation) {
    if (!validBillboardIndex(index)) return 0;
    const engine::BillboardItem& item = engineState().billboards[std::size_t(index)];
    const BILLBOARD_DATA& data = item.data;
    if (imagePtr && imageSize > 0 && !item.image.empty())
        std::memcpy(imagePtr, item.image.data(), std::min<std::size_t>(std::size_t(imageSize), item.image.size()));
    if (name) engine::copyName(name, data.id);
    if (alphaFlag) *alphaFlag = data.alphaFlag;
    if (pivotTypeFlag) *pivotTypeFlag = data.pivotTypeFlag;
    if (staticFlag) *staticFlag = data.staticFlag;
    if (visibleFlag) *visibleFlag = data.visibleFlag;
    if (oglReplaceFlag) *oglReplaceFlag = data.oglReplaceFlag;
    if (typeFlag) *typeFlag = data.typeFlag;
    if (rgb) std::memcpy(rgb, data.rgb_Line_Array, sizeof data.rgb_Line_Array);
    if (lineWidth) *lineWidth = data.lineWidth;
    if (height) *height = data.height;
    if (position) copy3(position, data.position);
    if (pivot) copy3(pivot, data.pivot);
    if (rotation) copy3(rotation, data.rotationStatic);
    return 1;
}

// A null imagePtr keeps the item's image, with its size and alpha flag.
int At3d_Measure_Billboard_Replace_Item(int index, const char* name, const UInt8* imagePtr, int imageWidth,
                                        int imageHeight, int alphaFlag, int pivotPosition, int staticFlag,
                                        int visible, int oglReplace, int typeFlag, const float* rgb,
                                        float lineWidth, double height, const double* position,
                                        const double* pivot, const double* rotation) {
    if (!validBillboardIndex(index) || !position) return 0;
    long long bytes = 0;
    if (!imageBytes(imagePtr, imageWidth, imageHeight, alphaFlag, bytes)) return 0;
    engine::BillboardItem& item = engineState().billboards[std::size_t(index)];
    fillBillboardData(item.data, name, pivotPosition, staticFlag, visible, oglReplace, typeFlag, rgb, lineWidth,
                      height, position, pivot, rotation);
    if (imagePtr) setBillboardImage(item, imagePtr, imageWidth, imageHeight, alphaFlag, bytes);
    return 1;
}

int At3d_Measure_Billboard_Get_ID(int index, char* name) {
    if (!name || !validBillboardIndex(index)) return 0;
    engine::copyName(name, engineState().billboards[std::size_t(index)].data.id);
    return 1;
}

int At3d_Measure_Billboard_Get_Count() { return int(engineState().billboards.size()); }

int At3d_Measure_Billboard_Delete_All() {
    EngineState& state = engineState();
    state.billboards.clear();
    state.selectedBillboard = -1;
    return 1;
}

// flag is a redraw hint of the host; the item is removed either way.
int At3d_Measure_Billboard_Delete_Item(int index, int flag) {
    if (!validBillboardIndex(index)) return 0;
    EngineState& state = engineState();
    state.billboards.erase(state.billboards.begin() + index);
    adjustSelection(state.selectedBillboard, index);
    return 1;
}

int At3d_Measure_Billboard_Set_Visible_One(int index, int flag, int visible) {
    if (!validBillboardIndex(index)) return 0;
    engineState().billboards[std::size_t(index)].data.visibleFlag = visible ? 1 : 0;
    return 1;
}

int At3d_Measure_Billboard_Set_Visible_All(int visible) {
    for (auto& item : engineState().billboards) item.data.visibleFlag = visible ? 1 : 0;
    return 1;
}

int At3d_Measure_Billboard_Cancel_Selected() {
    engineState().selectedBillboard = -1;
    return 1;
}

int At3d_Measure_Billboard_Get_Selected() { return engineState().selectedBillboard; }

// ==== Sphere markers ====

// Adding a name that exists replaces that marker in place.
int At3d_Sphere_Marker_Add(const char* name, double diameter, const double* position, const float* rgb1,
                           const float* rgb2, int color2Flag, int interval, int strobeFlag, int visibleFlag) {
    if (!name || !*name || !position || !std::isfinite(diameter) || diameter <= 0) return 0;
    engine::SphereMarker marker;
    marker.name = cutName(name);
    marker.diameter = diameter;
    copy3(marker.position, position);
    copy3f(marker.rgb1, rgb1, marker.rgb1);
    copy3f(marker.rgb2, rgb2, marker.rgb2);
    marker.color2Flag = color2Flag;
    marker.interval = interval;
    marker.strobeFlag = strobeFlag;
    marker.visibleFlag = visibleFlag;
    auto& spheres = engineState().spheres;
    const int existing = findSphere(name);
    if (existing >= 0)
        spheres[std::size_t(existing)] = marker;
    else
        spheres.push_back(marker);
    return 1;
}

int At3d_Sphere_Marker_Get_Data(const char* name, double* diameter, double* location, float* rgb1, float* rgb2,
                                int* color2Flag, int* interval, int* strobeFlag, int* visibleFlag) {
    const int index = findSphere(name);
    if (index < 0) return 0;
    const engine::SphereMarker& marker = engineState().spheres[std::size_t(index)];
    if (diameter) *diameter = marker.diameter;
    if (location) copy3(location, marker.position);
    if (rgb1) std::memcpy(rgb1, marker.rgb1, sizeof marker.rgb1);
    if (rgb2) std::memcpy(rgb2, marker.rgb2, sizeof marker.rgb2);
    if (color2Flag) *color2Flag = marker.color2Flag;
    if (interval) *interval = marker.interval;
    if (strobeFlag) *strobeFlag = marker.strobeFlag;
    if (visibleFlag) *visibleFlag = marker.visibleFlag;
    return 1;
}

int At3d_Sphere_Marker_Get_Count() { return int(engineState().spheres.size()); }

int At3d_Sphere_Marker_Delete_All() {
    EngineState& state = engineState();
    state.spheres.clear();
    state.selectedSphere = -1;
    return 1;
}

int At3d_Sphere_Marker_Cancel_Selected() {
    engineState().selectedSphere = -1;
    return 1;
}

int At3d_Sphere_Marker_Get_Selected() { return engineState().selectedSphere; }

int At3d_Sphere_Marker_Get_Name(int index, char* name) {
    const auto& spheres = engineState().spheres;
    if (!name || index < 0 || index >= int(spheres.size())) return 0;
    engine::copyName(name, spheres[std::size_t(index)].name);
    return 1;
}

int At3d_Sphere_Marker_Delete_One(const char* name) {
    const int index = findSphere(name);
    if (index < 0) return 0;
    EngineState& state = engineState();
    state.spheres.erase(state.spheres.begin() + index);
    adjustSelection(state.selectedSphere, index);
    return 1;
}
