// A placement from its reference points to written panel files: the panel
// path of the roof capture, and the step that lays out and writes the panels.
#pragma once

#include <QStringList>
#include <functional>

#include "PanelStruct.h"

// What the window lends the placement: the modal panel form (true on OK) and
// the add-models path that loads the written files into the scene.
struct PlacementHooks {
    std::function<bool()> openPanelForm;
    std::function<void(const QStringList&)> addModels;
};
PlacementHooks& placementHooks();
void resetPlacementHooks();

// Draws a new base group, lays out the panels and writes one file per new
// panel into PANELSFOLDER. Answers the files written, for the add-models
// path; empty when the operator cancelled the placement.
QStringList CreatePanelDAE(const TGIS_Point3D* PA, int NP, int Opacity, TColor TC1, TColor TC2, int ThicknessMM,
                           double Tilt, int Repeat_in, int GapMM);

// The panel path of CreateSHPfileFromPoints: three clicks P (map frame) to
// panels on the roof. False, silently, when the form is cancelled or the
// points are collinear; the written files go to files.
bool CreatePanelsFromPoints(const TGIS_Point3D* P, int NP, QStringList& files);
