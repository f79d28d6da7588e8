// Shifted and turned copies of an OBJ written in plain text.
#include <gtest/gtest.h>

#include "app/model/ModelSession.h"
#include "app/services/DialogService.h"
#include "geo/Frames.h"
#include "modeltools/ShiftModel.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

class ShiftRotateTest : public ::testing::Test {
protected:
    void SetUp() override {
        resetFrameState();
        resetModelSession();
        installDialogService(&dialogs);
    }
    void TearDown() override { installDialogService(nullptr); }
    ScratchDir dir;
    ScriptedDialogService dialogs;
};

}  // namespace

TEST_F(ShiftRotateTest, ShiftNamesTheCopyInCentimetres) {
    const double zero[3] = {0, 0, 0}, some[3] = {1.5, -0.25, 12};
    EXPECT_EQ(ShiftedModelName("/d/m.obj", zero), "/d/m_Shifted_0_0_0.OBJ");
    EXPECT_EQ(ShiftedModelName("/d/m.obj", some), "/d/m_Shifted_150_-25_1200.OBJ");
    EXPECT_EQ(ShiftedRotatedModelName("/d/m.obj", some, -30), "/d/m_Shifted_150_-25_1200_-30.OBJ");
}

TEST_F(ShiftRotateTest, ShiftedCopyMovesVerticesDropsNormalsAndTheirReferences) {
    writeTextFile(dir.path("m.obj"), "mtllib m.mtl\nv 100.004 200 3\nvn 0 0 1\nvt 0.5 0.5\nf 1/1/1 1/1/1 1/1/1\nv 1 2\n");
    modelSession().GlobalModelFileName = dir.path("m.obj");
    dialogs.pushText("1.5 0 -2");
    const std::string out = Shiftthemodel1Click();
    ASSERT_EQ(out, dir.path("m_Shifted_150_0_-200.OBJ"));
    EXPECT_EQ(readTextFile(out),
              "Model shifted by Orvo Systems . .\nmtllib m.mtl\nv 101.50 200.00 1.00\nvt 0.5 0.5\nf 1/1 1/1 1/1\nv 1 2\n");
}

TEST_F(ShiftRotateTest, NinetyDegreesTurnsNorthToEastAboutTheMeanOfTheVertices) {
    writeTextFile(dir.path("m.obj"), "v 10 11 5\nv 10 9 5\nv 11 10 5\nv 9 10 5\nv 7 7\nf 1 2 3\n");
    ASSERT_TRUE(RotateModel(dir.path("m.obj"), dir.path("r.obj"), 90, 0, 0, 1));
    // The short "v" line neither moves the centre (10, 10, 5) nor is changed.
    EXPECT_EQ(readTextFile(dir.path("r.obj")),
              "v 11.000000 10.000000 6.000000\nv 9.000000 10.000000 6.000000\nv 10.000000 9.000000 6.000000\n"
              "v 10.000000 11.000000 6.000000\nv 7 7\nf 1 2 3\n");
}

TEST_F(ShiftRotateTest, ShiftAndRotateWantsAnObjAndTakesCancelAsNoMove) {
    writeTextFile(dir.path("m.dae"), "<COLLADA/>");
    modelSession().GlobalModelFileName = dir.path("m.dae");
    EXPECT_EQ(ShiftRotatethemodel1Click(), "");
    EXPECT_EQ(dialogs.questions().back().text, "The model has to be OBJ");

    writeTextFile(dir.path("m.obj"), "v 1 2 3\n");
    writeTextFile(dir.path("m.PRJ"), "PROJCS[]");
    modelSession().GlobalModelFileName = dir.path("m.obj");
    dialogs.pushCancel();
    EXPECT_EQ(ShiftRotatethemodel1Click(), dir.path("m_Shifted_0_0_0_0.OBJ"));
    EXPECT_EQ(readTextFile(dir.path("m_Shifted_0_0_0_0.OBJ")), "v 1.000000 2.000000 3.000000\n");
    EXPECT_EQ(readTextFile(dir.path("m_Shifted_0_0_0_0.PRJ")), "PROJCS[]");
}
