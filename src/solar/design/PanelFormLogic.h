// The rules of the form "Solar Panels" without its widgets: what each
// control holds, what each event does to it and to the placement's template
// GlobalPanel. The Qt form copies its controls in, runs an event and shows
// the state again, so every rule runs and is tested without a window.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

#include "PanelFormLogicTexts.h"
#include "PanelStruct.h"

// The row spacing table of the placement: computes the spacings for the
// panel, shows the comparison to the operator and answers spacing95 (m).
using RowSpacingHelp = std::function<double(const PANEL&)>;

struct PanelFormState {
    // The controls.
    QStringList PanelsRGItems;        // catalogue models, sorted, without duplicates
    int PanelsRGIndex = -1;
    bool LandscapeCB = false;
    double TiltEdit = panelform::kTiltEdit.defaultValue;
    double LiftEdit = panelform::kLiftEdit.defaultValue;
    int RooftypeRG = panelform::kRoofTypeDefault;
    int RowsPairingRG = panelform::kRowsPairingDefault;
    double RowsGap = panelform::kRowsGapEdit.defaultValue;
    QString Caption = QString::fromLatin1(panelform::kFormCaption);
    QString StatusBar1;
    QString MainStatusText;           // for the main window's status line

    // What the placement reads after the form, and the roof it was opened for.
    bool GlobalPanelsOK = false;
    int GlobalRowpairing = 0;         // 0 "Single", 1 "Single rows", 2 "Double Rows"
    float GlobalRowsGap = 0;          // m; 0 lets the placement compute it
    int GlobalRoofTilt = 0;           // degrees, of the roof under the clicks
    double BlockDepth = 0;            // 0.1 while a roof or panel capture runs

    // Installed by the placement; without it the form offers no gap help.
    RowSpacingHelp rowSpacingHelp;
};

PanelFormState& panelFormState();
void resetPanelFormState();

// Takes the form's values into GlobalPanel and the settings: the catalogue
// fields of ModuleType, the model's EPSG, roof type, lift, tilt, orientation.
void UpdateGlobalPanel();

// A number as typed in one of the form's fields; false when it doesn't read
// in the C locale or lies beyond the field's limits.
bool ParseFloatEdit(const QString& text, const panelform::FloatEditField& field, double& value);
QString FormatFloatEdit(double value, const panelform::FloatEditField& field);

// The caption's estimate of the panels along the baseline PP[0]-PP[1].
QString PanelCountCaption(const PANEL& panel);
// The form's status bar: "Length %d   Width %d  ".
QString PanelSizeStatus(const PANEL& panel);
// The message that refuses a tilt below the roof's on a tiled roof; "" when the tilt stands.
QString TiltRefusal(double tilt, int roofType, int roofTilt);

namespace panelform {

// Loads the catalogue and fills the controls; false when there is no
// catalogue, and the form then offers no models.
bool FormActivate();
void PanelsRGClick(int index);
// Landscape and paired rows exclude one another, whichever was chosen last.
void LandscapeCBClick(bool checked);
void RowsPairingRGClick(int index);
// false when no row spacing help is installed; RowsGap then stays.
bool GapHelpClick();
void OKClick();
void CancelClick();
// true when the form may close; a refused tilt is told to the operator.
bool FormCloseQuery();

}  // namespace panelform
