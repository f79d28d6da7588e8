// One hour's energy, the climate look-up and the panel's year, against sums
// worked out by hand.
#include <gtest/gtest.h>

#include <cmath>

#include "solar/analysis/EnergyHour.h"

namespace {

const QStringList kClimate = {
    "MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance,AvgTemperature,"
    "AvgWindSpeed",
    "06-21,09:00,500.00,100.00,20.00,28.5,3.2",
    "06-21,09:00,1.00,1.00,1.00,99.0,9.9",  // a second line of the key is never reached
    "06-21,10:00,510.00,110.00,21.00,abc,2.0",
    "06-21,11:00,520.00,120.00,22.00",
    "short",
};

}  // namespace

TEST(PanelConstants, AreaEfficiencyAndCoefficients) {
    const PanelEnergyConstants c = PanelEnergyConstantsOf(1722, 1134, 21, 45, -0.35);
    EXPECT_DOUBLE_EQ(c.area, 1.952748);
    EXPECT_DOUBLE_EQ(c.baseEff, 0.21);
    EXPECT_DOUBLE_EQ(c.NOCT, 45);
    EXPECT_DOUBLE_EQ(c.tempCoeff, -0.0035);
    EXPECT_DOUBLE_EQ(PanelEnergyConstantsOf(1722, 1134, 0.21, 45, -0.35).baseEff, 0.21);
    EXPECT_DOUBLE_EQ(PanelEnergyConstantsOf(1722, 1134, 1, 45, -0.35).baseEff, 1.0);  // exactly 1 is a fraction
}

TEST(HourClimateIndex, AnswersAsTheFirstLineOfTheHour) {
    const HourClimateIndex index(kClimate);
    HourClimate c = index.lookup(6, 21, 9);
    EXPECT_DOUBLE_EQ(c.ambientTemp, 28.5);
    EXPECT_DOUBLE_EQ(c.windSpeed, 3.2);
    c = index.lookup(6, 21, 10);  // an unreadable temperature keeps its default
    EXPECT_DOUBLE_EQ(c.ambientTemp, 20);
    EXPECT_DOUBLE_EQ(c.windSpeed, 2.0);
    c = index.lookup(6, 21, 11);  // fewer than 7 fields: defaults
    EXPECT_DOUBLE_EQ(c.ambientTemp, 20);
    EXPECT_DOUBLE_EQ(c.windSpeed, 1);
    EXPECT_DOUBLE_EQ(index.lookup(12, 1, 9).ambientTemp, 20);  // no line of that hour
    // The header is no data line, even if it began like one.
    EXPECT_DOUBLE_EQ(HourClimateIndex(QStringList{"06-21,09:00,1,1,1,30,4"}).lookup(6, 21, 9).ambientTemp, 20);
}

TEST(HourEnergy, DeratesForHeatThenShade) {
    // Panel 2000 x 1000 mm, 20 %, NOCT 45, -0.4 %/C; 800 W/m2 at 25 C air:
    // cell 25 + 25 * 800 / 800 = 50 C, derate 1 - 0.004 * 25 = 0.9 -> 720;
    // 14 % shade -> 619.2; energy 619.2 * 2 * 0.2 / 1000 = 0.24768 kWh (float).
    const PanelEnergyConstants panel = PanelEnergyConstantsOf(2000, 1000, 20, 45, -0.4);
    PanelEnergyTotals totals;
    HourEnergyInput hour;
    hour.realVal = 800;
    hour.beam = 500;
    hour.diffuse = 100;
    hour.reflected = 20;
    hour.shadingLossPercent = 14;
    hour.shaded = true;
    hour.monthIndex = 5;
    const HourEnergy e = AddHourEnergy(totals, panel, hour, HourClimate{25, 3}, true);
    EXPECT_NEAR(e.irradiance, 619.2, 1e-9);
    EXPECT_EQ(e.energy, static_cast<double>(0.24768f));
    EXPECT_EQ(totals.Total_Energy, e.energy);
    // Raw: 620 W/m2 horizontal * 2 m2 * 0.2 / 1000 = 0.248; the month's raw
    // has no efficiency: 620 * 2 / 1000 = 1.24.
    EXPECT_NEAR(totals.TotalRawEnergy, 0.248, 1e-12);
    EXPECT_NEAR(totals.monthlyRawEnergy[5], 1.24, 1e-12);
    EXPECT_EQ(totals.monthlyShadedHours[5], 1);
    EXPECT_EQ(totals.monthlyTotalHours[5], 1);
    EXPECT_EQ(totals.monthlyEnergy[5], e.energy);
}

