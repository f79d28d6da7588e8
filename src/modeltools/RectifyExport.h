// The template route's exporters: the OBJ and its OPK photo list carried
// through the transformation last solved by oc2nc3D (or, in the plane, by
// oc2nc). The solve comes first; these only apply it.
#pragma once

#include <string>

// Writes OutOBJ_FILE with every vertex transformed, then OBLIXS/ beside it
// with the model's OPK list transformed (".OPK" and ".CSV" named after the
// output). displaymessage shows the "Processing record" status lines.
// False when the model can't be read, an output can't be written, or the
// operator stopped the pass (nothing is left behind then).
bool ExportRectifiedModel(const std::string& ModelFileName, const std::string& OutOBJ_FILE, bool displaymessage);
// The same through oc2nc: X and Y transformed, Z kept.
bool ExportRectifiedModelUse2D(const std::string& ModelFileName, const std::string& OutOBJ_FILE, bool displaymessage);

// Azimuth (degrees from north, clockwise, 0 to 360) and inclination
// (degrees) of the line from (xorg, yorg, zorg) to (X, Y, Z).
void AzimuthFromXYZ(double xorg, double yorg, double zorg, double X, double Y, double Z, double& azimuth,
                    double& inclination);
