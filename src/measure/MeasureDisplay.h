// Showing measures: the figures of the last or the selected line on the
// engine's status strip, the measure list as a table, and clearing it.
#pragma once

#include <QString>

#include "scene/engine_interface.h"

// A measure picked with a right click: its figures, or the area an "AREA"
// item carries in its distance.
void Display_Measure_Data(int index, const MEASURE_DATA& item);
// text, when given, goes to the strip as it is. Otherwise the strip shows
// the 2D and 3D distances and the height difference (in feet and inches
// with IMPERIAL), then the slope and azimuth unless the line is vertical.
void DisplayDistancesInAt3W(const QString& text);
// The strip's text for the figures in measureState().
QString DistancesText();

// Writes the measure list, map frame, to ORVO_T + "Measurement.csv" and shows
// it in the grid form. Returns the file written, "" when it can't be.
QString Displaymeasurings1Click();
// Empties the measure list, the billboards and the sphere markers.
void Clearmeasurings1Click();
