// The measure dialog: the name of the line, its width and colour, whether a
// label shows its length, and the line's figures. "Save" keeps the line,
// "Scale" takes it as the model's true length, "Cancel" drops it. A line
// drawn from a panel shows the panel buttons instead; from a roof polygon
// only its delete button.
#pragma once

#include <QDialog>

#include "measure/MeasureForms.h"

class ColorButton;
class QButtonGroup;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

class TForm_M : public QDialog {
    Q_OBJECT
public:
    explicit TForm_M(QWidget* parent = nullptr);
    // Shows values and runs modally: the dialog's Mok, the edits in values.
    int run(MeasureDialogValues& values);

    QLineEdit* NameEdit = nullptr;
    QButtonGroup* WidthRG = nullptr;
    ColorButton* ColorBtn = nullptr;
    QCheckBox* ShowCB = nullptr;
    QLabel* ToTarget = nullptr;
    QLabel* OnGround = nullptr;
    QLabel* Elevation = nullptr;

private:
    void showKind(const MeasureDialogValues& values);
    QWidget* measuring_ = nullptr;
    QWidget* panels_ = nullptr;
    QPushButton* save_ = nullptr;
    QPushButton* scale_ = nullptr;
};
