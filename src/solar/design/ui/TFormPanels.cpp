#include "TFormPanels.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>
#include <QVBoxLayout>
#include <iterator>

#include "solar/design/PanelCatalog.h"
#include "solar/design/PanelCatalogLine.h"
#include "solar/design/PanelFormLogic.h"

using namespace panelform;

namespace {

constexpr int kPictureSize = 96;

QLabel* makeHiddenPicture(QWidget* parent, const char* name) {
    auto* picture = new QLabel(parent);
    picture->setObjectName(QString::fromLatin1(name));
    picture->setPixmap(QPixmap(FindInstalledPanelTexture(QString::fromLatin1(name))));
    picture->hide();
    return picture;
}

}  // namespace

TFormPanels::TFormPanels(QWidget* parent) : QDialog(parent) {
    setWindowTitle(QString::fromLatin1(kFormCaption));
    setWindowFlag(Qt::WindowStaysOnTopHint, true);
    setModal(true);
    auto* layout = new QVBoxLayout(this);

    panelsBox_ = new QGroupBox(this);
    panelsGrid_ = new QGridLayout(panelsBox_);
    PanelsRG = new QButtonGroup(this);
    layout->addWidget(panelsBox_);

    auto* middle = new QHBoxLayout;
    auto* fields = new QGridLayout;
    LandscapeCB = new QCheckBox(QString::fromLatin1(kLandscapeText), this);
    fields->addWidget(LandscapeCB, 0, 0, 1, 2);
    TiltEdit = addFloatEdit(fields, 1, kTiltEdit);
    LiftEdit = addFloatEdit(fields, 2, kLiftEdit);
    RowsGap = addFloatEdit(fields, 3, kRowsGapEdit);
    GapHelp = new QPushButton(QString::fromLatin1(kGapHelpText), this);
    GapHelp->setToolTip(QString::fromLatin1(kGapHelpHint));
    GapHelp->setAutoDefault(false);
    fields->addWidget(GapHelp, 3, 2);
    middle->addLayout(fields);

    auto* roofBox = new QGroupBox(QString::fromLatin1(kRoofTypeCaption), this);
    RooftypeRG = addRadioGroup(roofBox, kRoofTypeItems, static_cast<int>(std::size(kRoofTypeItems)), 1);
    middle->addWidget(roofBox);
    auto* pairingBox = new QGroupBox(QString::fromLatin1(kRowsPairingCaption), this);
    pairingBox->setToolTip(QString::fromLatin1(kRowsPairingHint));
    RowsPairingRG = addRadioGroup(pairingBox, kRowsPairingItems, static_cast<int>(std::size(kRowsPairingItems)), 1);
    middle->addWidget(pairingBox);

    PanelImageTexture = new QLabel(this);
    PanelImageTexture->setFixedSize(kPictureSize, kPictureSize);
    PanelImageTexture->setScaledContents(true);
    middle->addWidget(PanelImageTexture);
    PNEG = makeHiddenPicture(this, kDarkPanelTexture);
    PDEF = makeHiddenPicture(this, kDefaultPanelTexture);
    layout->addLayout(middle);

    auto* buttons = new QHBoxLayout;
    OK = new QPushButton(QString::fromLatin1(kOkText), this);
    Cancel = new QPushButton(QString::fromLatin1(kCancelText), this);
    OK->setDefault(true);
    buttons->addStretch(1);
    buttons->addWidget(OK);
    buttons->addWidget(Cancel);
    layout->addLayout(buttons);
    StatusBar1 = new QStatusBar(this);
    StatusBar1->setSizeGripEnabled(false);
    layout->addWidget(StatusBar1);

    connect(PanelsRG, &QButtonGroup::idClicked, this, &TFormPanels::PanelsRGClick);
    connect(LandscapeCB, &QCheckBox::clicked, this, &TFormPanels::LandscapeCBClick);
    connect(RowsPairingRG, &QButtonGroup::idClicked, this, &TFormPanels::RowsPairingRGClick);
    connect(GapHelp, &QPushButton::clicked, this, &TFormPanels::GapHelpClick);
    connect(OK, &QPushButton::clicked, this, &TFormPanels::OKClick);
    connect(Cancel, &QPushButton::clicked, this, &TFormPanels::CancelClick);
    connect(TiltEdit, &QLineEdit::textChanged, this, [this] { markEdit(TiltEdit, kTiltEdit); });
    connect(LiftEdit, &QLineEdit::textChanged, this, [this] { markEdit(LiftEdit, kLiftEdit); });
    connect(RowsGap, &QLineEdit::textChanged, this, [this] { markEdit(RowsGap, kRowsGapEdit); });
    showState();
}

QLineEdit* TFormPanels::addFloatEdit(QGridLayout* grid, int row, const FloatEditField& field) {
    auto* label = new QLabel(QString::fromUtf8(field.label), this);
    auto* edit = new QLineEdit(this);
    const QString hint = QString::fromUtf8(field.hint);
    label->setToolTip(hint);
    edit->setToolTip(hint);
    label->setBuddy(edit);
    grid->addWidget(label, row, 0);
    grid->addWidget(edit, row, 1);
    return edit;
}

