// Writing a panel's own COLLADA file: a model the engine loads as the layer
// Panel-N_G_N_G_geometry, carrying every attribute of the PANEL in <extra>
// blocks.
#pragma once

#include <QString>
#include <cstdio>

#include "PanelStruct.h"

// Writes panels[panelIndex] to DAE. A box (createBox) takes the catalogue's
// texture, which also becomes the panel's TextureName; a flat panel has none.
// allPoints, totalVertices, totalPolys and NP are the placement's and not
// read. A failure is logged to logFile (or the run log when null) and answers false.
bool WritePanelColladaFile(const QString& DAE, const TGIS_Point3D* allPoints, int totalVertices, int totalPolys,
                           int NP, bool createBox, TColor Color1, TColor Color2, int Opacity, int panelIndex,
                           std::FILE* logFile);

// Rewrites the panel's file (its Filename) after an update: a box when
// Thickness is above 0, textured when TextureName isn't empty.
bool SaveThePanel(const PANEL& panel);
