// The OPK list of a model with no catalogue: camera positions and angles of
// indoor or close-range photographs in "OBLIXS/OPK.TXT", prepared once into
// "OBLIXS/<model name>.OPK" (and ".CSV" for people) and read from there after.
#pragma once

#include <QString>
#include <string>

// Loads the list of the model at modelPath into TSOPK, building the prepared
// files first when they are missing; sets DIR_OPK, OPKfile and KamaOPK. The
// number of photographs listed, 0 when the model has no "OPK.TXT".
int LoadOpkList(const std::string& modelPath);

// One prepared line from a camera and its omega, phi, kappa; empty when the
// camera looks straight down or up and has no azimuth. csvLine gets the same
// row in the people's format.
QString OpkListLine(const QString& name, double x, double y, double z, double omega, double phi, double kappa,
                    int rotation, QString& csvLine);
