#include "XlsForm.h"

#include <QFileInfo>
#include <algorithm>

#include "FileDialogs.h"
#include "OrvoDialogs.h"
#include "ShapeFromCsv.h"

XlsFormState& xlsFormState() {
    static XlsFormState state;
    return state;
}

void resetXlsFormState() { xlsFormState() = XlsFormState{}; }

void WorkBookGrid1EditCellDone(int row, int column, const QString& text) {
    XlsFormState& state = xlsFormState();
    if (row < 0 || column < 0) return;
    while (state.rows.size() <= row) state.rows.append(QStringList{});
    QStringList& cells = state.rows[row];
    while (cells.size() <= column) cells.append(QString());
    cells[column] = text;
    state.edited = true;
}

void WorkBookGrid1SelectCell(int row) { xlsFormState().GlobalXLSRow = row; }

bool XlsImportFile(const QString& file) {
    const QString ext = QFileInfo(file).suffix().toLower();
    GridRows rows;
    bool ok = false;
    if (ext == "xls" || ext == "xlsx")
        ok = LoadSpreadsheetGrid(file, rows);
    else if (ext == "xml")
        ok = LoadXmlGrid(file, rows);
    else
        ok = LoadCsvGrid(file, rows);
    if (!ok) {
        MyShowMessage("Could not open for input\n[" + file + "]");
        return false;
    }
    XlsFormState& state = xlsFormState();
    state.rows = rows;
    state.XLSCurrentFileName = file;
    state.edited = false;
    state.GlobalXLSRow = 0;
    return true;
}

bool XlsExportFile(const QString& file) {
    XlsFormState& state = xlsFormState();
    const QString ext = QFileInfo(file).suffix().toLower();
    bool ok = false;
    if (ext == "xml")
        ok = SaveXmlGrid(state.rows, file);
    else if (ext == "xlsx")
        ok = SaveXlsxGrid(state.rows, file);
    else if (ext == "shp")
        ok = CreateSHPfileFromRows(state.rows, file, state.shapeWkt);
    else
        ok = SaveCsvGrid(state.rows, file);
    if (!ok) {
        MyShowMessage("Could not open for output\n" + file);
        return false;
    }
    state.edited = false;
    return true;
}

bool ImportBtnClick() {
    QString file = xlsFormState().XLSCurrentFileName;
    if (!OrvoOpenFile(file, "", "Table file (*.CSV;*.XML;*.XLSX;*.XLS)|*.csv;*.xml;*.xlsx;*.xls",
                      "Open the table file (input)", ""))
        return false;
    return XlsImportFile(file);
}

bool ExportbtnClick() {
    QString file = xlsFormState().XLSCurrentFileName;
    if (!OrvoSaveFile(file, "",
                      "CSV file (*.CSV)|*.csv|XML file (*.XML)|*.xml|Spreadsheet (*.XLSX)|*.xlsx|Shape file (*.SHP)|*.shp",
                      "Save the table file (output)", 1))
        return false;
    return XlsExportFile(file);
}

QString XlsCaption(const QString& Title) {
    const XlsFormState& state = xlsFormState();
    const qsizetype rows = std::max<qsizetype>(0, state.rows.size() - state.fixedRows);
    return Title + " (" + QString::number(rows) + ")";
}
