#include "MainFormState.h"

#include "scene/engine_interface.h"

MainFormState& mainFormState() {
    static MainFormState state;
    return state;
}

void resetMainFormState() { mainFormState() = MainFormState{}; }

namespace {
MainFormHost& silentHost() {
    static MainFormHost silent;
    return silent;
}
MainFormHost*& hostSlot() {
    static MainFormHost* host = &silentHost();
    return host;
}
}  // namespace

MainFormHost& mainFormHost() { return *hostSlot(); }

void installMainFormHost(MainFormHost* host) { hostSlot() = host ? host : &silentHost(); }

void SSetTextAt3(int field, const QString& text) {
    if (field < 0 || field >= STATUS_TEXT_COUNT) return;
    mainFormState().statusTexts[field] = text;
    mainFormHost().statusTextChanged(field);
}

void SSetTextAt3W(const QString& text) {
    At3d_StatusBar_Set_Text(text.toUtf8().constData());
    At3d_RenderOpenGLScene();
}

QString StatusStripText() {
    char buffer[256] = {};
    At3d_StatusBar_Get_Text(buffer, sizeof buffer);
    return QString::fromUtf8(buffer);
}

void SetHelpCaption(const QString& text) {
    mainFormState().LabelForHelpCaption = text;
    mainFormHost().helpLabelChanged();
}

void SetHelpLabelColor(int color) {
    mainFormState().helpLabelColor = color;
    mainFormHost().helpLabelChanged();
}

void SetControlVisible(const std::string& name, bool visible) {
    mainFormState().visible[name] = visible;
    mainFormHost().controlChanged(name);
}

bool ControlVisible(const std::string& name) {
    const auto& visible = mainFormState().visible;
    const auto it = visible.find(name);
    return it == visible.end() || it->second;
}

void SetControlChecked(const std::string& name, bool checked) {
    mainFormState().checked[name] = checked;
    mainFormHost().controlChanged(name);
}

bool ControlChecked(const std::string& name) {
    const auto& checked = mainFormState().checked;
    const auto it = checked.find(name);
    return it != checked.end() && it->second;
}

void SetEditText(const std::string& name, const QString& text) {
    mainFormState().editTexts[name] = text;
    mainFormHost().controlChanged(name);
}

void EditTextTyped(const std::string& name, const QString& text) { mainFormState().editTexts[name] = text; }

QString EditText(const std::string& name) {
    const auto& texts = mainFormState().editTexts;
    const auto it = texts.find(name);
    return it == texts.end() ? QString() : it->second;
}

void SetBusyCursor(bool busy) {
    mainFormState().busyCursor = busy;
    mainFormHost().cursorChanged();
}
