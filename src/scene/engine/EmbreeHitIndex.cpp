// The hit index on Intel Embree: one BVH over all layers with the output
// flag on, whose answers are exact in double.
//
// Embree's own triangle test works in float. Its hits stray a few float
// steps across the ray, and where a segment grazes a triangle that becomes
// millimetres or centimetres along it: Embree then names the triangle just
// behind the one truly met first, or misses a segment that dips under a
// ridge by less than a float step. Working the point out again in double on
// the triangle Embree named cannot mend either. So Embree only walks its
// tree here, over boxes that are the triangles' bounds widened by more than
// the float error of the walk, and every triangle whose box the ray enters
// is tested in double on the stored vertices: no true crossing is passed
// over, and the one kept is the nearest in double.
#include <embree3/rtcore.h>
#include <pmmintrin.h>
#include <xmmintrin.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "EngineState.h"
#include "HitIndex.h"

namespace engine {

namespace {

RTCDevice sharedDevice() {
    static RTCDevice device = [] {
        RTCDevice d = rtcNewDevice(nullptr);
        if (!d) engineLog("ray tracer: device could not be created (error %d)", rtcGetDeviceError(nullptr));
        return d;
    }();
    return device;
}

// How far Embree's float walk may stray from the ray in double, in float
// steps (2^-24) of the index's half extent: the ray's origin and direction
// rounded to float, the boxes rounded, the box tests themselves. Together
// they stay under 16 steps; the boxes are widened by twice that.
constexpr double kBoxMarginSteps = 32 * 0x1p-24;

inline double dot(const double a[3], const double b[3]) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
inline void cross(const double a[3], const double b[3], double out[3]) {
    out[0] = a[1] * b[2] - a[2] * b[1];
    out[1] = a[2] * b[0] - a[0] * b[2];
    out[2] = a[0] * b[1] - a[1] * b[0];
}

// One layer as Embree sees it: its triangles as boxes around the index's centre.
struct IndexedLayer {
    const Layer* layer;
    int layerIndex;
    double centre[3];
    double margin;
};

// Where the line origin + t direction crosses the triangle, in double
// (Moeller and Trumbore): t, and u, v as weights of the second and third
// corner; false when the line passes beside it or runs parallel to it.
bool crossing(const Layer& layer, unsigned primitive, const double origin[3], const double direction[3], double& t,
              double& u, double& v) {
    const std::uint32_t* corner = &layer.triangles[primitive * 3];
    const double* p0 = &layer.positions[corner[0] * 3];
    const double* p1 = &layer.positions[corner[1] * 3];
    const double* p2 = &layer.positions[corner[2] * 3];
    const double e1[3] = {p1[0] - p0[0], p1[1] - p0[1], p1[2] - p0[2]};
    const double e2[3] = {p2[0] - p0[0], p2[1] - p0[1], p2[2] - p0[2]};
    double p[3], q[3];
    cross(direction, e2, p);
    const double det = dot(e1, p);
    if (det == 0 || !std::isfinite(det)) return false;
    const double s[3] = {origin[0] - p0[0], origin[1] - p0[1], origin[2] - p0[2]};
    u = dot(s, p) / det;
    if (!(u >= 0 && u <= 1)) return false;
    cross(s, e1, q);
    v = dot(direction, q) / det;
    if (!(v >= 0 && u + v <= 1)) return false;
    t = dot(e2, q) / det;
    return std::isfinite(t);
}

void triangleBox(const RTCBoundsFunctionArguments* args) {
    const auto* indexed = static_cast<const IndexedLayer*>(args->geometryUserPtr);
    const Layer& layer = *indexed->layer;
    const std::uint32_t* corner = &layer.triangles[args->primID * 3];
    float lower[3], upper[3];
    bool finite = true;
    for (int k = 0; k < 3; ++k) {
        const double a = layer.positions[corner[0] * 3 + k], b = layer.positions[corner[1] * 3 + k],
                     c = layer.positions[corner[2] * 3 + k];
        // The margin is many float steps wide, so rounding to float stays inside it.
        lower[k] = static_cast<float>(std::min({a, b, c}) - indexed->centre[k] - indexed->margin);
        upper[k] = static_cast<float>(std::max({a, b, c}) - indexed->centre[k] + indexed->margin);
        finite = finite && std::isfinite(lower[k]) && std::isfinite(upper[k]);
    }
    RTCBounds* box = args->bounds_o;
    if (!finite) {
        // A box turned inside out: Embree leaves such a triangle out.
        *box = RTCBounds{1, 1, 1, 0, 0, 0, 0, 0};
        return;
    }
    *box = RTCBounds{lower[0], lower[1], lower[2], 0, upper[0], upper[1], upper[2], 0};
}

// The rays of one call in double, by ray id, and their answers.
struct ExactRays {
    RTCIntersectContext base;  // first: Embree hands this back to the callbacks
    const double* origins;     // three a ray
    const double* directions;  // three a ray, unit length
    const double* tNear;
    const double* tFar;
    const double* shift;       // where along the ray its float copy starts
    double margin;
    RayHit* hits;
    std::uint8_t* found;
};

// A candidate met by ray `id`: true when it crosses the triangle within its
// range and nearer than the crossing kept so far, which it then replaces.
bool keepCrossing(ExactRays& rays, unsigned id, const IndexedLayer& indexed, unsigned primitive) {
    double t, u, v;
    if (!crossing(*indexed.layer, primitive, rays.origins + 3 * id, rays.directions + 3 * id, t, u, v)) return false;
    if (t < rays.tNear[id] || t > rays.tFar[id]) return false;
    RayHit& hit = rays.hits[id];
    if (rays.found[id] && t >= hit.t) return false;
    rays.found[id] = 1;
    hit.t = t;
    hit.layerIndex = indexed.layerIndex;
    hit.primitive = primitive;
    hit.u = static_cast<float>(u);
    hit.v = static_cast<float>(v);
    return true;
}

void intersectTriangle(const RTCIntersectFunctionNArguments* args) {
    auto& rays = *reinterpret_cast<ExactRays*>(args->context);
    const auto& indexed = *static_cast<const IndexedLayer*>(args->geometryUserPtr);
    RTCRayN* ray = RTCRayHitN_RayN(args->rayhit, args->N);
    RTCHitN* hit = RTCRayHitN_HitN(args->rayhit, args->N);
    for (unsigned i = 0; i < args->N; ++i) {
        if (!args->valid[i]) continue;
        const unsigned id = RTCRayN_id(ray, args->N, i);
        if (!keepCrossing(rays, id, indexed, args->primID)) continue;
        // Boxes further on than this crossing need no visit; a nearer
        // crossing's box is entered within the margin of it.
        const float reach = static_cast<float>(rays.hits[id].t - rays.shift[id] + 2 * rays.margin);
        RTCRayN_tfar(ray, args->N, i) = std::min(RTCRayN_tfar(ray, args->N, i), reach);
        RTCHitN_geomID(hit, args->N, i) = args->geomID;
        RTCHitN_primID(hit, args->N, i) = args->primID;
    }
}

void occludeByTriangle(const RTCOccludedFunctionNArguments* args) {
    auto& rays = *reinterpret_cast<ExactRays*>(args->context);
    const auto& indexed = *static_cast<const IndexedLayer*>(args->geometryUserPtr);
    for (unsigned i = 0; i < args->N; ++i) {
        if (!args->valid[i]) continue;
        const unsigned id = RTCRayN_id(args->ray, args->N, i);
        if (keepCrossing(rays, id, indexed, args->primID))
            RTCRayN_tfar(args->ray, args->N, i) = -std::numeric_limits<float>::infinity();  // found: stop
    }
}

class EmbreeHitIndex final : public HitIndex {
public:
    EmbreeHitIndex(const std::vector<Layer>& layers, const double lo[3], const double hi[3], std::size_t triangles)
        : layers_(layers), triangles_(triangles) {
        double halfExtent = 1;
        for (int k = 0; k < 3; ++k) {
            centre_[k] = (lo[k] + hi[k]) / 2;
            halfExtent = std::max(halfExtent, (hi[k] - lo[k]) / 2);
        }
        margin_ = kBoxMarginSteps * halfExtent;
        for (int k = 0; k < 3; ++k) {
            lo_[k] = lo[k] - 2 * margin_;
            hi_[k] = hi[k] + 2 * margin_;
        }
    }
    ~EmbreeHitIndex() override {
        if (scene_) rtcReleaseScene(scene_);
    }

