// The text report of exiftool turned into one EXIF record: tags of every
// maker tried in a fixed order, a later hit overriding an earlier one.
#pragma once

#include <QString>
#include <QStringList>

#include "ExifRecord.h"

// A report line is "name : value". The value of the lines whose name is Tag
// (ignoring case; the longest when several are); without one, a Tag ending
// in "..." takes the first line holding the part before the dots. Trimmed;
// empty when nothing matched.
QString GetExifTag(const QStringList& TS, const QString& Tag);

// The record of a report. Sets the session's drone from the camera model and
// turns the absolute altitude into a height above the geoid.
EXIF GetExifFromTS(const QStringList& TS);
