// Showing a file to the operator: a text file in the desktop's own viewer,
// a CSV file in the grid form TFormXLS.
#pragma once

#include <QString>

// Opens FP with the desktop's default application; false when nothing took it.
bool ShowOrvoTextFile(const QString& FP);
// Loads CSV into the grid form and shows it without blocking. With
// FirstLineIsTitle the first row is a fixed title row; with AddLineCount a
// first column numbers the rows below it. False when CSV can't be read.
bool ShowOrvoCSVFile(const QString& Title, const QString& CSV, bool AddLineCount, bool FirstLineIsTitle,
                     bool maximized);
