// Roof polygon layers in the scene (their names end in "_roof_polygon_geometry").
#pragma once

// Shows (flag non-zero) or hides every roof polygon layer, then redraws.
void ShowHideroofplanes(int flag);
