// ZipFiles: entry names by the short-path rule, deflated entries that another
// reader (unzip) accepts, progress every tenth file, and an archive that only
// appears when it is complete.
#include <gtest/gtest.h>
#include <zip.h>

#include <QFile>
#include <QString>
#include <cstdlib>
#include <map>
#include <string>

#include "app/services/DialogService.h"
#include "app/session/MainFormState.h"
#include "modeltools/ModelToolProgress.h"
#include "modeltools/ZipFiles.h"
#include "ArchiveCheck.h"
#include "support/TestSupport.h"

using testsupport::ScratchDir;
using testsupport::readTextFile;
using testsupport::writeTextFile;

namespace {

class ZipFilesTest : public ::testing::Test {
protected:
    ScratchDir dir;
    ScriptedDialogService dialogs;

    void SetUp() override {
        resetModelToolHooks();
        resetMainFormState();
        installDialogService(&dialogs);
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetModelToolHooks();
    }
    QString path(const std::string& name) const { return QString::fromStdString(dir.path(name)); }
};

}  // namespace

TEST(ZipEntryNames, AreRelativeToTheShortestFolderAndKeepSubfolders) {
    const QStringList files{"/d/site/Site.obj", "/d/site/obl/c1/a.jpg", "/d/site/obl/b.jpg"};
    EXPECT_EQ(ZipEntryNames(files, false), (QStringList{"Site.obj", "obl/c1/a.jpg", "obl/b.jpg"}));
    EXPECT_EQ(ZipEntryNames(files, true), (QStringList{"Site.obj", "a.jpg", "b.jpg"}));
}

TEST(ZipEntryNames, CutAtAPositionNotAtACommonFolder) {
    // The rule takes the smallest last-separator position, whatever the folder's name:
    // "/d/xy/m.obj" has its last one at 5, so "/d/site/t.jpg" loses its first 6 characters.
    const QStringList files{"C:\\xy\\m.obj", "/d/site/t.jpg"};
    EXPECT_EQ(ZipEntryNames(files, false), (QStringList{"m.obj", "e/t.jpg"}));
}

TEST_F(ZipFilesTest, WritesDeflatedEntriesThatUnzipAcceptsAndPassesOverMissingFiles) {
    writeTextFile(dir.path("m/Site.obj"), std::string(5000, 'v') + "\n");
    writeTextFile(dir.path("m/tex/t.jpg"), "picture bytes");
    const QString zip = path("m/Site.OBJ.ZIP");
    writeTextFile(zip.toStdString(), "an older archive");

    // The older archive, listed too, is replaced and not packed into the new one.
    ASSERT_TRUE(ZipFiles({path("m/Site.obj"), path("m/gone.mtl"), path("m/tex/t.jpg"), zip}, zip, false, true));

    const auto entries = readArchive(zip.toStdString());
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries.at("Site.obj").data, std::string(5000, 'v') + "\n");
    EXPECT_EQ(entries.at("Site.obj").method, ZIP_CM_DEFLATE);
    EXPECT_EQ(entries.at("tex/t.jpg").data, "picture bytes");
    EXPECT_TRUE(unzipAccepts(zip.toStdString()));
    EXPECT_FALSE(QFile::exists(zip + ".part"));
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].text, zip + "\nCreated");
    EXPECT_EQ(mainFormState().statusTexts[0], "");
}

TEST_F(ZipFilesTest, ReportsEveryTenthFile) {
    QStringList files;
    for (int i = 0; i < 25; ++i) {
        files << path("m/f" + std::to_string(i) + ".txt");
        writeTextFile(files.back().toStdString(), "x");
    }
    QStringList texts;
    modelToolHooks().progress = [&](const QString& text, long long, long long) {
        if (texts.isEmpty() || texts.back() != text) texts << text;
    };
    ASSERT_TRUE(ZipFiles(files, path("m/all.zip"), true, false));
    texts.removeDuplicates();
    EXPECT_EQ(texts, (QStringList{"Compressing 1 out of 25", "Compressing 11 out of 25", "Compressing 21 out of 25"}));
    EXPECT_TRUE(dialogs.questions().empty());
}

TEST_F(ZipFilesTest, CancelWhileCompressingKeepsTheOlderArchive) {
    writeTextFile(dir.path("m/a.txt"), std::string(200000, 'a'));
    writeTextFile(dir.path("m/b.txt"), std::string(200000, 'b'));
    const std::string zip = dir.path("m/m.zip");
    writeTextFile(zip, "an older archive");
    // Both files are taken; the stop comes while the archive is being written.
    int asked = 0;
    modelToolHooks().cancelled = [&] { return ++asked > 2; };

    EXPECT_FALSE(ZipFiles({path("m/a.txt"), path("m/b.txt")}, QString::fromStdString(zip), false, true));
    EXPECT_GT(asked, 2);
    EXPECT_EQ(readTextFile(zip), "an older archive");
    EXPECT_FALSE(QFile::exists(QString::fromStdString(zip) + ".part"));
    EXPECT_TRUE(dialogs.questions().empty());
}

TEST_F(ZipFilesTest, NothingToPackWritesNoArchive) {
    EXPECT_FALSE(ZipFiles({path("m/none.obj")}, path("out.zip"), false, true));
    EXPECT_FALSE(QFile::exists(path("out.zip")));
    EXPECT_TRUE(dialogs.questions().empty());
}
