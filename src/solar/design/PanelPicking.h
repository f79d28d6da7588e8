// Finding the panel under a clicked point, in plan view.
#pragma once

// First active panel whose outline, grown by GLOBALGAP_DISTANCE, holds the
// point (z is ignored); -1 if none. Where panels touch the lower index wins.
int GetPanelIndexFromCoordinates(double x, double y, double z);
