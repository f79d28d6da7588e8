// The settings file keeps its sections and keys as written.
#include <gtest/gtest.h>

#include "app/services/OrvoIni.h"
#include "support/TestSupport.h"

TEST(OrvoIni, KeysWithBlanksSurviveARoundTrip) {
    testsupport::ScratchDir dir;
    testsupport::writeTextFile(dir.path("Orvo.ini"), "[Orvo]\nLast Folder=/data/site one/\n[Services]\nPVGIS=http://x/\n");
    OrvoIni ini;
    ASSERT_TRUE(ini.load(dir.path("Orvo.ini")));
    EXPECT_EQ(ini.readString("Orvo", "Last Folder", "?"), "/data/site one/");
    EXPECT_EQ(ini.readString("Services", "Elevation", "default"), "default");
    ini.writeString("Solvane3D", "ModuleType", "TSM-440");
    ASSERT_TRUE(ini.save());
    OrvoIni again;
    ASSERT_TRUE(again.load(dir.path("Orvo.ini")));
    EXPECT_EQ(again.readString("Orvo", "Last Folder", "?"), "/data/site one/");
    EXPECT_EQ(again.readString("Solvane3D", "ModuleType", "?"), "TSM-440");
}

TEST(OrvoIni, MissingFileGivesEmptySettingsAndSaveCreatesIt) {
    testsupport::ScratchDir dir;
    OrvoIni ini;
    EXPECT_FALSE(ini.load(dir.path("none.ini")));
    EXPECT_EQ(ini.readString("Orvo", "x", "fallback"), "fallback");
    ini.writeString("Orvo", "x", "1");
    EXPECT_TRUE(ini.save());
    EXPECT_NE(testsupport::readTextFile(dir.path("none.ini")).find("x = 1"), std::string::npos);
}
