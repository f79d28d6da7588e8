// Working on placed panels: moving a panel or its group (the 250 limit, the
// snap, the corner's foot on the roof), lifting, deleting, duplicating (the
// 500 limit), and the roof polygon that only offers deletion. Panels lie in
// the scene as the engine names them after their files.
#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <cmath>

#include "app/services/DialogService.h"
#include "geo/Frames.h"
#include "scene/engine_interface.h"
#include "solar/design/AdjacencyGrouping.h"
#include "solar/design/PanelDaeImport.h"
#include "solar/design/PanelEditing.h"
#include "solar/design/PanelColladaWriter.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelText.h"
#include "solar/design/PlacementDae.h"
#include "solar/design/PlacementSnap.h"
#include "support/SceneBuilders.h"
#include "support/TestSupport.h"

namespace {

constexpr double kTol = 1e-4;  // the panel files keep millimetres and better

TGIS_Point3D pt(double x, double y, double z) { return TGIS_Point3D{x, y, z, 0}; }

QString layerOf(int N, int G) { return QString::asprintf("P%dPanel-%d_%d_%d_%d_geometry", N, N, G, N, G); }

class PanelEditing : public ::testing::Test {
protected:
    void SetUp() override {
        resetPanelStore();
        resetPanelEditState();
        resetPlacementSnapState();
        resetPlacementHooks();
        resetConstructionGroups();
        resetFrameState();
        installDialogService(&dialogs);
        ASSERT_TRUE(SetPanelFoldersForModel(QString::fromStdString(scratch.root()) + "/"));
        placementHooks().addModels = [this](const QStringList& files) { added << files; };
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetPlacementHooks();
        resetPanelEditState();
        resetPlacementSnapState();
        resetPanelStore();
    }

    // A flat 1 x 2 m panel "N/G" with its south-west corner at (x, y, z) on a
    // flat roof at z, written to its file and put in the scene.
    int addPanel(int N, int G, double x, double y, double z, bool inScene = true) {
        PanelStore& store = panelStore();
        PANEL p;
        SetPanelText(p.Name, QString::asprintf("%d/%d", N, G));
        SetPanelText(p.Filename, store.PANELSFOLDER + QString::asprintf("Panel-%d_%d.dae", N, G));
        p.Corners[0] = pt(x, y, z);
        p.Corners[1] = pt(x, y + 2, z);
        p.Corners[2] = pt(x + 1, y + 2, z);
        p.Corners[3] = pt(x + 1, y, z);
        p.CenterPoint = pt(x + 0.5, y + 1, z);
        p.PP[0] = pt(x - 2, y - 2, z);
        p.PP[1] = pt(x + 8, y - 2, z);
        p.PP[2] = pt(x - 2, y + 8, z);
        p.Length = 2000;
        p.Width = 1000;
        p.Color1 = 0x800000;
        p.Opacity = 100;
        p.Active = true;
        const int index = store.NumPanelsCreated++;
        store.panels[index] = p;
        if (inScene) testsupport::addLayer(testsupport::makeRectangle(layerOf(N, G).toStdString(), x, y, x + 1, y + 2, z));
        return index;
    }

    // The dialog as a line from (x1, y1, z1) on layer to (x2, y2, z2) opens it.
    PanelDialogKind openOn(const QString& layer, TGIS_Point3D start, TGIS_Point3D end) {
        return PreparePanelDialog(layer, start, end);
    }

    // The panel's file read back as a fresh program would.
    PANEL readBack(int N, int G) {
        PanelStore& store = panelStore();
        store.NumPanelsCreatedT = 0;
        EXPECT_EQ(GetPanelsFromDae(store.PANELSFOLDER + QString::asprintf("Panel-%d_%d.dae", N, G)), 1);
        return store.panelsT[0];
    }

    double layerX(const QString& layer) {
        double v[3] = {};
        EXPECT_EQ(At3d_GetVertex(0, layer.toUtf8().constData(), v), 1) << layer.toStdString();
        return v[0];
    }

