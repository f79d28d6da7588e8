// The panels model: every panel of the scene saved into one
// "Panels_yyyymmdd_hhmmss.dae" in the map frame, and restored from it in
// place of the panels the scene holds.
#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include "app/services/DialogService.h"
#include "geo/Frames.h"
#include "scene/engine_interface.h"
#include "solar/design/PanelDaeImport.h"
#include "solar/design/PlacementDae.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelText.h"
#include "solar/design/PanelsModelFile.h"
#include "support/SceneBuilders.h"
#include "support/TestSupport.h"

namespace {

class PanelsModelFile : public ::testing::Test {
protected:
    void SetUp() override {
        resetPanelStore();
        resetPlacementHooks();
        resetFrameState();
        installDialogService(&dialogs);
        folder = QString::fromStdString(scratch.root()) + "/";
        ASSERT_TRUE(SetPanelFoldersForModel(folder));
        placementHooks().addModels = [this](const QStringList& files) { added << files; };
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetPlacementHooks();
        resetPanelStore();
        resetFrameState();
    }

    // Panel "N/1" as a 1 x 2 m rectangle at (x, 0, 3) in the viewer's frame.
    void addPanel(int N, double x) {
        PanelStore& store = panelStore();
        PANEL& p = store.panels[store.NumPanelsCreated++];
        SetPanelText(p.Name, QString::asprintf("%d/1", N));
        SetPanelText(p.Filename, store.PANELSFOLDER + QString::asprintf("Panel-%d_1.dae", N));
        const double X = x + OC(0), Y = OC(1), Z = 3 + OC(2);
        p.Corners[0] = {X, Y, Z, 0};
        p.Corners[1] = {X, Y + 2, Z, 0};
        p.Corners[2] = {X + 1, Y + 2, Z, 0};
        p.Corners[3] = {X + 1, Y, Z, 0};
        p.CenterPoint = {X + 0.5, Y + 1, Z, 0};
        p.Active = true;
        const std::string layer = QString::asprintf("P%dPanel-%d_1_%d_1_geometry", N, N, N).toStdString();
        testsupport::addLayer(testsupport::makeRectangle(layer, x, 0, x + 1, 2, 3));
    }

    testsupport::EngineFixtureGuard engine;
    testsupport::ScratchDir scratch;
    ScriptedDialogService dialogs;
    QString folder;
    QStringList added;
};

// The model sits 200 km from the map origin; the saved panels read back in
// map coordinates and carry nothing of the model itself.
TEST_F(PanelsModelFile, TheSavedModelHoldsThePanelsInTheMapFrameAndNothingElse) {
    FrameState& frames = frameState();
    frames.OriginalobjectCenter[0] = 179500;
    frames.OriginalobjectCenter[1] = 665500;
    frames.OriginalobjectCenter[2] = 40;
    testsupport::addLayer(testsupport::makeSquare("model_geometry", 0, 0, 0, 50));
    testsupport::addLayer(testsupport::makeSquare("P7_roof_polygon_geometry", 0, 0, 3, 4));
    At3d_SetLayerOutputFlag("P7_roof_polygon_geometry", 0);
    addPanel(1, 0);
    addPanel(2, 1.05);

    const QString file = Save3Click(folder);
    ASSERT_FALSE(file.isEmpty());
    EXPECT_TRUE(QRegularExpression("^Panels_\\d{8}_\\d{6}\\.dae$").match(QFileInfo(file).fileName()).hasMatch())
        << file.toStdString();
    EXPECT_EQ(file.toStdString(), (folder + QFileInfo(file).fileName()).toStdString());
    // The output flags are as they were, and the scene's panels stayed in the viewer's frame.
    EXPECT_EQ(At3d_GetLayerOutputFlag("model_geometry"), 1);
    EXPECT_EQ(At3d_GetLayerOutputFlag("P7_roof_polygon_geometry"), 0);
    double v[3];
    ASSERT_EQ(At3d_GetVertex(0, "P1Panel-1_1_1_1_geometry", v), 1);
    testsupport::expectVec(v, 0, 0, 3);

    QFile saved(file);
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
    const QByteArray text = saved.readAll();
    EXPECT_FALSE(text.contains("model_geometry"));
    EXPECT_FALSE(text.contains("roof_polygon"));
    EXPECT_TRUE(text.contains("179500"));

    panelStore().NumPanelsCreatedT = 0;
    ASSERT_EQ(GetPanelsFromDae(file), 2);
    EXPECT_EQ(PanelText(panelStore().panelsT[1].Name), "2/1");
    EXPECT_NEAR(panelStore().panelsT[1].CenterPoint.X, 179501.55, 1e-3);
    EXPECT_NEAR(panelStore().panelsT[1].CenterPoint.Z, 43, 1e-3);
}

TEST_F(PanelsModelFile, RestoringTakesTheScenesPanelsOutFirstThenLoadsTheModel) {
    addPanel(1, 0);
    addPanel(2, 1.05);
    const QString file = Save3Click(folder);
    ASSERT_FALSE(file.isEmpty());
    addPanel(3, 4);

    dialogs.pushFile(file);
    EXPECT_EQ(Restore1Click(folder), file);
    EXPECT_EQ(dialogs.questions().back().folder, folder);
    EXPECT_EQ(panelStore().NumPanelsCreated, 0);
    char name[AT3D_NAME_SIZE];
    EXPECT_EQ(At3d_GetNextLayer(nullptr, name), nullptr);
    EXPECT_EQ(added, QStringList{file});
}

TEST_F(PanelsModelFile, ACancelledOrMissingRestoreKeepsThePanels) {
    addPanel(1, 0);
    dialogs.pushCancel();
    EXPECT_TRUE(Restore1Click(folder).isEmpty());
    EXPECT_FALSE(RestorePanelsModel(folder + "Panels_20990101_000000.dae"));
    EXPECT_EQ(panelStore().NumPanelsCreated, 1);
    EXPECT_TRUE(added.isEmpty());
}

}  // namespace
