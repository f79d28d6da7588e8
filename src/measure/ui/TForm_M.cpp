#include "TForm_M.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ColorButton.h"

namespace {

struct PanelButton {
    const char* name;
    const char* caption;
    int result;
    bool onRoofPolygon;  // offered for a roof polygon too
};

// The captions are the form's as they stand.
constexpr PanelButton PANEL_BUTTONS[] = {
    {"MovepanelBtn", "Move panel", MOK_MOVE_PANEL, false},
    {"MovepanelgroupBtn", "Move palel group", MOK_MOVE_GROUP, false},
    {"DeletePanelBtn", "Delete panel", MOK_DELETE_PANEL, true},
    {"DeletePanelGroupBtn", "Delete palel group", MOK_DELETE_GROUP, false},
    {"LiftPanelBtn", "Lift panel", MOK_LIFT_PANEL, false},
    {"LiftPanelsBtn", "Lift palel group", MOK_LIFT_GROUP, false},
    {"ShowInfoBtn", "Show info", MOK_SHOW_INFO, false},
    {"ShowPanelShadingBtn", "Show shading", MOK_SHOW_SHADING, false},
    {"DuplicateBtn", "Duplicate panel ", MOK_DUPLICATE, false},
};

}  // namespace

TForm_M::TForm_M(QWidget* parent) : QDialog(parent) {
    setObjectName("Form_M");
    auto* outer = new QVBoxLayout(this);
    measuring_ = new QWidget(this);
    auto* layout = new QVBoxLayout(measuring_);
    layout->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(measuring_);
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

    panels_ = new QWidget(this);
    auto* grid = new QGridLayout(panels_);
    grid->setContentsMargins(0, 0, 0, 0);
    int at = 0;
    for (const PanelButton& b : PANEL_BUTTONS) {
        auto* button = new QPushButton(b.caption, panels_);
        button->setObjectName(b.name);
        const int result = b.result;
        connect(button, &QPushButton::clicked, this, [this, result] { done(result); });
        grid->addWidget(button, at / 2, at % 2);
        ++at;
    }
    outer->addWidget(panels_);

    auto* buttons = new QHBoxLayout;
    save_ = new QPushButton("Save", this);
    scale_ = new QPushButton("Scale", this);
    auto* cancel = new QPushButton("Cancel", this);
    save_->setObjectName("SaveBtn");
    scale_->setObjectName("ScaleBtn");
    cancel->setObjectName("CancelBtn");
    buttons->addStretch(1);
    for (QPushButton* button : {save_, scale_, cancel}) buttons->addWidget(button);
    outer->addLayout(buttons);
    connect(save_, &QPushButton::clicked, this, [this] { done(MOK_SAVE); });
    connect(scale_, &QPushButton::clicked, this, [this] { done(MOK_SCALE); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void TForm_M::showKind(const MeasureDialogValues& values) {
    const bool measuring = values.panelKind == 0;
    measuring_->setVisible(measuring);
    save_->setVisible(measuring);
    scale_->setVisible(measuring);
    save_->setDefault(measuring);
    panels_->setVisible(!measuring);
    for (const PanelButton& b : PANEL_BUTTONS) {
        auto* button = panels_->findChild<QPushButton*>(b.name);
        const bool offered = values.panelKind == 1 ? (b.result != MOK_DUPLICATE || values.duplicateVisible)
                                                   : b.onRoofPolygon;
        button->setVisible(offered);
    }
}

int TForm_M::run(MeasureDialogValues& values) {
    if (values.panelKind == 0)
        setWindowTitle(values.caption.isEmpty() ? QString("Measure") : "Measure " + values.caption);
    else
        setWindowTitle(values.caption);
    showKind(values);
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
