#include "EnergyHour.h"

#include <cstdint>

#include "EnergyModel.h"

PanelEnergyConstants PanelEnergyConstantsOf(int lengthMm, int widthMm, double efficiency, double noctC,
                                            double tempCoeffPercent) {
    PanelEnergyConstants c;
    c.area = static_cast<double>(static_cast<std::int64_t>(lengthMm) * widthMm) / 1000000.0;
    c.baseEff = efficiency > 1 ? efficiency / 100.0 : efficiency;
    c.NOCT = noctC;
    c.tempCoeff = tempCoeffPercent / 100.0;
    return c;
}

HourEnergy AddHourEnergy(PanelEnergyTotals& totals, const PanelEnergyConstants& panel, const HourEnergyInput& hour,
                         const HourClimate& climate, bool hasTempData) {
    double realVal = hour.realVal;
    if (hasTempData) {
        const double tCell = climate.ambientTemp + (panel.NOCT - 20) * realVal / 800;
        realVal *= 1 + panel.tempCoeff * (tCell - 25);
    }
    if (hour.shadingLossPercent > 0) realVal *= 1 - hour.shadingLossPercent / 100;
    // Kept at single precision, as the shading files and reports have it.
    const double energy = static_cast<float>(realVal * panel.area * panel.baseEff / 1000);
    totals.Total_Energy += energy;
    const double horizontal = hour.beam + hour.diffuse + hour.reflected;
    totals.TotalRawEnergy += horizontal * panel.area * panel.baseEff / 1000;
    if (hour.monthIndex >= 0 && hour.monthIndex < 12) {
        const int m = hour.monthIndex;
        totals.monthlyEnergy[m] += energy;
        if (hour.shaded) totals.monthlyShadedHours[m] += 1;
        totals.monthlyTotalHours[m] += 1;
        totals.monthlyRawEnergy[m] += horizontal * panel.area / 1000;
    }
    return {realVal, energy};
}

void FillCombinedPanelResults(CombinedPanelResults& r, const PanelEnergyTotals& totals, int shadedCount,
                              int directSunHours, double panelPowerKW, double bifacialFactorPercent) {
    r.panel.Annual_kWh = totals.Total_Energy;
    r.annualEnergyMonofacial = totals.Total_Energy;
    r.AdjustedEnergy = totals.Total_Energy;
    r.annualEnergyBifacial = totals.Total_Energy * BIFACIALGAINFACTOR;
    r.RawEnergy = totals.TotalRawEnergy;
    for (int m = 0; m < 12; ++m) {
        r.monthlyEnergyMonofacial[m] = totals.monthlyEnergy[m];
        r.MonthlyAdjusted[m] = totals.monthlyEnergy[m];
        r.monthlyEnergyBifacial[m] = totals.monthlyEnergy[m] * BIFACIALGAINFACTOR;
        r.MonthlyRaw[m] = totals.monthlyRawEnergy[m];
        r.MonthlyShadedHours[m] = totals.monthlyShadedHours[m];
        r.shading.monthlyShading[m] = totals.monthlyTotalHours[m] > 0
                                          ? static_cast<double>(totals.monthlyShadedHours[m]) /
                                                totals.monthlyTotalHours[m] * 100.0
                                          : 0.0;
    }
    r.Shaded_Hours = shadedCount;
    r.shading.Shaded_Hours = shadedCount;
    r.shading.DirectSun_Hours = directSunHours;
    // No direct sun hour gives 0 / 0: the reports show what follows from it.
    r.shading.Shading_Percent = static_cast<double>(shadedCount) / directSunHours * 100.0;
    // Holds whatever tilt, IAM and heat took or gave as well, so it may be negative.
    r.shading.energyLossKwh = totals.TotalRawEnergy - totals.Total_Energy;
    r.Shadingloss_kWh = r.shading.energyLossKwh;
    r.ShadingLoss_Percent = totals.TotalRawEnergy > 0 ? r.shading.energyLossKwh / totals.TotalRawEnergy * 100.0 : 0.0;
    r.NormalizedYield = panelPowerKW > 0 ? totals.Total_Energy / panelPowerKW * 1000.0 : 0.0;
    r.energyPerKwp = r.NormalizedYield;
    r.bifacialJustified = bifacialFactorPercent > 0;
    r.technologyRecommendation = r.bifacialJustified ? "Bifacial" : "Monofacial";
    r.realisticBifacialGain = r.bifacialJustified ? bifacialFactorPercent / 100.0 * totals.Total_Energy : 0.0;
}
