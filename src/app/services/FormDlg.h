// The logic of the one-line form TForm_DLG: OK leaves mrOk in DLG_Modalresult
// and the edit box's text in Text_global; Cancel leaves mrCancel.
#pragma once

#include <QString>

#include "DialogService.h"

void TForm_DLG_OKClick(const QString& editText);
void TForm_DLG_CancelClick();
// Shows the form with the labels of the request and text in the edit box;
// returns DLG_Modalresult.
int ShowForm_DLG(const OneLineDialogRequest& request, const QString& text);
