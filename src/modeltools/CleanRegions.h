// The round regions marked on the model for cleaning, kept in the model's
// "_Todelete.txt": one line a region, "%d %.2lf %.2lf %.2f %.2f" (kind, map
// X, Y, elevation, radius), sorted and without duplicates.
#pragma once

#include <QStringList>
#include <string>
#include <vector>

// One region: MA 1 takes every vertex within R horizontally, MA 2 only
// those at or above Z.
struct CLEAN {
    int MA = 1;
    float X = 0, Y = 0, Z = 0, R = 0;
};

// What marking keeps between clicks: the colour turn, the line numbers and
// the last bias and range typed.
struct CleanMarkState {
    int colourTurn = 0;
    int lineNumber = 0;
    float lastBias = 0;
    float lastRange = 2;
};

CleanMarkState& cleanMarkState();
void resetCleanMarkState();

// The lines of the list file, sorted and unique; empty when it is missing.
QStringList ReadTodeleteLines(const std::string& path);
// Writes them sorted and unique, through a temporary file.
bool WriteTodeleteLines(const std::string& path, QStringList lines);
// The regions of the list, map frame. Every region takes the kind of the
// file's last line: the list is sorted, so one region of kind 2 makes them all so.
std::vector<CLEAN> ReadCleanRegions(const std::string& path);

// Adds a region about the last clicked point (GlobalX1, GlobalY1), shows it
// (a vertical line for kind 1, green spheres over the vertices above the
// elevation for kind 2) and saves the list; returns the number of regions.
int AddLineTemporary(int ma, float deltagova, float RAD);

// The menu items "Mark close vertices" and "Mark above the clicked Z".
int MarkCloseVertices();
int MarkAboveClickedZ();
