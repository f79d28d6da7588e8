// A button that shows a toolkit colour (red in the lowest byte) as its face
// and lets the operator choose another through the colour dialog.
#pragma once

#include <QPushButton>

class ColorButton : public QPushButton {
    Q_OBJECT
public:
    ColorButton(const QString& dialogTitle, QWidget* parent = nullptr);
    int color() const { return color_; }
    void setColor(int color);

private:
    QString dialogTitle_;
    int color_ = 0;
};
