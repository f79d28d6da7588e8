// Imperial texts, azimuths and distances.
#include <gtest/gtest.h>

#include "geo/Units.h"

// 1.5 m = 4.92126 ft = 4' 11.06"; 0.1 m = 0.328084 ft = 3.937"; 1 m = 3' 3.37".
TEST(Imperial, LengthsInFeetAndInchesWithTheirSigns) {
    EXPECT_EQ(Imperial(1.5, false), "4' 11\"");
    EXPECT_EQ(Imperial(-1.5, false), "-(4' 11\")");
    EXPECT_EQ(Imperial(1, false), "3' 3\"");
    EXPECT_EQ(Imperial(0.1, false), "3.9\"");
    EXPECT_EQ(Imperial(-0.1, false), "-3.9\"");
    EXPECT_EQ(Imperial(0, false), "0.0\"");
}

// 10 m² = 107.639 ft²; the sign of an area is dropped.
TEST(Imperial, AreasInSquareFeet) {
    EXPECT_EQ(Imperial(10, true), "107.6ft²");
    EXPECT_EQ(Imperial(-10, true), "107.6ft²");
}

TEST(AzimD, ClockwiseFromNorthInAllQuadrantsAndOnTheAxes) {
    EXPECT_NEAR(azimD(0, 0, 1, 1), 45, 1e-7);
    EXPECT_NEAR(azimD(0, 0, 1, -1), 135, 1e-7);
    EXPECT_NEAR(azimD(0, 0, -1, -1), 225, 1e-7);
    EXPECT_NEAR(azimD(0, 0, -1, 1), 315, 1e-7);
    // atan(1/2) = 26.565051177 degrees.
    EXPECT_NEAR(azimD(10, 10, 11, 12), 26.565051177, 1e-7);
    EXPECT_NEAR(azimD(178500, 663500, 178500, 663400), 180, 1e-12);
    EXPECT_EQ(azimD(5, 5, 6, 5), 90);
    EXPECT_EQ(azimD(5, 5, 4, 5), 270);
    EXPECT_EQ(azimD(5, 5, 5, 7), 0);
    EXPECT_EQ(azimD(5, 5, 5, 5), 0);
    // Differences count to the centimetre: 4 mm east is no difference.
    EXPECT_EQ(azimD(0, 0, 0.004, 1), 0);
    EXPECT_EQ(azimD(0, 0, 0.004, 0.003), 0);
}

TEST(Distance, PlaneAndSlope) {
    EXPECT_DOUBLE_EQ(distance(178500, 663500, 178503, 663504), 5);
    EXPECT_DOUBLE_EQ(distance(1, 1, 1, 2, 3, 3), 3);
}
