// The hit index on Intel Embree: one BVH over all layers with the output
// flag on. Vertices go to Embree as floats relative to the centre of the
// indexed layers, so map-sized coordinates keep millimetres.
#include <embree3/rtcore.h>
#include <pmmintrin.h>
#include <xmmintrin.h>

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

// The context handed through Embree to the occlusion filter, which records
// the first accepted hit of each ray (by ray id) before traversal stops.
struct RecordingContext {
    RTCIntersectContext base;
    RayHit* hits;
    std::uint8_t* found;
};

void recordOcclusion(const RTCFilterFunctionNArguments* args) {
    auto* context = reinterpret_cast<const RecordingContext*>(args->context);
    for (unsigned i = 0; i < args->N; ++i) {
        if (args->valid[i] == 0) continue;
        const unsigned id = RTCRayN_id(args->ray, args->N, i);
        RayHit& hit = context->hits[id];
        hit.layerIndex = static_cast<int>(reinterpret_cast<std::intptr_t>(args->geometryUserPtr));
        hit.primitive = RTCHitN_primID(args->hit, args->N, i);
        hit.u = RTCHitN_u(args->hit, args->N, i);
        hit.v = RTCHitN_v(args->hit, args->N, i);
        context->found[id] = 1;
    }
}

class EmbreeHitIndex final : public HitIndex {
public:
    EmbreeHitIndex(const std::vector<Layer>& layers, const double origin[3], std::size_t triangles)
        : layers_(layers), triangles_(triangles) {
        std::copy(origin, origin + 3, origin_);
    }
    ~EmbreeHitIndex() override {
        if (scene_) rtcReleaseScene(scene_);
    }

    bool create() {
        RTCDevice device = sharedDevice();
        if (!device) return false;
        scene_ = rtcNewScene(device);
        rtcSetSceneBuildQuality(scene_, RTC_BUILD_QUALITY_MEDIUM);
        // Watertight triangle tests: a ray through an edge or a vertex shared
        // by two triangles must not slip through the mesh between them.
        rtcSetSceneFlags(scene_, RTC_SCENE_FLAG_ROBUST);
        for (std::size_t li = 0; li < layers_.size(); ++li) {
            const Layer& layer = layers_[li];
            if (!layer.outputFlag || layer.triangles.empty()) continue;
            RTCGeometry geometry = rtcNewGeometry(device, RTC_GEOMETRY_TYPE_TRIANGLE);
            auto* vertices = static_cast<float*>(rtcSetNewGeometryBuffer(
                geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, 3 * sizeof(float), layer.vertexCount()));
            auto* indices = static_cast<unsigned*>(rtcSetNewGeometryBuffer(
                geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, 3 * sizeof(unsigned), layer.faceCount()));
            if (!vertices || !indices) {
                rtcReleaseGeometry(geometry);
                engineLog("ray tracer: out of memory for layer %s", layer.name.c_str());
                return false;
            }
            for (std::size_t i = 0; i < layer.positions.size(); ++i)
                vertices[i] = static_cast<float>(layer.positions[i] - origin_[i % 3]);
            std::copy(layer.triangles.begin(), layer.triangles.end(), indices);
            rtcSetGeometryUserData(geometry, reinterpret_cast<void*>(static_cast<std::intptr_t>(li)));
            rtcSetGeometryOccludedFilterFunction(geometry, recordOcclusion);
            rtcCommitGeometry(geometry);
            rtcAttachGeometry(scene_, geometry);
            rtcReleaseGeometry(geometry);
        }
        rtcCommitScene(scene_);
        return rtcGetDeviceError(device) == RTC_ERROR_NONE;
    }

    bool intersectNearest(const double origin[3], const double direction[3], double tNear, double tFar,
                          RayHit& hit) const override {
        prepareRayThread();
        RTCIntersectContext context;
        rtcInitIntersectContext(&context);
        RTCRayHit rayHit;
        fillRay(rayHit.ray, origin, direction, tNear, tFar, 0);
        rayHit.hit.geomID = RTC_INVALID_GEOMETRY_ID;
        rtcIntersect1(scene_, &context, &rayHit);
        if (rayHit.hit.geomID == RTC_INVALID_GEOMETRY_ID) return false;
        hit.layerIndex = static_cast<int>(
            reinterpret_cast<std::intptr_t>(rtcGetGeometryUserData(rtcGetGeometry(scene_, rayHit.hit.geomID))));
        hit.primitive = rayHit.hit.primID;
        hit.u = rayHit.hit.u;
        hit.v = rayHit.hit.v;
        finishHit(origin, direction, hit);
        return true;
    }

    bool intersectAny(const double origin[3], const double direction[3], double tNear, double tFar,
                      RayHit& hit) const override {
        prepareRayThread();
        std::uint8_t found = 0;
        RecordingContext context;
        rtcInitIntersectContext(&context.base);
        context.hits = &hit;
        context.found = &found;
        RTCRay ray;
        fillRay(ray, origin, direction, tNear, tFar, 0);
        rtcOccluded1(scene_, &context.base, &ray);
        if (!found) return false;
        finishHit(origin, direction, hit);
        return true;
    }

