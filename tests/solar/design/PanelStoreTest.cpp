// The live store: importing staged panels, the soft delete, sorting,
// listing, picking in plan view, and the PANEL_LIST library.
#include <gtest/gtest.h>

#include <QFile>
#include <cmath>
#include <cstdio>

#include "app/services/DialogService.h"
#include "app/services/SunGlobalLog.h"
#include "solar/design/PanelImport.h"
#include "solar/design/PanelList.h"
#include "solar/design/PanelPicking.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelStoreOps.h"
#include "solar/design/PanelText.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;

namespace {

PANEL named(const QString& name) {
    PANEL panel;
    SetPanelText(panel.Name, name);
    return panel;
}

void stage(const PANEL& panel) { panelStore().panelsT[panelStore().NumPanelsCreatedT++] = panel; }
void addLive(const PANEL& panel) { panelStore().panels[panelStore().NumPanelsCreated++] = panel; }

QStringList liveNames() {
    QStringList names;
    for (int i = 0; i < panelStore().NumPanelsCreated; ++i) names << PanelText(panelStore().panels[i].Name);
    return names;
}

// An active panel from its LL corner, the LL-LR edge (ax, ay) and the LL-UL edge (bx, by).
PANEL panelAt(const char* name, double x, double y, double ax, double ay, double bx, double by) {
    PANEL panel = named(name);
    panel.Active = true;
    panel.Corners[0] = {x, y, 10, 0};
    panel.Corners[1] = {x + bx, y + by, 10, 0};
    panel.Corners[2] = {x + ax + bx, y + ay + by, 10, 0};
    panel.Corners[3] = {x + ax, y + ay, 10, 0};
    return panel;
}

class PanelStoreTest : public ::testing::Test {
protected:
    void SetUp() override {
        resetPanelStore();
        sunGlobalLog().SunGlobalLogfile = std::fopen(dir.path("sun.log").c_str(), "w");
    }
    void TearDown() override {
        resetPanelStore();
        resetSunGlobalLog();
    }
    std::string sunLog() {
        resetSunGlobalLog();
        return readTextFile(dir.path("sun.log"));
    }
    ScratchDir dir;
};

TEST_F(PanelStoreTest, ImportSkipsEmptyAndDuplicateNamesAndLogsTheCounts) {
    addLive(named("1/5"));
    for (const char* name : {"2/5", "   ", "1/5", "3/5", "2/5"}) stage(named(name));
    PANEL full = named("4/5");
    full.Length = 1762;
    stage(full);
    EXPECT_EQ(AddPanelsT(), 3);
    EXPECT_EQ(panelStore().NumPanelsCreatedT, 0);
    EXPECT_EQ(liveNames(), (QStringList{"1/5", "2/5", "3/5", "4/5"}));
    EXPECT_EQ(panelStore().panels[3].Length, 1762);
    for (const char* name : {"2/5", "3/5"}) stage(named(QString(name)));
    EXPECT_EQ(AddPanelsT(), 0);  // the same file a second time
    EXPECT_EQ(sunLog(),
              "AddPanelsT: start  K=6  NumPanelsCreated(before)=1\n"
              "AddPanelsT: done  added=3  dupSkipped=2  emptySkipped=1  capSkipped=0  NumPanelsCreated(after)=4\n"
              "AddPanelsT: start  K=2  NumPanelsCreated(before)=4\n"
              "AddPanelsT: done  added=0  dupSkipped=2  emptySkipped=0  capSkipped=0  NumPanelsCreated(after)=4\n");
}

TEST_F(PanelStoreTest, ImportStopsSilentlyAtFiveHundred) {
    for (int i = 0; i < 498; ++i) addLive(named(QString::asprintf("%d/1", i + 1)));
    for (int i = 0; i < 5; ++i) stage(named(QString::asprintf("%d/2", i + 1)));
    EXPECT_EQ(AddPanelsT(), 2);
    EXPECT_EQ(panelStore().NumPanelsCreated, 500);
    EXPECT_NE(sunLog().find("added=2  dupSkipped=0  emptySkipped=0  capSkipped=3  NumPanelsCreated(after)=500\n"),
              std::string::npos);
}

TEST_F(PanelStoreTest, DeleteRenamesTheFileWhateverItsCaseAndClosesTheGap) {
    testsupport::writeTextFile(dir.path("PANEL-2_7.DAE"), "<COLLADA/>\n");
    for (const char* name : {"1/7", "2/7", "3/7", "4/7"}) addLive(named(name));
    SetPanelText(panelStore().panels[1].Filename, QString::fromStdString(dir.path("Panel-2_7.dae")));
    SetPanelText(panelStore().panels[2].Filename, "/nonexistent/Panel-3_7.dae");
    DeletePanelByName("2/7");
    EXPECT_FALSE(QFile::exists(QString::fromStdString(dir.path("PANEL-2_7.DAE"))));
    EXPECT_EQ(readTextFile(dir.path("PANEL-2_7.DA-")), "<COLLADA/>\n");
    DeletePanelByName("3/7");
    DeletePanelByName("9/9");
    EXPECT_EQ(liveNames(), (QStringList{"1/7", "4/7"}));
}

TEST_F(PanelStoreTest, SortOrdersByNumberThenGroupMovingWholeRecords) {
    for (const char* name : {"10/3", "2/900", "2/15", "1/999"}) {
        PANEL panel = named(name);
        panel.Length = QString(name).remove('/').toInt();
        addLive(panel);
    }
    SortPanels();
    EXPECT_EQ(liveNames(), (QStringList{"1/999", "2/15", "2/900", "10/3"}));
    EXPECT_EQ(panelStore().panels[2].Length, 2900);

    ScriptedDialogService dialogs;
    installDialogService(&dialogs);
    ListPanels();
    installDialogService(nullptr);
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].title, "4 panels");
    EXPECT_EQ(dialogs.questions()[0].text, "Panels sorted:\n1/999\n2/15\n2/900\n10/3\n");
}

