// Measures, polygons and billboards saved beside the model and read back.
// The files hold the engine's records in the map frame, so a file can be
// read onto another model of the same area. Writers go through a temporary
// file: a failed save leaves an earlier file as it was.
#pragma once

#include <QString>
#include <vector>

#include "scene/engine_interface.h"

// Writes the measure list. ".POL" and ".LIN" keep only polygon segments
// ("POL_" in the id), with OnlyLastPolygon only the newest outline; any
// other extension keeps the measures without them. A polygon or line also
// goes to a shape file beside it (CreateSHPfileFromPoints). Returns the
// number of records written; with none, no file is written.
int ExportMeasureData(const QString& M, bool OnlyLastPolygon);
// Writes every billboard but the labels of measures, with its picture.
// Returns the number of entries; with none, no file is written.
int ExportBillboardData(const QString& B);
// Adds the records of a measure or polygon file to the measure list. The
// points lose OriginalobjectCenter but keep Offset: on a model with an
// Offset the lines land shifted by it. A ".POL" also fills WaypointW, for
// the digitising to reuse. Returns the records read.
int ImportMeasureData(const QString& M);
// Replaces every billboard by those of a container. Returns the entries read.
int ImportBillboardData(const QString& B);

// Appends one line to a CSV file, making it when missing.
bool Save3DMeasurings(const QString& file, const QString& text);

// The records of a file as they stand (map frame); a record cut short at
// the end is dropped. False when the file can't be read.
bool ReadMeasureFile(const QString& path, std::vector<MEASURE_DATA>& records);
// Billboards with their pictures: each record's imagePtr is left null and
// its pixels are in images at the same index.
bool ReadBillboardFile(const QString& path, std::vector<BILLBOARD_DATA>& records,
                       std::vector<std::vector<UInt8>>* images = nullptr);