    testsupport::EngineFixtureGuard engine;
    testsupport::ScratchDir scratch;
    ScriptedDialogService dialogs;
    QStringList added;
};

TEST_F(PanelEditing, AGroupOfThreeHundredPanelsMovesOnlyItsFirstTwoHundredAndFifty) {
    for (int i = 0; i < 300; ++i) {
        const int index = addPanel(i + 1, 5, 3.0 * i, 0, 0);
        panelStore().panels[index].GroupingName = 'A';
    }
    PanelEditState& edit = panelEditState();
    edit.GlobalLayerName = layerOf(1, 5);
    edit.PanelOrGroup = 2;
    panelStore().GlobalPanel = panelStore().panels[0];
    EXPECT_EQ(MovePanels(0.5, 0.25, 0, 0), MAX_PANELS_MOVED);
    int moved = 0;
    for (int i = 0; i < 300; ++i) {
        const PANEL& p = panelStore().panels[i];
        const bool wasMoved = std::fabs(p.CenterPoint.X - (3.0 * i + 1.0)) < kTol;
        moved += wasMoved ? 1 : 0;
        EXPECT_NEAR(layerX(layerOf(i + 1, 5)), 3.0 * i + (wasMoved ? 0.5 : 0), kTol) << i;
    }
    EXPECT_EQ(moved, 250);
    EXPECT_NEAR(panelStore().panels[0].CenterPoint.Y, 1.25, kTol);
}

TEST_F(PanelEditing, AMovedPanelsFileHoldsTheNewCornersAndItsRoofPointsMovedWithThem) {
    addPanel(1, 7, 10, 20, 5);
    addPanel(2, 7, 30, 20, 5);
    ASSERT_EQ(openOn(layerOf(1, 7), pt(10.2, 20.2, 5), pt(12, 20, 5)), ON_PANEL);
    panelEditState().PanelOrGroup = 1;
    EXPECT_EQ(MovePanels(1.5, -0.5, 0.25, 1), 1);
    const PANEL written = readBack(1, 7);
    EXPECT_NEAR(written.Corners[0].X, 11.5, kTol);
    EXPECT_NEAR(written.Corners[0].Y, 19.5, kTol);
    EXPECT_NEAR(written.Corners[2].Z, 5.25, kTol);
    EXPECT_NEAR(written.CenterPoint.X, 12.0, kTol);
    const PANEL& live = panelStore().panels[0];
    EXPECT_NEAR(live.PP[0].X, 9.5, kTol);
    EXPECT_NEAR(live.PP[2].Y, 27.5, kTol);
    EXPECT_NEAR(live.PP[1].Z, 5.25, kTol);
    // The other panel of the store stays where it was.
    EXPECT_NEAR(panelStore().panels[1].CenterPoint.X, 30.5, kTol);
    EXPECT_NEAR(layerX(layerOf(2, 7)), 30, kTol);
}

// Three panels side by side make group A; a line from the first one's
// corner to the third one's corner moves the whole group by that vector.
TEST_F(PanelEditing, ASnapOntoACornerOfAPanelInTheSameGroupIsAPlainMove) {
    addPanel(1, 9, 0, 0, 3);
    addPanel(2, 9, 1.05, 0, 3);
    addPanel(3, 9, 2.1, 0, 3);
    const TGIS_Point3D start = pt(0.1, 0.1, 3), end = pt(2.2, 1.9, 3);
    ASSERT_EQ(openOn(layerOf(1, 9), start, end), ON_PANEL);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(panelStore().panels[i].GroupingName, 'A');
    panelEditState().GlobalMovePanels_PXX = SnapTile(start, end);
    EXPECT_EQ(placementSnapState().GlobalSnappedTCaption, " Snapped 1 1   2.10 2.00 0.00");
    panelEditState().PanelOrGroup = 2;
    EXPECT_EQ(DoMovepanels(), 3);
    const double before[3] = {0.5, 1.55, 2.6};
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(panelStore().panels[i].CenterPoint.X, before[i] + 2.1, kTol) << i;
        EXPECT_NEAR(panelStore().panels[i].CenterPoint.Y, 3.0, kTol) << i;
    }
}

// Without a snap the corner nearest the line's start, where it stands on the
// roof below, goes to the line's end: the panel keeps its height above the roof.
TEST_F(PanelEditing, WithoutASnapTheCornersFootOnTheRoofGoesToTheLinesEnd) {
    testsupport::addLayer(testsupport::makeRectangle("roof_geometry", -20, -20, 20, 20, 4.9));
    addPanel(1, 3, 0, 0, 5);
    ASSERT_EQ(openOn(layerOf(1, 3), pt(0.1, 0.15, 5), pt(6, 1, 4.9)), ON_PANEL);
    panelEditState().PanelOrGroup = 1;
    EXPECT_EQ(DoMovepanels(), 1);
    const PANEL& p = panelStore().panels[0];
    EXPECT_NEAR(p.Corners[0].X, 6, kTol);
    EXPECT_NEAR(p.Corners[0].Y, 1, kTol);
    EXPECT_NEAR(p.Corners[0].Z, 5, kTol);
}

