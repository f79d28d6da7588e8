// The stand-alone formulas of the energy model against values worked out by
// hand (given with each case).
#include <gtest/gtest.h>

#include <cmath>

#include "solar/analysis/EnergyModel.h"

namespace {

HourlySunData hourOf(double altitude, double azimuth, double beam, double diffuse, double reflected) {
    HourlySunData h;
    h.altitude = altitude;
    h.azimuth = azimuth;
    h.beamHorizontalIrradiance = beam;
    h.diffuseHorizontalIrradiance = diffuse;
    h.reflectedHorizontalIrradiance = reflected;
    return h;
}

}  // namespace

TEST(IncidentAngle, OfASouthPanelTiltedThirty) {
    // cos i = sin(alt) cos(tilt) + cos(alt) sin(tilt) cos(sunAz - panelAz).
    // Sun on the normal (altitude 60 due south): 0.
    EXPECT_NEAR(IncidentAngle(30, 180, 60, 180), 0.0, 1e-6);
    // Sun due east at 30: cos i = 0.5 * 0.866 + 0 = 0.43301, i = 64.3411.
    EXPECT_NEAR(IncidentAngle(30, 180, 30, 90), 64.3411, 1e-4);
    // Sun due north at 20: cos i = sin 20 cos 30 - cos 20 sin 30 = -sin 10, i = 100.
    EXPECT_NEAR(IncidentAngle(30, 180, 20, 0), 100.0, 1e-9);
}

TEST(IAMFactor, FallsLinearlyFromSixtyToNinety) {
    EXPECT_EQ(IAMFactor(0), 1.0);
    EXPECT_EQ(IAMFactor(60), 1.0);
    EXPECT_NEAR(IAMFactor(75), 0.5, 1e-12);
    EXPECT_EQ(IAMFactor(90), 0.0);
    EXPECT_EQ(IAMFactor(120), 0.0);
}

TEST(TiltedIrradiance, SumsBeamSkyAndGround) {
    // Panel 30 south, sun on its normal at 60: beam 500 / sin 60 = 577.3503;
    // diffuse 100 (1 + cos 30) / 2 = 93.3013; ground 50 * 0.2 (1 - cos 30) / 2
    // = 0.6699; total 671.3214.
    EXPECT_NEAR(CalculateTotalTiltedIrradiance(hourOf(60, 180, 500, 100, 50), 30, 180, 0.2), 671.3214, 1e-4);
    // Sun due east at 30: beam 400 * cos(64.3411) / sin 30 = 346.4102; diffuse
    // 93.3013; ground 0.6699; total 440.3813.
    EXPECT_NEAR(CalculateTotalTiltedIrradiance(hourOf(30, 90, 400, 100, 50), 30, 180, GlobalGroundAlbedo), 440.3813,
                1e-4);
}

TEST(TiltedIrradiance, DropsBeamBehindThePanelAndNearTheHorizon) {
    // Sun behind the panel (incident 100): diffuse and ground only.
    EXPECT_NEAR(CalculateTotalTiltedIrradiance(hourOf(20, 0, 300, 100, 50), 30, 180, 0.2), 93.9711, 1e-4);
    // sin(0.05 deg) = 0.00087 is not above 0.001: no beam either.
    EXPECT_NEAR(CalculateTotalTiltedIrradiance(hourOf(0.05, 180, 300, 100, 50), 30, 180, 0.2), 93.9711, 1e-4);
}

TEST(TiltedIrradiance, AnHourWithoutClimateDataGivesZero) {
    EXPECT_EQ(CalculateTotalTiltedIrradiance(hourOf(40, 180, -1, -1, -1), 30, 180, 0.2), 0.0);
}

TEST(PanelKinds, RoofTypeTiltAndRating) {
    EXPECT_EQ(GetRoofAlbedo(1), 0.85);
    EXPECT_EQ(GetRoofAlbedo(7), 0.25);  // anything but 1 is tiles
    EXPECT_EQ(DeterminePanelType(0.5, 30), "GroundMount");
    EXPECT_EQ(DeterminePanelType(12, 15), "WhiteRoof");
    EXPECT_EQ(PanelPowerKW(100), 100.0);  // above 100 is watts
    EXPECT_DOUBLE_EQ(PanelPowerKW(100.5), 0.1005);
}
