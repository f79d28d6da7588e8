// The two file dialogs: the extension rule, the write test, the fallback to
// ORVO_T, and cancelling.
#include <QFile>
#include <QFileInfo>

#include "ServicesFixture.h"
#include "app/services/FileDialogs.h"

using Question = ScriptedDialogService::Question;

TEST(FileDialogs, FilterEntryExtensionTakesTheChosenPatternAfterItsDot) {
    EXPECT_EQ(FilterEntryExtension("Polygon file (*.POL)|*.pol", 1), "pol");
    EXPECT_EQ(FilterEntryExtension("Vector file(*.SHP;*.DXF)|*.SHP;*.dxf|Tactical grid|TacticalG.SHP", 1), "SHP");
    EXPECT_EQ(FilterEntryExtension("Vector file(*.SHP;*.DXF)|*.SHP;*.dxf|Tactical grid|TacticalG.SHP", 2), "SHP");
    EXPECT_EQ(FilterEntryExtension("All (*.*)|*.*", 1), "");
    EXPECT_EQ(FilterEntryExtension("Text|*.txt", 2), "");
    EXPECT_EQ(FilterEntryExtension("Text|*.txt", 0), "");
}

TEST_F(ServicesTest, SaveFileAddsTheExtensionOfTheChosenFilterAndLeavesNoTestFile) {
    QString file = path("Measurements/T");
    QDir().mkpath(path("Measurements"));
    dialogs.pushFile(path("Measurements/roof"), 1);
    EXPECT_EQ(OrvoSaveFile(file, "", "Polygon file (*.POL)|*.pol", "Open the polygon file (output)", 1), 1);
    EXPECT_EQ(file, path("Measurements/roof.pol"));
    EXPECT_FALSE(QFileInfo::exists(file));
    const Question& asked = dialogs.questions()[0];
    EXPECT_EQ(asked.kind, Question::File);
    EXPECT_EQ(asked.value, "T");
    EXPECT_EQ(asked.folder, path("Measurements/"));
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(ServicesTest, SaveFileReturnsTheFilterChosenAndKeepsAGivenExtension) {
    QString file = path("T.MES");
    dialogs.pushFile(path("a.txt"), 2);
    EXPECT_EQ(OrvoSaveFile(file, "", "Measures|*.mes|Text|*.txt", "t", 1), 2);
    EXPECT_EQ(file, path("a.txt"));
    // A wildcard entry adds nothing; the caller's extension stands in.
    dialogs.pushFile(path("b"), 1);
    EXPECT_EQ(OrvoSaveFile(file, "csv", "All (*.*)|*.*", "t", 1), 1);
    EXPECT_EQ(file, path("b.csv"));
}

TEST_F(ServicesTest, SaveFileKeepsAnExistingFileUntouched) {
    QString file = path("T.pol");
    testsupport::writeTextFile(dir.path("old.pol"), "keep");
    dialogs.pushFile(path("old.pol"), 1);
    EXPECT_EQ(OrvoSaveFile(file, "", "Polygon file (*.POL)|*.pol", "t", 1), 1);
    EXPECT_EQ(testsupport::readTextFile(dir.path("old.pol")), "keep");
}

TEST_F(ServicesTest, AnUnwritableSaveTargetFallsBackToOrvoT) {
    QString file = path("T.pol");
    dialogs.pushFile(path("no such folder/roof.pol"), 1);
    EXPECT_EQ(OrvoSaveFile(file, "", "Polygon file (*.POL)|*.pol", "t", 1), 1);
    EXPECT_EQ(file, orvoT("roof.pol"));
    EXPECT_FALSE(QFileInfo::exists(file));
    EXPECT_EQ(messages(), QStringList{"Can not open for writing " + path("no such folder/roof.pol")});
}

TEST_F(ServicesTest, CancellingEitherDialogReturnsZeroAndLeavesTheFileAlone) {
    QString file = path("T.pol");
    dialogs.pushCancel();
    EXPECT_EQ(OrvoSaveFile(file, "", "Polygon file (*.POL)|*.pol", "t", 1), 0);
    EXPECT_EQ(file, path("T.pol"));
    dialogs.pushCancel();
    EXPECT_EQ(OrvoOpenFile(file, "", "Polygon file (*.POL)|*.pol", "t", ""), 0);
    EXPECT_EQ(file, path("T.pol"));
}

TEST_F(ServicesTest, OpenFileAnswersOneOnlyForAnExistingFile) {
    testsupport::writeTextFile(dir.path("site/model.obj"), "v 0 0 0\n");
    QString file = "  " + path("site/model.obj") + " ";
    dialogs.pushFile(path("site/model.obj"));
    EXPECT_EQ(OrvoOpenFile(file, "", "OBJ|*.obj", "Open", path("none/")), 1);
    EXPECT_EQ(file, path("site/model.obj"));
    // The proposal is trimmed; DefDir is missing, so the file's folder is used.
    EXPECT_EQ(dialogs.questions()[0].value, "model.obj");
    EXPECT_EQ(dialogs.questions()[0].folder, path("site/"));

    dialogs.pushFile(path("site/model"));
    EXPECT_EQ(OrvoOpenFile(file, "obj", "OBJ|*.obj", "Open", path("site/")), 1);
    EXPECT_EQ(file, path("site/model.obj"));
    EXPECT_EQ(dialogs.questions()[1].folder, path("site/"));

    dialogs.pushFile(path("site/gone.obj"));
    EXPECT_EQ(OrvoOpenFile(file, "", "OBJ|*.obj", "Open", ""), 0);
}
