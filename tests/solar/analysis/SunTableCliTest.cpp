// zorvex64-cli sun-table, run as a user would run it.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "support/CliRunner.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;

using testsupport::CliResult;
using testsupport::runCli;

TEST(CliSunTable, WritesTheTableAndPrintsItsRows) {
    ScratchDir dir;
    const std::string out = dir.path("Panel_1_1_Sun.csv");
    const CliResult r = runCli("sun-table 52 0 2025 30 180 " + out, dir);
    ASSERT_EQ(r.exitCode, 0) << r.err;
    const std::string table = readTextFile(out);
    int lines = 0;
    for (char c : table) lines += c == '\n';
    EXPECT_EQ(r.out, "rows: " + std::to_string(lines - 1) + "\n");
    EXPECT_NE(table.find("\n2025-11-13,10:00,16.33,154.19,47.51,1.0000\n"), std::string::npos);
    EXPECT_NE(r.err.find("Sun position data generated: " + std::to_string(lines - 1) + " entries"), std::string::npos);
}

TEST(CliSunTable, RejectsBadArgumentsAndReportsAnUnwritableFile) {
    ScratchDir dir;
    EXPECT_EQ(runCli("sun-table 52 0 2025 30 180", dir).exitCode, 2);
    EXPECT_EQ(runCli("sun-table 52 0 2025.5 30 180 " + dir.path("a.csv"), dir).exitCode, 2);
    EXPECT_EQ(runCli("sun-table north 0 2025 30 180 " + dir.path("a.csv"), dir).exitCode, 2);
    const CliResult r = runCli("sun-table 52 0 2025 30 180 " + dir.path("no/folder/a.csv"), dir);
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.out, "");
    EXPECT_NE(r.err.find("ERROR: Cannot create sun position file\n"), std::string::npos);
}