    void intersectSegments(int count, const double* v1s, const double* v2s, double skipDistance, bool nearest,
                           RayHit* hits, std::uint8_t* found) const override {
        prepareRayThread();
        constexpr int BLOCK = 256;
        double directions[BLOCK * 3];
        bool cast[BLOCK];
        for (int start = 0; start < count; start += BLOCK) {
            const int n = std::min(BLOCK, count - start);
            RecordingContext context;
            rtcInitIntersectContext(&context.base);
            context.base.flags = RTC_INTERSECT_CONTEXT_FLAG_COHERENT;
            context.hits = hits + start;
            context.found = found + start;
            if (nearest) {
                RTCRayHit rays[BLOCK];
                for (int i = 0; i < n; ++i) {
                    found[start + i] = 0;
                    cast[i] = prepareSegment(v1s + 3 * (start + i), v2s + 3 * (start + i), skipDistance,
                                             directions + 3 * i, rays[i].ray, i);
                    rays[i].hit.geomID = RTC_INVALID_GEOMETRY_ID;
                }
                rtcIntersect1M(scene_, &context.base, rays, static_cast<unsigned>(n), sizeof(RTCRayHit));
                for (int i = 0; i < n; ++i) {
                    if (!cast[i] || rays[i].hit.geomID == RTC_INVALID_GEOMETRY_ID) continue;
                    RayHit& hit = hits[start + i];
                    hit.layerIndex = static_cast<int>(reinterpret_cast<std::intptr_t>(
                        rtcGetGeometryUserData(rtcGetGeometry(scene_, rays[i].hit.geomID))));
                    hit.primitive = rays[i].hit.primID;
                    hit.u = rays[i].hit.u;
                    hit.v = rays[i].hit.v;
                    found[start + i] = 1;
                }
            } else {
                RTCRay rays[BLOCK];
                for (int i = 0; i < n; ++i) {
                    found[start + i] = 0;
                    cast[i] = prepareSegment(v1s + 3 * (start + i), v2s + 3 * (start + i), skipDistance,
                                             directions + 3 * i, rays[i], i);
                }
                rtcOccluded1M(scene_, &context.base, rays, static_cast<unsigned>(n), sizeof(RTCRay));
            }
            for (int i = 0; i < n; ++i)
                if (found[start + i]) finishHit(v1s + 3 * (start + i), directions + 3 * i, hits[start + i]);
        }
    }

    std::size_t triangleCount() const override { return triangles_; }

private:
    void fillRay(RTCRay& ray, const double origin[3], const double direction[3], double tNear, double tFar,
                 unsigned id) const {
        ray.org_x = static_cast<float>(origin[0] - origin_[0]);
        ray.org_y = static_cast<float>(origin[1] - origin_[1]);
        ray.org_z = static_cast<float>(origin[2] - origin_[2]);
        ray.dir_x = static_cast<float>(direction[0]);
        ray.dir_y = static_cast<float>(direction[1]);
        ray.dir_z = static_cast<float>(direction[2]);
        ray.tnear = static_cast<float>(tNear);
        ray.tfar = static_cast<float>(tFar);
        ray.time = 0;
        ray.mask = 0xFFFFFFFFu;
        ray.id = id;
        ray.flags = 0;
    }

    // A segment as a ray; an empty one (zero length, or all of it skipped)
    // is given an empty interval so that it hits nothing.
    bool prepareSegment(const double* v1, const double* v2, double skip, double* direction, RTCRay& ray,
                        unsigned id) const {
        const double d[3] = {v2[0] - v1[0], v2[1] - v1[1], v2[2] - v1[2]};
        const double length = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
        const bool usable = length > 0 && skip < length;
        for (int k = 0; k < 3; ++k) direction[k] = usable ? d[k] / length : (k == 2 ? 1.0 : 0.0);
        fillRay(ray, v1, direction, usable ? std::max(0.0, skip) : 0.0, usable ? length : -1.0, id);
        return usable;
    }

    // The hit point, worked out again in double: where the ray meets the
    // plane of the triangle that Embree found (its barycentrics are floats,
    // good to a few micrometres only). A ray grazing the plane keeps the
    // barycentric point.
    void finishHit(const double origin[3], const double direction[3], RayHit& hit) const {
        const Layer& layer = layers_[static_cast<std::size_t>(hit.layerIndex)];
        const std::uint32_t* corner = &layer.triangles[hit.primitive * 3];
        const double* p0 = &layer.positions[corner[0] * 3];
        const double* p1 = &layer.positions[corner[1] * 3];
        const double* p2 = &layer.positions[corner[2] * 3];
        const double e1[3] = {p1[0] - p0[0], p1[1] - p0[1], p1[2] - p0[2]};
        const double e2[3] = {p2[0] - p0[0], p2[1] - p0[1], p2[2] - p0[2]};
        const double n[3] = {e1[1] * e2[2] - e1[2] * e2[1], e1[2] * e2[0] - e1[0] * e2[2],
                             e1[0] * e2[1] - e1[1] * e2[0]};
        const double facing = n[0] * direction[0] + n[1] * direction[1] + n[2] * direction[2];
        const double nLength = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
        if (std::fabs(facing) > 1e-9 * nLength) {
            hit.t = (n[0] * (p0[0] - origin[0]) + n[1] * (p0[1] - origin[1]) + n[2] * (p0[2] - origin[2])) / facing;
            for (int k = 0; k < 3; ++k) hit.point[k] = origin[k] + hit.t * direction[k];
            return;
        }
        const double w0 = 1.0 - hit.u - hit.v;
        hit.t = 0;
        for (int k = 0; k < 3; ++k) {
            hit.point[k] = w0 * p0[k] + hit.u * p1[k] + hit.v * p2[k];
            hit.t += (hit.point[k] - origin[k]) * direction[k];
        }
    }

    const std::vector<Layer>& layers_;
    double origin_[3];
    std::size_t triangles_;
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
    const double origin[3] = {(lo[0] + hi[0]) / 2, (lo[1] + hi[1]) / 2, (lo[2] + hi[2]) / 2};
    auto index = std::make_unique<EmbreeHitIndex>(layers, origin, triangles);
    if (!index->create()) return nullptr;
    return index;
}

}  // namespace engine
