// The tactical grid: cell names of map points, cell centres, the CLI commands.

#include <gdal_priv.h>
#include <gtest/gtest.h>
#include <ogrsf_frmts.h>

#include <filesystem>

#include "app/model/ModelSession.h"
#include "app/services/DialogService.h"
#include "overlays/TacticalGridCells.h"
#include "support/CliRunner.h"
#include "support/TestSupport.h"

using namespace testsupport;

namespace {

struct Cell {
    const char* name;
    double x1, y1, x2, y2;
    double terrain;
};

// Cells as the grid holds them: a line across the cell's middle, its length
// the cell's height.
void writeGrid(const std::string& path, const std::vector<Cell>& cells) {
    GDALAllRegister();
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName("ESRI Shapefile");
    GDALDataset* ds = driver->Create(path.c_str(), 0, 0, 0, GDT_Unknown, nullptr);
    ASSERT_NE(ds, nullptr);
    OGRLayer* layer = ds->CreateLayer("TacticalG", nullptr, wkbLineString, nullptr);
    OGRFieldDefn name("name", OFTString);
    name.SetWidth(20);
    layer->CreateField(&name);
    OGRFieldDefn terrain("Terrain", OFTReal);
    layer->CreateField(&terrain);
    for (const Cell& c : cells) {
        OGRFeature feature(layer->GetLayerDefn());
        feature.SetField("name", c.name);
        feature.SetField("Terrain", c.terrain);
        OGRLineString line;
        line.addPoint(c.x1, c.y1);
        line.addPoint(c.x2, c.y2);
        feature.SetGeometry(&line);
        ASSERT_EQ(layer->CreateFeature(&feature), OGRERR_NONE);
    }
    GDALClose(ds);
}

// Two cells 10 by 10 side by side, AA1 from 100,200 to 110,210 and AB1 from
// 110,200 to 120,210, behind an unnamed line over both that must be passed over.
std::vector<Cell> twoCells() {
    return {{"", 0, 205, 1000, 205, 0}, {"AA1", 100, 205, 110, 205, 31.5}, {"AB1", 110, 205, 120, 205, 42.25}};
}

}  // namespace

TEST(TacticalGrid, PointInsideACellGetsItsName) {
    ScratchDir dir;
    writeGrid(dir.path("TacticalG.shp"), twoCells());
    const QString grid = QString::fromStdString(dir.path("TacticalG.shp"));
    EXPECT_EQ(GetGridNameIn(grid, {105, 201}), "AA1");
    EXPECT_EQ(GetGridNameIn(grid, {119.5, 209}), "AB1");
}

TEST(TacticalGrid, SharedEdgeGoesToTheFirstCellInTheFile) {
    ScratchDir dir;
    writeGrid(dir.path("TacticalG.shp"), twoCells());
    const QString grid = QString::fromStdString(dir.path("TacticalG.shp"));
    EXPECT_EQ(GetGridNameIn(grid, {110, 203}), "AA1");
    EXPECT_EQ(GetGridNameIn(grid, {120, 210}), "AB1");  // the far corner is still inside
}

TEST(TacticalGrid, PointOutsideEveryCellHasNoName) {
    ScratchDir dir;
    writeGrid(dir.path("TacticalG.shp"), twoCells());
    const QString grid = QString::fromStdString(dir.path("TacticalG.shp"));
    EXPECT_EQ(GetGridNameIn(grid, {105, 199.99}), "");
    EXPECT_EQ(GetGridNameIn(grid, {120.01, 205}), "");
}

TEST(TacticalGrid, NoLoadedGridGivesAnEmptyName) {
    resetModelSession();
    EXPECT_EQ(GetGridName({105, 201}), "");
    TGIS_Point3D center;
    EXPECT_FALSE(GetGridCenter("AA1", center));
}

