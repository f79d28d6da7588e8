// Panel names N/G, group numbers and the names read back from scene layers.
#include <gtest/gtest.h>

#include "solar/design/PanelLayers.h"
#include "solar/design/PanelNames.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelStoreOps.h"
#include "solar/design/PanelText.h"
#include "support/SceneBuilders.h"
#include "support/TestSupport.h"

void PrintTo(const QString& text, std::ostream* os) { *os << '"' << text.toStdString() << '"'; }

namespace {

PANEL named(const QString& name) {
    PANEL panel;
    SetPanelText(panel.Name, name);
    return panel;
}

void addPanel(const QString& name) {
    PanelStore& store = panelStore();
    store.panels[store.NumPanelsCreated++] = named(name);
}

class PanelNames : public ::testing::Test {
protected:
    void SetUp() override { resetPanelStore(); }
    void TearDown() override { resetPanelStore(); }
};

TEST_F(PanelNames, GroupOfANewNameIsClampedToOneAnd990) {
    const std::pair<int, const char*> cases[] = {{0, "1/1"}, {-40, "1/1"}, {990, "1/990"}, {996, "1/990"}};
    for (const auto& [group, name] : cases) {
        panelStore().GlobalPanelGroup = group;
        EXPECT_EQ(GetNewPanelname(), name) << group;
    }
}

TEST_F(PanelNames, NewNumberIsOneAboveTheHighestAliveAndGapsStayFree) {
    panelStore().GlobalPanelGroup = 100;
    for (int n = 1; n <= 10; ++n) addPanel(QString::asprintf("%d/100", n));
    DeletePanelByName("7/100");
    EXPECT_EQ(GetNewPanelname(), "11/100");
    DeletePanelByName("10/100");
    EXPECT_EQ(GetNewPanelname(), "10/100");
}

TEST_F(PanelNames, NamesWithoutLeadingDigitsCountForNothing) {
    panelStore().GlobalPanelGroup = 5;
    for (const char* name : {"PANEL", "x99/3", "4/800", "12"}) addPanel(name);
    EXPECT_EQ(GetNewPanelname(), "13/5");
}

TEST_F(PanelNames, FindsByNameIgnoringCaseAndFirstMatchWins) {
    for (const char* name : {"3/7", "Ab/1", "aB/1"}) addPanel(name);
    EXPECT_EQ(GetPanelIndexFromName("ab/1"), 1);
    EXPECT_EQ(GetPanelIndexFromName("3/70"), -1);
    EXPECT_EQ(GetPanelIndexFromName(""), -1);
}

TEST_F(PanelNames, GroupsAndSuffixes) {
    EXPECT_EQ(GetGroup(named("12/417")), "417");
    EXPECT_EQ(GetPanelGroup(named("12/417")), 417);
    EXPECT_EQ(GetGroup(named("12")), "");
    EXPECT_EQ(GetPanelGroup(named("12")), -1);
    EXPECT_EQ(GetPanelGroup(named("1/2/3")), 2);
    EXPECT_EQ(ExtractNumericSuffix("12/417"), 417);
    EXPECT_EQ(ExtractNumericSuffix("A7b"), 0);
    EXPECT_EQ(ExtractNumericSuffix("x0042"), 42);
    EXPECT_EQ(RowGroupNumber(995, 10), 96);
    EXPECT_EQ(RowGroupNumber(989, 1), 999);
    EXPECT_EQ(GroupLetterOfGroup(417), 'B');  // 417 = 16 * 26 + 1
    EXPECT_EQ(GroupLetterOfGroup(-1), 'Z');
}

TEST_F(PanelNames, TextsAreCutToTheirArrays) {
    PANEL panel;
    SetPanelText(panel.Name, "1234567890123");
    EXPECT_EQ(PanelText(panel.Name), "123456789");
    SetPanelText(panel.ModuleType, QString(40, 'M'));
    EXPECT_EQ(PanelText(panel.ModuleType).size(), 29);
    SetPanelText(panel.Name, QString::fromUtf8("12345678\xC3\xA4"));  // the two-byte letter would not fit
    EXPECT_EQ(PanelText(panel.Name), "12345678");
}

TEST(PanelLayerNames, NameAndIndexFromLayerNames) {
    resetPanelStore();
    addPanel("12/417");
    const std::tuple<const char*, const char*, int> cases[] = {
        {"Panel-12_417_12_417_geometry", "12/417", 0},
        {"Panels_20250101_101010_12_417_geometry", "12/417", 0},
        {"Panel-13_417_13_417_geometry", "13/417", -1},
        {"road_geometry", "UNKNOWN", -1000},
        {"", "UNKNOWN", -1000},
        {"panel-12_417_12_417_geometry", "UNKNOWN", -1000},
        {"Panel-12_417_12_417_mesh", "", -1000},
        {"Panel-12_417_12_417_geometry_", "", -1000},
        {"P1_2_geometry", "UNKNOWN", -1000},
    };
    for (const auto& [layer, name, index] : cases) {
        EXPECT_EQ(GetPanelNameFromLayer(layer), name) << layer;
        EXPECT_EQ(GetPanelIndexFromLayer(layer), index) << layer;
    }
    resetPanelStore();
}

TEST(PanelLayerNames, LayerAndPrefixOfAPanelComeFromTheScene) {
    testsupport::EngineFixtureGuard engine;
    testsupport::addLayer(testsupport::makeSquare("model_geometry", 0, 0, 0, 10));
    testsupport::addLayer(testsupport::makeSquare("P3Panel-12_417_12_417_geometry", 0, 0, 1, 1));
    EXPECT_EQ(GetLayerOfPanel(named("12/417")), "P3Panel-12_417_12_417_geometry");
    EXPECT_EQ(GetPrefixOfPanel(named("12/417")), "P3Panel-12_417_12_417");
    EXPECT_EQ(GetPrefixOfPanel(named("12/418")), "");
}

}  // namespace
