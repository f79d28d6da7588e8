#include "ShadingPointCache.h"

#include <cmath>
#include <cstdio>
#include <iterator>

namespace {

constexpr double kNearTolerance = 0.2;  // metres
constexpr int kNearSearch = 100;        // entries walked back from the last key
constexpr std::size_t kMaxEntries = 50000;
constexpr int kEvicted = 10000;

}  // namespace

ShadingPointCacheState& shadingPointCache() {
    static ShadingPointCacheState state;
    return state;
}

void resetShadingPointCache() { shadingPointCache() = ShadingPointCacheState{}; }

std::string MakeCacheKey(double x, double y, double z, int sunHour) {
    char key[128];
    std::snprintf(key, sizeof key, "%.2f_%.2f_%.2f_%d", x, y, z, sunHour);
    return key;
}

bool PointsAreClose(double x1, double y1, double z1, double x2, double y2, double z2, double tolerance) {
    const double dx = x1 - x2, dy = y1 - y2, dz = z1 - z2;
    return std::sqrt(dx * dx + dy * dy + dz * dz) < tolerance;
}

bool FindCachedResult(double x, double y, double z, int sunHour, bool& result) {
    ShadingPointCacheState& state = shadingPointCache();
    if (!state.g_cacheEnabled) return false;
    const auto exact = state.g_shadingCache.find(MakeCacheKey(x, y, z, sunHour));
    if (exact != state.g_shadingCache.end()) {
        result = exact->second.isShaded;
        return true;
    }
    int walked = 0;
    for (auto it = state.g_shadingCache.rbegin(); it != state.g_shadingCache.rend() && walked < kNearSearch;
         ++it, ++walked) {
        const ShadingPointCache& entry = it->second;
        if (entry.sunHourIndex == sunHour && PointsAreClose(x, y, z, entry.x, entry.y, entry.z, kNearTolerance)) {
            result = entry.isShaded;
            return true;
        }
    }
    return false;
}

void StoreCacheResult(double x, double y, double z, int sunHour, bool isShaded) {
    ShadingPointCacheState& state = shadingPointCache();
    if (!state.g_cacheEnabled) return;
    state.g_shadingCache[MakeCacheKey(x, y, z, sunHour)] = ShadingPointCache{x, y, z, sunHour, isShaded};
    if (state.g_shadingCache.size() > kMaxEntries) {
        auto last = state.g_shadingCache.begin();
        std::advance(last, kEvicted);
        state.g_shadingCache.erase(state.g_shadingCache.begin(), last);
    }
}

void ClearShadingCache() { shadingPointCache().g_shadingCache.clear(); }
