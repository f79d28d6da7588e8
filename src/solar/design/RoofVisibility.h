// Roof polygon layers in the scene (their names end in "_roof_polygon_geometry").
#pragma once

// What every roof polygon layer's name holds.
inline constexpr const char* ROOF_POLYGON_LAYER = "_roof_polygon_geometry";

// Shows (flag non-zero) or hides every roof polygon layer, then redraws.
void ShowHideroofplanes(int flag);
