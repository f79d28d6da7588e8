// Construction groups from panel geometry: plan edge distances, letters,
// rows and type strings.
#include <gtest/gtest.h>

#include <cstring>

#include "solar/design/AdjacencyGrouping.h"
#include "solar/design/PanelStore.h"

namespace {

// A panel lying flat at height z: x0..x0+w along the row, y0..y0+h up the panel.
PANEL flatPanel(double x0, double y0, double w, double h, double z = 0, bool landscape = false) {
    PANEL p;
    p.Corners[0] = {x0, y0, z, 0};
    p.Corners[1] = {x0, y0 + h, z, 0};
    p.Corners[2] = {x0 + w, y0 + h, z, 0};
    p.Corners[3] = {x0 + w, y0, z, 0};
    p.CenterPoint = {x0 + w / 2, y0 + h / 2, z, 0};
    p.Landscape = landscape;
    p.RoofType = 1;
    return p;
}

class Grouping : public ::testing::Test {
protected:
    void SetUp() override {
        resetPanelStore();
        resetConstructionGroups();
    }
    void add(const PANEL& p) {
        PanelStore& s = panelStore();
        s.panels[s.NumPanelsCreated] = p;
        std::snprintf(s.panels[s.NumPanelsCreated].Name, sizeof p.Name, "%d/1", s.NumPanelsCreated + 1);
        ++s.NumPanelsCreated;
    }
    int group() { return PerformAdjacencyGrouping(constructionGroups().groups.data()); }
    const PANEL& panel(int i) { return panelStore().panels[i]; }
};

TEST_F(Grouping, EdgesTenCentimetresApartJoinAndElevenDoNot) {
    add(flatPanel(-1.0, 0, 1.0, 2.0));
    add(flatPanel(0.1, 0, 1.0, 2.0));
    EXPECT_DOUBLE_EQ(MinEdgeDistance(panel(0), panel(1)), 0.1);
    EXPECT_EQ(group(), 1);
    EXPECT_EQ(panel(1).GroupingName, 'A');

    panelStore().panels[1] = flatPanel(0.11, 0, 1.0, 2.0);
    EXPECT_EQ(group(), 2);
    EXPECT_EQ(panel(0).GroupingName, 'A');
    EXPECT_EQ(panel(1).GroupingName, 'B');
}

TEST_F(Grouping, GrowsThroughAChainWhateverTheStoreOrder) {
    add(flatPanel(4.0, 0, 1.0, 2.0));   // the far end first
    add(flatPanel(20.0, 0, 1.0, 2.0));  // an island
    add(flatPanel(0.0, 0, 1.0, 2.0));
    add(flatPanel(2.0, 0, 1.0, 2.0));
    add(flatPanel(3.0, 0, 1.0, 2.0));
    add(flatPanel(1.0, 0, 1.0, 2.0));
    EXPECT_EQ(group(), 2);
    const CONSTRUCTION_GROUP& a = constructionGroups().groups[0];
    EXPECT_EQ(a.panelCount, 5);
    EXPECT_EQ(panel(1).GroupingName, 'B');
    for (int i : {0, 2, 3, 4, 5}) EXPECT_EQ(panel(i).GroupingName, 'A') << i;
}

TEST_F(Grouping, TheTwentySeventhIslandStaysUnlabelled) {
    for (int k = 0; k < 27; ++k) add(flatPanel(10.0 * k, 0, 1.0, 2.0));
    EXPECT_EQ(group(), 26);
    EXPECT_EQ(panel(0).GroupingName, 'A');
    EXPECT_EQ(panel(25).GroupingName, 'Z');
    EXPECT_EQ(panel(26).GroupingName, 0);
}

TEST_F(Grouping, RowsFollowCornersMeetingEndToEnd) {
    // Lower row with a 20 mm gap, upper row 5 cm up the roof.
    add(flatPanel(0.0, 0, 1.0, 2.0));
    add(flatPanel(1.02, 0, 1.0, 2.0));
    add(flatPanel(0.0, 2.05, 1.0, 2.0));
    add(flatPanel(1.02, 2.05, 1.0, 2.0));
    EXPECT_EQ(group(), 1);
    EXPECT_EQ(panel(0).Row, 1);
    EXPECT_EQ(panel(1).Row, 1);
    EXPECT_EQ(panel(2).Row, 2);
    EXPECT_EQ(panel(3).Row, 2);
}

TEST_F(Grouping, NoPanelsNoGroups) { EXPECT_EQ(group(), 0); }

TEST_F(Grouping, NeighboursInThreeDimensionsAtTwentyCentimetres) {
    const PANEL a = flatPanel(0.0, 0, 1.0, 2.0);
    EXPECT_TRUE(ArePanelsNeighbours(a, flatPanel(1.2, 0, 1.0, 2.0)));
    EXPECT_TRUE(ArePanelsNeighbours(flatPanel(1.2, 0, 1.0, 2.0), a));
    EXPECT_FALSE(ArePanelsNeighbours(a, flatPanel(1.21, 0, 1.0, 2.0)));
    EXPECT_FALSE(ArePanelsNeighbours(a, flatPanel(1.0, 0, 1.0, 2.0, 0.25)));
}

TEST_F(Grouping, TypeStringsFromRowsAndOrientation) {
    add(flatPanel(0.0, 0, 1.0, 2.0, 0.0));
    add(flatPanel(1.0, 0, 1.0, 2.0, 0.15));  // exactly 0.15 higher: still one row
    group();
    CONSTRUCTION_GROUP& g = constructionGroups().groups[0];
    ComputeGroupAttributes(g);
    EXPECT_EQ(g.rowCount, 1);
    EXPECT_STREQ(g.constructionType, "P(2)");
    EXPECT_FLOAT_EQ(g.groupCenterX, 1.0f);

    panelStore().panels[1] = flatPanel(1.0, 0, 2.0, 1.0, 0.5, true);
    ComputeGroupAttributes(g);
    EXPECT_EQ(g.rowCount, 2);
    EXPECT_STREQ(g.constructionType, "P-L(2)");
}

}  // namespace
