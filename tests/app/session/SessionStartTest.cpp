// Start-up of the session and its end: the folders, the run log, the custom
// icons, the renderer rule, the exit question and the cleaning of the
// temporary folder.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <filesystem>
#include <unistd.h>

#include "app/services/DialogService.h"
#include "app/services/OrvoIni.h"
#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"
#include "app/session/CleanOrvoT.h"
#include "app/session/MainFormState.h"
#include "app/session/SessionStart.h"
#include "app/session/StartupState.h"
#include "app/session/UserFolders.h"
#include "app/session/ViewerSettings.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

class SessionStart : public ::testing::Test {
protected:
    ScratchDir dir;
    ScriptedDialogService dialogs;
    std::string program;
    void SetUp() override {
        resetSessionPaths();
        resetStartupState();
        resetOrvoIni();
        resetViewerSettings();
        resetMainFormState();
        installDialogService(&dialogs);
        program = dir.path("zv/bin/zorvex64");
        DeriveUserFolders(dir.root() + "home", program, false);
    }
    void TearDown() override {
        resetRunLog();
        installDialogService(nullptr);
    }
};

}  // namespace

TEST_F(SessionStart, MakesTheUserTreeAndOpensTheRunLog) {
    ASSERT_TRUE(FormCreateSession(program, "llvmpipe (LLVM 15.0.6, 256 bits)"));
    const std::string tmp = dir.root() + "home/Orvo_/TMP/";
    EXPECT_TRUE(QDir(QString::fromStdString(tmp)).exists());
    EXPECT_TRUE(QDir(QString::fromStdString(dir.root() + "home/Orvo_/JFR/")).exists());
    const std::string log = tmp + std::to_string(getpid()) + "_3DV.txt";
    EXPECT_EQ(startupState().LogFile, log);
    resetRunLog();
    EXPECT_EQ(readTextFile(log), "Creating fp_prt " + log + "\n");
    EXPECT_FALSE(startupState().IntelGPU);
    EXPECT_TRUE(ControlVisible("Highaccuracy1"));
    EXPECT_EQ(sessionPaths().CTQ_Path, dir.root() + "zv/data/");
}

TEST_F(SessionStart, TheTemporaryFolderFailureNamesTheUserFolder) {
    // A file where the temporary folder should be.
    writeTextFile(dir.root() + "home/Orvo_/TMP", "in the way");
    EXPECT_FALSE(FormCreateSession(program, ""));
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].text.toStdString(), "Can not create directory " + dir.root() + "home/Orvo_/");
}

TEST_F(SessionStart, CustomIconsOfferTheTacticalButton) {
    writeTextFile(dir.path("zv/data/CustomIcons/tank.bmp"), "BM");
    writeTextFile(dir.path("zv/data/CustomIcons/FLAG.BMP"), "BM");
    writeTextFile(dir.path("zv/data/CustomIcons/note.png"), "PNG");
    ASSERT_TRUE(FormCreateSession(program, ""));
    EXPECT_EQ(startupState().SatamsList.size(), 2);
    EXPECT_TRUE(ControlVisible("SimanTactiModeBtn"));
}

TEST_F(SessionStart, NoCustomIconsFolderHidesTheTacticalButton) {
    ASSERT_TRUE(FormCreateSession(program, ""));
    EXPECT_TRUE(startupState().SatamsList.isEmpty());
    EXPECT_FALSE(ControlVisible("SimanTactiModeBtn"));
}

TEST_F(SessionStart, AnIntelRendererHidesHighAccuracy) {
    SetRendererName("Mesa Intel(R) UHD Graphics 620 (KBL GT2)");
    EXPECT_TRUE(startupState().IntelGPU);
    EXPECT_FALSE(ControlVisible("Highaccuracy1"));
}

TEST_F(SessionStart, TheExitQuestionNeedsAYes) {
    dialogs.pushButton(2);
    EXPECT_FALSE(AskToExit());
    dialogs.pushButton(1);
    EXPECT_TRUE(AskToExit());
    ASSERT_EQ(dialogs.questions().size(), 2u);
    EXPECT_EQ(dialogs.questions()[0].buttons, QStringList({"Yes", "No"}));
    // Closing the box is no yes either.
    dialogs.pushButton(0);
    EXPECT_FALSE(AskToExit());
}

TEST_F(SessionStart, CleaningDeletesOnlyFilesOfOtherDays) {
    const QString folder = QString::fromStdString(dir.root() + "tmp/");
    writeTextFile(dir.path("tmp/old.txt"), "x");
    writeTextFile(dir.path("tmp/new.txt"), "x");
    writeTextFile(dir.path("tmp/sub/old.txt"), "x");
    const QDate today(2026, 3, 14);
    for (const char* name : {"tmp/old.txt", "tmp/sub/old.txt"}) {
        QFile file(QString::fromStdString(dir.path(name)));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime(today.addDays(-1), QTime(23, 59)), QFileDevice::FileModificationTime));
    }
    QFile fresh(QString::fromStdString(dir.path("tmp/new.txt")));
    ASSERT_TRUE(fresh.open(QIODevice::ReadWrite));
    ASSERT_TRUE(fresh.setFileTime(QDateTime(today, QTime(0, 1)), QFileDevice::FileModificationTime));
    EXPECT_EQ(CleanFolderOfOtherDays(folder, today), 1);
    EXPECT_FALSE(QFileInfo::exists(folder + "old.txt"));
    EXPECT_TRUE(QFileInfo::exists(folder + "new.txt"));
    EXPECT_TRUE(QFileInfo::exists(folder + "sub/old.txt"));
}
