// Writing the open model through the engine in another format, in its real
// coordinates or in the small local ones, with the files it needs beside it.
#pragma once

#include <QString>
#include <string>

// The engine's write code of an output's extension (any case); 12 (OBJ) for
// one not in the table.
int ExportFormatCode(const QString& fileName);

// Writes the model as OutFile (asked with the save dialog when empty).
// Unless localized the file gets real coordinates, Z up; a ".dae" becomes
// "_(n).DAE" with the n live panels embedded. The file written, or "".
QString ExportModel(QString OutFile, bool localized);

// "Export the model": ExportModel, the COLLADA's EPSG, the ".PRJ" and the
// texture pictures of the layers and of the panels beside the output. The
// file written, or "".
QString SaveTheModel(const QString& Output);

// "Save  localized model": the model as "_Localized.obj" in its local frame.
QString SaveLocalizedModelClick();