TEST(TacticalGrid, LoadedGridOfTheModelAnswers) {
    ScratchDir dir;
    writeGrid(dir.path("TacticalG.shp"), twoCells());
    resetModelSession();
    modelSession().TacticalGridFile = dir.path("TacticalG.shp");
    EXPECT_EQ(GetGridName({115, 205}), "AB1");
    resetModelSession();
}

TEST(TacticalGrid, CenterIsTheLineMiddleAtItsFirstPointsNorthingWithTheTerrain) {
    ScratchDir dir;
    writeGrid(dir.path("TacticalG.shp"), twoCells());
    const QString grid = QString::fromStdString(dir.path("TacticalG.shp"));
    TGIS_Point3D center;
    ASSERT_TRUE(GetGridCenterIn(grid, "  ab1 ", center));
    EXPECT_DOUBLE_EQ(center.X, 115);
    EXPECT_DOUBLE_EQ(center.Y, 205);
    EXPECT_DOUBLE_EQ(center.Z, 42.25);
    EXPECT_FALSE(GetGridCenterIn(grid, "AC1", center));
}

TEST(TacticalGrid, ImportCopiesTheGridWithItsSideFilesBesideTheModelAndLoadsIt) {
    ScratchDir from, model;
    writeGrid(from.path("TacticalG.shp"), twoCells());
    // Side files in upper case, as such grids often come.
    std::filesystem::rename(from.path("TacticalG.shx"), from.path("TacticalG.SHX"));
    std::filesystem::rename(from.path("TacticalG.dbf"), from.path("TacticalG.DBF"));
    resetModelSession();
    modelSession().GlobalModelFileName = model.path("m.obj");
    ScriptedDialogService dialogs;
    dialogs.pushFile(QString::fromStdString(from.path("TacticalG.shp")));
    installDialogService(&dialogs);
    ImportTacticalGridMnuClick();
    installDialogService(nullptr);
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].title, "Open the tactical grid file");
    EXPECT_EQ(dialogs.questions()[0].text, "Tactical grid|TacticalG.SHP");
    for (const char* name : {"TacticalG.shp", "TacticalG.shx", "TacticalG.dbf"})
        EXPECT_TRUE(std::filesystem::exists(model.path(name))) << name;
    EXPECT_EQ(modelSession().TacticalGridFile, model.path("TacticalG.shp"));
    EXPECT_EQ(GetGridName({105, 201}), "AA1");
    resetModelSession();
}

TEST(TacticalGridCli, GridNameAndCenterOfAModelsGrid) {
    ScratchDir dir;
    writeTextFile(dir.path("m.obj"), "v 0 0 0\n");
    writeGrid(dir.path("TacticalG.shp"), twoCells());
    CliResult name = runCli("grid-name " + dir.path("m.obj") + " 110 203", dir, "HOME=" + dir.root());
    EXPECT_EQ(name.exitCode, 0) << name.err;
    EXPECT_EQ(name.out, "AA1\n");
    CliResult center = runCli("grid-center " + dir.path("m.obj") + " aa1", dir, "HOME=" + dir.root());
    EXPECT_EQ(center.exitCode, 0) << center.err;
    EXPECT_EQ(center.out, "105.000 205.000 31.500\n");
}

TEST(TacticalGridCli, PointOffTheGridUnknownCellAndMissingGridFail) {
    ScratchDir dir;
    writeTextFile(dir.path("m.obj"), "v 0 0 0\n");
    writeGrid(dir.path("TacticalG.shp"), twoCells());
    EXPECT_EQ(runCli("grid-name " + dir.path("m.obj") + " 0 0", dir).exitCode, 1);
    EXPECT_EQ(runCli("grid-center " + dir.path("m.obj") + " ZZ9", dir).exitCode, 1);
    EXPECT_EQ(runCli("grid-name " + dir.path("m.obj") + " x 0", dir).exitCode, 2);
    ScratchDir bare;
    writeTextFile(bare.path("m.obj"), "v 0 0 0\n");
    CliResult none = runCli("grid-name " + bare.path("m.obj") + " 105 201", bare);
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_NE(none.err.find("no tactical grid"), std::string::npos);
}
