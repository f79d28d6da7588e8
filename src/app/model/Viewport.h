// The view as the open sequence needs it: the full view, viewport files and
// the camera values fetched from the engine, the azimuth and north arrow.
#pragma once

#include <string>

// A viewport file is three lines: "%lf %lf" distance and field of view,
// "%lf %lf %lf" the view point in the map frame, "%lf %lf %lf" the angles.
// With a roaming camera active the file takes "_Roaming.VPT" as extension
// and holds what that camera shows. Returns the path written, "" on failure.
std::string SaveViewport(const std::string& path);
// Reads a viewport file back into the engine and draws; false when it
// can't be read.
bool RestoreViewport(const std::string& path);

// The model's home view when its folder holds "Home.vpt"; otherwise from
// the top, turned 45 degrees about X, and drawn.
void FullViewBtnClick();

// The camera values of cameraState() from the engine.
void GetCameraData();
void GetCameraAnglesClick();

// "Azimuth %.0f" in the fourth status text and the north arrow turned to match.
void DisplayAzimuth();
void ShowNorthArrow(float Azim);
