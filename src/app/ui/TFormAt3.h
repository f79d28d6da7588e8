// The main form: menus, tool buttons, the view panel with the engine's
// drawing surface, four status texts and the help label. Its logic lives in
// app/session and app/model; the form shows the state they keep.
#pragma once

#include <QMainWindow>
#include <array>
#include <functional>
#include <string>

#include "app/dispatch/AppMessage.h"
#include "app/session/MainFormState.h"

class FormInput;
class QLabel;
class QMenu;
class ViewPanel;

class TFormAt3 : public QMainWindow, public MainFormHost {
    Q_OBJECT

public:
    // The session defaults, then Form_Setup: the engine starts on the view
    // panel before anything else of the form runs.
    explicit TFormAt3(QWidget* parent = nullptr);
    // FormDestroy: stops the engine when the form goes by other means than FormClose.
    ~TFormAt3() override;

    // The body of start-up: the session's folders, run log and settings,
    // then the model named on the command line (or the file dialog). False
    // when a folder can't be made: the caller ends the process.
    bool FormCreate(const std::string& executablePath);

    ViewPanel* viewPanel() const { return ViewPanel_; }
    QString statusText(int field) const;
    QString helpText() const;

    void statusTextChanged(int field) override;
    void helpLabelChanged() override;
    void controlChanged(const std::string& name) override;
    void cursorChanged() override;
    void showMainForm() override;
    void processPendingEvents() override;
    int viewPanelWidth() const override;
    int viewPanelHeight() const override;

protected:
    // FormClose: asks once; a yes ends the process at once, saving nothing.
    void closeEvent(QCloseEvent* event) override;
    // FormActivate: the form is maximised whenever it becomes active.
    void changeEvent(QEvent* event) override;
    // The engine's notifications, posted as events.
    void customEvent(QEvent* event) override;

private:
    void createMenus();
    void createToolButtons();
    void createStatusTexts();
    void ShowPRJ1Click();
    void showPopup(AppPopup popup, QPoint at);

    ViewPanel* ViewPanel_ = nullptr;
    QLabel* LabelForHelp = nullptr;
    QLabel* ObserverElevationlabel = nullptr;
    QMenu* PopupMenu1 = nullptr;
    QMenu* ShiftRightClickPopupmenu = nullptr;
    FormInput* input_ = nullptr;
    std::array<QLabel*, STATUS_TEXT_COUNT> statusLabels_{};
    bool busyCursorShown_ = false;
};