TEST(HourEnergy, NoTemperatureColumnMeansNoDerating) {
    const PanelEnergyConstants panel = PanelEnergyConstantsOf(2000, 1000, 20, 45, -0.4);
    PanelEnergyTotals totals;
    HourEnergyInput hour;
    hour.realVal = 800;
    hour.monthIndex = 12;  // outside the year: only the annual sums move
    const HourEnergy e = AddHourEnergy(totals, panel, hour, HourClimate{}, false);
    EXPECT_EQ(e.irradiance, 800.0);
    EXPECT_NEAR(e.energy, 0.32, 1e-7);
    EXPECT_NEAR(totals.Total_Energy, 0.32, 1e-7);
    for (int m = 0; m < 12; ++m) EXPECT_EQ(totals.monthlyTotalHours[m], 0);
    // An hour missing from the climate list (-1 in each component) lowers the raw sums.
    hour.realVal = 0;
    hour.beam = hour.diffuse = hour.reflected = -1;
    AddHourEnergy(totals, panel, hour, HourClimate{}, false);
    EXPECT_NEAR(totals.TotalRawEnergy, -3 * 2 * 0.2 / 1000, 1e-12);
}

TEST(PanelResults, FilledFromTheYearsSums) {
    PanelEnergyTotals totals;
    totals.Total_Energy = 400;
    totals.TotalRawEnergy = 500;
    totals.monthlyEnergy[0] = 10;
    totals.monthlyRawEnergy[0] = 60;
    totals.monthlyShadedHours[0] = 3;
    totals.monthlyTotalHours[0] = 12;
    CombinedPanelResults r;
    FillCombinedPanelResults(r, totals, 30, 1200, 0.4, 10);
    EXPECT_EQ(r.AdjustedEnergy, 400);
    EXPECT_EQ(r.panel.Annual_kWh, 400);
    EXPECT_NEAR(r.annualEnergyBifacial, 408, 1e-4);  // fixed 2 % gain, not the module's 10
    EXPECT_NEAR(r.monthlyEnergyBifacial[0], 10.2, 1e-5);
    EXPECT_DOUBLE_EQ(r.shading.monthlyShading[0], 25.0);  // 3 of 12 hours
    EXPECT_EQ(r.shading.monthlyShading[1], 0.0);
    EXPECT_DOUBLE_EQ(r.shading.Shading_Percent, 2.5);  // 30 of 1200
    EXPECT_EQ(r.Shadingloss_kWh, 100);                 // 500 raw - 400 delivered
    EXPECT_DOUBLE_EQ(r.ShadingLoss_Percent, 20);
    EXPECT_DOUBLE_EQ(r.NormalizedYield, 1000000);  // 400 / 0.4 * 1000
    EXPECT_EQ(r.technologyRecommendation, "Bifacial");
    EXPECT_DOUBLE_EQ(r.realisticBifacialGain, 40);
}

TEST(PanelResults, EdgeCasesOfAnEmptyYear) {
    PanelEnergyTotals totals;
    totals.Total_Energy = 50;
    CombinedPanelResults r;
    FillCombinedPanelResults(r, totals, 0, 0, 0, 0);
    EXPECT_TRUE(std::isnan(r.shading.Shading_Percent));  // 0 / 0 stands unguarded
    EXPECT_EQ(r.ShadingLoss_Percent, 0);                  // no raw energy
    EXPECT_EQ(r.NormalizedYield, 0);                      // no rating
    EXPECT_EQ(r.shading.energyLossKwh, -50);              // tilt and IAM may give more than raw
    EXPECT_EQ(r.technologyRecommendation, "Monofacial");
    EXPECT_EQ(r.realisticBifacialGain, 0);
}
