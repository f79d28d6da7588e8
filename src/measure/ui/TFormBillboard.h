// The billboard dialog: the text of a new billboard, how far it stands from
// its foot, whether it keeps its direction, its size and its colour.
#pragma once

#include <QDialog>

#include "measure/BillboardState.h"

class ColorButton;
class QButtonGroup;
class QCheckBox;
class QDoubleSpinBox;
class QLineEdit;
class QPushButton;

class TFormBillboard : public QDialog {
    Q_OBJECT
public:
    explicit TFormBillboard(QWidget* parent = nullptr);
    // Shows values and the colour panel, runs modally; true on OK, the edits
    // then in values and in the colour panel.
    bool run(BillboardDialogValues& values, int& colorPanel);

    QLineEdit* TextEdit = nullptr;
    QDoubleSpinBox* PivotEdit = nullptr;
    QCheckBox* StaticCB = nullptr;
    QButtonGroup* SizeRG = nullptr;
    ColorButton* ColorBtn = nullptr;
};
