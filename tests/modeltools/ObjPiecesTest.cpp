// Numbers and faces as the streaming model passes read them: the quick
// decimal path must give the very double the full parser gives.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

#include "modeltools/ObjPieces.h"

namespace {

double parsedX(const std::string& line) {
    double x = 0, y = 0, z = 0;
    EXPECT_TRUE(ReadObjVertex(line, x, y, z)) << line;
    return x;
}

bool sameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

}  // namespace

TEST(ObjPieces, VertexNumbersMatchTheFullParserBitForBit) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 200000; ++i) {
        const int decimals = static_cast<int>(random() % 10);
        const double magnitude = std::ldexp(static_cast<double>(random() % (1ull << 52)), -static_cast<int>(random() % 40));
        char text[64];
        std::snprintf(text, sizeof text, "%s%.*f", random() % 2 ? "-" : "", decimals, magnitude);
        const double expected = std::strtod(text, nullptr);
        ASSERT_TRUE(sameBits(parsedX(std::string("v ") + text + " 0 0\n"), expected)) << text;
    }
}

TEST(ObjPieces, VertexNumbersInOtherSpellings) {
    EXPECT_EQ(parsedX("v 1.5e3 0 0\n"), 1500);
    EXPECT_EQ(parsedX("v .25 0 0\n"), 0.25);
    EXPECT_EQ(parsedX("v +7 0 0\n"), 7);
    EXPECT_EQ(parsedX("v 3. 0 0\n"), 3);
    EXPECT_TRUE(sameBits(parsedX("v -0.000 0 0\n"), -0.0));
    EXPECT_EQ(parsedX("v 1234567890.1234567 0 0\n"), 1234567890.1234567);
    EXPECT_EQ(parsedX("v 0.1000000000000000055511151231257827 0 0\n"), 0.1);
    double x, y, z;
    EXPECT_FALSE(ReadObjVertex("v 1 2\n", x, y, z));
    EXPECT_FALSE(ReadObjVertex("v 1 2 abc\n", x, y, z));
}
