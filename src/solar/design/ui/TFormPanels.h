// The form "Solar Panels": the module, its orientation and the settings of
// one placement. It holds no rule of its own: every event copies the
// controls into panelFormState(), runs the rule of PanelFormLogic and shows
// the state again.
#pragma once

#include <QDialog>

#include "solar/design/PanelFormLogicTexts.h"

class QButtonGroup;
class QCheckBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStatusBar;

class TFormPanels : public QDialog {
    Q_OBJECT
public:
    explicit TFormPanels(QWidget* parent = nullptr);

    void FormActivate();
    void PanelsRGClick(int index);
    void LandscapeCBClick(bool checked);
    void RowsPairingRGClick(int index);
    void GapHelpClick();
    void OKClick();
    void CancelClick();
    // Cancel, Escape and the window's close box all leave as Cancel does.
    void reject() override;

    QButtonGroup* PanelsRG = nullptr;
    QCheckBox* LandscapeCB = nullptr;
    QLineEdit* TiltEdit = nullptr;
    QLineEdit* LiftEdit = nullptr;
    QButtonGroup* RooftypeRG = nullptr;
    QButtonGroup* RowsPairingRG = nullptr;
    QLineEdit* RowsGap = nullptr;
    QPushButton* GapHelp = nullptr;
    QLabel* PanelImageTexture = nullptr;
    QLabel* PNEG = nullptr;
    QLabel* PDEF = nullptr;
    QPushButton* OK = nullptr;
    QPushButton* Cancel = nullptr;
    QStatusBar* StatusBar1 = nullptr;

Q_SIGNALS:
    // The module chosen, for the main window's status line.
    void mainStatusText(const QString& text);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QLineEdit* addFloatEdit(QGridLayout* grid, int row, const panelform::FloatEditField& field);
    QButtonGroup* addRadioGroup(QGroupBox* box, const char* const* items, int count, int columns);
    void fillPanelsRG();
    void readControls();
    void showState();
    void showTexture();
    void markEdit(QLineEdit* edit, const panelform::FloatEditField& field);

    QGroupBox* panelsBox_ = nullptr;
    QGridLayout* panelsGrid_ = nullptr;
};
