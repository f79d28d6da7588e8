// The menu items that save and read measurement files in the model's
// measurements folder. An empty name asks for one; a cancelled dialog ends
// the item without a message.
#pragma once

#include <QString>

// "T.MES": measures without polygons. Returns the file written, "" when none.
QString DoSaveMeasurements(const QString& MM);
// "T.BLB": the billboards with their pictures.
QString DoSaveBillboards(const QString& MM);
// Billboards, measures, then the polygons.
void SaveAllClick();
// "T.POL": every polygon segment of the measure list.
QString SavePolygonMnuClick();
// Reads each file by its extension: ".mes" and ".pol" add to the measure
// list, ".blb" replaces the billboards. An empty name asks for files.
// Returns the number of files read.
int DoImportMeasurements(const QString& MMin);
// A polygon file read back and shown: the whole view, measures on, the
// last segment's figures on the strip.
bool ImportPolygon(const QString& file);
// Asks for polygon files and reads each.
int ImportPolygonMnuClick();
