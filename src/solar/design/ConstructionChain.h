// From the live panels to the construction tables and the frame drawings.
#pragma once

#include <QString>
#include <QStringList>

struct ConstructionChainResult {
    QStringList groupCsvs;  // one table per construction group
    QStringList frameCsvs;  // frame side views, flat roofs only
    QStringList svgs;       // the drawings of those frames
};

// flag 1 groups the panels and gives them their letters and rows; 0 clears them.
void AddNamesToPanels(int flag);

// Height of the panel corner (map frame) above the mesh under it in mm,
// from a ray straight down; fallback_mm when nothing lies within 22 m.
double HeightAboveRoofMm(double x, double y, double z, double fallback_mm);

// The whole chain for the model file's panels: group tables, then on flat
// roofs a frame CSV and its drawing with customer as footer.
ConstructionChainResult RunConstructionChain(const QString& modelFile, const QString& customer);

// The menu: runs the chain and opens each drawing with the default viewer.
void CreateConstructionMnuClick(const QString& modelFile, const QString& customer);
