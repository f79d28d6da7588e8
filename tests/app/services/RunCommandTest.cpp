// Outside commands: exit codes, failures to start, deaths by a signal.
#include <QFileInfo>

#include "ServicesFixture.h"
#include "app/services/RunCommand.h"

TEST_F(ServicesTest, EveryNormalEndCountsAsSuccessWhateverItsCode) {
    EXPECT_TRUE(OrvoRunCommand("true", true));
    EXPECT_TRUE(OrvoRunCommand("/bin/sh -c \"exit 3\"", true));
    EXPECT_TRUE(OrvoRunCommand("/bin/sh -c \"exit 255\"", false, "Exif tool"));
    EXPECT_TRUE(dialogs.questions().empty());
}

TEST_F(ServicesTest, DoubleQuotesKeepAnArgumentWithBlanksTogether) {
    const QString target = path("with blank/out.txt");
    QDir().mkpath(path("with blank"));
    EXPECT_TRUE(OrvoRunCommand("touch \"" + target + "\"", true));
    EXPECT_TRUE(QFileInfo::exists(target));
}

TEST_F(ServicesTest, AProgramThatCanNotStartOrIsKilledIsReported) {
    EXPECT_FALSE(OrvoRunCommand("/no/such/program --x", true));
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_TRUE(dialogs.questions()[0].text.startsWith("In OrvoRunCommand: [/no/such/program --x]\n"));

    EXPECT_FALSE(OrvoRunCommand("/bin/sh -c \"kill -9 $$\"", true));
    ASSERT_EQ(dialogs.questions().size(), 2u);
    EXPECT_TRUE(dialogs.questions()[1].text.startsWith("In OrvoRunCommand: [/bin/sh -c \"kill -9 $$\"]\n"));
}

TEST_F(ServicesTest, RunSilentGivesTheShellsExitCode) {
    EXPECT_EQ(RunSilent("exit", "7"), 7);
    EXPECT_EQ(RunSilent("test -d", "/"), 0);
    EXPECT_EQ(RunSilent("no_such_command_zv", "x"), 127);
    EXPECT_EQ(RunSilent("kill -9", "$$"), -1);
}

TEST_F(ServicesTest, RunElevatedAnswersWhetherTheProgramStarted) {
    EXPECT_TRUE(Run_Elevated("/bin/true", "", path("")));
    EXPECT_FALSE(Run_Elevated("/no/such/program", "", path("")));
}
