// A picture's metadata through exiftool: its report written beside the
// picture, read into an EXIF record, shown on request and removed.
#pragma once

#include <QString>

#include "ExifRecord.h"

// The report's name: the picture's with "_.TXT" for its extension.
QString ExifReportName(const QString& picture);

// An empty record when the tool or its report is missing (both said in a message).
EXIF AnalyzeExif(const QString& FN, bool display);

// The menu item: asks for a picture and shows its report.
void AnalyzeExifClick();