TEST_F(PanelEditing, WithNoRoofUnderTheCornerTheLineItselfIsTheMove) {
    addPanel(1, 3, 0, 0, 5);
    ASSERT_EQ(openOn(layerOf(1, 3), pt(0.1, 0.15, 5), pt(6, 1, 4.5)), ON_PANEL);
    panelEditState().PanelOrGroup = 1;
    EXPECT_EQ(MovePanels(0, 0, -9999, -1), 1);
    const PANEL& p = panelStore().panels[0];
    EXPECT_NEAR(p.Corners[0].X, 5.9, kTol);
    EXPECT_NEAR(p.Corners[0].Y, 0.85, kTol);
    EXPECT_NEAR(p.Corners[0].Z, 4.5, kTol);
}

TEST_F(PanelEditing, NothingMovesWithoutAChoiceOrAPanel) {
    addPanel(1, 3, 0, 0, 5);
    ASSERT_EQ(openOn(layerOf(1, 3), pt(0.1, 0.15, 5), pt(6, 1, 5)), ON_PANEL);
    EXPECT_EQ(MovePanels(1, 1, 0, -1), 0);  // PanelOrGroup 0
    panelEditState().PanelOrGroup = 1;
    panelEditState().GlobalLayerName = "road_geometry";
    EXPECT_EQ(MovePanels(1, 1, 0, -1), 0);
    EXPECT_NEAR(panelStore().panels[0].CenterPoint.X, 0.5, kTol);
}

// On a roof rising 1 m in 2 m towards the north, a move 2 m north climbs 1 m.
TEST(PanelMoveOnRoof, TheHeightChangeKeepsAMoveOnTheRoofPlane) {
    PANEL p;
    p.PP[0] = pt(0, 0, 10);
    p.PP[1] = pt(4, 0, 10);
    p.PP[2] = pt(0, 2, 11);
    EXPECT_NEAR(GetDZ2TranslatePanel(p, 0, 2), 1.0, 1e-9);
    EXPECT_NEAR(GetDZ2TranslatePanel(p, 3, -1), -0.5, 1e-9);
    // Clicked the other way round, the normal points down and is turned up.
    std::swap(p.PP[1], p.PP[2]);
    EXPECT_NEAR(GetDZ2TranslatePanel(p, 0, 2), 1.0, 1e-9);
    // A flat roof and a degenerate one give no height change.
    PANEL flat;
    flat.PP[0] = pt(0, 0, 5);
    flat.PP[1] = pt(4, 0, 5);
    flat.PP[2] = pt(0, 4, 5);
    EXPECT_EQ(GetDZ2TranslatePanel(flat, 3, 3), 0);
    PANEL line;
    line.PP[0] = pt(0, 0, 5);
    line.PP[1] = pt(1, 1, 5);
    line.PP[2] = pt(2, 2, 5);
    EXPECT_EQ(GetDZ2TranslatePanel(line, 3, 3), 0);
}

TEST_F(PanelEditing, LiftingAPanelMovesItAlongItsUpwardNormalByTheAnswer) {
    addPanel(1, 3, 0, 0, 5);
    ASSERT_EQ(openOn(layerOf(1, 3), pt(0.5, 0.5, 5), pt(0.6, 0.6, 5)), ON_PANEL);
    panelEditState().PanelOrGroup = 1;
    dialogs.pushText("0.75");
    EXPECT_DOUBLE_EQ(LiftPanels(), 0.75);
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].value, "0.5");
    EXPECT_NEAR(readBack(1, 3).Corners[2].Z, 5.75, kTol);
    // A cancelled question lifts nothing.
    dialogs.pushCancel();
    EXPECT_EQ(LiftPanels(), 0);
    EXPECT_NEAR(panelStore().panels[0].CenterPoint.Z, 5.75, kTol);
}

