// The command line: the model to open, the repair of unquoted paths with
// blanks, and the fixed number of arguments kept.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/session/CommandLine.h"
#include "app/session/StartupState.h"

namespace {

const StartupState& capture(const std::vector<std::string>& argv) {
    resetStartupState();
    CaptureCommandLine(argv, RawCommandLine(argv));
    return startupState();
}

}  // namespace

TEST(CommandLine, UnquotedObjPathWithBlanksIsPutTogetherAgain) {
    const StartupState& s = capture({"/opt/zv/zorvex64", "/data/My", "Site", "2024/Model.OBJ"});
    EXPECT_EQ(s.GlobalARGVforDebug, "/data/My Site 2024/Model.OBJ");
    // The pieces stay as they came.
    ASSERT_EQ(s.NGlobalARGS, 3);
    EXPECT_EQ(s.GlobalArgs[0], "/data/My");
    EXPECT_EQ(s.GlobalArgs[2], "2024/Model.OBJ");
}

TEST(CommandLine, OnlyObjPathsAreRepaired) {
    EXPECT_EQ(capture({"zorvex64", "/data/My", "Site/Model.dae"}).GlobalARGVforDebug, "/data/My");
    EXPECT_EQ(capture({"zorvex64", "/data/My", "Site/Model.obj.zip"}).GlobalARGVforDebug, "/data/My");
}

TEST(CommandLine, AQuotedPathArrivesWhole) {
    const StartupState& s = capture({"zorvex64", "/data/My Site/Model.obj"});
    EXPECT_EQ(s.GlobalARGVforDebug, "/data/My Site/Model.obj");
    EXPECT_EQ(s.NGlobalARGS, 1);
}

TEST(CommandLine, FurtherArgumentsAreKeptButOnlyTheFirstOpens) {
    const StartupState& s = capture({"zorvex64", "/data/a.obj", "--first-frame-shot"});
    EXPECT_EQ(s.GlobalARGVforDebug, "/data/a.obj");
    ASSERT_EQ(s.NGlobalARGS, 2);
    EXPECT_EQ(s.GlobalArgs[1], "--first-frame-shot");
}

TEST(CommandLine, TwentyArgumentsAreKeptAtMost) {
    std::vector<std::string> argv{"zorvex64"};
    for (int i = 1; i <= 25; ++i) argv.push_back("arg" + std::to_string(i));
    const StartupState& s = capture(argv);
    EXPECT_EQ(s.NGlobalARGS, 20);
    EXPECT_EQ(s.GlobalArgs[19], "arg20");
    EXPECT_EQ(s.GlobalARGVforDebug, "arg1");
}

TEST(CommandLine, NoArgumentLeavesTheDialogToAsk) {
    const StartupState& s = capture({"zorvex64"});
    EXPECT_EQ(s.GlobalARGVforDebug, "");
    EXPECT_EQ(s.NGlobalARGS, 0);
    EXPECT_EQ(RawCommandLine({"/opt/zv/zorvex64", "a", "b c"}), "\"/opt/zv/zorvex64\" a b c");
}
