// The planner's module choice and orientation in the settings file, section
// "Solvane3D": "ModuleType" (a catalogue name) and "LandscapePanel" (0 or 1).
// Every write goes to disk at once, since nothing is saved at exit.
#pragma once

#include <QString>

QString ReadModuleTypeSetting();
void WriteModuleTypeSetting(const QString& moduleType);
// A value that is no integer reads as 0, portrait.
bool ReadLandscapeSetting();
void WriteLandscapeSetting(bool landscape);
