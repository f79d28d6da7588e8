// Scores and grades of panels and of the system, at their boundaries.
#include <gtest/gtest.h>

#include <limits>

#include "solar/analysis/ReportScores.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

}  // namespace

TEST(PanelScore, AnyPositiveRawScoreIsFullMarksAndTheRestIsZero) {
    // raw = 85 - 0.5 × percent: 85 at 0 %, 35 at 100 %, 0.5 at 169 %.
    EXPECT_EQ(PanelScoreFromShading(0), 100);
    EXPECT_EQ(PanelScoreFromShading(100), 100);
    EXPECT_EQ(PanelScoreFromShading(169), 100);
    // Exactly 0 at 170 %, negative beyond, and a panel without direct sun (0 / 0).
    EXPECT_EQ(PanelScoreFromShading(170), 0);
    EXPECT_EQ(PanelScoreFromShading(171), 0);
    EXPECT_EQ(PanelScoreFromShading(kNaN), 0);
}

TEST(PanelGrade, ThresholdsAreInclusiveAndNotANumberIsTheLowest) {
    EXPECT_EQ(PanelGrade(100), "A+ EXCELLENT");
    EXPECT_EQ(PanelGrade(90), "A+ EXCELLENT");
    EXPECT_EQ(PanelGrade(89.999), "A  VERY GOOD");
    EXPECT_EQ(PanelGrade(80), "A  VERY GOOD");
    EXPECT_EQ(PanelGrade(70), "B  GOOD");
    EXPECT_EQ(PanelGrade(69.99), "C  ACCEPTABLE");
    EXPECT_EQ(PanelGrade(60), "C  ACCEPTABLE");
    EXPECT_EQ(PanelGrade(59.99), "D  NEEDS IMPROVEMENT");
    EXPECT_EQ(PanelGrade(0), "D  NEEDS IMPROVEMENT");
    EXPECT_EQ(PanelGrade(kNaN), "D  NEEDS IMPROVEMENT");
}

TEST(PerformanceScore, ClampsLikeThePanelScore) {
    // No theoretical energy: 0 whatever else.
    EXPECT_EQ(CalculatePerformanceScore(500, 0, 0, 32, 180), 0);
    EXPECT_EQ(CalculatePerformanceScore(500, -1, 0, 32, 180), 0);
    // A poor but positive score (ratio 0.1, tilt 80: 1 - 0.3 × 48 / 90 = 0.84,
    // azimuth 90: - 0.2) is still 1.
    EXPECT_EQ(CalculatePerformanceScore(100, 1000, 90, 80, 90), 1);
    // Exactly 0: no energy, or a shading loss of 100 %.
    EXPECT_EQ(CalculatePerformanceScore(0, 1000, 0, 32, 180), 0);
    EXPECT_EQ(CalculatePerformanceScore(800, 1000, 100, 32, 180), 0);
    // Negative (a loss above 100 %) and not a number.
    EXPECT_EQ(CalculatePerformanceScore(800, 1000, 150, 32, 180), 0);
    EXPECT_EQ(CalculatePerformanceScore(kNaN, 1000, 0, 32, 180), 0);
    // Facing north: azimuth difference 180, orientation 1 - 0.4 = 0.6, still positive;
    // at azimuth 350 the difference wraps to 170, not 190.
    EXPECT_EQ(CalculatePerformanceScore(800, 1000, 0, 32, 0), 1);
    EXPECT_EQ(CalculatePerformanceScore(800, 1000, 0, 32, 350), 1);
}

TEST(CalculateGrade, EachBoundIsTheLowestScoreOfItsGrade) {
    const struct {
        double score;
        const char* grade;
    } cases[] = {{100, "A+"}, {90, "A+"}, {89.9, "A"}, {85, "A"}, {80, "A-"}, {75, "B+"}, {70, "B"},
                 {65, "B-"},  {60, "C+"}, {55, "C"},   {50, "C-"}, {49.9, "D"}, {40, "D"}, {39.99, "F"},
                 {-5, "F"},   {kNaN, "F"}};
    for (const auto& c : cases) EXPECT_EQ(CalculateGrade(c.score), c.grade) << c.score;
}
