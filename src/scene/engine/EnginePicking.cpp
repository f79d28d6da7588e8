// Picking on the mesh: points under the mouse, the rubberband with its
// observer and obstruction points, and right-click selection of list items.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "CameraMath.h"
#include "EngineState.h"
#include "TextureImage.h"

using engine::EngineState;
using engine::engineState;
using engine::RubberbandPoint;

namespace {

constexpr double kPickFar = 1e7;
constexpr double kObstructionMargin = 0.05;  // keeps the ends' own surfaces out of the line of sight
constexpr double kSelectRadius = 8.0;       // pixels

void copyPoint(const RubberbandPoint& point, int* hitFlag, double* xyz, int* screenX, int* screenY, float* rgb) {
    if (hitFlag) *hitFlag = point.hitFlag;
    if (xyz) std::memcpy(xyz, point.xyz, sizeof point.xyz);
    if (screenX) *screenX = point.screenX;
    if (screenY) *screenY = point.screenY;
    if (rgb) std::memcpy(rgb, point.rgb, sizeof point.rgb);
}

// A colour setting: taken when given, a null pointer keeps the current one.
void takeColour(float (&target)[3], const float* rgb) {
    if (rgb) std::memcpy(target, rgb, sizeof target);
}

// Colour of the surface at a hit: the texel under the interpolated texture
// coordinates, or the layer's diffuse colour without texture or coordinates.
void colourAtHit(const EngineState& state, const engine::RayHit& hit, float rgb[3]) {
    rgb[0] = rgb[1] = rgb[2] = 0;
    if (hit.layerIndex < 0 || hit.layerIndex >= int(state.layers.size())) return;
    const engine::Layer& layer = state.layers[std::size_t(hit.layerIndex)];
    std::memcpy(rgb, layer.diffuse, sizeof layer.diffuse);
    const std::size_t corner = std::size_t(hit.primitive) * 3;
    if (layer.texturePath.empty() || corner + 2 >= layer.triangles.size()) return;
    float uv[2] = {0, 0};
    const float weights[3] = {1.0f - hit.u - hit.v, hit.u, hit.v};
    for (int k = 0; k < 3; ++k) {
        const std::size_t vertex = layer.triangles[corner + std::size_t(k)];
        if (vertex * 2 + 1 >= layer.texCoords.size()) return;
        uv[0] += weights[k] * layer.texCoords[vertex * 2];
        uv[1] += weights[k] * layer.texCoords[vertex * 2 + 1];
    }
    const auto texture = engine::loadTextureCached(layer.texturePath, state.maxTextureExponent);
    float sampled[3];
    if (texture && engine::sampleTexture(*texture, uv[0], uv[1], sampled)) std::memcpy(rgb, sampled, sizeof sampled);
}

// The mesh point under pixel (x, y); false without a surface, without an
// index, or when the ray meets nothing.
bool pickSurface(EngineState& state, int x, int y, RubberbandPoint& point, int& layerIndex) {
    double origin[3], direction[3];
    if (!engine::pixelRay(state, x, y, origin, direction)) return false;
    const engine::HitIndex* index = engine::currentHitIndex();
    if (!index) return false;
    engine::RayHit hit;
    if (!index->intersectNearest(origin, direction, 0.0, kPickFar, hit)) return false;
    point = RubberbandPoint{};
    point.hitFlag = AT3D_HIT;
    std::memcpy(point.xyz, hit.point, sizeof point.xyz);
    point.screenX = x;
    point.screenY = y;
    colourAtHit(state, hit, point.rgb);
    layerIndex = hit.layerIndex;
    return true;
}

// Observer point = point 1 + delta while the observer is on and point 1 is set.
void updateObserverPoint(EngineState& state) {
    RubberbandPoint& observer = state.rubberband[4];
    const RubberbandPoint& first = state.rubberband[1];
    if (!state.observerActive || first.hitFlag != AT3D_HIT) {
        observer = RubberbandPoint{};
        return;
    }
    observer = RubberbandPoint{};
    observer.hitFlag = AT3D_HIT;
    for (int i = 0; i < 3; ++i) observer.xyz[i] = first.xyz[i] + state.observerDelta[i];
    std::memcpy(observer.rgb, first.rgb, sizeof observer.rgb);
    if (!engine::projectToPixel(state, observer.xyz, observer.screenX, observer.screenY)) {
        observer.screenX = 0;
        observer.screenY = 0;
    }
}

// Line of sight from the observer (or point 1) to point 2. Stores the
// obstruction in rubberband[3] (cleared when there is none).
// Returns -1 when an end is missing, 1 on an obstruction, 0 otherwise.
int findObstruction(EngineState& state) {
    const RubberbandPoint& first = state.rubberband[1];
    const RubberbandPoint& second = state.rubberband[2];
    if (first.hitFlag != AT3D_HIT || second.hitFlag != AT3D_HIT) return -1;
    RubberbandPoint& obstruction = state.rubberband[3];
    obstruction = RubberbandPoint{};
    double start[3];
    for (int i = 0; i < 3; ++i) start[i] = first.xyz[i] + (state.observerActive ? state.observerDelta[i] : 0.0);
    double direction[3];
    for (int i = 0; i < 3; ++i) direction[i] = second.xyz[i] - start[i];
    const double length =
        std::sqrt(direction[0] * direction[0] + direction[1] * direction[1] + direction[2] * direction[2]);
    if (!(length > 0)) return 0;
    for (double& c : direction) c /= length;
    const double skip = state.rubberbandLook.obstructionSkipDistance;
    const double tNear = skip > 0 ? skip : kObstructionMargin;
    const double tFar = length - kObstructionMargin;
    if (tFar < tNear) return 0;
    const engine::HitIndex* index = engine::currentHitIndex();
    if (!index) return 0;
    engine::RayHit hit;
    if (!index->intersectNearest(start, direction, tNear, tFar, hit)) return 0;
    obstruction.hitFlag = AT3D_HIT;
    std::memcpy(obstruction.xyz, hit.point, sizeof obstruction.xyz);
    colourAtHit(state, hit, obstruction.rgb);
    if (!engine::projectToPixel(state, obstruction.xyz, obstruction.screenX, obstruction.screenY)) {
        obstruction.screenX = 0;
        obstruction.screenY = 0;
    }
    return 1;
}

// Left click while measuring: builds the rubberband.
int rubberbandClick(EngineState& state, int x, int y) {
    const int mode = state.flags[LIBFLAG_MESH_LOCATION];
    if (mode != MESH_LOCATION_MEASURE && mode != MESH_LOCATION_CONTINUE) return 0;
    RubberbandPoint picked;
    int layerIndex = -1;
    if (!pickSurface(state, x, y, picked, layerIndex)) return 0;
    RubberbandPoint* rb = state.rubberband;
    const bool firstSet = rb[1].hitFlag == AT3D_HIT;
    const bool pairDone = firstSet && rb[2].hitFlag == AT3D_HIT;
    if (!firstSet || (pairDone && mode == MESH_LOCATION_MEASURE)) {
        rb[1] = picked;
        rb[2] = RubberbandPoint{};
        rb[3] = RubberbandPoint{};
        updateObserverPoint(state);
        return 1;
    }
    if (pairDone) {  // continue mode: the old second end starts the next leg
        rb[1] = rb[2];
        updateObserverPoint(state);
    }
    rb[2] = picked;
    rb[3] = RubberbandPoint{};
    engine::notifyHost(AT3D_NOTIFY_RUBBERBAND);
    return 1;
}

// Screen distance from (px, py) to the projection of segment a..b, clipped
// to the part in front of the eye. False when none of it is.
bool screenDistanceToSegment(const EngineState& state, const engine::ViewFrame& frame, const double a[3],
                             const double b[3], double px, double py, double& distance) {
    auto depth = [&](const double p[3]) {
        return (p[0] - frame.eye[0]) * frame.forward[0] + (p[1] - frame.eye[1]) * frame.forward[1] +
               (p[2] - frame.eye[2]) * frame.forward[2];
    };
    constexpr double nearDepth = 1e-3;
    double p0[3], p1[3];
    std::memcpy(p0, a, sizeof p0);
    std::memcpy(p1, b, sizeof p1);
    const double d0 = depth(p0), d1 = depth(p1);
    if (d0 < nearDepth && d1 < nearDepth) return false;
    if (d0 < nearDepth || d1 < nearDepth) {
        const double t = (nearDepth - d0) / (d1 - d0);
        double* moved = d0 < nearDepth ? p0 : p1;
        for (int i = 0; i < 3; ++i) moved[i] = a[i] + t * (b[i] - a[i]);
    }
    double x0, y0, x1, y1;
    if (!engine::projectToScreen(state, p0, x0, y0) || !engine::projectToScreen(state, p1, x1, y1)) return false;
    const double dx = x1 - x0, dy = y1 - y0;
    const double lengthSquared = dx * dx + dy * dy;
    double t = lengthSquared > 0 ? ((px - x0) * dx + (py - y0) * dy) / lengthSquared : 0.0;
    t = std::clamp(t, 0.0, 1.0);
    distance = std::hypot(px - (x0 + t * dx), py - (y0 + t * dy));
    return true;
}

// Right click: selects the nearest visible measure line, billboard or sphere
// within kSelectRadius pixels and tells the host which.
int selectionClick(EngineState& state, int x, int y) {
    if (state.flags[LIBFLAG_SELECT_MEASURE] == 0) return 0;
    const engine::ViewFrame frame = engine::currentViewFrame(state);
    const double px = x + 0.5, py = y + 0.5;
    double best = std::numeric_limits<double>::infinity();
    int bestKind = -1, bestIndex = -1;  // kind 0 measure, 1 billboard, 2 sphere
    auto consider = [&](double distance, int kind, int index) {
        if (distance <= kSelectRadius && distance < best) {
            best = distance;
            bestKind = kind;
            bestIndex = index;
        }
    };
    for (std::size_t i = 0; i < state.measures.size(); ++i) {
        const MEASURE_DATA& item = state.measures[i];
        double distance;
        if (item.visible_Flag && screenDistanceToSegment(state, frame, item.vertex1, item.vertex2, px, py, distance))
            consider(distance, 0, int(i));
    }
    for (std::size_t i = 0; i < state.billboards.size(); ++i) {
        const BILLBOARD_DATA& data = state.billboards[i].data;
        double sx, sy;
        if (data.visibleFlag && engine::projectToScreen(state, data.position, sx, sy))
            consider(std::hypot(sx - px, sy - py), 1, int(i));
    }
    for (std::size_t i = 0; i < state.spheres.size(); ++i) {
        const engine::SphereMarker& marker = state.spheres[i];
        double sx, sy;
        if (marker.visibleFlag && engine::projectToScreen(state, marker.position, sx, sy))
            consider(std::hypot(sx - px, sy - py), 2, int(i));
    }
    if (bestKind < 0) return 0;
    state.selectedMeasure = bestKind == 0 ? bestIndex : -1;
    state.selectedBillboard = bestKind == 1 ? bestIndex : -1;
    state.selectedSphere = bestKind == 2 ? bestIndex : -1;
    static const int bases[3] = {AT3D_NOTIFY_MEASURE_BASE, AT3D_NOTIFY_BILLBOARD_BASE, AT3D_NOTIFY_SPHERE_BASE};
    engine::notifyHost(bases[bestKind] + bestIndex);
    return 1;
}

}  // namespace

