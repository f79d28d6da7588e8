// The row plan's other cases, counted by hand for Lm 1.722, Wm 1.134, gap
// 0.02 and panels lying flat on the roof (footprints 1.722 and 1.134).
#include <gtest/gtest.h>

#include "solar/design/PanelGeometryRows.h"

namespace {

RowPlanInput input(int pairing, bool tilted, double depth) {
    RowPlanInput in;
    in.rowPairing = pairing;
    in.roofIsTilted = tilted;
    in.repeat = 5;
    in.depthInPlane = depth;
    in.projPortrait = 1.722;
    in.projLandscape = 1.134;
    in.lengthM = 1.722;
    in.widthM = 1.134;
    in.gap = 0.02;
    in.rowGap = 0.6;
    in.baselineLength = 5.8;
    return in;
}

TEST(PlacementRowPlan, SecondRowCapKeepsALandscapeRowWithinThePortraitRow) {
    // (4 x 1.154 + 1.134 - 1.722) / 1.742 = 2.313: 3 landscape panels under 5 portrait ones.
    EXPECT_EQ(computeSecondRowCap(5, 1.722, 1.134, 0.02), 3);
    EXPECT_EQ(computeSecondRowCap(1, 1.722, 1.134, 0.02), 1);
    EXPECT_EQ(computeSecondRowCap(0, 1.722, 1.134, 0.02), 1);
}

// 4.7 m: two portrait rows (3.444), 1.256 left takes a landscape tail of
// floor(5.82 / 1.742) = 3 panels, all packed 0.02 m apart.
TEST(PlacementRowPlan, ATiltedRoofPacksTightWithALandscapeTail) {
    const auto rows = PlanRows(input(1, true, 4.7));
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_DOUBLE_EQ(rows[1].offset, 1.742);
    EXPECT_TRUE(rows[2].landscape);
    EXPECT_DOUBLE_EQ(rows[2].offset, 3.484);
    EXPECT_EQ(rows[2].panelCount, 3);
    EXPECT_EQ(PlanRows(input(1, true, 4.5)).size(), 2u);  // 1.056 left: no tail
}

// 5.5 m with 0.6 m between rows: floor(6.1 / 2.322) = 2 rows, 1.456 left.
TEST(PlacementRowPlan, SingleRowsOnAFlatRoofKeepTheirGap) {
    const auto rows = PlanRows(input(1, false, 5.5));
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_DOUBLE_EQ(rows[1].offset, 2.342);
    EXPECT_DOUBLE_EQ(rows[2].offset, 4.684);
    EXPECT_TRUE(rows[2].landscape);
    EXPECT_EQ(rows[2].panelCount, 3);
    EXPECT_EQ(PlanRows(input(1, false, 5.1)).size(), 2u);  // 1.056 left: no tail
}

TEST(PlacementRowPlan, OneRowWhenSingleWhateverTheDepth) {
    RowPlanInput in = input(0, true, 20);
    in.landscape = true;
    const auto rows = PlanRows(in);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_TRUE(rows[0].landscape);
    EXPECT_EQ(rows[0].panelCount, 5);
}

}  // namespace
