#include "TFormObjects.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

#include "app/session/StartupState.h"
#include "measure/BillboardState.h"
#include "measure/IconCatalog.h"

namespace {
constexpr int ICON_COLUMNS = 4;
constexpr int ICON_SIZE = 48;
}  // namespace

TFormObjects::TFormObjects(QWidget* parent) : QWidget(parent, Qt::Tool) {
    setObjectName("FormObjects");
    setWindowTitle("Icons");
    auto* layout = new QVBoxLayout(this);
    icons_ = new QGridLayout;
    layout->addLayout(icons_);
    SelectedPicture = new QLabel(this);
    SelectedPicture->setObjectName("SelectedPicture");
    SelectedPicture->setAlignment(Qt::AlignCenter);
    layout->addWidget(SelectedPicture);
    auto* form = new QFormLayout;
    TextEdit = new QLineEdit(this);
    TextEdit->setObjectName("IconTextEdit");
    TextEdit->setAccessibleName("Text");
    form->addRow("Text", TextEdit);
    NameEdit = new QLineEdit(this);
    NameEdit->setObjectName("IconNameEdit");
    NameEdit->setAccessibleName("Icon");
    NameEdit->setReadOnly(true);
    form->addRow("Icon", NameEdit);
    SizeEdit = new QSpinBox(this);
    SizeEdit->setObjectName("IconSizeEdit");
    SizeEdit->setAccessibleName("Height (cm)");
    SizeEdit->setRange(1, 100000);
    form->addRow("Height (cm)", SizeEdit);
    layout->addLayout(form);
    auto* change = new QPushButton("Change Color", this);
    change->setObjectName("ChangeColorBtn");
    layout->addWidget(change);
    connect(change, &QPushButton::clicked, this, [this] {
        if (ChangeColorBtnClick()) showSelection();
    });
    connect(TextEdit, &QLineEdit::textEdited, this, [](const QString& text) { billboardState().icons.text = text; });
    connect(SizeEdit, &QSpinBox::valueChanged, this, [](int value) { billboardState().icons.sizeNumber = value; });
}

void TFormObjects::showIcons() {
    while (QLayoutItem* item = icons_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    const QStringList names = SetSatamim();
    const QStringList used = SetActiveSatamim();
    const QStringList& files = startupState().SatamsList;
    for (int i = 0; i < names.size(); ++i) {
        auto* button = new QToolButton(this);
        button->setObjectName("IM" + QString::number(i + 1).rightJustified(2, '0'));
        button->setIcon(QIcon(files[i]));
        button->setIconSize(QSize(ICON_SIZE, ICON_SIZE));
        button->setToolTip(names[i]);
        button->setAccessibleName(names[i]);
        button->setText(names[i]);
        button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        // Icons standing in the scene are marked.
        if (used.contains(names[i])) button->setStyleSheet("font-weight: bold");
        connect(button, &QToolButton::clicked, this, [this, i] { IM01Click(i); });
        icons_->addWidget(button, i / ICON_COLUMNS, i % ICON_COLUMNS);
    }
    if (!names.isEmpty() && billboardState().icons.SelectedImage.isNull()) IM01Click(0);
    showSelection();
    show();
    raise();
}

void TFormObjects::IM01Click(int index) {
    if (::IM01Click(index)) showSelection();
}

void TFormObjects::showSelection() {
    const IconFormValues& values = billboardState().icons;
    const QPixmap picture = QPixmap::fromImage(values.SelectedImage);
    SelectedPicture->setPixmap(picture);
    // The main form shows the chosen icon beside its tool buttons.
    if (parentWidget())
        if (auto* shown = parentWidget()->findChild<QLabel*>("SatamImage"))
            shown->setPixmap(picture.scaled(shown->size(), Qt::KeepAspectRatio));
    NameEdit->setText(values.name);
    TextEdit->setText(values.text);
    SizeEdit->setValue(values.sizeNumber);
}