int At3d_Mouse_Down(int x, int y, int button) {
    EngineState& state = engineState();
    if (button == 1) return rubberbandClick(state, x, y);
    if (button == 2) return selectionClick(state, x, y);
    return 0;
}

int At3d_Get_Mesh_Location_At_Point(int screenX, int screenY, int* hitFlag, double* xyz, char* layerName,
                                    char* cloneItemName, float* rgb) {
    if (hitFlag) *hitFlag = 0;
    EngineState& state = engineState();
    RubberbandPoint point;
    int layerIndex = -1;
    if (!pickSurface(state, screenX, screenY, point, layerIndex)) return 0;
    if (hitFlag) *hitFlag = point.hitFlag;
    if (xyz) std::memcpy(xyz, point.xyz, sizeof point.xyz);
    if (layerName) {
        const bool known = layerIndex >= 0 && layerIndex < int(state.layers.size());
        engine::copyName(layerName, known ? state.layers[std::size_t(layerIndex)].name : std::string());
    }
    if (cloneItemName) cloneItemName[0] = '\0';
    if (rgb) std::memcpy(rgb, point.rgb, sizeof point.rgb);
    return 1;
}

int At3d_Get_Mesh_Location(int which, int* hitFlag, double* xyz, int* screenX, int* screenY, float* rgb) {
    if (which < 1 || which > 4) return 0;
    const RubberbandPoint& point = engineState().rubberband[which];
    copyPoint(point, hitFlag, xyz, screenX, screenY, rgb);
    return point.hitFlag == AT3D_HIT ? 1 : 0;
}

