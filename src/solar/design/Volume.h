// Closed volumes between two roof planes, exported as OBJ meshes.
#pragma once

#include <QString>

#include "RoofPlane.h"

// Bottom is the large plane, Top the small one; one wall quad for each edge
// of the small plane, dropped onto the large plane's nearest vertex in plan.
VOLUME CreateVolumeByProjection(const PLANE* largePlane, const PLANE* smallPlane);
// Fits both planes (no lift); the one smaller in plan becomes the top, plane2
// on a tie. The volume is written to objFileName.
VOLUME CreateVolumeAndExport(PLANE* plane1, PLANE* plane2, const QString& objFileName);
// Writes the volume as OBJ; nothing is written when the file can't be made.
void ExportToOBJ(const VOLUME* volume, const QString& fileName);
