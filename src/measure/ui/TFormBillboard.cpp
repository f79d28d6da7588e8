#include "TFormBillboard.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ColorButton.h"

TFormBillboard::TFormBillboard(QWidget* parent) : QDialog(parent) {
    setObjectName("FormBillboard");
    setWindowTitle("Billboard");
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    TextEdit = new QLineEdit(this);
    TextEdit->setObjectName("TextEdit");
    TextEdit->setAccessibleName("Text");
    form->addRow("Text", TextEdit);
    PivotEdit = new QDoubleSpinBox(this);
    PivotEdit->setObjectName("PivotEdit");
    PivotEdit->setAccessibleName("Distance from the point (m)");
    PivotEdit->setRange(0, 1000);
    PivotEdit->setDecimals(2);
    form->addRow("Distance from the point (m)", PivotEdit);
    layout->addLayout(form);

    auto* sizes = new QHBoxLayout;
    SizeRG = new QButtonGroup(this);
    const char* captions[3] = {"Small", "Medium", "Large"};
    for (int i = 0; i < 3; ++i) {
        auto* button = new QRadioButton(captions[i], this);
        SizeRG->addButton(button, i);
        sizes->addWidget(button);
    }
    layout->addLayout(sizes);
    StaticCB = new QCheckBox("Static", this);
    StaticCB->setObjectName("StaticCB");
    layout->addWidget(StaticCB);
    ColorBtn = new ColorButton("Colour of the billboard", this);
    layout->addWidget(ColorBtn);
    auto* buttons = new QHBoxLayout;
    auto* ok = new QPushButton("OK", this);
    auto* cancel = new QPushButton("Cancel", this);
    ok->setDefault(true);
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    layout->addLayout(buttons);
}

bool TFormBillboard::run(BillboardDialogValues& values, int& colorPanel) {
    TextEdit->setText(values.text);
    PivotEdit->setValue(values.pivotHeight);
    StaticCB->setChecked(values.isStatic);
    if (QAbstractButton* size = SizeRG->button(values.sizeIndex)) size->setChecked(true);
    ColorBtn->setColor(colorPanel);
    TextEdit->setFocus();
    TextEdit->selectAll();
    if (exec() != QDialog::Accepted) return false;
    values.text = TextEdit->text();
    values.pivotHeight = PivotEdit->value();
    values.isStatic = StaticCB->isChecked();
    if (SizeRG->checkedId() >= 0) values.sizeIndex = SizeRG->checkedId();
    colorPanel = ColorBtn->color();
    return true;
}