    bool create() {
        RTCDevice device = sharedDevice();
        if (!device) return false;
        scene_ = rtcNewScene(device);
        // A quick build: the walk's cost lies in the double tests at the leaves.
        rtcSetSceneBuildQuality(scene_, RTC_BUILD_QUALITY_LOW);
        rtcSetSceneFlags(scene_, RTC_SCENE_FLAG_ROBUST);
        for (std::size_t li = 0; li < layers_.size(); ++li) {
            const Layer& layer = layers_[li];
            if (layer.outputFlag && !layer.triangles.empty())
                indexed_.push_back({&layer, static_cast<int>(li), {centre_[0], centre_[1], centre_[2]}, margin_});
        }
        for (IndexedLayer& indexed : indexed_) {
            RTCGeometry geometry = rtcNewGeometry(device, RTC_GEOMETRY_TYPE_USER);
            rtcSetGeometryUserPrimitiveCount(geometry, static_cast<unsigned>(indexed.layer->faceCount()));
            rtcSetGeometryUserData(geometry, &indexed);
            rtcSetGeometryBoundsFunction(geometry, triangleBox, nullptr);
            rtcSetGeometryIntersectFunction(geometry, intersectTriangle);
            rtcSetGeometryOccludedFunction(geometry, occludeByTriangle);
            rtcCommitGeometry(geometry);
            rtcAttachGeometry(scene_, geometry);
            rtcReleaseGeometry(geometry);
        }
        rtcCommitScene(scene_);
        const RTCError error = rtcGetDeviceError(device);
        if (error != RTC_ERROR_NONE) engineLog("ray tracer: the index could not be built (error %d)", error);
        return error == RTC_ERROR_NONE;
    }

