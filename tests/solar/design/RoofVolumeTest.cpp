// Volumes between two roof planes and their OBJ file, the roof capture
// path, planes read from shape files and the roof layers' visibility.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>

#include "app/services/DialogService.h"
#include "app/services/ShapeFromCsv.h"
#include "scene/engine_interface.h"
#include "solar/design/PanelStore.h"
#include "solar/design/RoofCapture.h"
#include "solar/design/RoofGeometry.h"
#include "solar/design/RoofVisibility.h"
#include "solar/design/Volume.h"
#include "solar/design/VolumeShapes.h"
#include "support/SceneBuilders.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

void PrintTo(const QString& text, std::ostream* os) { *os << text.toStdString(); }

namespace {

PLANE planeOf(std::initializer_list<TGIS_Point3D> points) {
    PLANE plane;
    for (const TGIS_Point3D& p : points) plane.P[plane.Npoints++] = p;
    return plane;
}

class RoofVolumeTest : public ::testing::Test {
protected:
    void SetUp() override {
        resetPanelStore();
        resetRoofState();
        installDialogService(&dialogs);
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetPanelStore();
        resetRoofState();
    }
    ScratchDir dir;
    ScriptedDialogService dialogs;
};

TEST_F(RoofVolumeTest, WallsDropOntoTheNearestBottomVertexAndTheObjListsThemAll) {
    const PLANE bottom = planeOf({{0, 0, 0, 0}, {4, 0, 1, 0}, {0, 4, 2, 0}});
    const PLANE top = planeOf({{1, 1, 5, 0}, {2.5, 0.5, 5, 0}, {0.5, 2.5, 5, 0}});
    const VOLUME volume = CreateVolumeByProjection(&bottom, &top);
    ASSERT_EQ(volume.NumWalls, 3);
    ExportToOBJ(&volume, QString::fromStdString(dir.path("v.obj")));
    EXPECT_EQ(readTextFile(dir.path("v.obj")),
              "# OBJ file created by TGIS volume exporter\n"
              "# Top plane: 3 points\n"
              "# Bottom plane: 3 points\n"
              "# Number of walls: 3\n"
              "\n"
              "v 1.000000 1.000000 5.000000\n"
              "v 2.500000 0.500000 5.000000\n"
              "v 0.500000 2.500000 5.000000\n"
              "v 0.000000 0.000000 0.000000\n"
              "v 4.000000 0.000000 1.000000\n"
              "v 0.000000 4.000000 2.000000\n"
              "v 1.000000 1.000000 5.000000\n"
              "v 2.500000 0.500000 5.000000\n"
              "v 2.500000 0.500000 1.000000\n"
              "v 1.000000 1.000000 0.000000\n"
              "v 2.500000 0.500000 5.000000\n"
              "v 0.500000 2.500000 5.000000\n"
              "v 0.500000 2.500000 2.000000\n"
              "v 2.500000 0.500000 1.000000\n"
              "v 0.500000 2.500000 5.000000\n"
              "v 1.000000 1.000000 5.000000\n"
              "v 1.000000 1.000000 0.000000\n"
              "v 0.500000 2.500000 2.000000\n"
              "f 1 2 3\n"
              "f 4 5 6\n"
              "f 7 8 9 10\n"
              "f 11 12 13 14\n"
              "f 15 16 17 18\n");
}

TEST_F(RoofVolumeTest, SmallerPlaneBecomesTheTopAndATieGoesToPlaneTwo) {
    PLANE low = planeOf({{0, 0, 0, 0}, {10, 0, 0, 0}, {10, 10, 0, 0}, {0, 10, 0, 0}});
    PLANE high = planeOf({{0, 0, 3, 0}, {10, 0, 3, 0}, {10, 10, 3, 0}, {0, 10, 3, 0}});
    VOLUME volume = CreateVolumeAndExport(&low, &high, QString::fromStdString(dir.path("tie.obj")));
    EXPECT_EQ(volume.Top.P[0].Z, 3);
    EXPECT_EQ(volume.Bottom.P[0].Z, 0);
    volume = CreateVolumeAndExport(&high, &low, QString::fromStdString(dir.path("tie2.obj")));
    EXPECT_EQ(volume.Top.P[0].Z, 0);

    PLANE small = planeOf({{2, 2, 9, 0}, {4, 2, 9, 0}, {4, 4, 9, 0}, {2, 2, 9, 0}});
    volume = CreateVolumeAndExport(&small, &low, QString::fromStdString(dir.path("small.obj")));
    EXPECT_EQ(volume.Top.P[0].Z, 9);
    EXPECT_EQ(volume.NumWalls, 3);  // the closing point makes no wall
    EXPECT_TRUE(QFile::exists(QString::fromStdString(dir.path("small.obj"))));
}

TEST_F(RoofVolumeTest, PlanesComeFromTheFirstShapeOfEachFile) {
    writeTextFile(dir.path("a.csv"), "Roof A,255,0,0,10,0,10,10,0,10\n");
    writeTextFile(dir.path("b.csv"), "Roof B,255,3,3,6,3,6,6\nRoof C,255,0,0,1,0,1,1\n");
    const QString a = QString::fromStdString(dir.path("a.shp"));
    const QString b = QString::fromStdString(dir.path("b.shp"));
    ASSERT_TRUE(CreateSHPfileFromCsv(QString::fromStdString(dir.path("a.csv")), a));
    ASSERT_TRUE(CreateSHPfileFromCsv(QString::fromStdString(dir.path("b.csv")), b));

    PLANE plane;
    ASSERT_TRUE(ReadPlaneFromShapeFile(b, plane));
    ASSERT_EQ(plane.Npoints, 4);  // the ring comes closed
    EXPECT_EQ(plane.P[0].X, 3);
    EXPECT_EQ(plane.P[0].Y, 3);
    EXPECT_EQ(CalculatePlaneArea(&plane), 4.5);
    EXPECT_FALSE(ReadPlaneFromShapeFile(QString::fromStdString(dir.path("none.shp")), plane));

    dialogs.pushFile(a);
    dialogs.pushFile(b);
    Createplane1Click();
    const QString obj = QString::fromStdString(dir.path("a_b.obj"));
    EXPECT_TRUE(QFile::exists(obj));
    ASSERT_EQ(dialogs.questions().size(), 3u);
    EXPECT_EQ(dialogs.questions()[2].text, "\nCreated " + obj);
}

TEST_F(RoofVolumeTest, RoofCaptureFitsGrowsAndWritesTheRoofFile) {
    testsupport::EngineFixtureGuard engine;
    ASSERT_TRUE(SetPanelFoldersForModel(QString::fromStdString(dir.path(""))));
    const TGIS_Point3D clicks[] = {
        {100, 200, 2, 0}, {108, 200, 2, 0}, {108, 204, 5, 0}, {100, 204, 5, 0}, {100, 200, 2, 0}};
    RoofPlaneCapture capture;
    ASSERT_TRUE(CreateRoofPlaneFromPoints(clicks, 5, 7, capture));
    EXPECT_EQ(roofState().ROOF, 1);
    const PANEL& look = panelStore().GlobalPanel;
    EXPECT_EQ(look.Opacity, 20);
    EXPECT_EQ(look.Color1, 0xFF00);
    EXPECT_EQ(look.Color2, 0xFF00);
    EXPECT_EQ(look.Repeat, 1);
    EXPECT_EQ(look.Thickness, 0);
    ASSERT_EQ(capture.outline.size(), 4u);
    ASSERT_EQ(capture.expanded.size(), 4u);
    EXPECT_NEAR(capture.plane.Area, 32.0, 1e-3);
    EXPECT_LT(capture.expanded[0].X, capture.outline[0].X);
    const QString stamp = QString::number(QCoreApplication::applicationPid() + 7);
    EXPECT_EQ(capture.fileName, panelStore().PANELSFOLDER + stamp + "_FlatRoof_1.DAE");
    EXPECT_TRUE(QFile::exists(capture.fileName));
    EXPECT_EQ(At3d_Read(AT3D_READ_DAE, capture.fileName.toLocal8Bit().constData(), 1), 1);
    char layer[AT3D_NAME_SIZE] = {};
    ASSERT_NE(At3d_GetNextLayer(nullptr, layer), nullptr);
    EXPECT_NE(std::string(layer).find("_roof_polygon_geometry"), std::string::npos) << layer;

    panelStore().GlobalPanel.DTilt = 25;
    ASSERT_TRUE(CreateRoofPlaneFromPoints(clicks, 5, 7, capture));
    EXPECT_EQ(capture.fileName, panelStore().PANELSFOLDER + stamp + "_TiledRoof_2.DAE");
    EXPECT_TRUE(dialogs.questions().empty());
}

TEST_F(RoofVolumeTest, RoofCaptureOfCollinearClicksEnds) {
    testsupport::EngineFixtureGuard engine;
    const TGIS_Point3D clicks[] = {{0, 0, 0, 0}, {1, 0, 0, 0}, {2, 0, 0, 0}, {3, 0, 0, 0}};
    RoofPlaneCapture capture;
    EXPECT_FALSE(CreateRoofPlaneFromPoints(clicks, 4, 0, capture));
}

TEST_F(RoofVolumeTest, RoofLayersAreShownAndHiddenTogether) {
    testsupport::EngineFixtureGuard engine;
    testsupport::addLayer(testsupport::makeSquare("model_geometry", 0, 0, 0, 10));
    testsupport::addLayer(testsupport::makeSquare("P12_roof_polygon_geometry", 0, 0, 1, 2));
    testsupport::addLayer(testsupport::makeSquare("P40_roof_polygon_geometry", 0, 0, 2, 2));
    ShowHideroofplanes(0);
    EXPECT_EQ(At3d_GetLayerOutputFlag("model_geometry"), 1);
    EXPECT_EQ(At3d_GetLayerOutputFlag("P12_roof_polygon_geometry"), 0);
    EXPECT_EQ(At3d_GetLayerOutputFlag("P40_roof_polygon_geometry"), 0);
    ShowHideroofplanes(1);
    EXPECT_EQ(At3d_GetLayerOutputFlag("P12_roof_polygon_geometry"), 1);
}

}  // namespace
