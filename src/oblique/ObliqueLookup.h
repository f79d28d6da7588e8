// From a click on the model to the photographs that show the point: the
// ranked lookup of an Alt + left click and the visibility report of a
// Ctrl + left click.
#pragma once

#include <QString>
#include <QStringList>

#include "geo/GisTypes.h"

// Fills OOO with the photographs that show the clicked map point, nearest
// to their picture's centre first (or from the OPK list, when the model has
// one), then opens the first in the photograph window.
void StretchOblique(const TGIS_Point3D& point);

// The cameras of the candidates that really see the point (nothing on the
// mesh between): the header "Distance,Res (cm/pix) ,Image" and one line each.
QStringList CountRelevantObliques(const TGIS_Point3D& point);
// The Ctrl + left click: the report saved as "txt.txt" in ORVO_T and shown,
// the count on the status line. The path of the report, "" when it could
// not be written.
QString CountRelevantObliquesClick(const TGIS_Point3D& point);
