// The tactical grid beside a model ("TacticalG.shp"): a cell is a two-point
// line shape across its middle, named by the field "name".
#pragma once

#include <QString>

#include "geo/GisTypes.h"

// The name of the first cell (in file order) whose extent holds P, edges
// included; empty without a loaded grid or outside every cell.
QString GetGridName(const TGIS_Point& P);
// The same against a grid file given by path.
QString GetGridNameIn(const QString& gridFile, const TGIS_Point& P);

// The centre of the cell NAME (trimmed, any case): X the middle of its line,
// Y its first point's, Z its "Terrain". False when no cell has that name.
bool GetGridCenter(const QString& name, TGIS_Point3D& center);
bool GetGridCenterIn(const QString& gridFile, const QString& name, TGIS_Point3D& center);

// Asks for a "TacticalG.shp", copies it with its side files into the
// model's folder and loads it as the model's grid.
void ImportTacticalGridMnuClick();
