// Attaching a ".prj" to the model and showing it.
#include <gtest/gtest.h>

#include <filesystem>

#include "app/services/DialogService.h"
#include "app/services/SessionPaths.h"
#include "geo/PrjMenu.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::writeTextFile;

namespace {

class PrjMenu : public ::testing::Test {
protected:
    testsupport::ScratchDir dir;
    ScriptedDialogService answers;
    void SetUp() override {
        writeTextFile(dir.path("site/Model.obj"), "v 0 0 0\n");
        writeTextFile(dir.path("other/Similar.PRJ"), "PROJCS[\"similar\"]");
        sessionPaths().ORVO_T = dir.path("tmp/");
        std::filesystem::create_directories(dir.path("tmp"));
        installDialogService(&answers);
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetSessionPaths();
    }
};

}  // namespace

TEST_F(PrjMenu, ChosenFileIsCopiedBesideTheModel) {
    writeTextFile(dir.path("site/Neighbour.Prj"), "PROJCS[\"neighbour\"]");
    answers.pushFile(QString::fromStdString(dir.path("other/Similar.PRJ")));
    ASSERT_TRUE(AddPRJ1Click(dir.path("site/Model.obj")));
    EXPECT_EQ(readTextFile(dir.path("site/Model.PRJ")), "PROJCS[\"similar\"]");
    ASSERT_EQ(answers.questions().size(), 1u);
    EXPECT_EQ(answers.questions()[0].value, "Neighbour.Prj");
}

TEST_F(PrjMenu, AnExistingPrjInAnotherCaseIsReplacedNotDoubledAndCancelKeepsIt) {
    writeTextFile(dir.path("site/model.prj"), "old");
    answers.pushCancel();
    EXPECT_FALSE(AddPRJ1Click(dir.path("site/Model.obj")));
    EXPECT_EQ(readTextFile(dir.path("site/model.prj")), "old");
    answers.pushFile(QString::fromStdString(dir.path("other/Similar.PRJ")));
    ASSERT_TRUE(AddPRJ1Click(dir.path("site/Model.obj")));
    EXPECT_EQ(readTextFile(dir.path("site/model.prj")), "PROJCS[\"similar\"]");
    EXPECT_FALSE(std::filesystem::exists(dir.path("site/Model.PRJ")));
}

TEST_F(PrjMenu, ShowCopiesThePrjForTheViewerOrOffersToAddOne) {
    answers.pushFile(QString::fromStdString(dir.path("other/Similar.PRJ")));
    std::string copy;
    EXPECT_FALSE(ShowPRJ1Click(dir.path("site/Model.obj"), copy));
    ASSERT_EQ(answers.questions().size(), 2u);
    EXPECT_EQ(answers.questions()[0].text, "No PRJ exists for this model");
    EXPECT_EQ(answers.questions()[1].kind, ScriptedDialogService::Question::File);

    ASSERT_TRUE(ShowPRJ1Click(dir.path("site/Model.obj"), copy));
    EXPECT_EQ(copy, dir.path("tmp/Model.txt"));
    EXPECT_EQ(readTextFile(copy), "PROJCS[\"similar\"]");
    ASSERT_EQ(answers.questions().size(), 3u);
    EXPECT_EQ(answers.questions()[2].kind, ScriptedDialogService::Question::Document);
    EXPECT_EQ(answers.questions()[2].text.toStdString(), copy);
}