int At3d_Get_Mesh_Obstruction_Point(double* xyz, int* screenX, int* screenY, float* rgb) {
    EngineState& state = engineState();
    const int found = findObstruction(state);
    if (found == 1) copyPoint(state.rubberband[3], nullptr, xyz, screenX, screenY, rgb);
    return found;
}

int At3d_Clip_At_Mesh_Obstruction_Point() {
    EngineState& state = engineState();
    if (state.rubberband[3].hitFlag != AT3D_HIT && findObstruction(state) != 1) return 0;
    state.rubberband[2] = state.rubberband[3];
    state.rubberband[3] = RubberbandPoint{};
    return 1;
}

int At3d_Init_Mesh_Location(void* window, int message) {
    EngineState& state = engineState();
    state.notifyWindow = window;
    state.notifyMessage = message;
    return 1;
}

int At3d_Set_Mesh_Location_Parameters(const float* rgbLine, const float* rgbPoint1, const float* rgbPoint2,
                                      float lineWidth, float pointSize, int depthTest, int points) {
    auto& look = engineState().rubberbandLook;
    takeColour(look.rgbLine, rgbLine);
    takeColour(look.rgbPoint1, rgbPoint1);
    takeColour(look.rgbPoint2, rgbPoint2);
    look.lineWidth = lineWidth;
    look.pointSize = pointSize;
    look.depthTest = depthTest;
    look.points = points;
    return 1;
}

