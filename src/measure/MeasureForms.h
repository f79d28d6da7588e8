// What the window lends measuring: its measure dialog, its billboard dialog
// and its icons form. Tests and the command line put answers of their own
// here; without a form the dialogs count as cancelled.
#pragma once

#include <QString>
#include <functional>

#include "BillboardState.h"

// The measure dialog's results: save the line, or take it as the scale.
constexpr int MOK_SAVE = 1;
constexpr int MOK_SCALE = 4;

// What the measure dialog (TForm_M) shows and the operator edits.
struct MeasureDialogValues {
    QString name;
    // 0, 1, 2: lines of 2, 4 and 8 pixels.
    int widthIndex = 1;
    // A toolkit colour.
    int color = 16711680;
    bool show = true;
    // The figures shown under "    Details".
    QString toTarget, onGround, elevation;
    // The dialog's caption: a panel snap of the line tells its move here.
    QString caption;
};

struct MeasureForms {
    // The modal measure dialog; its result is the dialog's Mok.
    std::function<int(MeasureDialogValues&)> measureDialog;
    // The modal billboard dialog; true on OK.
    std::function<bool(BillboardDialogValues&)> billboardDialog;
    // Shows or hides the icons form on its icons page.
    std::function<void(bool)> showIconsForm;
};

MeasureForms& measureForms();
void resetMeasureForms();
