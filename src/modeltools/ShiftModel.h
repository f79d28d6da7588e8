// Moving and turning an OBJ in plain text: the copy keeps its textures and
// faces as they stand, only the vertices change.
#pragma once

#include <QString>
#include <string>

// "_Shifted_%.0lf_%.0lf_%.0lf.OBJ" on the model, the shift in centimetres;
// with a turn "_Shifted_..._%d.OBJ".
std::string ShiftedModelName(const std::string& model, const double shift[3]);
std::string ShiftedRotatedModelName(const std::string& model, const double shift[3], int rotation);

// Writes the model shifted by ShiftXYZ: "v" lines moved (two decimals),
// "vn" lines left out, faces without their normal references. False when
// nothing was written (cancelled or failed).
bool ExportTheShiftedModel(const std::string& model, const std::string& OutOBJ_FILE);

// Turns the model by Rot degrees clockwise seen from above about the mean
// of its vertices and moves it by (dx, dy, dz). False when nothing was written.
bool RotateModel(const std::string& OBJ, const std::string& OBJR, double Rot, double dx, double dy, double dz);

// The menu items "Shift the model" and "Shif/Rotate the model": the
// question, the copy with its ".PRJ", the closing message. The path written, or "".
std::string Shiftthemodel1Click();
std::string ShiftRotatethemodel1Click();
// "Find model shift": the true position of the last clicked point, asked;
// the shift from the model becomes the default of the next shifting.
bool Findmodelshift1Click();
// "Restore shifted": a saved view put back on a shifted copy of its model.
bool Restoreshifted1Click();
