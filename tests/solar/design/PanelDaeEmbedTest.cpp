// Files that pass through the engine: panel data put back into a whole-scene
// export, the EPSG block, shifting, and the CSV overview.
#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QString>
#include <filesystem>
#include <string>

#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"
#include "scene/engine_interface.h"
#include "solar/design/PanelCatalog.h"
#include "solar/design/PanelColladaWriter.h"
#include "solar/design/PanelDaeEmbed.h"
#include "solar/design/PanelDaeEpsg.h"
#include "solar/design/PanelDaeImport.h"
#include "solar/design/PanelDaeListing.h"
#include "solar/design/PanelDaePolygon.h"
#include "solar/design/PanelDaeReader.h"
#include "solar/design/PanelDaeShift.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelText.h"
#include "support/TestSupport.h"

namespace {

using testsupport::EngineFixtureGuard;
using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

TGIS_Point3D pt(double x, double y, double z) { return {x, y, z, 0}; }

int occurrences(const std::string& text, const std::string& what) {
    int n = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
    return n;
}

class PanelDaeEmbedTest : public ::testing::Test {
protected:
    ScratchDir dir;
    std::string log = dir.path("run.log");

    void SetUp() override {
        resetPanelStore();
        resetPanelCatalog();
        runLog().fp_prt = std::fopen(log.c_str(), "w");
    }
    void TearDown() override {
        resetRunLog();
        resetPanelStore();
        resetSessionPaths();
    }
    std::string logText() {
        std::fflush(runLog().fp_prt);
        return readTextFile(log);
    }

