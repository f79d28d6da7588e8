// What the logic shows on the main form without knowing its widgets: the
// four status texts, the help label, and the visible and checked state of
// named controls. The window installs a MainFormHost to follow the changes;
// tests read the state directly.
#pragma once

#include <QString>
#include <array>
#include <map>
#include <string>

constexpr int STATUS_TEXT_COUNT = 4;
// The help label's fixed system colour while a model opens (the toolkit's button face).
constexpr int HELP_LABEL_SYSTEM_COLOR = 0xF0F0F0;

struct MainFormState {
    std::array<QString, STATUS_TEXT_COUNT> statusTexts;
    QString LabelForHelpCaption;
    // Toolkit colours (red in the lowest byte); -1 leaves the form's own.
    int helpLabelColor = -1;
    int OriginalLabelForHelpColor = -1;
    // Controls are visible and unchecked unless set here.
    std::map<std::string, bool> visible;
    std::map<std::string, bool> checked;
    // Texts of named edit fields, as typed or as the logic filled them.
    std::map<std::string, QString> editTexts;
    bool busyCursor = false;
};

MainFormState& mainFormState();
void resetMainFormState();

// The window's side of the state above, plus the few things the open
// sequence asks of the form itself.
class MainFormHost {
public:
    virtual ~MainFormHost() = default;
    virtual void statusTextChanged(int field) {}
    virtual void helpLabelChanged() {}
    virtual void controlChanged(const std::string& name) {}
    virtual void cursorChanged() {}
    virtual void showMainForm() {}
    // Lets queued window events run (the open does this once).
    virtual void processPendingEvents() {}
    virtual int viewPanelWidth() const { return 0; }
    virtual int viewPanelHeight() const { return 0; }
};

MainFormHost& mainFormHost();
// Installs a host the caller keeps alive; null puts the silent one back.
void installMainFormHost(MainFormHost* host);

// One of the four status texts, 0 to 3.
void SSetTextAt3(int field, const QString& text);
// The engine's status strip over the bottom of the view, drawn at once.
void SSetTextAt3W(const QString& text);
QString StatusStripText();
// LabelForHelpCaption, shown on the help label.
void SetHelpCaption(const QString& text);
void SetHelpLabelColor(int color);
void SetControlVisible(const std::string& name, bool visible);
bool ControlVisible(const std::string& name);
void SetControlChecked(const std::string& name, bool checked);
bool ControlChecked(const std::string& name);
void SetBusyCursor(bool busy);
// An edit field's text: set by the logic (the window follows) or by the
// window as the operator types (nothing follows).
void SetEditText(const std::string& name, const QString& text);
void EditTextTyped(const std::string& name, const QString& text);
QString EditText(const std::string& name);
