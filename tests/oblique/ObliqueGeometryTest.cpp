// The angles of OPK cameras, the azimuth arithmetic and the resolution
// formula, against values worked out by hand.
#include <gtest/gtest.h>

#include <QFile>

#include "oblique/ObliqueGeometry.h"
#include "support/TestSupport.h"

TEST(OpkAngles, PhiTiltsTheAxisWestOfACameraWithNoOmega) {
    // phi 30 becomes -30: q31 = sin(-30), q33 = cos(-30), so X moves by tan(-30).
    double X, Y, Z;
    XYZFromOPK(1000, 2000, 50, 0, 30, 77, 1, X, Y, Z);
    EXPECT_NEAR(X, 1000 - 0.5773502692, 1e-9);
    EXPECT_NEAR(Y, 2000, 1e-12);
    EXPECT_NEAR(Z, 51, 1e-12);
}

TEST(OpkAngles, ACameraTurnedOverTakesTheTargetBelowIt) {
    // omega 120 becomes -120: q33 = -0.5 < 0, so h = -1; q32 = sin(120) = 0.8660.
    double X, Y, Z;
    XYZFromOPK(0, 0, 10, 120, 0, 0, 1, X, Y, Z);
    EXPECT_NEAR(X, 0, 1e-12);
    EXPECT_NEAR(Y, 1.7320508, 1e-6);
    EXPECT_NEAR(Z, 9, 1e-12);
}

TEST(OpkAngles, AzimuthsOfTheFourQuadrants) {
    double az, incl;
    AzimuthFromXYZ(0, 0, 0, 3, 4, 0, az, incl);
    EXPECT_NEAR(az, 36.8698976, 1e-6);
    EXPECT_NEAR(incl, 0, 1e-12);
    AzimuthFromXYZ(0, 0, 0, 1, -1, 0, az, incl);
    EXPECT_NEAR(az, 135, 1e-6);
    AzimuthFromXYZ(0, 0, 0, -1, 0, 0, az, incl);
    EXPECT_NEAR(az, 270, 1e-6);
    // North-west goes through 6.28, not 2 pi: 314.8175 instead of 315.
    AzimuthFromXYZ(10, 20, 5, 9, 21, 6, az, incl);
    EXPECT_NEAR(az, 314.8174953, 1e-6);
    // atan(1 / (sqrt(2) + 0.01)).
    EXPECT_NEAR(incl, 35.0743005, 1e-6);
}

TEST(OpkAngles, TheAngleBetweenAzimuthsGoesTheShortWayRound) {
    EXPECT_DOUBLE_EQ(GetAngleBetweenAzimuths(90, 100), 10);
    EXPECT_DOUBLE_EQ(GetAngleBetweenAzimuths(350, 10), 20);
    EXPECT_DOUBLE_EQ(GetAngleBetweenAzimuths(10, 350), 20);
    EXPECT_DOUBLE_EQ(GetAngleBetweenAzimuths(0, 180), 180);
}

TEST(Resolution, A90DegreeLensAt100mOver4000PixelsGives5cm) {
    // 36 mm over 2 x 18 mm: a field of view of 90 degrees, 200 m wide at 100 m.
    EXPECT_NEAR(calculateResolutionCmPerPixel(4000, 36, 18, 100), 5, 1e-9);
}

TEST(EcwFromJpg, ACompressedPictureBesideTheJpgIsPreferred) {
    testsupport::ScratchDir dir;
    const QString jpg = QString::fromStdString(dir.path("a.jpg"));
    EXPECT_EQ(EcwFromJpg(jpg), jpg);
    testsupport::writeTextFile(dir.path("a.ecw"), "x");
    EXPECT_EQ(EcwFromJpg(jpg), QString::fromStdString(dir.path("a.ecw")));
}
