// What the window lends measuring: its measure dialog, its billboard dialog
// and its icons form. Tests and the command line put answers of their own
// here; without a form the dialogs count as cancelled.
#pragma once

#include <QString>
#include <functional>

#include "BillboardState.h"

// The measure dialog's results: save the line, take it as the scale, or one
// of the panel buttons a line drawn from a panel offers.
constexpr int MOK_SAVE = 1;
constexpr int MOK_SCALE = 4;
constexpr int MOK_MOVE_PANEL = 11;
constexpr int MOK_MOVE_GROUP = 12;
constexpr int MOK_DELETE_PANEL = 13;
constexpr int MOK_DELETE_GROUP = 14;
constexpr int MOK_LIFT_PANEL = 15;
constexpr int MOK_LIFT_GROUP = 16;
constexpr int MOK_SHOW_INFO = 17;
constexpr int MOK_SHOW_SHADING = 18;
constexpr int MOK_DUPLICATE = 19;

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
    // The dialog's caption: the panel and the snap of the line tell themselves here.
    QString caption;
    // 0 a plain measure, 1 a line from a panel, 2 from a roof polygon (delete only).
    int panelKind = 0;
    // A free place lies beside the panel.
    bool duplicateVisible = false;
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