    bool intersectNearest(const double origin[3], const double direction[3], double tNear, double tFar,
                          RayHit& hit) const override {
        return castOne(origin, direction, tNear, tFar, true, hit);
    }

    bool intersectAny(const double origin[3], const double direction[3], double tNear, double tFar,
                      RayHit& hit) const override {
        return castOne(origin, direction, tNear, tFar, false, hit);
    }

    // One ray at a time: Embree's ray streams gain nothing where every leaf
    // is a call back into this file.
    void intersectSegments(int count, const double* v1s, const double* v2s, double skipDistance, bool nearest,
                           RayHit* hits, std::uint8_t* found) const override {
        for (int i = 0; i < count; ++i) {
            const double* v1 = v1s + 3 * i;
            const double d[3] = {v2s[3 * i] - v1[0], v2s[3 * i + 1] - v1[1], v2s[3 * i + 2] - v1[2]};
            const double length = std::sqrt(dot(d, d));
            found[i] = 0;
            if (!(length > 0) || skipDistance >= length) continue;
            const double direction[3] = {d[0] / length, d[1] / length, d[2] / length};
            found[i] = castOne(v1, direction, std::max(0.0, skipDistance), length, nearest, hits[i]) ? 1 : 0;
        }
    }

    std::size_t triangleCount() const override { return triangles_; }

private:
    // The float copy of a ray, started where the ray enters the index's box
    // so that its float steps are those of the index's size, not of how far
    // away the ray begins. False when the ray misses the box within its range.
    bool floatRay(const double origin[3], const double direction[3], double tNear, double tFar, RTCRay& ray,
                  double& shift) const {
        double enter = tNear, leave = tFar;
        for (int k = 0; k < 3; ++k) {
            if (direction[k] == 0) {
                if (origin[k] < lo_[k] || origin[k] > hi_[k]) return false;
                continue;
            }
            double a = (lo_[k] - origin[k]) / direction[k], b = (hi_[k] - origin[k]) / direction[k];
            if (a > b) std::swap(a, b);
            enter = std::max(enter, a);
            leave = std::min(leave, b);
        }
        if (!(enter <= leave)) return false;
        shift = enter;
        ray.org_x = static_cast<float>(origin[0] + enter * direction[0] - centre_[0]);
        ray.org_y = static_cast<float>(origin[1] + enter * direction[1] - centre_[1]);
        ray.org_z = static_cast<float>(origin[2] + enter * direction[2] - centre_[2]);
        ray.dir_x = static_cast<float>(direction[0]);
        ray.dir_y = static_cast<float>(direction[1]);
        ray.dir_z = static_cast<float>(direction[2]);
        ray.tnear = 0;
        ray.tfar = static_cast<float>(leave - enter + 2 * margin_);
        ray.time = 0;
        ray.mask = 0xFFFFFFFFu;
        ray.id = 0;
        ray.flags = 0;
        return true;
    }

