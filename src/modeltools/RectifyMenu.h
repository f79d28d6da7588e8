// The "Geocode model" menu's actions as plain functions the window calls:
// "Rectify by ONC" and "Rectify". Neither opens a model itself; the window
// opens the path returned.
#pragma once

#include <string>

// The template route's result: three digitised points on the corner of a
// right-angled floor template and the points they should become. Kept for
// the export that would finish the route.
struct RectifyTemplate {
    bool valid = false;
    double perpendicular = 0;  // metres, its sign telling the template's turn
    double from[3][3] = {};    // P1, P2, P3 in map coordinates
    double to[3][3] = {};      // targets 1 to 3, Z 0
    // Distances P1-P2, P2-P3, P1-P3 (and the same of the targets), plain and 3D.
    double fromDistance2D[3] = {}, fromDistance3D[3] = {};
    double toDistance2D[3] = {}, toDistance3D[3] = {};
};

struct RectifyState {
    RectifyTemplate templatePairs;
};

RectifyState& rectifyState();
void resetRectifyState();

// "Rectify by ONC": confirms the OBJ and the ONC file, rectifies with radius
// 35 into "<name>_rectified.OBJ" (the ".PRJ" copied beside it) and returns
// that path; "" when cancelled or when nothing was written (the log beside
// the output tells why).
std::string RectifybyONC1Click();

// Asks the template size. On Cancel, ConvertOBJ of the open model with a
// chosen ONC file: the path of "<name>_converted.OBJ" when written. With a
// size, the template pairs are kept and "" is returned.
std::string RectifyModel();

// "Rectify": the path of the new model to open, "" for none.
std::string Rectify1Click();
