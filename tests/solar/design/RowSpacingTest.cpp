// Row spacing from a sun that stands, every day of the year, at 6, 30 and 60
// degrees for one hour each, straight on the panel (IAM 1). Energy shares of
// the altitudes: sin 6 : sin 30 : sin 60 = 0.104528 : 0.5 : 0.866025, so 7.1 %
// arrives below 6 degrees and 41.1 % up to 30.
#include <gtest/gtest.h>

#include <cmath>

#include "app/services/DialogService.h"
#include "solar/design/PanelFormLogic.h"
#include "solar/design/PanelStore.h"
#include "solar/design/RowSpacing.h"

namespace {

const double kDeg = std::acos(-1.0) / 180.0;

void testSun(int, int, int, double hour, double, double, double& altitude, double& azimuth) {
    azimuth = 180;
    altitude = hour == 7 ? 6 : hour == 10 ? 30 : hour == 12 ? 60 : hour == 14 ? 45 : -10;
}
// Hour 14 comes from behind the panel and is skipped.
double testIncidence(double, double, double altitude, double) { return altitude == 45 ? 95 : 0; }
double unitIam(double) { return 1; }

PANEL panel(double azimuth) {
    PANEL p;
    p.Length = 2000;
    p.Width = 1000;
    p.DTilt = 30;
    p.DAzimuth = azimuth;
    p.Efficiency = 20;
    return p;
}

class RowSpacing : public ::testing::Test {
protected:
    void SetUp() override { rowSpacingSunModel() = RowSpacingSunModel{testSun, testIncidence, unitIam}; }
    void TearDown() override {
        resetRowSpacingSunModel();
        resetPanelFormState();
        installDialogService(nullptr);
    }
};

// Effective height 2 sin 30 = 1 m, so a spacing is 1 / tan(angle).
TEST_F(RowSpacing, SpacingsFollowTheAltitudesOfTheEnergyShares) {
    const RowSpacingResult r = RowSpacing4Panel(panel(180));
    EXPECT_FLOAT_EQ(r.sunAngle95, 6);
    EXPECT_FLOAT_EQ(r.sunAngle90, 30);
    EXPECT_FLOAT_EQ(r.sunAngle75, 30);
    EXPECT_NEAR(r.spacing95, 9.514364, 1e-5);
    EXPECT_NEAR(r.spacing85, 1.732051, 1e-5);
    // 365 days x 0.4 kWh per unit of sine (2 m2 at 20 %) x 1.470554.
    EXPECT_NEAR(r.AnnualEnergy, 365 * 0.4 * 1.470554, 1e-3);
    EXPECT_EQ(r.totalProductiveHours, 730);
}

TEST_F(RowSpacing, RowsFacingAwayFromSouthStandCloser) {
    EXPECT_NEAR(RowSpacing4Panel(panel(240)).spacing85, 1.732051 * 0.5, 1e-5);
    EXPECT_NEAR(RowSpacing4Panel(panel(10)).spacing85, 1.732051 * std::cos(170 * kDeg) * -1, 1e-5);
}

TEST_F(RowSpacing, WithoutSunTheDefaultAnglesAndTheLowestHeightHold) {
    resetRowSpacingSunModel();
    PANEL flat = panel(180);
    flat.DTilt = 0;
    const RowSpacingResult r = RowSpacing4Panel(flat);
    EXPECT_FLOAT_EQ(r.sunAngle95, 12);
    EXPECT_FLOAT_EQ(r.sunAngle75, 24);
    EXPECT_NEAR(r.spacing95, 0.1 / std::tan(12 * kDeg), 1e-6);
    EXPECT_NEAR(r.spacing80, 0.1 / std::tan(21 * kDeg), 1e-6);
    EXPECT_EQ(r.AnnualEnergy, 0);
}

TEST_F(RowSpacing, TheGapHelpShowsTheTableAndTakesSpacing95) {
    ScriptedDialogService dialogs;
    installDialogService(&dialogs);
    InstallRowSpacingHelp();
    panelFormState().TiltEdit = 30;
    PANEL& g = panelStore().GlobalPanel;
    g = panel(180);
    ASSERT_TRUE(panelform::GapHelpClick());
    EXPECT_NEAR(panelFormState().RowsGap, 9.514364, 1e-5);
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].text,
              QString::fromUtf8("REAL 3D ANALYSIS RESULTS:\n"
                                "Tilt 30° Azimuth 180° Length 2.00m\n\n"
                                "Protection Level | Required Spacing | Actual Shading Loss\n"
                                "-----------------|------------------|-------------------\n"
                                "      95%        |      9.51 m      |     ~5% loss\n"
                                "      90%        |      1.73 m      |     ~10% loss\n"
                                "      85%        |      1.73 m      |     ~15% loss\n"
                                "      80%        |      1.73 m      |     ~20% loss\n"
                                "      75%        |      1.73 m      |     ~25% loss\n"
                                "\nBased on REAL 3D ray-casting with PVGIS weather data"));
    resetPanelStore();
}

}  // namespace
