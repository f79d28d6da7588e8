#include "TForm_M.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ColorButton.h"

TForm_M::TForm_M(QWidget* parent) : QDialog(parent) {
    setObjectName("Form_M");
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    NameEdit = new QLineEdit(this);
    NameEdit->setObjectName("NameEdit");
    NameEdit->setAccessibleName("Name");
    form->addRow("Name", NameEdit);
    layout->addLayout(form);

    auto* widths = new QGroupBox("Line width", this);
    auto* widthRow = new QHBoxLayout(widths);
    WidthRG = new QButtonGroup(this);
    const char* captions[3] = {"Thin", "Medium", "Thick"};
    for (int i = 0; i < 3; ++i) {
        auto* button = new QRadioButton(captions[i], widths);
        WidthRG->addButton(button, i);
        widthRow->addWidget(button);
    }
    layout->addWidget(widths);

    auto* colorRow = new QHBoxLayout;
    ColorBtn = new ColorButton("Colour of the line", this);
    colorRow->addWidget(ColorBtn);
    ShowCB = new QCheckBox("Show the length on a billboard", this);
    ShowCB->setObjectName("ShowCB");
    colorRow->addWidget(ShowCB);
    layout->addLayout(colorRow);

    auto* details = new QGroupBox("    Details", this);
    details->setObjectName("Details");
    auto* figures = new QFormLayout(details);
    const auto figure = [details, figures](const char* caption) {
        auto* value = new QLabel(details);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        value->setAccessibleName(QString(caption).trimmed());
        figures->addRow(caption, value);
        return value;
    };
    ToTarget = figure(" To target distance");
    OnGround = figure(" On ground distance");
    Elevation = figure(" Elevation difference");
    layout->addWidget(details);

    auto* buttons = new QHBoxLayout;
    auto* save = new QPushButton("Save", this);
    auto* scale = new QPushButton("Scale", this);
    auto* cancel = new QPushButton("Cancel", this);
    save->setObjectName("SaveBtn");
    scale->setObjectName("ScaleBtn");
    cancel->setObjectName("CancelBtn");
    save->setDefault(true);
    buttons->addStretch(1);
    for (QPushButton* button : {save, scale, cancel}) buttons->addWidget(button);
    layout->addLayout(buttons);
    connect(save, &QPushButton::clicked, this, [this] { done(MOK_SAVE); });
    connect(scale, &QPushButton::clicked, this, [this] { done(MOK_SCALE); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

int TForm_M::run(MeasureDialogValues& values) {
    setWindowTitle(values.caption.isEmpty() ? QString("Measure") : "Measure " + values.caption);
    NameEdit->setText(values.name);
    if (QAbstractButton* width = WidthRG->button(values.widthIndex)) width->setChecked(true);
    ColorBtn->setColor(values.color);
    ShowCB->setChecked(values.show);
    ToTarget->setText(values.toTarget);
    OnGround->setText(values.onGround);
    Elevation->setText(values.elevation);
    NameEdit->setFocus();
    const int result = exec();
    values.name = NameEdit->text();
    values.widthIndex = WidthRG->checkedId() < 0 ? values.widthIndex : WidthRG->checkedId();
    values.color = ColorBtn->color();
    values.show = ShowCB->isChecked();
    return result;
}
