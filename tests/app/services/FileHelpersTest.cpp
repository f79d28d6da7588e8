// File and folder helpers.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <utime.h>

#include "app/services/FileHelpers.h"
#include "support/TestSupport.h"

using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {
QString q(const ScratchDir& dir, const std::string& name) { return QString::fromStdString(dir.path(name)); }
}  // namespace

TEST(FileHelpers, StringFromFileEndsEveryLineWithALineFeed) {
    ScratchDir dir;
    writeTextFile(dir.path("a.txt"), "one\r\ntwo\nthree");
    EXPECT_EQ(StringFromFile(q(dir, "a.txt")), "one\ntwo\nthree\n");
    EXPECT_EQ(StringFromFile(q(dir, "missing.txt")), "");
}

TEST(FileHelpers, StringToFileWritesUtf8AndReplacesTheFile) {
    ScratchDir dir;
    writeTextFile(dir.path("c.txt"), "a much longer old text");
    EXPECT_TRUE(StringToFile(QString::fromUtf8("Dana \u00e9\u05d0"), q(dir, "c.txt")));
    EXPECT_EQ(testsupport::readTextFile(dir.path("c.txt")), "Dana \xc3\xa9\xd7\x90");
    EXPECT_FALSE(StringToFile("x", q(dir, "no folder/c.txt")));
}

TEST(FileHelpers, FileSizeGivesBytesAndWholeMebibytes) {
    ScratchDir dir;
    writeTextFile(dir.path("big.bin"), std::string(2 * 1048576 + 5, 'x'));
    std::int64_t mb = 0;
    EXPECT_EQ(OrvoFileSize(q(dir, "big.bin"), mb), 2 * 1048576 + 5);
    EXPECT_EQ(mb, 2);
    writeTextFile(dir.path("small.bin"), std::string(1048575, 'x'));
    EXPECT_EQ(OrvoFileSize(q(dir, "small.bin"), mb), 1048575);
    EXPECT_EQ(mb, 0);
    EXPECT_EQ(OrvoFileSize(q(dir, "none.bin"), mb), -1);
    EXPECT_EQ(mb, -1);
}

TEST(FileHelpers, FoldersAreMadeCopiedAndDeletedWithTheirContents) {
    ScratchDir dir;
    EXPECT_TRUE(OrvoCreateDir(q(dir, "a/b/c")));
    EXPECT_TRUE(OrvoCreateDir(q(dir, "a/b/c")));
    writeTextFile(dir.path("a/top.txt"), "top");
    writeTextFile(dir.path("a/b/c/deep.txt"), "deep");
    writeTextFile(dir.path("copy/top.txt"), "to be replaced");
    EXPECT_TRUE(OrvoCopyDirectory(q(dir, "a"), q(dir, "copy")));
    EXPECT_EQ(testsupport::readTextFile(dir.path("copy/top.txt")), "top");
    EXPECT_EQ(testsupport::readTextFile(dir.path("copy/b/c/deep.txt")), "deep");
    EXPECT_TRUE(OrvoCopyFile(q(dir, "a/b/c/deep.txt"), q(dir, "a/top.txt")));
    EXPECT_EQ(testsupport::readTextFile(dir.path("a/top.txt")), "deep");
    EXPECT_FALSE(OrvoCopyFile(q(dir, "a/none.txt"), q(dir, "a/x.txt")));
    EXPECT_FALSE(QFileInfo::exists(q(dir, "a/x.txt.tmp")));
    EXPECT_TRUE(ORVODeleteDirectory(q(dir, "copy")));
    EXPECT_FALSE(QFileInfo::exists(q(dir, "copy")));
    EXPECT_TRUE(ORVODeleteDirectory(q(dir, "never there")));
}

TEST(FileHelpers, StringReplaceAndFolderOfAFile) {
    EXPECT_EQ(OrvoStringReplace("a.OBJ.obj", ".obj", ".dae"), "a.OBJ.dae");
    EXPECT_EQ(OrvoStringReplace("aaa", "a", "bb"), "bbbbbb");
    EXPECT_EQ(OrvoStringReplace("abc", "", "x"), "abc");
    EXPECT_EQ(OrvoExtractLocalFilePath("/data/site one/model.obj"), "/data/site one/");
    EXPECT_EQ(OrvoExtractLocalFilePath("model.obj"), "");
}

TEST(FileHelpers, FindFilesMatchesWhateverTheCaseWithAndWithoutSubfolders) {
    ScratchDir dir;
    for (const char* name : {"m1.obj", "M2.OBJ", "m3.mtl", "sub/m4.obj", "sub/deeper/m5.Obj", "other/readme.txt"})
        writeTextFile(dir.path(name), "x");
    EXPECT_EQ(Find_Files(q(dir, "*.obj"), false), (QStringList{q(dir, "M2.OBJ"), q(dir, "m1.obj")}));
    EXPECT_EQ(Find_Files(q(dir, "*.obj"), true),
              (QStringList{q(dir, "M2.OBJ"), q(dir, "m1.obj"), q(dir, "sub/deeper/m5.Obj"), q(dir, "sub/m4.obj")}));
    EXPECT_TRUE(Find_Files(q(dir, "missing/*.obj"), true).isEmpty());
}

TEST(FileHelpers, FindDirectoriesListsMatchingFoldersEndingInASlash) {
    ScratchDir dir;
    for (const char* name : {"PANELS/SHADING/x", "Reports/x", "panels2/x", "Reports/panels_old/x"})
        writeTextFile(dir.path(name), "x");
    EXPECT_EQ(Find_Directories(q(dir, ""), false, "panels*"), (QStringList{q(dir, "PANELS/"), q(dir, "panels2/")}));
    EXPECT_EQ(Find_Directories(q(dir, ""), true, "*"),
              (QStringList{q(dir, "PANELS/"), q(dir, "PANELS/SHADING/"), q(dir, "Reports/"),
                           q(dir, "Reports/panels_old/"), q(dir, "panels2/")}));
    EXPECT_EQ(Find_Directories(q(dir, ""), true, "panels_*"), QStringList{q(dir, "Reports/panels_old/")});
}

TEST(FileHelpers, TimeStampIsTheLinkTimeOfAWindowsProgramElseTheFileTime) {
    ScratchDir dir;
    // A minimal PE head: "MZ", the PE offset at 0x3C, the signature, then
    // the COFF header with the link time 2024-03-01 12:00:00 UTC at +8.
    std::string pe(0x80 + 24, '\0');
    pe[0] = 'M';
    pe[1] = 'Z';
    pe[0x3C] = '\x80';
    pe.replace(0x80, 4, std::string("PE\0\0", 4));
    const unsigned linkTime = 1709294400u;
    for (int i = 0; i < 4; ++i) pe[0x80 + 8 + i] = static_cast<char>((linkTime >> (8 * i)) & 0xFF);
    writeTextFile(dir.path("tool.exe"), pe);
    EXPECT_EQ(GetTimeStamp(q(dir, "tool.exe")).toSecsSinceEpoch(), 1709294400);

    writeTextFile(dir.path("tool"), "\x7f" "ELF rest of a program");
    const struct utimbuf times {1600000000, 1600000000};
    ASSERT_EQ(::utime(dir.path("tool").c_str(), &times), 0);
    EXPECT_EQ(GetTimeStamp(q(dir, "tool")).toSecsSinceEpoch(), 1600000000);
    EXPECT_FALSE(GetTimeStamp(q(dir, "none")).isValid());
}
