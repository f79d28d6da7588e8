// Volumes from two digitised outlines saved as shape files.
#pragma once

#include <QString>

#include "RoofPlane.h"

// The first shape of a vector file as a plane of at most 20 points; false
// when the file has no shape with points.
bool ReadPlaneFromShapeFile(const QString& fileName, PLANE& plane);
// Asks for two shape files and writes their volume as an OBJ beside the first.
void Createplane1Click();