    bool castOne(const double origin[3], const double direction[3], double tNear, double tFar, bool nearest,
                 RayHit& hit) const {
        prepareRayThread();
        std::uint8_t found = 0;
        double shift = 0;
        ExactRays rays{{}, origin, direction, &tNear, &tFar, &shift, margin_, &hit, &found};
        rtcInitIntersectContext(&rays.base);
        if (nearest) {
            RTCRayHit rayHit;
            if (!floatRay(origin, direction, tNear, tFar, rayHit.ray, shift)) return false;
            rayHit.hit.geomID = RTC_INVALID_GEOMETRY_ID;
            rtcIntersect1(scene_, &rays.base, &rayHit);
        } else {
            RTCRay ray;
            if (!floatRay(origin, direction, tNear, tFar, ray, shift)) return false;
            rtcOccluded1(scene_, &rays.base, &ray);
        }
        if (!found) return false;
        for (int k = 0; k < 3; ++k) hit.point[k] = origin[k] + hit.t * direction[k];
        return true;
    }

    const std::vector<Layer>& layers_;
    std::size_t triangles_;
    double centre_[3];
    double lo_[3], hi_[3];  // the indexed layers' bounds, widened by twice the margin
    double margin_;
    std::vector<IndexedLayer> indexed_;  // Embree keeps pointers into it: filled before the first geometry
    RTCScene scene_ = nullptr;
};

}  // namespace

void prepareRayThread() {
    thread_local bool prepared = false;
    if (prepared) return;
    _MM_SET_FLUSH_ZERO_MODE(_MM_FLUSH_ZERO_ON);
    _MM_SET_DENORMALS_ZERO_MODE(_MM_DENORMALS_ZERO_ON);
    prepared = true;
}

std::unique_ptr<HitIndex> HitIndex::build(const std::vector<Layer>& layers) {
    double lo[3] = {std::numeric_limits<double>::max(), std::numeric_limits<double>::max(),
                    std::numeric_limits<double>::max()};
    double hi[3] = {-lo[0], -lo[1], -lo[2]};
    std::size_t triangles = 0;
    for (const Layer& layer : layers) {
        if (!layer.outputFlag || layer.triangles.empty()) continue;
        triangles += layer.faceCount();
        for (std::size_t i = 0; i < layer.positions.size(); ++i) {
            lo[i % 3] = std::min(lo[i % 3], layer.positions[i]);
            hi[i % 3] = std::max(hi[i % 3], layer.positions[i]);
        }
    }
    if (triangles == 0) return nullptr;
    auto index = std::make_unique<EmbreeHitIndex>(layers, lo, hi, triangles);
    if (!index->create()) return nullptr;
    return index;
}

}  // namespace engine
