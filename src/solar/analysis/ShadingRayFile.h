// The COLLADA file of a panel's blocked rays, written at analysis level 2:
// one line per ray from the test point to the hit, in world coordinates.
#pragma once

#include <cstdio>
#include <string>

#include "SunDirection.h"

// The id of the rays' geometry, which the engine puts into the layer's name.
inline constexpr const char* SHADING_RAYS_GEOMETRY = "ShadingRays-geo";

struct ShadingRayFile {
    std::FILE* fdae = nullptr;
    int rayCount = 0;
    bool azimuthUsed[360] = {};  // whole degrees met by a written ray; read by nothing
};

ShadingRayFile& shadingRayFile();
// Closes a file left open and forgets it.
void resetShadingRayFile();

// Closes any file left open, then writes the head up to the opening of the
// positions array (its count is the fixed placeholder 99999).
void BeginShadingDAE(const std::string& filename);
// origin and hit in engine coordinates; OC is added back. A ray with a
// coordinate that is not a number is not written.
void LogShadowRay(const Vec3& origin, const Vec3& hit, double altitude, double azimuth);
// Writes the accessor, the lines and the tail, and closes.
void EndDAE();
int GetRayCount();