TEST_F(PanelStoreTest, PickingTakesTheLowerIndexOnASharedEdgeAndSkipsInactivePanels) {
    PANEL off = panelAt("0/1", 0, 0, 2, 0, 0, 2);
    off.Active = false;
    addLive(off);
    addLive(panelAt("1/1", 0, 0, 1, 0, 0, 2));
    addLive(panelAt("2/1", 1, 0, 1, 0, 0, 2));
    addLive(panelAt("3/1", 5, 5, 1, 0, 0, 0));  // no height: never picked
    EXPECT_EQ(GetPanelIndexFromCoordinates(1.0, 1.0, 99), 1);
    EXPECT_EQ(GetPanelIndexFromCoordinates(1.5, 1.0, -99), 2);
    EXPECT_EQ(GetPanelIndexFromCoordinates(5.5, 5.0, 0), -1);
}

TEST_F(PanelStoreTest, PickingForgivesTwoCentimetresOutsideTheEdge) {
    addLive(panelAt("1/1", 100, 200, 1.7, 0, 0, 1.1));
    EXPECT_EQ(GetPanelIndexFromCoordinates(100 - 0.019, 200.5, 0), 0);
    EXPECT_EQ(GetPanelIndexFromCoordinates(100.5, 201.1 + 0.019, 0), 0);
    EXPECT_EQ(GetPanelIndexFromCoordinates(101.7 + 0.021, 200.5, 0), -1);
    EXPECT_EQ(GetPanelIndexFromCoordinates(100.5, 200 - 0.021, 0), -1);
}

TEST_F(PanelStoreTest, PickingFollowsATurnedPanel) {
    const double c = std::sqrt(0.5);  // 2 x 1 m turned 45 degrees about LL at the origin
    addLive(panelAt("1/1", 0, 0, 2 * c, 2 * c, -c, c));
    EXPECT_EQ(GetPanelIndexFromCoordinates(0.5, 1.0, 0), 0);
    EXPECT_EQ(GetPanelIndexFromCoordinates(1.0, 0.0, 0), -1);  // inside the bounding box only
}

TEST(PanelListLibrary, SortsByGroupDeletesAndCopies) {
    PANEL_LIST list;
    for (const char* name : {"1/30", "2/4", "3/100", "4/4"}) list.list[list.count++] = named(name);
    SortPanelList(&list);
    EXPECT_EQ(PanelText(list.list[0].Name).section('/', 1), "4");
    EXPECT_EQ(PanelText(list.list[2].Name), "1/30");
    EXPECT_EQ(PanelText(list.list[3].Name), "3/100");
    DeletePanelFromList(&list, 4);
    DeletePanelFromList(&list, -1);
    DeletePanelFromList(&list, 0);
    DeletePanelFromListByName(&list, "1/30");
    DeletePanelFromListByName(&list, "nothing");
    ASSERT_EQ(list.count, 2);
    EXPECT_EQ(PanelText(GetPanel(&list, 1).Name), "3/100");
    EXPECT_EQ(PanelText(GetPanel(&list, 2).Name), "");
    ClearPanelList(&list);
    EXPECT_EQ(list.count, 0);
}

}  // namespace
