// What the oblique lookup needs from a window: the photograph window of a
// ranked lookup and the facade lookup after it, and the EXIF orientation of
// a picture. The window fills these at start-up; tests put recorders, so the
// logic runs without widgets.
#pragma once

#include <QString>
#include <functional>

#include "geo/GisTypes.h"

struct ObliqueHooks {
    // ShowObliqueBigWindow(index, zoom): shows OOO[index]; a zoom of -9 shows
    // the whole picture. Unset: nothing is shown.
    std::function<void(int index, int zoom)> showObliqueBigWindow;
    // Closes the photograph window when it is open.
    std::function<void()> closeObliqueWindow;
    // The facade lookup of the clicked point; called only when the model has
    // facades, and it looks itself whether "Show location" is checked.
    std::function<void(const TGIS_Point3D& point)> facadeLookup;
    // ShowPhotoBigWindow(JPG, DistXY, DistZ): the facade photograph window. Unset: nothing is shown.
    std::function<void(const QString& JPG, double DistXY, double DistZ)> showPhotoBigWindow;
    // The EXIF Orientation tag of a picture (1 to 8, 0 when it has none).
    // Unset: the picture's own reader is asked.
    std::function<int(const QString& picture)> exifOrientation;
};

ObliqueHooks& obliqueHooks();
void resetObliqueHooks();
