// Making billboards: a text, an icon, or a text with an icon standing in the
// scene on a thin stem; sphere markers and cranes are the same action with
// the icon names "SPHERE" and "CRANE".
#pragma once

#include <QString>

// The file of the spheres and cranes made on the model, in its measurements folder.
inline constexpr const char* SPHERES_AND_CRANES_FILE = "SpheresAndCranes.csv";

// position and pivot in the local frame, rgb 0 to 1. ismeasuring marks the
// label of a measure; IsIcon an icon of the icons form. Adds a billboard
// (or, for a "SPHERE" or "CRANE" icon, a sphere marker) and draws the scene.
// 1 on success; 0 at the exact origin or when no picture could be made.
int MakeBillboard(const double* position, const double* pivot, const QString& Name, const float* rgbcolor,
                  bool ismeasuring, bool IsIcon);

// The visible text of a billboard's id, which is also its group: the text
// before the first "|".
QString StripID(const QString& id);

// The pivot of a billboard at position (local frame): pivotHeight metres
// from it towards the viewer, on the camera's azimuth turned back by 180.
void BillboardPivot(const double position[3], double pivotHeight, double pivot[3]);
