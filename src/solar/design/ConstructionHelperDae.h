// A small textured roof-and-walls model from a picture of a roof and,
// optionally, its corner table, so the picture can be placed in the scene.
#pragma once

#include <QString>

// Writes the model beside the picture (its name with ".dae", or "_Helper.dae"
// when CSV exists) and returns its path; "" when the picture can't be read
// or the model can't be written.
QString JPGandCSV2DAE(const QString& JPG, const QString& CSV);

// The menu item: asks for the picture in folder; its corner table (the
// picture's name with ".csv", any case), when there is one, is fitted first
// (AdjustCSV). The model made is added to the scene. Its path, or "".
QString CreateautoDAEhelper1Click(const QString& folder);
