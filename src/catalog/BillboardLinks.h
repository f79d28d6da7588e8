// The files linked to billboards: "Hyperlinks.csv" in MEASUREMENTSFOLDER,
// one line a billboard, as comma text: its name, then one file per field.
// The dialog TFormIO edits one billboard's list through these.
#pragma once

#include <QString>
#include <QStringList>

// MEASUREMENTSFOLDER + "Hyperlinks.csv".
QString HyperlinksFile();

// The files of the first line whose name equals TheSymbolName, case aside;
// none when the table or the line is missing.
QStringList PopulateListBox(const QString& TheSymbolName);

// Replaces the billboard's line by one with the name and the list (the name
// alone for an empty list), through a temporary file. False when it can't be written.
bool SaveListBoxPopulation(const QString& TheSymbolName, const QStringList& links);

// One line of comma text: a field with a blank, quote or comma is quoted,
// quotes doubled.
QString LinksCommaText(const QStringList& fields);

// "Associate files": the chosen files appended, those already listed skipped.
QStringList AddLinkedFiles(const QStringList& links, const QStringList& chosen);

// "Open selected files": by the desktop's association, or the path and
// "\nNot found" in a box. False when it is missing.
bool OpenLinkedFile(const QString& file);