    // A flat portrait panel N/G of 1 x 1.7 m at (x, y), written to its own file.
    std::string addPanel(const char* name, double x, double y) {
        PanelStore& store = panelStore();
        PANEL& p = store.panels[store.NumPanelsCreated];
        p = PANEL{};
        SetPanelText(p.Name, QString::fromUtf8(name));
        SetPanelText(p.ModuleType, QStringLiteral("ZV-M60 450"));
        QString leaf = QStringLiteral("Panel-") + QString::fromUtf8(name).replace('/', '_') + ".dae";
        const std::string file = dir.path(leaf.toStdString());
        SetPanelText(p.Filename, QString::fromStdString(file));
        p.Corners[0] = pt(x, y, 10);
        p.Corners[1] = pt(x, y + 1.7, 10);
        p.Corners[2] = pt(x + 1, y + 1.7, 10);
        p.Corners[3] = pt(x + 1, y, 10);
        p.CenterPoint = pt(x + 0.5, y + 0.85, 10);
        p.PP[0] = pt(x, y, 9.8);
        p.Length = 1903;
        p.Width = 1134;
        p.DAzimuth = 180;
        p.PanelPowerratingKW = 0.45;
        p.Opacity = 100;
        p.Active = true;
        ++store.NumPanelsCreated;
        EXPECT_TRUE(WritePanelColladaFile(QString::fromStdString(file), nullptr, 4, 1, 4, false, 0x800000, 0, 100,
                                          store.NumPanelsCreated - 1, nullptr));
        return file;
    }
};

// Two panels and a roof polygon in the scene, exported by the engine (which
// drops the data blocks), then the blocks put back, twice.
TEST_F(PanelDaeEmbedTest, EngineExportGetsOneBlockPerPanelNodeHoweverOftenItRuns) {
    const std::string a = addPanel("12/417", 100, 200);
    const std::string b = addPanel("13/417", 102, 200);
    const TGIS_Point3D roof[4] = {pt(95, 195, 9), pt(110, 195, 9), pt(110, 205, 9), pt(95, 205, 9)};
    ASSERT_TRUE(CreatePolygonDAE(QString::fromStdString(dir.path("Roof.dae")), roof, 4, 50, 0xFF, 0, 150));
    const std::string exported = dir.path("Model_(2).DAE");
    {
        EngineFixtureGuard guard;
        const double zero[3] = {0, 0, 0};
        ASSERT_EQ(At3d_Read(AT3D_READ_DAE, a.c_str(), 1.0), 1);
        ASSERT_EQ(At3d_Mesh_Static_Read_And_Add(AT3D_READ_DAE, b.c_str(), 1.0, 0, zero, ""), 1);
        ASSERT_EQ(At3d_Mesh_Static_Read_And_Add(AT3D_READ_DAE, dir.path("Roof.dae").c_str(), 1.0, 0, zero, ""), 1);
        ASSERT_EQ(At3d_Write(AT3D_WRITE_DAE, exported.c_str(), 1.0), 1);
    }
    ASSERT_EQ(readTextFile(exported).find("panel_info"), std::string::npos);

    int embedded = 0;
    ASSERT_TRUE(EmbedPanelsToDaeFile(QString::fromStdString(exported), &embedded));
    EXPECT_EQ(embedded, 2);
    EXPECT_NE(logText().find("SUCCESS: Embedded data for all 2 panels"), std::string::npos) << logText();
    const std::string once = readTextFile(exported);
    EXPECT_EQ(occurrences(once, "<panel_info>"), 2);
    EXPECT_EQ(occurrences(once, "<technique profile=\"solar_panel_specs\">"), 2);
    // Each block sits in its own node, in front of </node>; the roof has none.
    const std::size_t node12 = once.find("<node id=\"Panel-12_417_12_417_geometry-node\"");
    const std::size_t node13 = once.find("<node id=\"Panel-13_417_13_417_geometry-node\"");
    const std::size_t roofNode = once.find("roof_polygon_geometry-node\"");
    ASSERT_NE(node12, std::string::npos);
    ASSERT_NE(node13, std::string::npos);
    ASSERT_NE(roofNode, std::string::npos);
    EXPECT_LT(once.find("<name>12/417</name>", node12), once.find("</node>", node12));
    EXPECT_LT(once.find("<name>13/417</name>", node13), once.find("</node>", node13));
    EXPECT_EQ(once.find("<extra>", roofNode), std::string::npos);

    ASSERT_TRUE(EmbedPanelsToDaeFile(QString::fromStdString(exported), &embedded));
    const std::string twice = readTextFile(exported);
    // Identical but for the export time in seconds.
    const QRegularExpression stamp(QStringLiteral("<export_timestamp>\\d+</export_timestamp>"));
    EXPECT_EQ(QString::fromStdString(twice).replace(stamp, "T").toStdString(),
              QString::fromStdString(once).replace(stamp, "T").toStdString());

    // The panels come back from the export by their blocks.
    panelStore().NumPanelsCreatedT = 0;
    ASSERT_EQ(GetPanelsFromDae(QString::fromStdString(exported)), 2);
    const PANEL& first = panelStore().panelsT[0];
    EXPECT_STREQ(first.Name, "12/417");
    EXPECT_EQ(PanelText(first.Filename).toStdString(), a);
    EXPECT_DOUBLE_EQ(first.Corners[2].X, 101);
    EXPECT_DOUBLE_EQ(first.PanelPowerratingKW, 0.45);
    // The engine's export names images after their nodes; this one has none.
    EXPECT_STREQ(first.TextureName, "");
}

TEST_F(PanelDaeEmbedTest, NodesOfUnknownPanelsAreLoggedAndBadCallsRefused) {
    addPanel("12/417", 100, 200);
    const std::string scene = dir.path("scene.dae");
    writeTextFile(scene,
                  "<COLLADA>\n<library_visual_scenes>\n"
                  "<node id=\"Panels_20250101_101010_99_1_geometry\" name=\"x\">\n<instance_geometry url=\"#g\"/>\n"
                  "</node>\n</library_visual_scenes>\n</COLLADA>\n");
    EXPECT_FALSE(EmbedPanelsToDaeFile(QString::fromStdString(scene)));
    EXPECT_NE(logText().find("  NO MATCH: safeKey '99_1' did not map to any panel.\n"), std::string::npos);
    EXPECT_NE(logText().find("WARNING: No panel data was embedded - check log for details"), std::string::npos);
    EXPECT_NE(logText().find("HINT: If this is 0"), std::string::npos);

    EXPECT_FALSE(EmbedPanelsToDaeFile(QString::fromStdString(dir.path("gone.dae"))));
    EXPECT_NE(logText().find("ERROR: DAE file does not exist: " + dir.path("gone.dae")), std::string::npos);
    panelStore().NumPanelsCreated = 0;
    EXPECT_FALSE(EmbedPanelsToDaeFile(QString::fromStdString(scene)));
    EXPECT_NE(logText().find("ERROR: Invalid NumPanelsCreated value: 0\n"), std::string::npos);
}

TEST_F(PanelDaeEmbedTest, EpsgBlockIsAddedReplacedAndReadBack) {
    const std::string file = addPanel("12/417", 100, 200);
    const QString path = QString::fromStdString(file);
    EXPECT_EQ(GetEPSGFromDAE(path), -1);
    ASSERT_TRUE(EmbedEPSGInDAE(path, 2039));
    EXPECT_EQ(GetEPSGFromDAE(path), 2039);
    ASSERT_TRUE(EmbedEPSGInDAE(path, 6991));
    EXPECT_EQ(GetEPSGFromDAE(path), 6991);
    const std::string text = readTextFile(file);
    EXPECT_EQ(occurrences(text, "epsg_data"), 1);
    EXPECT_NE(text.find("    <up_axis>Z_UP</up_axis>\n"
                        "    <extra id=\"epsg_data\">\n"
                        "      <technique profile=\"GIS\">\n"
                        "        <epsg_code>6991</epsg_code>\n"
                        "        <description>EPSG:6991</description>\n"
                        "      </technique>\n"
                        "    </extra>\n"
                        "  </asset>\n"),
              std::string::npos);
    {
        EngineFixtureGuard guard;
        EXPECT_EQ(At3d_Read(AT3D_READ_DAE, file.c_str(), 1.0), 1);
    }

    // No asset: one is made in front of the first library.
    const std::string bare = dir.path("bare.dae");
    writeTextFile(bare, "<?xml version=\"1.0\"?>\n<COLLADA version=\"1.4.1\">\n  <library_geometries/>\n</COLLADA>\n");
    ASSERT_TRUE(EmbedEPSGInDAE(QString::fromStdString(bare), 2039));
    EXPECT_EQ(readTextFile(bare),
              "<?xml version=\"1.0\"?>\n<COLLADA version=\"1.4.1\">\n  <asset>\n    <extra id=\"epsg_data\">\n"
              "      <technique profile=\"GIS\">\n        <epsg_code>2039</epsg_code>\n"
              "        <description>EPSG:2039</description>\n      </technique>\n    </extra>\n  </asset>\n"
              "  <library_geometries/>\n</COLLADA>\n");

    writeTextFile(dir.path("bad.dae"), "<COLLADA><asset><extra id=\"epsg_data\"><technique profile=\"GIS\">"
                                       "<epsg_code>EPSG</epsg_code></technique></extra></asset></COLLADA>");
    EXPECT_EQ(GetEPSGFromDAE(QString::fromStdString(dir.path("bad.dae"))), 0);
    writeTextFile(dir.path("plain.txt"), "no model here");
    EXPECT_EQ(GetEPSGFromDAE(QString::fromStdString(dir.path("plain.txt"))), 0);
}

TEST_F(PanelDaeEmbedTest, ShiftMovesPositionsCornersCentreAndReferencePoints) {
    const std::string file = addPanel("12/417", 100, 200);
    ASSERT_TRUE(ShiftDAE(QString::fromStdString(file), 10, -20, 0.5));
    const PANEL moved = ReadPanelDAE(QString::fromStdString(file));
    testsupport::expectVec(&moved.Corners[0].X, 110, 180, 10.5, 1e-6);
    testsupport::expectVec(&moved.Corners[2].X, 111, 181.7, 10.5, 1e-6);
    testsupport::expectVec(&moved.CenterPoint.X, 110.5, 180.85, 10.5, 1e-6);
    testsupport::expectVec(&moved.PP[0].X, 110, 180, 10.3, 1e-6);
    EXPECT_NE(readTextFile(file).find("            110.000000 180.000000 10.500000 111.000000 180.000000 10.500000 "
                                      "111.000000 181.700000 10.500000 110.000000 181.700000 10.500000\n"),
              std::string::npos);
    EngineFixtureGuard guard;
    ASSERT_EQ(At3d_Read(AT3D_READ_DAE, file.c_str(), 1.0), 1);
    double xyz[3];
    ASSERT_EQ(At3d_GetVertex(0, "Panel-12_417_12_417_geometry", xyz), 1);
    EXPECT_NEAR(xyz[1], 180, 1e-3);
}

TEST_F(PanelDaeEmbedTest, OverviewListsEachPanelOfAFile) {
    addPanel("12/417", 100, 200);
    addPanel("13/417", 102, 200);
    panelStore().panels[1].DTilt = 14.9;
    const std::string model = dir.path("Panels_20250101_101010.dae");
    const std::string export13 = dir.path("Panel-13_417.dae");
    ASSERT_TRUE(WritePanelColladaFile(QString::fromStdString(export13), nullptr, 4, 1, 4, false, 0x800000, 0, 100, 1,
                                      nullptr));
    // A panel file names no path of its own: its panel takes the file read.
    std::filesystem::copy_file(export13, model);
    const QString csv = ListPanelsInfo(QString::fromStdString(model));
    EXPECT_EQ(csv.toStdString(), dir.path("Panels_20250101_101010.csv"));
    EXPECT_EQ(readTextFile(csv.toStdString()),
              "ModuleType,Layer,Name,Filename,Row,Grouping,TextureName,Length,Width,DTilt,DAzimuth,RoofType,"
              "PanelPowerratingKW,CenterX,CenterY,CenterZ\n"
              "ZV-M60 450,(MISSING),13/417," + model + ",0,,,1903,1134,14,180,Tiled,0.450000,102.500000,"
              "200.850000,10.000000\n");

    EXPECT_EQ(ListPanelsInfo(QString::fromStdString(dir.path("Roof-less.dae"))), QString());
    EXPECT_NE(logText().find("ERROR: Invalid NumPanelsCreated value: 0\n"), std::string::npos);

    // From memory the panels are grouped first (a lone panel is row 1 of
    // group A), and the name carries the time.
    sessionPaths().ORVO_T = dir.path("TMP/");
    panelStore().panels[0].GroupingName = 'B';
    panelStore().panels[0].RoofType = 1;
    const QString fromMemory = ListPanelsInfoFromMemory();
    EXPECT_TRUE(QRegularExpression(QStringLiteral("/TMP/PanelsInfo_\\d{8}_\\d{6}\\.csv$")).match(fromMemory).hasMatch())
        << fromMemory.toStdString();
    const std::string rows = readTextFile(fromMemory.toStdString());
    EXPECT_NE(rows.find("\nZV-M60 450,(MISSING),12/417," + dir.path("Panel-12_417.dae") + ",1,A,,1903,1134,0,180,Flat,"),
              std::string::npos) << rows;
    EXPECT_EQ(occurrences(rows, "\n"), 3);
}

}  // namespace
