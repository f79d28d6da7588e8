// The message boxes and input queries every Part calls. They ask through
// dialogService(), so a scripted answerer drives them in tests and the CLI;
// the results they leave behind live in one DialogState.
#pragma once

#include <QString>

struct DialogState {
    int OrvoMsgModalResult = 0;  // button pressed in OrvoMessageBox / OrvoMessageBox4
    int DLG_Modalresult = 0;     // mrOk or mrCancel of TForm_DLG
    bool STOPKEYACTIVITY = false;  // while set, the keyboard route eats every key
    QString Text_global;         // text of TForm_DLG's edit box after OK
};

DialogState& dialogState();
void resetDialogState();

// The platform's message-box flags and answer codes, as callers pass and test them.
constexpr int MB_OK = 0x0;
constexpr int MB_OKCANCEL = 0x1;
constexpr int MB_ABORTRETRYIGNORE = 0x2;
constexpr int MB_YESNOCANCEL = 0x3;
constexpr int MB_YESNO = 0x4;
constexpr int MB_RETRYCANCEL = 0x5;
constexpr int MB_ICONERROR = 0x10;
constexpr int MB_ICONQUESTION = 0x20;
constexpr int MB_ICONWARNING = 0x30;
constexpr int MB_ICONINFORMATION = 0x40;
constexpr int MB_DEFBUTTON2 = 0x100;
constexpr int MB_DEFBUTTON3 = 0x200;
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDABORT = 3;
constexpr int IDRETRY = 4;
constexpr int IDIGNORE = 5;
constexpr int IDYES = 6;
constexpr int IDNO = 7;

// Modal results of TForm_DLG.
constexpr int mrOk = 1;
constexpr int mrCancel = 2;

// Up to three button texts in one comma-separated text; an empty text hides
// its button and keeps the numbering. Returns OrvoMsgModalResult (0: closed).
int OrvoMessageBox(const QString& mess, const QString& Title, const QString& S123, int DefButon);
// The same with four button texts.
int OrvoMessageBox4(const QString& mess, const QString& Title, const QString& S1234, int DefButon);
// A box built from the platform's flags (buttons and default button); the
// platform's answer code. A box closed without a button answers its
// cancelling code (IDCANCEL, or IDNO, IDABORT, IDOK where there is no Cancel).
int MyMessageBox(const QString& Text, const QString& Caption, int Flags);
void MyShowMessage(const QString& text);
// errno's text behind Prefix, in a box captioned "LastError (displayed by ORVO)".
void DisplayLastError(const QString& Prefix);
// The same box for an error text the caller already has.
void DisplayErrorText(const QString& Prefix, const QString& errorText);
// A one-line query with key handling held back while it is up; true on OK,
// Value then holds the text.
bool MyInputQuery(const QString& Caption, const QString& Prompt, QString& Value);
