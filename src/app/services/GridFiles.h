// The grid's files: rows of cell texts read from and written to CSV, grid
// XML and spreadsheets. Writers go through a temporary file.
//
// Grid XML: the list element "AA" holds one record "BB" per row, and each
// record one element per cell, named "C1", "C2", ... in column order:
//   <?xml version="1.0" encoding="UTF-8"?>
//   <AA>
//     <BB>
//       <C1>Name</C1>
//     </BB>
//   </AA>
// A reader takes the cells of each record in order, whatever the names.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

using GridRows = QList<QStringList>;

// Comma-separated, fields optionally in double quotes ("" inside for one quote).
GridRows ParseCsvText(const QString& text);
QString CsvLine(const QStringList& cells);
bool LoadCsvGrid(const QString& path, GridRows& rows);
bool SaveCsvGrid(const GridRows& rows, const QString& path);

bool LoadXmlGrid(const QString& path, GridRows& rows);
bool SaveXmlGrid(const GridRows& rows, const QString& path);

// .xlsx and .xls through GDAL's spreadsheet drivers: the first sheet, every
// row (the first too) as data, every cell as text.
bool LoadSpreadsheetGrid(const QString& path, GridRows& rows);
// .xlsx only (GDAL writes no .xls): the first row becomes the sheet's header row.
bool SaveXlsxGrid(const GridRows& rows, const QString& path);
