// The baseline of a tiled-roof placement made level, for each answer to the
// question and without it. Clicks: (0,0,10), (4,0,10.2), (0,3,11.9): 20 cm
// over 4 m, 5 cm a metre, so the operator is asked.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "app/services/DialogService.h"
#include "solar/design/PanelFormLogic.h"
#include "solar/design/PanelGeometry.h"
#include "solar/design/PanelGeometryBaseline.h"
#include "solar/design/PanelStore.h"

namespace {

constexpr double kTol = 1e-6;

class PlacementBaseline : public ::testing::Test {
protected:
    void SetUp() override {
        installDialogService(&dialogs);
        PA = PB;
    }
    void TearDown() override { installDialogService(nullptr); }
    bool correct(int button) {
        dialogs.pushButton(button);
        return CorrectTiledBaseline(PA.data(), PB.data(), 3);
    }
    void expectZ(double z0, double z1, double z2) {
        EXPECT_NEAR(PA[0].Z, z0, kTol);
        EXPECT_NEAR(PA[1].Z, z1, kTol);
        EXPECT_NEAR(PA[2].Z, z2, kTol);
    }
    ScriptedDialogService dialogs;
    const std::vector<TGIS_Point3D> PB{{0, 0, 10, 0}, {4, 0, 10.2, 0}, {0, 3, 11.9, 0}};
    std::vector<TGIS_Point3D> PA;
};

TEST_F(PlacementBaseline, TheQuestionNamesSkewHeightAndSlope) {
    correct(3);
    ASSERT_EQ(dialogs.questions().size(), 1u);
    const auto& q = dialogs.questions()[0];
    // atan(0.2 / 4) = 2.862 degrees.
    EXPECT_EQ(q.title, QString::fromUtf8("Skew: 2.86°  Height diff: 20.0cm  Tilt/m: 5.00cm"));
    EXPECT_EQ(q.buttons.mid(0, 3), QStringList({"Skew", "Tilt", "None"}));
}

TEST_F(PlacementBaseline, ClosingTheQuestionCancelsThePlacement) {
    EXPECT_FALSE(correct(0));

    resetPanelStore();
    resetPanelFormState();
    panelStore().GlobalPanel.Length = 1722;
    panelStore().GlobalPanel.Width = 1134;
    dialogs.pushButton(0);
    std::vector<TGIS_Point3D> out;
    int vertices = 0, polys = 0, first = 0;
    EXPECT_EQ(CreatePanelGeometry(PB.data(), 3, 0, 30, 3, 0.02f, out, vertices, polys, first, nullptr),
              kPlacementCancelled);
    EXPECT_EQ(panelStore().NumPanelsCreated, 0);
    resetPanelStore();
}

// The normal (4,0,0.2) x (0,3,1.9) = (-0.6,-7.6,12) gives the level direction
// (7.6,-0.6)/7.623647 in the plane; the baseline keeps its 4.004997 m.
TEST_F(PlacementBaseline, SkewTurnsTheBaselineLevelInThePlane) {
    ASSERT_TRUE(correct(1));
    const double length = std::sqrt(16.04);
    const double dx = 7.6 / std::sqrt(58.12), dy = -0.6 / std::sqrt(58.12);
    EXPECT_NEAR(PA[1].X, length * dx, kTol);
    EXPECT_NEAR(PA[1].Y, length * dy, kTol);
    expectZ(10.02, 10.02, 11.92);
    EXPECT_NEAR(-0.6 * PA[1].X - 7.6 * PA[1].Y, 0, kTol);  // still in the roof plane
}

TEST_F(PlacementBaseline, TiltRaisesTheLowerEndAndTheThirdPointWithIt) {
    ASSERT_TRUE(correct(2));
    expectZ(10.22, 10.22, 12.12);
    EXPECT_DOUBLE_EQ(PA[1].X, 4);
}

TEST_F(PlacementBaseline, NoneStillLevelsTheBaselineAtTheHigherEnd) {
    ASSERT_TRUE(correct(3));
    expectZ(10.22, 10.22, 11.92);
}

TEST_F(PlacementBaseline, AGentleSlopeIsLevelledWithoutAQuestionAboveOneCentimetre) {
    PA = {{0, 0, 10, 0}, {4, 0, 10.03, 0}, {0, 3, 11.9, 0}};
    const std::vector<TGIS_Point3D> before = PA;
    ASSERT_TRUE(CorrectTiledBaseline(PA.data(), before.data(), 3));
    expectZ(10.05, 10.05, 11.92);

    PA = {{0, 0, 10, 0}, {4, 0, 10.005, 0}, {0, 3, 11.9, 0}};
    const std::vector<TGIS_Point3D> small = PA;
    ASSERT_TRUE(CorrectTiledBaseline(PA.data(), small.data(), 3));
    expectZ(10.02, 10.025, 11.92);
    EXPECT_TRUE(dialogs.questions().empty());
}

}  // namespace
