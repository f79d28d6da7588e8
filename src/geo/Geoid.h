// Geoid separation (EGM96): the height of the geoid above the WGS 84 ellipsoid.
#pragma once

// Separation in metres at a point, from the rasters in the installation's
// data folder: "GeoidSeparation-ilum2.tif" where it covers the point, else
// "GeoidSeparation.tif" (a missing one is reported once). Lat and Lon both 0
// mean the model's centre. The raster is read once a run: the first value
// found is kept in GlobalGeoidalSeparation and returned for every later call.
double GetGMGeoidalSeparation(double LatIN, double LonIN);
