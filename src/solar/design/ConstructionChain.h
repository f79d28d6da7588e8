// From the live panels to the construction tables and the frame drawings.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

#include "geo/GisTypes.h"

struct ConstructionChainResult {
    QStringList groupCsvs;  // one table per construction group
    QStringList frameCsvs;  // frame side views, flat roofs only
    QStringList svgs;       // the drawings of those frames
};

// The maker of a panel's label: the text at a map point in a toolkit
// colour. The window and the commands lend the billboard maker here; without
// one the panels are grouped but no label stands.
struct PanelLabelHooks {
    std::function<void(const TGIS_Point3D& centerMap, const QString& text, int color)> makeLabel;
};
PanelLabelHooks& panelLabelHooks();
void resetPanelLabelHooks();

// ma 0 clears the measures, billboards and spheres. Otherwise it also groups
// the panels (their letters and rows), and stands one label a panel at its
// centre: its number and letter (12B), coloured by its letter's place among
// the letters in use.
void AddNamesToPanels(int ma);

// Height of the panel corner (map frame) above the mesh under it in mm,
// from a ray straight down; fallback_mm when nothing lies within 22 m.
double HeightAboveRoofMm(double x, double y, double z, double fallback_mm);

// The whole chain for the model file's panels: group tables, then on flat
// roofs a frame CSV and its drawing with customer as footer.
ConstructionChainResult RunConstructionChain(const QString& modelFile, const QString& customer);

// The menu: runs the chain and opens each drawing with the default viewer.
void CreateConstructionMnuClick(const QString& modelFile, const QString& customer);
