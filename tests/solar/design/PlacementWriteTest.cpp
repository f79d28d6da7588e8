// From three clicks to written panel files: the capture's panel path and the
// file step, with the form answered by a hook as the window would.
#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <cmath>

#include "app/services/DialogService.h"
#include "solar/design/PanelFormLogic.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelText.h"
#include "solar/design/PlacementDae.h"
#include "solar/design/RoofPlane.h"
#include "support/TestSupport.h"

namespace {

class PlacementWrite : public ::testing::Test {
protected:
    void SetUp() override {
        resetPanelStore();
        resetPanelFormState();
        resetPlacementHooks();
        resetRoofState();
        installDialogService(&dialogs);
        ASSERT_TRUE(SetPanelFoldersForModel(QString::fromStdString(scratch.root()) + "/"));
        PANEL& g = panelStore().GlobalPanel;
        g.Length = 1722;
        g.Width = 1134;
        g.Gapmm = 35;
        g.Opacity = 40;
        placementHooks().openPanelForm = [this] {
            ++formOpened;
            panelFormState().GlobalPanelsOK = true;
            panelFormState().GlobalRowpairing = 0;
            return true;
        };
        placementHooks().addModels = [this](const QStringList& files) { loaded = files; };
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetPlacementHooks();
        resetPanelStore();
        resetPanelFormState();
        resetRoofState();
    }
    testsupport::ScratchDir scratch;
    ScriptedDialogService dialogs;
    int formOpened = 0;
    QStringList loaded;
};

// A flat roof, baseline 4.7 m: floor((4.7 + 0.02) / (1.134 + 0.02)) = 4 panels.
TEST_F(PlacementWrite, ThreeClicksOnAFlatRoofWriteOnePanelFileEach) {
    const TGIS_Point3D P[3] = {{0, 0, 5, 0}, {4.7, 0, 5, 0}, {0, 2, 5, 0}};
    QStringList files;
    ASSERT_TRUE(CreatePanelsFromPoints(P, 3, files));
    EXPECT_EQ(formOpened, 1);
    EXPECT_EQ(roofState().ROOF, 2);
    EXPECT_DOUBLE_EQ(panelFormState().TiltEdit, 8);  // a flat roof proposes 8 degrees
    EXPECT_EQ(panelFormState().RooftypeRG, 1);
    EXPECT_TRUE(static_cast<bool>(panelFormState().rowSpacingHelp));  // the form's gap help works now
    const PANEL& g = panelStore().GlobalPanel;
    EXPECT_EQ(g.Repeat, 4);
    EXPECT_EQ(g.Gapmm, 20);  // the planner's constants overrule the catalogue
    EXPECT_EQ(g.Opacity, 100);
    EXPECT_EQ(g.Color1, 0x800000);
    ASSERT_EQ(panelStore().NumPanelsCreated, 4);
    ASSERT_EQ(files.size(), 4);
    EXPECT_EQ(loaded, files);
    const int group = panelStore().GlobalPanelGroup;
    EXPECT_GE(group, 1);
    EXPECT_LE(group, 995);
    for (int i = 0; i < 4; ++i) {
        const PANEL& p = panelStore().panels[i];
        const QString expected = panelStore().PANELSFOLDER + QString::asprintf("Panel-%d_%d.dae", i + 1, group);
        EXPECT_EQ(files[i], expected);
        EXPECT_EQ(PanelText(p.Filename), expected);
        EXPECT_TRUE(QFileInfo::exists(expected)) << expected.toStdString();
        EXPECT_EQ(p.Opacity, 100);
        EXPECT_EQ(p.Gapmm, 20);
    }
    EXPECT_DOUBLE_EQ(panelFormState().BlockDepth, 0);
}

TEST_F(PlacementWrite, CollinearClicksEndTheCaptureSilently) {
    const TGIS_Point3D P[3] = {{0, 0, 5, 0}, {2, 0, 5, 0}, {4, 0, 5, 0}};
    QStringList files;
    EXPECT_FALSE(CreatePanelsFromPoints(P, 3, files));
    EXPECT_TRUE(files.isEmpty());
    EXPECT_EQ(panelStore().NumPanelsCreated, 0);
    EXPECT_TRUE(dialogs.questions().empty());
}

TEST_F(PlacementWrite, ACancelledFormPlacesNothing) {
    placementHooks().openPanelForm = [] { return false; };
    const TGIS_Point3D P[3] = {{0, 0, 5, 0}, {4.7, 0, 5, 0}, {0, 2, 5, 0}};
    QStringList files;
    EXPECT_FALSE(CreatePanelsFromPoints(P, 3, files));
    EXPECT_EQ(panelStore().NumPanelsCreated, 0);
    EXPECT_TRUE(loaded.isEmpty());
}

// A sloping baseline on tiles: closing the question leaves no panels and no files.
TEST_F(PlacementWrite, ACancelledBaselineQuestionWritesNoFiles) {
    panelStore().GlobalPanel.RoofType = 0;
    dialogs.pushButton(0);
    const TGIS_Point3D P[3] = {{0, 0, 10, 0}, {4, 0, 10.2, 0}, {0, 3, 11.9, 0}};
    EXPECT_TRUE(CreatePanelDAE(P, 3, 100, 0x800000, 0x800000, 0, 30, 3, 20).isEmpty());
    EXPECT_EQ(panelStore().NumPanelsCreated, 0);
    EXPECT_TRUE(QDir(panelStore().PANELSFOLDER).entryList({"*.dae"}).isEmpty());
}

}  // namespace
