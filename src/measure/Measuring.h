// Measuring on the mesh: the measure and observer tools, the engine's
// rubberband between two clicked points, the figures of the line, the line
// of sight, and the picking modes of the Locations menu.
#pragma once

#include <QString>

// The help text while a measure tool is armed.
inline constexpr const char* MEASURE_HELP = "\t Click two points on the model to measure between them. Esc to stop.";

// The two tool buttons follow their checked state ("MeasureButton",
// "SelectObservertargetBtn"): down arms the engine's rubberband, up ends it.
void MeasureButtonClick();
void SelectObservertargetBtnClick();
// Releases both tools, the rubberband picking with them, and puts the help back.
void ReleaseMeasureTools();
// A click on the mesh while the engine picks: says which end it gives,
// before the engine takes it.
void NoteRubberbandClick();

// The engine reported a change of its rubberband. Item 3: a line was
// finished (fetch, figures, then the measure dialog); 4 to 7 refetch parts;
// -1 only repaints the figures.
void Display_Rubberband_Data(int item);

// Each fetches its rubberband point from the engine into rubberbandState().
void Get_Locations1();
void Get_Locations2();
void Get_LocationsObstruction();
void Get_LocationsObserver();

// The figures of the line between the rubberband's ends (from the observer
// when there is one): distances, azimuth, height difference and the ends in
// the map frame.
void Calculate_Distances();
double Calculate_Length(const double a[3], const double b[3]);

// The engine's line-of-sight test of the rubberband, with the depth test on
// while it runs; the result goes to the fourth status text.
void CheckObstruction();
// The first mesh hit between two points given in the map frame without
// Offset (file coordinates): the distance from V1, with the hit in V3 in the
// same frame; 0 when the line is free. Hits nearer than skipDistance to V1
// don't count.
double GetObstruction(const double V1[3], const double V2[3], double V3[3], double skipDistance);
// The same for points in the map frame (Offset included), the hit in V3 in
// that frame too: what cameras and photographs of the site are given in.
double GetObstructionInMap(const double V1[3], const double V2[3], double V3[3], double skipDistance);

// The slope of a line in degrees; false when it is vertical (plan distance
// 0.001 m or less) and has none.
bool SlopeDegrees(double DDZ, double Dist2D, double& slope);

// The Locations menu: the engine's picking off, measuring, paused, continued.
void Locations_OffClick();
void Locations_MeasureClick();
void Locations_PauseClick();
void Locations_ContinueClick();

// In solar mode the delete buttons show once there is something to delete.
void ShowDeleteGroupInSolarMode();