int At3d_Set_Mesh_Obstruction_Parameters(const float* rgb, float pointSize, int display, double skipDistance) {
    if (!std::isfinite(skipDistance) || skipDistance < 0) return 0;
    auto& look = engineState().rubberbandLook;
    takeColour(look.rgbObstruction, rgb);
    look.obstructionPointSize = pointSize;
    look.obstructionDisplay = display;
    look.obstructionSkipDistance = skipDistance;
    return 1;
}

int At3d_Set_Mesh_Location_Observer_Parameters(const float* rgbLine, const float* rgbPoint, float width,
                                               float size, int lineFlag, int pointFlag) {
    auto& look = engineState().rubberbandLook;
    takeColour(look.rgbObserverLine, rgbLine);
    takeColour(look.rgbObserverPoint, rgbPoint);
    look.observerWidth = width;
    look.observerSize = size;
    look.observerLineFlag = lineFlag;
    look.observerPointFlag = pointFlag;
    return 1;
}

int At3d_Add_Mesh_Location_Observer(const double* delta, int flag) {
    if (!delta) return 0;
    EngineState& state = engineState();
    state.observerActive = flag != 0;
    std::memcpy(state.observerDelta, delta, sizeof state.observerDelta);
    updateObserverPoint(state);
    return 1;
}

int At3d_Cancel_Mesh_Location_Observer() {
    EngineState& state = engineState();
    state.observerActive = false;
    for (double& c : state.observerDelta) c = 0;
    state.rubberband[4] = RubberbandPoint{};
    return 1;
}
