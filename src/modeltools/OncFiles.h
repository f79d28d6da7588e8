// The control-point lists of geocoding as the operator meets them: the
// "Export GCP" list of the model's measuring points and the "Help" text on
// how an ONC file comes about.
#pragma once

#include <QString>
#include <string>

// "Export GCP": asks for the file, writes one line per measuring point in
// map coordinates (and the model's "*_opk.txt" last, when there is one) and
// saves the view as a ".bmp" of the same name. The file written, "" when
// refused, cancelled or not writable.
std::string ExportONC();

// The "Help" of the geocoding menu, a line each.
QString OncHelpText();
