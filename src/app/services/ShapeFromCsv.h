// Polygons from the grid's rows into a shape file.
//
// A polygon row is: its name, its colour (a TColor number), then the corner
// points as X,Y pairs in the map frame: "Roof 1,255,100,200,110,200,110,210".
// Rows that don't read so (a title row, fewer than three corners, a text
// where a number belongs) are left out; an open ring is closed.
#pragma once

#include <QString>

#include "GridFiles.h"

// Writes the polygon layer "Polygons" with the fields "Polygon" (text, width
// 40) and "Color" (number, width 20), UTF-8 names, and a .prj when wkt is
// given. The files are made in a folder beside the target and moved into
// place. False when the layer can't be written.
bool CreateSHPfileFromRows(const GridRows& rows, const QString& file, const QString& wkt = {});
// The same from a CSV file.
bool CreateSHPfileFromCsv(const QString& GlobalCSV, const QString& file, const QString& wkt = {});
