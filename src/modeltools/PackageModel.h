// "Zip the model": the OBJ with its material file, texture pictures,
// projection, tactical grid and, on request, its oblique catalogues, in one
// archive beside the model, so that the model can be handed on.
#pragma once

#include <QString>
#include <QStringList>

// The forms of the menu, as CompressOBJ takes them.
constexpr int PACK_SMALL_JPG = 0;         // "With small JPG": wide pictures reduced
constexpr int PACK_NORMAL = 1;            // "Normal"
constexpr int PACK_WITH_OBLIQUES = 2;     // "With obliques"
constexpr int PACK_EVERY_SECOND_JPG = 3;  // "With every second JPG": obliques, half the pictures

// The material library named after "mtllib" in the first 100 lines of the
// OBJ, read 80 characters at a time as the viewer always has (a longer line
// counts as several); the last one found, as written there. "" when none.
QString MaterialLibraryName(const QString& obj);

// The picture names after "map_Kd" in a material file, in file order, as written.
QStringList MaterialPictureNames(const QString& mtl);

// Packs the open model (GlobalModelFileName, asked for when empty) and the
// models of INPUTFILES into "<folder><names>.OBJ.ZIP", or "_small.OBJ.ZIP"
// for PACK_SMALL_JPG. Each missing file is shown as "Missing\n<path>" and
// packing goes on. The archive path, or "" when nothing was written
// (no model, the dialog cancelled, the pack failed or was cancelled).
QString CompressOBJ(int ma);
