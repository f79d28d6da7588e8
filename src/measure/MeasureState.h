// What measuring leaves in the session: the two ends of the last line and
// its figures, the selected measure, the area under way. The ends' map
// points GlobalX1..Z2 live with the click (dispatchState()); the engine's
// rubberband points with rubberbandState().
#pragma once

#include <QString>
#include <optional>

#include "scene/engine_interface.h"

struct MeasureState {
    // The ends minus OC: the local frame.
    double LocalX1 = 0, LocalY1 = 0, LocalZ1 = 0;
    double LocalX2 = 0, LocalY2 = 0, LocalZ2 = 0;
    double Dist2D = 0, Dist3D = 0, DDZ = 0;
    double AzimuthToTarget = 0;
    double SightObstructionDistance = 0;
    double MeasuredDistance = 0, MeasuredArea = 0, LastmeasuredArea = 0;
    // The item selected with a right click, map frame.
    double SelectedX1 = 0, SelectedY1 = 0, SelectedZ1 = 0;
    double SelectedX2 = 0, SelectedY2 = 0, SelectedZ2 = 0;
    QString SelectedName;
    QString GlobalAreaText;
    QString GlobalLayerName2;
    // An extra segment waiting while an area is measured.
    std::optional<MEASURE_DATA> AreaPtr;
    int haveObstructionMessageFlag = 0;
    // The measure dialog's "show" box: a label stands in the middle of the line.
    bool SHOWBILLBOARD = true;
};

MeasureState& measureState();
void resetMeasureState();
