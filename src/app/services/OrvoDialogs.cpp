#include "OrvoDialogs.h"

#include <QList>
#include <QStringList>
#include <cerrno>
#include <cstring>

#include "DialogService.h"

DialogState& dialogState() {
    static DialogState state;
    return state;
}

void resetDialogState() { dialogState() = DialogState{}; }

namespace {

const char* const kMessageTitle = "Zorvex64";

QStringList buttonTexts(const QString& joined, int count) {
    QStringList texts = joined.split(',');
    while (texts.size() > count) texts.removeLast();
    while (texts.size() < count) texts.append(QString());
    for (QString& text : texts) text = text.trimmed();
    return texts;
}

int askWithButtons(const QString& mess, const QString& Title, const QString& joined, int count, int DefButon) {
    const int result = dialogService().ask(mess, Title, buttonTexts(joined, count), DefButon);
    dialogState().OrvoMsgModalResult = result;
    return result;
}

struct BoxKind {
    QStringList buttons;
    QList<int> codes;  // answer code of each button
    int closedCode;
};

BoxKind boxKind(int type) {
    switch (type) {
    case MB_OKCANCEL: return {{"OK", "Cancel"}, {IDOK, IDCANCEL}, IDCANCEL};
    case MB_ABORTRETRYIGNORE: return {{"Abort", "Retry", "Ignore"}, {IDABORT, IDRETRY, IDIGNORE}, IDABORT};
    case MB_YESNOCANCEL: return {{"Yes", "No", "Cancel"}, {IDYES, IDNO, IDCANCEL}, IDCANCEL};
    case MB_YESNO: return {{"Yes", "No"}, {IDYES, IDNO}, IDNO};
    case MB_RETRYCANCEL: return {{"Retry", "Cancel"}, {IDRETRY, IDCANCEL}, IDCANCEL};
    default: return {{"OK"}, {IDOK}, IDOK};
    }
}

}  // namespace

int OrvoMessageBox(const QString& mess, const QString& Title, const QString& S123, int DefButon) {
    return askWithButtons(mess, Title, S123, 3, DefButon);
}

int OrvoMessageBox4(const QString& mess, const QString& Title, const QString& S1234, int DefButon) {
    return askWithButtons(mess, Title, S1234, 4, DefButon);
}

int MyMessageBox(const QString& Text, const QString& Caption, int Flags) {
    const BoxKind kind = boxKind(Flags & 0xF);
    const int defaultButton = ((Flags >> 8) & 0xF) + 1;
    const int pressed = dialogService().ask(Text, Caption, kind.buttons, defaultButton);
    if (pressed < 1 || pressed > kind.codes.size()) return kind.closedCode;
    return kind.codes[pressed - 1];
}

void MyShowMessage(const QString& text) { dialogService().showMessage(text, kMessageTitle); }

void DisplayErrorText(const QString& Prefix, const QString& errorText) {
    MyMessageBox(Prefix + "\n" + errorText, "LastError (displayed by ORVO)", MB_OK | MB_ICONERROR);
}

void DisplayLastError(const QString& Prefix) {
    const int code = errno;
    DisplayErrorText(Prefix, QString::fromLocal8Bit(std::strerror(code)));
}

bool MyInputQuery(const QString& Caption, const QString& Prompt, QString& Value) {
    dialogState().STOPKEYACTIVITY = true;
    const bool ok = dialogService().inputQuery(Caption, Prompt, Value);
    dialogState().STOPKEYACTIVITY = false;
    return ok;
}
