#include "FormDlg.h"

#include "OrvoDialogs.h"

void TForm_DLG_OKClick(const QString& editText) {
    dialogState().Text_global = editText;
    dialogState().DLG_Modalresult = mrOk;
}

void TForm_DLG_CancelClick() { dialogState().DLG_Modalresult = mrCancel; }

int ShowForm_DLG(const OneLineDialogRequest& request, const QString& text) {
    QString value = text;
    if (dialogService().oneLineDialog(request, value))
        TForm_DLG_OKClick(value);
    else
        TForm_DLG_CancelClick();
    return dialogState().DLG_Modalresult;
}
