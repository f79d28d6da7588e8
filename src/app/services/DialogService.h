// Every question the program puts to the operator goes through one
// DialogService. The window installs the Qt one; tests and the CLI install a
// ScriptedDialogService that answers from a script and records what was asked,
// so every caller runs without a window.
#pragma once

#include <QString>
#include <QStringList>
#include <deque>
#include <vector>

// The one-line form TForm_DLG: a caption, two labels and one edit box.
struct OneLineDialogRequest {
    QString caption = "Orvo dialog procedure";
    QString label1;
    QString label2 = "One or two pairs of coordinates may be used, or leave blank for no restriction.";
};

struct FileDialogRequest {
    bool save = false;
    QString title;
    QString filter;        // "Text (*.txt)|*.txt|All (*.*)|*.*"
    int filterIndex = 1;   // 1-based, the entry proposed
    QString folder;        // initial folder
    QString proposedName;  // file name proposed
    bool promptOverwrite = true;
    bool multiple = false;  // an open dialog that takes several files: chosen lists them, one a line
};

class DialogService {
public:
    virtual ~DialogService() = default;
    // A box with the given button texts (empty ones hidden); the 1-based
    // number of the button pressed, 0 when the box was closed.
    virtual int ask(const QString& text, const QString& title, const QStringList& buttons, int defaultButton) = 0;
    // A plain box with OK.
    virtual void showMessage(const QString& text, const QString& title) = 0;
    // A one-line query; false on cancel, value unchanged then.
    virtual bool inputQuery(const QString& caption, const QString& prompt, QString& value) = 0;
    // A file dialog; false on cancel. chosenFilter is the 1-based filter entry.
    virtual bool chooseFile(const FileDialogRequest& request, QString& chosen, int& chosenFilter) = 0;
    // The one-line form; false on cancel, value unchanged then. Without a
    // form of its own a service asks it as an input query.
    virtual bool oneLineDialog(const OneLineDialogRequest& request, QString& value) {
        return inputQuery(request.caption, request.label1 + "\n" + request.label2, value);
    }
    // The colour dialog; color is a toolkit colour (red in the lowest byte),
    // proposed on the way in. False on cancel, color unchanged then.
    virtual bool chooseColor(const QString& title, int& color) = 0;
    // Opens a file with the desktop's default application; false when nothing took it.
    virtual bool openDocument(const QString& path) { return false; }
    // Shows the grid form TFormXLS over xlsFormState() without blocking.
    virtual void showXlsForm(const QString& caption, bool maximized) {}
};

// The installed service; until one is installed a ScriptedDialogService with
// an empty script (which cancels everything) answers.
DialogService& dialogService();
// Installs a service the caller keeps alive; null puts the default back.
void installDialogService(DialogService* service);

// Answers from a script, in order, and records every question.
class ScriptedDialogService : public DialogService {
public:
    struct Answer {
        int button = 0;        // for ask(), and the colour of chooseColor()
        bool accepted = false; // for inputQuery() and chooseFile()
        QString text;          // the value typed or the file chosen
        int filterIndex = 1;
    };
    struct Question {
        enum Kind { Ask, Message, Input, File, Document, Grid, Color } kind;
        QString title;         // caption, or the grid form's caption
        QString text;          // message text, prompt, filter, or the document's path
        QStringList buttons;
        QString value;         // the value or file name proposed
        QString folder;        // the file dialog's initial folder
    };

    void push(const Answer& answer) { script_.push_back(answer); }
    void pushButton(int button) { push(Answer{button, true, {}, 1}); }
    void pushText(const QString& text) { push(Answer{0, true, text, 1}); }
    void pushCancel() { push(Answer{0, false, {}, 1}); }
    void pushFile(const QString& path, int filterIndex = 1) { push(Answer{0, true, path, filterIndex}); }
    void pushColor(int color) { push(Answer{color, true, {}, 1}); }
    const std::vector<Question>& questions() const { return questions_; }
    bool scriptDone() const { return script_.empty(); }

    int ask(const QString& text, const QString& title, const QStringList& buttons, int defaultButton) override;
    void showMessage(const QString& text, const QString& title) override;
    bool inputQuery(const QString& caption, const QString& prompt, QString& value) override;
    bool chooseFile(const FileDialogRequest& request, QString& chosen, int& chosenFilter) override;
    bool chooseColor(const QString& title, int& color) override;
    bool openDocument(const QString& path) override;
    void showXlsForm(const QString& caption, bool maximized) override;

private:
    Answer next();
    std::deque<Answer> script_;
    std::vector<Question> questions_;
};
