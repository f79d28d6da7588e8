#include "Viewers.h"

#include <QFile>

#include "DialogService.h"
#include "RunLog.h"
#include "XlsForm.h"

bool ShowOrvoTextFile(const QString& FP) { return dialogService().openDocument(FP); }

bool ShowOrvoCSVFile(const QString& Title, const QString& CSV, bool AddLineCount, bool FirstLineIsTitle,
                     bool maximized) {
    GridRows rows;
    if (!LoadCsvGrid(CSV, rows)) {
        PrintRunLog("ShowOrvoCSVFile: can not read %s\n", QFile::encodeName(CSV).constData());
        return false;
    }
    XlsFormState& state = xlsFormState();
    state.fixedRows = FirstLineIsTitle ? 1 : 0;
    if (AddLineCount) {
        for (qsizetype row = 0; row < rows.size(); ++row)
            rows[row].prepend(row < state.fixedRows ? QString() : QString::number(row - state.fixedRows + 1));
    }
    state.rows = rows;
    state.XLSCurrentFileName = CSV;
    state.edited = false;
    state.GlobalXLSRow = state.fixedRows;
    dialogService().showXlsForm(XlsCaption(Title), maximized);
    return true;
}
