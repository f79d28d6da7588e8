// The drone of a camera name, from the table of drones the session keeps,
// and the drone of the last picture read.
#pragma once

#include <QString>

#include "ExifRecord.h"

struct PhotoMetaState {
    DRONE GlobalDRONE;  // the drone of the last picture
};

PhotoMetaState& photoMetaState();
void resetPhotoMetaState();

// A camera or drone name to its drone: a few fixed names of other makers'
// cameras first, then the first table row whose Model or Drone column is
// the name, ignoring case; "UNKNOWN" when none is.
DRONE GetDroneFromModel(const QString& Model_in);
