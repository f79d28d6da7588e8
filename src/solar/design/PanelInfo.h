// Everything known about one panel, as a two-column CSV ("Field,Data") for
// the grid and as a readable report for a message box.
#pragma once

#include <QString>

#include "PanelStruct.h"

// Fills csvString with the CSV and returns the report text.
QString GetPanelInfo(PANEL panel, QString& csvString);
