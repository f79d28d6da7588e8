// A per-ray cache of shade answers by point and sun hour. The report run
// does not use it (the shading CSV is the panel's cache); kept as a unit of
// its own for a finer reuse of rays.
#pragma once

#include <map>
#include <string>

struct ShadingPointCache {
    double x = 0;
    double y = 0;
    double z = 0;
    int sunHourIndex = -1;
    bool isShaded = false;
};

struct ShadingPointCacheState {
    std::map<std::string, ShadingPointCache> g_shadingCache;
    bool g_cacheEnabled = true;
};

ShadingPointCacheState& shadingPointCache();
void resetShadingPointCache();

// "%.2f_%.2f_%.2f_%d".
std::string MakeCacheKey(double x, double y, double z, int sunHour);
// The Euclidean distance is strictly below tolerance.
bool PointsAreClose(double x1, double y1, double z1, double x2, double y2, double z2, double tolerance);
// The exact key's answer, else the first of the last 100 entries (from the
// last key backwards) of the same hour closer than 0.2 m.
bool FindCachedResult(double x, double y, double z, int sunHour, bool& result);
// Over 50000 entries the first 10000 in key order go.
void StoreCacheResult(double x, double y, double z, int sunHour, bool isShaded);
void ClearShadingCache();
