// Facade photographs: pictures of walls taken on a vertical flight, each with
// the camera's place and the mesh point its axis meets, kept in ".FAC"
// containers in the model's "FACADES" folder.
#pragma once

#include <QString>
#include <QStringList>

#include "geo/GisTypes.h"

struct FacadeState {
    QStringList TSFACADES;   // every row of every container, comma text
    QString THE_JPG;         // the photograph on screen
    double Facade1X = 0, Facade1Y = 0, Facade1Z = 0;  // its camera, map units
    double Facade2X = 0, Facade2Y = 0, Facade2Z = 0;  // the point it looks at
    int LastSelectedLine = -1;                        // the scene line drawn red, -1 for none
};

FacadeState& facadeState();
void resetFacadeState();

// One row of a container.
struct FacadeRow {
    QString picture;
    double X = 0, Y = 0, Z = 0;     // camera
    double OX = 0, OY = 0, OZ = 0;  // the mesh point hit by its axis
    double azimuth = 0, distance = 0, pitch = 0;
};

// Column 1 and the numbers of a row's comma text; false when it has fewer than eleven columns.
bool ReadFacadeRow(const QString& commaText, FacadeRow& row);

// The model's "FACADES" folder whatever its case, ending in "/"; "" when there is none.
QString FacadesFolder(const std::string& modelPath);

// Reads every ".fac" of the folder into TSFACADES (a moved container finds its
// pictures beside it), draws each photograph as a blue line from camera to
// target, and returns the count (also the model's KamaFacades).
int LoadFacades();

// The photograph aimed nearest to a point (map units): its path, "" with no rows.
// Sets the camera and target; the camera is levelled to the target's height,
// and DistXY and DistZ are the camera's plan distance and that height.
QString FindRelevantFacade(const TGIS_Point3D& point, double& DistXY, double& DistZ);

// The photograph Add rows after THE_JPG, circular over rows 1 to the last.
QString FindNextFacade(int Add, int idx);

// Draws the photograph's line red and the one before it blue again.
void SelectLine(const QString& JPG);

// The facade step of a click that looks for photographs: the photograph to
// show ("" for none, its line then unselected) with its DXY and DZ, its line
// selected. Nothing while "Show location" is unchecked.
QString FacadeOfClick(const TGIS_Point3D& point, double& DistXY, double& DistZ);
