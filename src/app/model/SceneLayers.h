// The scene's layers as the operator sees them: the list, the faces that
// are really shown, and lines, spheres and colours put into the scene in
// map coordinates.
#pragma once

#include <QString>
#include <string>
#include <vector>

#include "app/services/GridFiles.h"
#include "geo/GisTypes.h"

// Faces of the layers whose output flag is on.
int ParseFaces();

// One line "%s  %d  %d  [%d] \n " per layer of the table: name, first and
// last vertex, index. ListlayersClick shows it.
QString LayerListText();
void ListlayersClick();

// The list of the layer form: ORVO_T + "Layers.csv" with the header
// "Layer,Vertices3D,Vertices2D,Active,Faces" and a line per layer (a name
// with a comma or a double quote in double quotes, its quotes doubled). Listing
// a layer paints it blue. Returns the file written ("" on failure) and
// gives the form's caption.
std::string WriteLayersList(QString& caption);
// The rows of such a list under its header, one cell a column, each name
// whole however it was quoted; empty when the file cannot be read.
GridRows ReadLayersList(const std::string& path);

// A row of the layer form: the layer's name and its check box.
struct LayerRow {
    std::string name;
    bool active = true;
};
// "Refresh scene": each row's check box becomes its layer's output flag;
// returns the faces now shown.
int RefreshSceneLayers(const std::vector<LayerRow>& rows);

// A line from P1 to P2 (map frame) into the measure list, named Name, in
// the toolkit colour TC.
void AddLineToScene(const QString& Name, const TGIS_Point3D& P1, const TGIS_Point3D& P2, int TC, float width);
// A sphere marker "S" + a running number at a map point.
void AddSphere(double East, double North, double Z, double Diameter, int TC);
// Measure-list item I in colour TC: 12 pixels wide for pure red, else 2.
void SetLineColor(int I, int TC);
