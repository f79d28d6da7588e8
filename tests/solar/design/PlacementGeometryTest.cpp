// Panel layouts worked out by hand: a pitched south roof with panels lying
// on it, a flat roof with double rows and a tail, and a store that fills up.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "app/services/DialogService.h"
#include "solar/design/PanelFormLogic.h"
#include "solar/design/PanelGeometry.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelText.h"
#include "solar/design/RowSpacing.h"

namespace {

constexpr double kTol = 1e-6;  // m and degrees
const double kDeg = std::acos(-1.0) / 180.0;

TGIS_Point3D pt(double x, double y, double z) { return TGIS_Point3D{x, y, z, 0}; }

void expectNear(const TGIS_Point3D& got, double x, double y, double z, const char* what) {
    EXPECT_NEAR(got.X, x, kTol) << what;
    EXPECT_NEAR(got.Y, y, kTol) << what;
    EXPECT_NEAR(got.Z, z, kTol) << what;
}

class PlacementGeometry : public ::testing::Test {
protected:
    void SetUp() override {
        resetPanelStore();
        resetPanelFormState();
        resetRowSpacingSunModel();
        installDialogService(&dialogs);
        PANEL& g = panelStore().GlobalPanel;
        g.Length = 1722;
        g.Width = 1134;
        SetPanelText(g.ModuleType, "ZV-M54 410 Black");
        panelStore().GlobalPanelGroup = 417;
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetPanelStore();
        resetPanelFormState();
    }
    int place(const std::vector<TGIS_Point3D>& points, double tilt, int repeat) {
        std::vector<TGIS_Point3D> out;
        int vertices = 0, polys = 0;
        return CreatePanelGeometry(points.data(), static_cast<int>(points.size()), 0, tilt, repeat, 0.02f, out,
                                   vertices, polys, first, nullptr);
    }
    ScriptedDialogService dialogs;
    int first = -1;
};

// Roof z = 10 + y tan 30 facing south; panels at 30 degrees lie in it (tilt
// above the roof 0), raised 0.02 m for the tiles and lifted 0.1 m along the
// normal (0, -sin 30, cos 30).
TEST_F(PlacementGeometry, PanelsOnASouthRoofLieInItsPlanePlusTheLift) {
    PANEL& g = panelStore().GlobalPanel;
    g.RoofType = 0;
    g.Lift = 0.1;
    const double t30 = std::tan(30 * kDeg);
    const int azimuth = place({pt(0, 0, 10), pt(6, 0, 10), pt(0, 3, 10 + 3 * t30)}, 30, 3);

    EXPECT_EQ(azimuth, 180);
    EXPECT_TRUE(dialogs.questions().empty());
    ASSERT_EQ(panelStore().NumPanelsCreated, 3);
    EXPECT_EQ(first, 0);
    const double liftY = -0.1 * 0.5, liftZ = 0.1 * std::cos(30 * kDeg);
    const double up = 1.722 * std::cos(30 * kDeg), rise = 1.722 * 0.5;
    for (int k = 0; k < 3; ++k) {
        const PANEL& p = panelStore().panels[k];
        EXPECT_EQ(PanelText(p.Name), QString::number(k + 1) + "/417");
        const double x = k * 1.154;
        expectNear(p.Corners[0], x, liftY, 10.02 + liftZ, "LL");
        expectNear(p.Corners[1], x, liftY + up, 10.02 + liftZ + rise, "UL");
        expectNear(p.Corners[2], x + 1.134, liftY + up, 10.02 + liftZ + rise, "UR");
        expectNear(p.Corners[3], x + 1.134, liftY, 10.02 + liftZ, "LR");
        for (const TGIS_Point3D& c : p.Corners) {
            // Distance along the roof's normal from the raised plane is the lift.
            const double distance = (c.Z - 10.02 - c.Y * t30) * std::cos(30 * kDeg);
            EXPECT_NEAR(distance, 0.1, kTol);
        }
        EXPECT_NEAR(p.DTilt, 30, kTol);
        EXPECT_NEAR(p.DAzimuth, 180, kTol);
        EXPECT_FALSE(p.Landscape);
        EXPECT_DOUBLE_EQ(p.PP[1].X, 6);  // the clicks as given, before the tile clearance
        EXPECT_DOUBLE_EQ(p.PP[0].Z, 10);
    }
    expectNear(panelStore().GlobalPanel.CenterPoint, 0.567, liftY + up / 2, 10.02 + liftZ + rise / 2, "centre");
}

// Flat roof z = 5, depth 7.5 m, panels at 10 degrees with a fixed row gap of
// 0.5 m: one pair (pair footprint 2 x 1.722 cos 10 = 3.391678, inter-pair gap
// 1.0), then 3.108322 m left for a portrait and a landscape tail row.
TEST_F(PlacementGeometry, FlatRoofDoubleRowsEndInAPortraitAndALandscapeTail) {
    PANEL& g = panelStore().GlobalPanel;
    g.RoofType = 1;
    panelFormState().GlobalRowpairing = 2;
    panelFormState().GlobalRowsGap = 0.5f;
    const int azimuth = place({pt(0, 0, 5), pt(5, 0, 5), pt(0, 7.5, 5)}, 10, 4);
    EXPECT_EQ(azimuth, 180);

    // Rows of 4, 4, 4 portrait panels, then the landscape cap: floor((4.596 - 1.722) / 1.742) + 1 = 2.
    ASSERT_EQ(panelStore().NumPanelsCreated, 14);
    const auto& panels = panelStore().panels;
    const double c10 = std::cos(10 * kDeg), s10 = std::sin(10 * kDeg);
    const double secondRow = 1.722 * c10 + 0.02, secondRise = 1.722 * s10;
    const double tail = 2 * 1.722 * c10 + 1.0 + 0.02;
    expectNear(panels[0].Corners[0], 0, 0, 5, "row 1 LL");
    expectNear(panels[0].Corners[1], 0, 1.722 * c10, 5 + secondRise, "row 1 UL");
    expectNear(panels[4].Corners[0], 0, secondRow, 5 + secondRise, "row 2 LL");
    expectNear(panels[4].Corners[1], 0, secondRow + 1.722 * c10, 5 + 2 * secondRise, "row 2 UL");
    expectNear(panels[8].Corners[0], 0, tail, 5, "tail portrait LL");
    // Right-aligned: 4.596 - (1.722 + 0.02 + 1.722) = 1.132 in from the start.
    expectNear(panels[12].Corners[0], 1.132, tail + secondRow, 5 + secondRise, "tail landscape LL");
    expectNear(panels[12].Corners[3], 1.132 + 1.722, tail + secondRow, 5 + secondRise, "tail landscape LR");
    expectNear(panels[12].Corners[1], 1.132, tail + secondRow + 1.134 * c10, 5 + secondRise + 1.134 * s10,
               "tail landscape UL");
    expectNear(panels[13].Corners[3], 4.596, tail + secondRow, 5 + secondRise, "flush with the row below");
    EXPECT_TRUE(panels[12].Landscape);
    EXPECT_FALSE(panels[8].Landscape);
    const char* groups[] = {"/417", "/427", "/437", "/447"};
    for (int i = 0; i < 14; ++i) {
        EXPECT_TRUE(PanelText(panels[i].Name).endsWith(groups[i < 12 ? i / 4 : 3])) << i;
        EXPECT_NEAR(panels[i].DTilt, 10, kTol) << i;
        EXPECT_NEAR(panels[i].DAzimuth, 180, kTol) << i;
    }
}

TEST_F(PlacementGeometry, AFullStoreStopsTheRowSilently) {
    panelStore().GlobalPanel.RoofType = 1;
    panelStore().NumPanelsCreated = 498;
    place({pt(0, 0, 5), pt(5, 0, 5), pt(0, 2, 5)}, 10, 4);
    EXPECT_EQ(panelStore().NumPanelsCreated, 500);
    EXPECT_EQ(first, 498);
    EXPECT_TRUE(dialogs.questions().empty());
    expectNear(panelStore().panels[499].Corners[0], 1.154, 0, 5, "last panel");
}

TEST_F(PlacementGeometry, UnderThreePointsPlacesNothing) {
    EXPECT_EQ(place({pt(0, 0, 5), pt(5, 0, 5)}, 10, 4), 0);
    EXPECT_EQ(panelStore().NumPanelsCreated, 0);
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].text, "At least 3 points needed to create geometry");
}

}  // namespace
