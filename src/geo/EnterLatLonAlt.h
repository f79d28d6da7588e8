// Asking the operator for a position on the model.
#pragma once

#include "GisTypes.h"

// Asks through the dialog service for latitude and longitude (degrees, or
// degrees/minutes/seconds as LatLonText.h reads them) or for east and north,
// and returns the map point with Z the ground under it (-9999 off the model).
// A cancelled or unreadable answer, or degrees without GlobalCS, give a point of zeros.
//
// One answer holding two numbers: both within 200 are latitude and longitude,
// otherwise east and north. Two words that read as latitude and longitude
// (the text EastNorth2String writes) are taken as such. Anything else is the
// latitude, and a second question asks for the longitude.
TGIS_Point3D EnterLatLonAlt();
