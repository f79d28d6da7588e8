// Digitising: clicks on the mesh become a line, a polygon, a roof outline,
// a block, a circle or a measured area. Each click is drawn at once as
// segments of the measure list ("POL_<outline>-<vertex>", "AREA_<vertex>");
// the finishing click closes the outline when it needs closing and saves
// it, which is the door to the roof, panel, facade and flythrough paths.
#pragma once

#include <QString>

// What a digitising click did, for the status texts and the callers.
enum class DigitiseOutcome {
    PointAdded,   // armed still, waiting for more points
    TooFewPoints, // a roof of under 3 points: "At least 3 point needed"
    AreaMeasured, // the area and volume went to the status strip; nothing saved
    Saved,        // the outline went to its file
    Cancelled,    // the save dialog was cancelled: the outline left the view
    NotSaved,     // nothing could be written
};

struct DigitiseResult {
    DigitiseOutcome outcome = DigitiseOutcome::PointAdded;
    QString file;      // the ".POL" or ".LIN" written
    double area = 0;   // a measured area, m2
};

// One click while DigiArmed, at a point of the mesh in the local frame;
// button 1 left, 2 right. The right button finishes, and so does the left
// one at the fourth point of a facade.
DigitiseResult DigitiseClick(int button, double X, double Y, double Z);

// Removes every segment of outline pol from the measure list.
void DeletePolygonFromView(int pol);
// The polygon segments in the measure list.
int KamaPolygonLaticesInScene();
