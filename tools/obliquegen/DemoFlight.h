// The flight over the demo site: five oblique cameras (four looking north,
// east, south and west about 45 degrees down, one straight down) and a few
// facade photographs along the tall block's south and east walls.
#pragma once

#include <vector>

#include "PhotoCamera.h"

// Terrain height the footprints are laid on, file frame.
constexpr double kDemoGroundZ = 44.0;
// The take-off point's height, for the drone's relative altitude.
constexpr double kDemoTakeOffZ = 44.0;

// Cameras in the map frame: file coordinates of the site plus offset.
std::vector<PhotoCamera> demoObliqueCameras(const double offset[3]);
std::vector<PhotoCamera> demoFacadeCameras(const double offset[3]);
