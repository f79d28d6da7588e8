// The row plan of a placement: how many rows fit in the depth of the field,
// where each lies along the roof, its orientation and its panel count.
#pragma once

#include <vector>

struct RowPlanInput {
    int rowPairing = 0;         // 0 single, 1 single rows, 2 double rows
    bool roofIsTilted = false;
    bool landscape = false;     // the form's choice, for a single row
    int repeat = 1;             // panels along a portrait row
    double depthInPlane = 0;    // m, depth of the field along the roof
    double projPortrait = 0;    // m, footprint of a portrait panel across the row
    double projLandscape = 0;   // m
    double lengthM = 0;         // Lm
    double widthM = 0;          // Wm
    double gap = 0;             // m between panels in a row
    double rowGap = 0;          // m, the sun-safe gap between rows (gapPP_safe)
    double baselineLength = 0;  // m, 3D length of the baseline
    double tiltRelDeg = 0;      // panel tilt above the roof plane
};

struct PlannedRow {
    double offset = 0;          // m along rowDirection from the baseline
    double verticalExtra = 0;   // m added to Z: second rows of a pair
    bool landscape = false;
    int panelCount = 0;
    double rightAlignOffset = 0;  // m along the row
};

constexpr double ROW_GAP_M = 0.02;  // m between rows packed tight

// Panels of a landscape row that stay within a portrait row of n panels, 1..n.
int computeSecondRowCap(int n, double Lm, double Wm, double Gap);
std::vector<PlannedRow> PlanRows(const RowPlanInput& in);
