// The logic of the grid form TFormXLS: the rows it shows, the edited flag,
// the selected row, and its import and export by file extension. The Qt form
// shows xlsFormState() and calls these; tests call them directly.
#pragma once

#include <QString>

#include "GridFiles.h"

struct XlsFormState {
    GridRows rows;
    int fixedRows = 0;          // 1 when the first row is a title row
    bool edited = false;
    int GlobalXLSRow = 0;       // the row last selected
    QString XLSCurrentFileName;
    QString shapeWkt;           // coordinate system of exported shapes; "" writes no .prj
};

XlsFormState& xlsFormState();
void resetXlsFormState();

void WorkBookGrid1EditCellDone(int row, int column, const QString& text);
void WorkBookGrid1SelectCell(int row);

// Loads by extension: ".xls"/".xlsx" as spreadsheets, ".xml" as grid XML,
// anything else as CSV with the delimiter comma. A box on failure.
bool XlsImportFile(const QString& file);
// Saves by extension: ".xml", ".xlsx", ".shp" (CreateSHPfileFromRows), anything
// else as CSV. Clears edited on success; a box on failure.
bool XlsExportFile(const QString& file);
// The buttons: ask for the file, then import or export it.
bool ImportBtnClick();
bool ExportbtnClick();

// The form's caption: Title and the number of rows below the title row.
QString XlsCaption(const QString& Title);
