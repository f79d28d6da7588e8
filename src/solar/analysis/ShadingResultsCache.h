// A panel's shading CSV read back as its result: the file is the cache of
// the ray analysis, valid while the panel has not moved.
#pragma once

#include <QStringList>
#include <string>

#include "SolarRecords.h"

// Loads the file's lines; false when it cannot be read.
bool ReadCSVData(const std::string& path, QStringList& lines);
// The fields of one line, split at every comma.
QStringList ParseCSVLine(const QString& line);

// xx, yy, zz: the panel's centre minus OC. False (and r untouched) when the
// file has fewer than 2 lines, its first row fewer than 15 fields, or the
// row's panel lies farther than tolerance or more than 0.3 m higher or lower.
bool LoadAndValidateCache(const std::string& csvFile, double xx, double yy, double zz, CombinedPanelResults& r,
                          double tolerance);
// Fills r's energies, shaded hours and shading from the rows (line 0 the header).
void LoadResultsFromCSV(const QStringList& csvData, CombinedPanelResults& r);
// Only logs: the shading CSV itself is the cache.
void SaveResultsToCache(const std::string& csvFile, double xx, double yy, double zz, const CombinedPanelResults& r);
