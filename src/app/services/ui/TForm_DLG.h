// The one-line form: caption "Orvo dialog procedure", two labels, one edit
// box. Enter in the edit box acts as OK.
#pragma once

#include <QDialog>

#include "app/services/DialogService.h"

class QLabel;
class QLineEdit;

class TForm_DLG : public QDialog {
    Q_OBJECT
public:
    explicit TForm_DLG(QWidget* parent = nullptr);
    void setup(const OneLineDialogRequest& request, const QString& text);
    QString text() const;
    QLineEdit* edit() const { return Edit1; }
    void OKClick();
    void CancelClick();

private:
    QLabel* Label1 = nullptr;
    QLabel* Label2 = nullptr;
    QLineEdit* Edit1 = nullptr;
};
