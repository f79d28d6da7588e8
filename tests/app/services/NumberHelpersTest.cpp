// The first number in a text and the float helpers' limits.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "app/services/NumberHelpers.h"

TEST(GetFirstNumber, TakesTheFirstRunOfDigitsAndIgnoresSigns) {
    EXPECT_EQ(GetFirstNumber("Panel_17-3"), 17);
    EXPECT_EQ(GetFirstNumber("  42"), 42);
    EXPECT_EQ(GetFirstNumber("-5 and 6"), 5);
    EXPECT_EQ(GetFirstNumber("3.75"), 3);
    EXPECT_EQ(GetFirstNumber("007x"), 7);
    EXPECT_EQ(GetFirstNumber("no digits"), 0);
    EXPECT_EQ(GetFirstNumber(""), 0);
    EXPECT_EQ(GetFirstNumber("id 99999999999"), INT_MAX);
}

TEST(FloatHelpers, DoubleToFloatKeepsWithinTheFloatRangeWithItsSign) {
    EXPECT_EQ(my_double_to_float(0.0), 0.0f);
    EXPECT_EQ(my_double_to_float(1e300), 3e38f);
    EXPECT_EQ(my_double_to_float(-1e300), -3e38f);
    EXPECT_EQ(my_double_to_float(1e-300), 3e-37f);
    EXPECT_EQ(my_double_to_float(-1e-300), -3e-37f);
    EXPECT_EQ(my_double_to_float(3e38), 3e38f);
    EXPECT_EQ(my_double_to_float(3.5e38), 3e38f);
    EXPECT_EQ(my_double_to_float(-2.5), -2.5f);
    EXPECT_EQ(my_double_to_float(1e-36), 1e-36f);
    EXPECT_TRUE(std::isfinite(my_double_to_float(3.4e38)));
}

TEST(FloatHelpers, ColourBytesGoToFractionsAndBack) {
    EXPECT_EQ(my_change_256_int_to_float(0), 0.0f);
    EXPECT_EQ(my_change_256_int_to_float(255), 1.0f);
    EXPECT_EQ(my_change_256_int_to_float(1000), 1.0f);
    EXPECT_NEAR(my_change_256_int_to_float(128), 128.0 / 255.0, 1e-7);
    for (int byte = 0; byte <= 255; ++byte) EXPECT_EQ(my_change_float_to_256_int(my_change_256_int_to_float(byte)), byte);
    // The floor: just below a step stays on the lower byte.
    EXPECT_EQ(my_change_float_to_256_int(0.5f), 127);
    EXPECT_EQ(my_change_float_to_256_int(0.999f), 254);
}
