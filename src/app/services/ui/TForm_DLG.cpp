#include "TForm_DLG.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

TForm_DLG::TForm_DLG(QWidget* parent) : QDialog(parent) {
    auto* layout = new QVBoxLayout(this);
    Label1 = new QLabel(this);
    Label2 = new QLabel(this);
    Label2->setWordWrap(true);
    Edit1 = new QLineEdit(this);
    layout->addWidget(Label1);
    layout->addWidget(Edit1);
    layout->addWidget(Label2);
    auto* row = new QHBoxLayout;
    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
    // Enter is the edit box's, through returnPressed; no default button takes it twice.
    ok->setAutoDefault(false);
    cancel->setAutoDefault(false);
    row->addStretch(1);
    row->addWidget(ok);
    row->addWidget(cancel);
    layout->addLayout(row);
    connect(ok, &QPushButton::clicked, this, &TForm_DLG::OKClick);
    connect(cancel, &QPushButton::clicked, this, &TForm_DLG::CancelClick);
    connect(Edit1, &QLineEdit::returnPressed, this, &TForm_DLG::OKClick);
}

void TForm_DLG::setup(const OneLineDialogRequest& request, const QString& text) {
    setWindowTitle(request.caption);
    Label1->setText(request.label1);
    Label2->setText(request.label2);
    Edit1->setText(text);
    Edit1->selectAll();
    Edit1->setFocus();
}

QString TForm_DLG::text() const { return Edit1->text(); }

void TForm_DLG::OKClick() { accept(); }

void TForm_DLG::CancelClick() { reject(); }
