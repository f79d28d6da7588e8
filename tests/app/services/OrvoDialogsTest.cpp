// Message boxes, input queries and the one-line form, driven by the scripted answerer.
#include <cerrno>
#include <cstring>

#include "ServicesFixture.h"
#include "app/services/FormDlg.h"

using Question = ScriptedDialogService::Question;

TEST_F(ServicesTest, OrvoMessageBoxWithTwoTextsAsksWithTwoButtonsAndKeepsTheAnswer) {
    dialogs.pushButton(2);
    EXPECT_EQ(OrvoMessageBox("Line one\nLine two", "Panels", "Keep,Delete", 2), 2);
    EXPECT_EQ(dialogState().OrvoMsgModalResult, 2);
    ASSERT_EQ(dialogs.questions().size(), 1u);
    const Question& asked = dialogs.questions()[0];
    EXPECT_EQ(asked.kind, Question::Ask);
    EXPECT_EQ(asked.title, "Panels");
    EXPECT_EQ(asked.text, "Line one\nLine two");
    EXPECT_EQ(asked.buttons, (QStringList{"Keep", "Delete", ""}));
}

TEST_F(ServicesTest, AnEmptyButtonTextKeepsTheNumberingOfTheOthers) {
    dialogs.pushButton(3);
    EXPECT_EQ(OrvoMessageBox4("?", "T", "One,,Three,Four,Five", 1), 3);
    EXPECT_EQ(dialogs.questions()[0].buttons, (QStringList{"One", "", "Three", "Four"}));
    // A closed box answers 0.
    EXPECT_EQ(OrvoMessageBox("?", "T", "A,B,C", 1), 0);
    EXPECT_EQ(dialogState().OrvoMsgModalResult, 0);
}

TEST_F(ServicesTest, MyMessageBoxTurnsPlatformFlagsIntoButtonsAndAnswerCodes) {
    // 308: yes/no, warning icon, second button default.
    dialogs.pushButton(1);
    EXPECT_EQ(MyMessageBox("Do you really want to exit?", "Closing Viewer", 308), IDYES);
    const Question& asked = dialogs.questions()[0];
    EXPECT_EQ(asked.buttons, (QStringList{"Yes", "No"}));
    dialogs.pushButton(2);
    EXPECT_EQ(MyMessageBox("?", "T", MB_YESNO), IDNO);
    dialogs.pushCancel();
    EXPECT_EQ(MyMessageBox("?", "T", MB_YESNO), IDNO);
    dialogs.pushCancel();
    EXPECT_EQ(MyMessageBox("?", "T", MB_YESNOCANCEL), IDCANCEL);
    dialogs.pushButton(3);
    EXPECT_EQ(MyMessageBox("?", "T", MB_ABORTRETRYIGNORE), IDIGNORE);
    dialogs.pushButton(1);
    EXPECT_EQ(MyMessageBox("?", "T", MB_OK), IDOK);
}

TEST_F(ServicesTest, DisplayLastErrorShowsErrnoTextBehindThePrefix) {
    errno = ENOENT;
    DisplayLastError("In test: [x]");
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].text, QString("In test: [x]\n") + std::strerror(ENOENT));
}

namespace {
// Notes whether key handling was held back while the query was up.
class KeyWatchingService : public ScriptedDialogService {
public:
    bool stoppedDuringQuery = false;
    bool inputQuery(const QString& caption, const QString& prompt, QString& value) override {
        stoppedDuringQuery = dialogState().STOPKEYACTIVITY;
        return ScriptedDialogService::inputQuery(caption, prompt, value);
    }
};
}  // namespace

TEST_F(ServicesTest, MyInputQueryHoldsKeysBackOnlyWhileItAsks) {
    KeyWatchingService watcher;
    installDialogService(&watcher);
    watcher.pushText("Dana");
    QString value = "old";
    EXPECT_TRUE(MyInputQuery("Customer definition", "Please define the customer", value));
    EXPECT_EQ(value, "Dana");
    EXPECT_TRUE(watcher.stoppedDuringQuery);
    EXPECT_FALSE(dialogState().STOPKEYACTIVITY);

    watcher.pushCancel();
    EXPECT_FALSE(MyInputQuery("Customer definition", "Please define the customer", value));
    EXPECT_EQ(value, "Dana");
    EXPECT_FALSE(dialogState().STOPKEYACTIVITY);
}

TEST_F(ServicesTest, FormDlgLeavesItsResultAndTextBehind) {
    OneLineDialogRequest request;
    request.label1 = "Restrict the search";
    dialogs.pushText("100 200");
    EXPECT_EQ(ShowForm_DLG(request, ""), mrOk);
    EXPECT_EQ(dialogState().Text_global, "100 200");
    EXPECT_TRUE(dialogs.questions()[0].text.startsWith("Restrict the search\n"));

    dialogs.pushCancel();
    EXPECT_EQ(ShowForm_DLG(request, "x"), mrCancel);
    EXPECT_EQ(dialogState().Text_global, "100 200");
}
