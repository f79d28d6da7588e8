// The GIS files that opening and adding models read: shape and KML files
// turned into DXF lines, the state under the model, the tactical grid's
// names and the centre of a convex hull outline.
#pragma once

#include <QString>
#include <string>

#include "geo/GisTypes.h"

// Writes the lines and outlines of a vector file as DXF LINE entities on
// one layer named after the file: a shape file's first layer, or all layers
// of a KML, whose WGS 84 points are projected into GlobalCS when the model
// has one. False with the reason in error when the file can't be opened or
// the DXF can't be written.
bool ExportVectorToDxf(const std::string& source, const std::string& dxfPath, std::string& error);

// The field "name" of the first shape of a world KML within reach of the
// point (5 pixels of a 1000-pixel view of the whole file); "Unknown" when
// none is.
QString StateAt(const std::string& kmlPath, double lon, double lat);

// Reads the field "name" of the grid's first layer as raw bytes; true when
// the file opened. hebrew tells whether a name holds the byte 0xE0 (a
// letter of code page 1255).
bool ReadTacticalGridNames(const std::string& shpPath, bool& hebrew);

// The centre of the extent of a shape file's first layer; false when it
// can't be read.
bool ShapeExtentCenter(const std::string& shpPath, TGIS_Point& center);
