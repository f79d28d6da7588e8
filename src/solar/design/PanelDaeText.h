// The text side of the panel COLLADA files: they are read and written line by
// line, never through an XML parser, so these helpers keep the readers and the
// writers to one idea of a line, a tag and a number.
#pragma once

#include <QString>
#include <QStringList>

#include "geo/GisTypes.h"

namespace paneldae {

// The whole text of a file. A UTF-8 byte order mark is dropped; a file that
// isn't valid UTF-8 is taken as 8-bit text. False when it can't be read.
bool ReadText(const QString& path, QString& text);
// The same, split into lines without their line ends ("\r" dropped too).
bool ReadLines(const QString& path, QStringList& lines);
// Each line followed by "\n", as UTF-8, through a temporary file and a rename.
// On failure, error (when given) says why.
bool WriteLines(const QString& path, const QStringList& lines, QString* error = nullptr);

// printf into a QString, always with "." as decimal point.
QString Fmt(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Text for an element: &, < and > escaped so the file stays a valid model.
QString XmlText(const QString& text);
// Back from the escaped form.
QString PlainText(const QString& text);

// The text between "<tag>" and "</tag>" inside text, searching from `from`;
// a null string when either is missing.
QString TagText(const QString& text, const QString& tag, qsizetype from = 0);

// The value of the attribute name="..." in a line; a null string when missing.
QString AttributeValue(const QString& line, const QString& name);

// The panel name as it appears in layer and node names: "/" turned into "_".
QString SafeName(const QString& name);

// The file name without its folder ("/" or "\" before it).
QString LeafName(const QString& path);

// The three attributes x="X" y="Y" z="Z" of a point, six decimals.
QString PointAttributes(const TGIS_Point3D& p);
// A number of a file read into an int field: truncated, stopping at the
// int's ends when beyond them, and 0 for NaN.
int IntOfNumber(double number);

}  // namespace paneldae
