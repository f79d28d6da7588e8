#include "DialogService.h"

namespace {

ScriptedDialogService& fallbackService() {
    static ScriptedDialogService service;
    return service;
}

DialogService*& installedService() {
    static DialogService* service = nullptr;
    return service;
}

}  // namespace

DialogService& dialogService() {
    DialogService* service = installedService();
    return service ? *service : fallbackService();
}

void installDialogService(DialogService* service) { installedService() = service; }

ScriptedDialogService::Answer ScriptedDialogService::next() {
    if (script_.empty()) return Answer{};
    Answer answer = script_.front();
    script_.pop_front();
    return answer;
}

int ScriptedDialogService::ask(const QString& text, const QString& title, const QStringList& buttons, int) {
    questions_.push_back({Question::Ask, title, text, buttons, {}, {}});
    return next().button;
}

void ScriptedDialogService::showMessage(const QString& text, const QString& title) {
    questions_.push_back({Question::Message, title, text, {}, {}, {}});
}

bool ScriptedDialogService::inputQuery(const QString& caption, const QString& prompt, QString& value) {
    questions_.push_back({Question::Input, caption, prompt, {}, value, {}});
    const Answer answer = next();
    if (!answer.accepted) return false;
    value = answer.text;
    return true;
}

bool ScriptedDialogService::chooseFile(const FileDialogRequest& request, QString& chosen, int& chosenFilter) {
    questions_.push_back({Question::File, request.title, request.filter, {}, request.proposedName, request.folder});
    const Answer answer = next();
    if (!answer.accepted) return false;
    chosen = answer.text;
    chosenFilter = answer.filterIndex;
    return true;
}

bool ScriptedDialogService::chooseColor(const QString& title, int& color) {
    questions_.push_back({Question::Color, title, {}, {}, QString::number(color), {}});
    const Answer answer = next();
    if (!answer.accepted) return false;
    color = answer.button;
    return true;
}

bool ScriptedDialogService::openDocument(const QString& path) {
    questions_.push_back({Question::Document, {}, path, {}, {}, {}});
    return true;
}

void ScriptedDialogService::showXlsForm(const QString& caption, bool) {
    questions_.push_back({Question::Grid, caption, {}, {}, {}, {}});
}
