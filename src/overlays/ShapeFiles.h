// Vector files read for the operator: the text report of a shape file and
// its shapes drawn into the 3D scene.
#pragma once

#include <QString>

// Writes the report of the vector file LayerPath (".shp", ".dxf", ".kml")
// to ORVO_T + its name + ".txt": comments, extremes, name, then each shape
// with its type, length, area and fields. Returns the report's path, empty
// when the file cannot be read or the report written.
QString ReadShapeFileTatuk(const QString& LayerPath);
// Asks for the vector file, writes its report and opens it.
void ReadShapeFileTatukAskForFile();

// What Importshapefile1Click put into the scene.
struct ShapeImportCount {
    int lines = 0;
    int points = 0;
};
// Draws the shapes of a shape file in the scene, all as its first shape's
// type says: arcs and polygons as red lines along their first part, points
// as blue markers joined in file order.
ShapeImportCount ImportShapeFileToScene(const QString& FN);
// "Import shape file": asks for the file in MEASUREMENTSFOLDER and draws it.
void Importshapefile1Click();