QButtonGroup* TFormPanels::addRadioGroup(QGroupBox* box, const char* const* items, int count, int columns) {
    auto* grid = new QGridLayout(box);
    auto* group = new QButtonGroup(this);
    const int rows = (count + columns - 1) / columns;
    for (int i = 0; i < count; ++i) {
        auto* button = new QRadioButton(QString::fromLatin1(items[i]), box);
        group->addButton(button, i);
        grid->addWidget(button, i % rows, i / rows);
    }
    return group;
}

// The models fill the columns top to bottom, as a radio group with columns does.
void TFormPanels::fillPanelsRG() {
    for (QAbstractButton* button : PanelsRG->buttons()) {
        PanelsRG->removeButton(button);
        delete button;
    }
    const QStringList& items = panelFormState().PanelsRGItems;
    const int count = static_cast<int>(items.size());
    const int rows = (count + kPanelsColumns - 1) / kPanelsColumns;
    for (int i = 0; i < count; ++i) {
        auto* button = new QRadioButton(items[i], panelsBox_);
        PanelsRG->addButton(button, i);
        panelsGrid_->addWidget(button, i % rows, i / rows);
    }
}

void TFormPanels::markEdit(QLineEdit* edit, const FloatEditField& field) {
    double value = 0;
    edit->setStyleSheet(ParseFloatEdit(edit->text(), field, value)
                            ? QString()
                            : QStringLiteral("QLineEdit { background-color: yellow; color: red; }"));
}

// An edit that doesn't read keeps its last good value in the state.
void TFormPanels::readControls() {
    PanelFormState& form = panelFormState();
    form.PanelsRGIndex = PanelsRG->checkedId();
    form.LandscapeCB = LandscapeCB->isChecked();
    ParseFloatEdit(TiltEdit->text(), kTiltEdit, form.TiltEdit);
    ParseFloatEdit(LiftEdit->text(), kLiftEdit, form.LiftEdit);
    ParseFloatEdit(RowsGap->text(), kRowsGapEdit, form.RowsGap);
    form.RooftypeRG = RooftypeRG->checkedId();
    form.RowsPairingRG = RowsPairingRG->checkedId();
}

void TFormPanels::showState() {
    const PanelFormState& form = panelFormState();
    setWindowTitle(form.Caption);
    if (QAbstractButton* button = PanelsRG->button(form.PanelsRGIndex)) button->setChecked(true);
    LandscapeCB->setChecked(form.LandscapeCB);
    TiltEdit->setText(FormatFloatEdit(form.TiltEdit, kTiltEdit));
    LiftEdit->setText(FormatFloatEdit(form.LiftEdit, kLiftEdit));
    RowsGap->setText(FormatFloatEdit(form.RowsGap, kRowsGapEdit));
    if (QAbstractButton* button = RooftypeRG->button(form.RooftypeRG)) button->setChecked(true);
    if (QAbstractButton* button = RowsPairingRG->button(form.RowsPairingRG)) button->setChecked(true);
    GapHelp->setEnabled(static_cast<bool>(form.rowSpacingHelp));
    StatusBar1->showMessage(form.StatusBar1);
    showTexture();
}

void TFormPanels::showTexture() {
    const QString& name = panelCatalog().PanelImageTexture;
    const QLabel* source = name == QLatin1String(kDarkPanelTexture)      ? PNEG
                           : name == QLatin1String(kDefaultPanelTexture) ? PDEF
                                                                         : nullptr;
    if (source)
        PanelImageTexture->setPixmap(source->pixmap());
    else
        PanelImageTexture->clear();
}

void TFormPanels::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    FormActivate();
}

// The state is the truth here: the placement sets tilt and roof type in it before showing the form.
void TFormPanels::FormActivate() {
    const bool loaded = panelform::FormActivate();
    if (loaded) fillPanelsRG();
    showState();
}

void TFormPanels::PanelsRGClick(int index) {
    readControls();
    panelform::PanelsRGClick(index);
    showState();
    Q_EMIT mainStatusText(panelFormState().MainStatusText);
}

void TFormPanels::LandscapeCBClick(bool checked) {
    readControls();
    panelform::LandscapeCBClick(checked);
    showState();
}

void TFormPanels::RowsPairingRGClick(int index) {
    readControls();
    panelform::RowsPairingRGClick(index);
    showState();
}

void TFormPanels::GapHelpClick() {
    readControls();
    panelform::GapHelpClick();
    showState();
}

void TFormPanels::OKClick() {
    readControls();
    panelform::OKClick();
    if (panelform::FormCloseQuery()) accept();
}

void TFormPanels::CancelClick() { reject(); }

void TFormPanels::reject() {
    panelform::CancelClick();
    QDialog::reject();
}
