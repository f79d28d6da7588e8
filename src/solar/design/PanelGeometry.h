// Laying out the panels of one placement: from the three reference points to
// rows of stored panels. See PanelGeometryRows.h for the row plan.
#pragma once

#include <cstdio>
#include <vector>

#include "PanelStruct.h"

constexpr int kPlacementCancelled = -999;

// Lays out the rows on the roof of PA_IN (at least 3 points: the baseline
// and the depth) and appends the panels to the live store, from
// firstPanelIndex on. Thickness and Gap in metres, Tilt in degrees. Answers
// the roof azimuth cut to an integer, 0 for under 3 points, and
// kPlacementCancelled when the operator dismisses the baseline question.
int CreatePanelGeometry(const TGIS_Point3D* PA_IN, int NP, float Thickness, double Tilt, int Repeat, float Gap,
                        std::vector<TGIS_Point3D>& outPoints, int& totalVertices, int& totalPolys,
                        int& firstPanelIndex, std::FILE* logFile);