// A roof polygon goes up along its own normal, every layer of its file with it.
TEST_F(PanelEditing, LiftingARoofPolygonMovesTheLayersOfItsFile) {
    testsupport::addLayer(testsupport::makeSquare("P12_roof_polygon_geometry", 0, 0, 3, 4));
    testsupport::addLayer(testsupport::makeSquare("P12_roof_outline_geometry", 0, 0, 3, 4));
    testsupport::addLayer(testsupport::makeSquare("P40_roof_polygon_geometry", 0, 0, 3, 4));
    ASSERT_EQ(openOn("P12_roof_polygon_geometry", pt(0, 0, 3), pt(1, 1, 3)), ON_ROOF_POLYGON);
    dialogs.pushText("2");
    EXPECT_DOUBLE_EQ(LiftPanels(), 2);
    double v[3];
    ASSERT_EQ(At3d_GetVertex(0, "P12_roof_polygon_geometry", v), 1);
    EXPECT_NEAR(v[2], 5, kTol);
    ASSERT_EQ(At3d_GetVertex(0, "P12_roof_outline_geometry", v), 1);
    EXPECT_NEAR(v[2], 5, kTol);
    ASSERT_EQ(At3d_GetVertex(0, "P40_roof_polygon_geometry", v), 1);
    EXPECT_NEAR(v[2], 3, kTol);
}

TEST_F(PanelEditing, ARoofPolygonOpensTheDialogForItsDeletionAlone) {
    testsupport::addLayer(testsupport::makeSquare("P12_roof_polygon_geometry", 0, 0, 3, 4));
    const PanelDialogKind kind = openOn("P12_roof_polygon_geometry", pt(0, 0, 3), pt(1, 1, 3));
    EXPECT_EQ(kind, ON_ROOF_POLYGON);
    EXPECT_EQ(PanelDialogCaption(kind, "P12_roof_polygon_geometry"), "Roof polygon P12_roof_polygon_geometry");
    EXPECT_EQ(panelEditState().GlobalSelectedPanelIndex, -1);
    panelEditState().PanelOrGroup = 1;
    EXPECT_EQ(DeletePanels(), 1);
    EXPECT_EQ(At3d_GetLayerOutputFlag("P12_roof_polygon_geometry"), 0);
    char name[AT3D_NAME_SIZE];
    EXPECT_EQ(At3d_GetNextLayer(nullptr, name), nullptr);
}

TEST_F(PanelEditing, DeletingAGroupTakesItsLetterAndLeavesDotDaMinusFiles) {
    addPanel(1, 4, 0, 0, 0);
    addPanel(2, 4, 1.05, 0, 0);
    addPanel(3, 4, 2.1, 0, 0);
    addPanel(4, 4, 20, 0, 0);
    for (int i = 0; i < 4; ++i) ASSERT_TRUE(SaveThePanel(panelStore().panels[i]));
    ASSERT_EQ(openOn(layerOf(2, 4), pt(1.5, 1, 0), pt(1.6, 1, 0)), ON_PANEL);
    EXPECT_EQ(panelStore().panels[3].GroupingName, 'B');
    panelEditState().PanelOrGroup = 2;
    EXPECT_EQ(DeletePanels(), 3);
    ASSERT_EQ(panelStore().NumPanelsCreated, 1);
    EXPECT_EQ(PanelText(panelStore().panels[0].Name), "4/4");
    const QDir folder(panelStore().PANELSFOLDER);
    EXPECT_EQ(folder.entryList({"*.DA-"}, QDir::Files, QDir::Name),
              (QStringList{"Panel-1_4.DA-", "Panel-2_4.DA-", "Panel-3_4.DA-"}));
    EXPECT_EQ(folder.entryList({"*.dae"}, QDir::Files), QStringList{"Panel-4_4.dae"});
    char name[AT3D_NAME_SIZE];
    ASSERT_NE(At3d_GetNextLayer(nullptr, name), nullptr);
    EXPECT_EQ(QString(name), layerOf(4, 4));
}

TEST_F(PanelEditing, ADuplicateIsNumberedAboveAllInAGroupOfItsOwnAtTheTarget) {
    addPanel(1, 7, 0, 0, 2);
    addPanel(12, 9, 10, 0, 2);
    addPanel(3, 7, 20, 0, 2);
    const QString file = DuplicatePanel(2, 30.5, 5, 2.5);
    // (7 + 555) % 988 + 1
    EXPECT_EQ(file, panelStore().PANELSFOLDER + "Panel-13_563.dae");
    ASSERT_EQ(panelStore().NumPanelsCreated, 4);
    const PANEL& copy = panelStore().panels[3];
    EXPECT_EQ(PanelText(copy.Name), "13/563");
    EXPECT_TRUE(copy.Active);
    EXPECT_NEAR(copy.Corners[0].X, 30, kTol);
    EXPECT_NEAR(copy.Corners[0].Y, 4, kTol);
    EXPECT_NEAR(copy.Corners[0].Z, 2.5, kTol);
    EXPECT_NEAR(readBack(13, 563).CenterPoint.X, 30.5, kTol);
    // The source stays as it was.
    EXPECT_NEAR(panelStore().panels[2].CenterPoint.X, 20.5, kTol);
}

