// Terrain height from the elevation web service.
#pragma once

// Height in metres of the terrain at a point (degrees), asked of the service
// whose base address the settings hold in section "Services", key
// "Elevation" (an OpenTopoData server, by default the public one). The
// outcome is written to the run log; any failure gives 0.
double GetTerrainElevation(double latitude, double longitude);
