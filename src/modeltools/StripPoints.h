// Layer names made from file paths: a name must not hold the characters a
// layer name can't, and a drone's catalogue is named after its flight.
#pragma once

#include <QString>

// "Drone_..." as it stands; an "oblixoblix.shp" under "SEPARATED-DRONE/"
// gives "Drone_" and the folder that follows; any other path its file name
// with "." as "$", "/" and "\" as "#", ":" as "!".
QString StripPoints(const QString& NNin);
