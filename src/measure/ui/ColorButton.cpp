#include "ColorButton.h"

#include "app/services/DialogService.h"
#include "app/services/ToolkitColor.h"

ColorButton::ColorButton(const QString& dialogTitle, QWidget* parent)
    : QPushButton("Colour", parent), dialogTitle_(dialogTitle) {
    setObjectName("ColorBtn");
    connect(this, &QPushButton::clicked, this, [this] {
        int chosen = color_;
        if (dialogService().chooseColor(dialogTitle_, chosen)) setColor(chosen);
    });
}

void ColorButton::setColor(int color) {
    color_ = color;
    setStyleSheet(QString("background-color: %1").arg(QColorFromToolkit(color).name()));
}