TEST_F(PanelEditing, AtFiveHundredPanelsADuplicateSaysSoAndChangesNothing) {
    for (int i = 0; i < MAX_PANELS; ++i) addPanel(i + 1, 2, 2.0 * i, 0, 0, false);
    EXPECT_TRUE(DuplicatePanel(0, 0, 10, 0).isEmpty());
    EXPECT_EQ(panelStore().NumPanelsCreated, MAX_PANELS);
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].text, "Cannot duplicate panel - maximum limit (500) reached");
    EXPECT_TRUE(QDir(panelStore().PANELSFOLDER).entryList({"*.dae"}).isEmpty());

    // The dialog's button says also that it made nothing, and adds nothing.
    panelEditState().GlobalSelectedPanelIndex = 0;
    panelEditState().GlobalNeighbourPanelCenter = pt(0.5, 3, 0);
    EXPECT_TRUE(DuplicateBtnClick().isEmpty());
    ASSERT_EQ(dialogs.questions().size(), 3u);
    EXPECT_EQ(dialogs.questions()[2].text, "Could not create duplicate panel");
    EXPECT_TRUE(added.isEmpty());
}

TEST_F(PanelEditing, ABadSourceIndexIsRefused) {
    addPanel(1, 2, 0, 0, 0);
    EXPECT_TRUE(DuplicatePanel(1, 0, 0, 0).isEmpty());
    EXPECT_TRUE(DuplicatePanel(-1, 0, 0, 0).isEmpty());
    ASSERT_EQ(dialogs.questions().size(), 2u);
    EXPECT_EQ(dialogs.questions()[0].text, "Invalid source panel index");
    EXPECT_EQ(panelStore().NumPanelsCreated, 1);
}

// The free places beside the panel along the line each get a copy, and the
// copies are added to the scene in one go.
TEST_F(PanelEditing, TheDuplicateButtonFillsTheFreePlacesBesideThePanel) {
    addPanel(1, 2, 0, 0, 0);
    ASSERT_EQ(openOn(layerOf(1, 2), pt(0.5, 1, 0), pt(3.6, 1, 0)), ON_PANEL);
    const int places = placementSnapState().HowmanyNeighbours;
    ASSERT_GE(places, 1);
    const QStringList files = DuplicateBtnClick();
    EXPECT_EQ(files.size(), places);
    EXPECT_EQ(added, files);
    EXPECT_EQ(panelStore().NumPanelsCreated, 1 + places);
    for (const QString& file : files) EXPECT_TRUE(QFileInfo::exists(file)) << file.toStdString();
    // Each copy stands east of the one before.
    for (int i = 1; i < panelStore().NumPanelsCreated; ++i)
        EXPECT_GT(panelStore().panels[i].CenterPoint.X, panelStore().panels[i - 1].CenterPoint.X + 0.9);
}

TEST_F(PanelEditing, DeletingAllPanelsEmptiesTheSceneAndTheStoreButKeepsTheFiles) {
    testsupport::addLayer(testsupport::makeSquare("model_geometry", 0, 0, 0, 50));
    addPanel(1, 2, 0, 0, 0);
    addPanel(2, 2, 2, 0, 0);
    for (int i = 0; i < 2; ++i) ASSERT_TRUE(SaveThePanel(panelStore().panels[i]));
    EXPECT_EQ(DeleteAllPanels(), 2);
    EXPECT_EQ(panelStore().NumPanelsCreated, 0);
    char name[AT3D_NAME_SIZE];
    ASSERT_NE(At3d_GetNextLayer(nullptr, name), nullptr);
    EXPECT_STREQ(name, "model_geometry");
    EXPECT_EQ(QDir(panelStore().PANELSFOLDER).entryList({"*.dae"}).size(), 2);
    EXPECT_EQ(DeleteAllPanels(), 0);
}

}  // namespace
