// The panel file writers: the exact lines of a textured box, the flat and
// rewritten forms, the texture taken from the catalogue, and the engine
// loading what was written.
#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>

#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"
#include "scene/engine_interface.h"
#include "solar/design/PanelCatalog.h"
#include "solar/design/PanelColladaData.h"
#include "solar/design/PanelColladaModel.h"
#include "solar/design/PanelColladaWriter.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelText.h"
#include "support/TestSupport.h"

namespace {

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

// Written by hand from the line tables. @DATE@ is the build date, @PATH@ the
// panel's file and @STAMP@ the export time, which are checked apart.
const char* const kTexturedBox = R"(<?xml version="1.0" encoding="utf-8"?>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1">
  <asset>
    <contributor><author>Zorvex64 Solar Panel Exporter</author></contributor>
    <created>@DATE@</created>
    <modified>@DATE@</modified>
    <unit name="meter" meter="1.0"/>
    <up_axis>Z_UP</up_axis>
  </asset>
  <library_images>
    <image id="solar_panel_texture" name="solar_panel_texture">
      <init_from>PNEG.JPG</init_from>
    </image>
  </library_images>
  <library_effects>
    <effect id="12/417_effect">
      <profile_COMMON>
        <newparam sid="solar_panel_texture_surface">
          <surface type="2D"><init_from>solar_panel_texture</init_from></surface>
        </newparam>
        <newparam sid="solar_panel_texture_sampler">
          <sampler2D><source>solar_panel_texture_surface</source></sampler2D>
        </newparam>
        <technique sid="common">
          <phong>
            <emission><color>0.00 0.00 0.50 1.0</color></emission>
            <ambient><color>0.00 0.00 0.50 1.0</color></ambient>
            <diffuse><texture texture="solar_panel_texture_sampler" texcoord="UVSET"/></diffuse>
            <specular><color>0.1 0.1 0.1 1.0</color></specular>
            <transparency><float>0.80</float></transparency>
          </phong>
        </technique>
      </profile_COMMON>
    </effect>
  </library_effects>
  <library_materials>
    <material id="12/417_material" name="12/417_material">
      <instance_effect url="#12/417_effect"/>
    </material>
  </library_materials>
  <library_geometries>
    <geometry id="12/417_geometry" name="12/417_geometry">
      <mesh>
        <source id="12/417_positions">
          <float_array id="12/417_positions_array" count="24">
            500.500000 700.250000 40.000000 502.500000 700.250000 40.000000 502.500000 701.250000 40.500000 500.500000 701.250000 40.500000 500.500000 700.250000 40.000000 502.500000 700.250000 40.000000 502.500000 701.250000 40.500000 500.500000 701.250000 40.500000
          </float_array>
          <technique_common>
            <accessor source="#12/417_positions_array" count="8" stride="3">
              <param name="X" type="float"/>
              <param name="Y" type="float"/>
              <param name="Z" type="float"/>
            </accessor>
          </technique_common>
        </source>
        <source id="12/417_uv">
          <float_array id="12/417_uv_array" count="8">
            1.0 0.0 1.0 1.0 0.0 1.0 0.0 0.0
          </float_array>
          <technique_common>
            <accessor source="#12/417_uv_array" count="4" stride="2">
              <param name="S" type="float"/>
              <param name="T" type="float"/>
            </accessor>
          </technique_common>
        </source>
        <vertices id="12/417_vertices">
          <input semantic="POSITION" source="#12/417_positions"/>
        </vertices>
        <polylist count="6" material="12/417_material">
          <input semantic="VERTEX" source="#12/417_vertices" offset="0"/>
          <input semantic="TEXCOORD" source="#12/417_uv" offset="1" set="0"/>
          <vcount>4 4 4 4 4 4</vcount>
          <p>0 0 1 1 2 2 3 3 7 3 6 2 5 1 4 0 0 0 3 3 7 3 4 0 1 1 2 2 6 2 5 1 2 2 3 3 7 3 6 2 3 3 0 0 4 0 7 3</p>
        </polylist>
      </mesh>
    </geometry>
  </library_geometries>
  <library_visual_scenes>
    <visual_scene id="scene" name="Solar Panel Array">
      <node id="12/417" name="12/417">
        <extra>
          <technique profile="solar_panel_specs">
            <module_type>ZV-M72 550 BF</module_type>
          </technique>
        </extra>
        <extra>
          <technique profile="panel_metadata">
            <epsg>2039</epsg>
            <path>@PATH@</path>
          </technique>
        </extra>
        <extra>
          <technique profile="panel_specs">
            <Efficiency>21.300000000000</Efficiency>
            <PanelPowerratingKW>0.550000000000</PanelPowerratingKW>
            <Weight_kg>32.000000000000</Weight_kg>
            <MaxPowerNOCT_W>414.000000000000</MaxPowerNOCT_W>
            <TempCoeff_Pmax_PercentPercent>-0.300000000000</TempCoeff_Pmax_PercentPercent>
            <NOCT_C>43.000000000000</NOCT_C>
            <BifacialFactor_Percent>70.000000000000</BifacialFactor_Percent>
            <AnnualDegradation>0.004000000000</AnnualDegradation>
            <Annual_kWh>790.250000000000</Annual_kWh>
            <Shadingloss_kWh>22.250000000000</Shadingloss_kWh>
          </technique>
        </extra>
      <extra>
        <technique profile="solar_panel_data">
          <panel_info>
            <name>12/417</name>
            <module_type>ZV-M72 550 BF</module_type>
            <pname>12/417</pname>
            <picture>PNEG.JPG</picture>
            <length>2278</length>
            <width>1134</width>
            <thickness>35</thickness>
            <weight_kg>32.000</weight_kg>
            <tilt>26.57</tilt>
            <azimuth>180.00</azimuth>
            <lift>0.200000</lift>
            <landscape>true</landscape>
            <opacity>80</opacity>
            <gap_mm>20</gap_mm>
            <repeat>3</repeat>
            <active>true</active>
            <roof_type>0</roof_type>
            <power_rating_stc>0.550000</power_rating_stc>
            <efficiency>21.300000000000</efficiency>
            <power_rating_noct>414.000</power_rating_noct>
            <noct_temperature>43.00</noct_temperature>
            <temp_coeff_pmax_percent_per_c>-0.300</temp_coeff_pmax_percent_per_c>
            <bifacial_factor_percent>70.00</bifacial_factor_percent>
            <annual_degradation>0.004000</annual_degradation>
            <cleaning_factor>2.000000</cleaning_factor>
            <epsg>2039</epsg>
            <center_lat>32.0640219</center_lat>
            <center_lon>34.7707146</center_lon>
            <raw_energy_kwh>812.500</raw_energy_kwh>
            <adjusted_energy_kwh>790.250</adjusted_energy_kwh>
            <shaded_hours>120</shaded_hours>
            <color1 r="0" g="0" b="128"/>
            <color2 r="255" g="0" b="0"/>
            <center_point x="501.500000" y="700.750000" z="40.250000"/>
            <reference_points>
              <pp_0 x="500.000000" y="700.000000" z="39.900000"/>
              <pp_1 x="510.000000" y="700.000000" z="39.900000"/>
              <pp_2 x="500.000000" y="704.000000" z="41.900000"/>
            </reference_points>
            <corners>
              <corner_ll x="500.500000" y="700.250000" z="40.000000"/>
              <corner_ul x="500.500000" y="701.250000" z="40.500000"/>
              <corner_ur x="502.500000" y="701.250000" z="40.500000"/>
              <corner_lr x="502.500000" y="700.250000" z="40.000000"/>
            </corners>
            <!-- CSV_DATA_LOADED: This panel data was populated from CSV -->
            <csv_verification>
              <module_from_csv>ZV-M72 550 BF</module_from_csv>
              <dimensions_csv>2278x1134x35_mm</dimensions_csv>
              <weight_csv>32.00_kg</weight_csv>
              <power_stc_csv>550.00_W</power_stc_csv>
              <power_noct_csv>414.00_W</power_noct_csv>
              <efficiency_csv>21.30_percent</efficiency_csv>
              <temp_coeff_csv>-0.300_percent_per_C</temp_coeff_csv>
              <noct_csv>43.0_C</noct_csv>
              <bifacial_csv>70.0_percent</bifacial_csv>
              <degradation_csv>0.40_percent_per_year</degradation_csv>
            </csv_verification>
            <metadata>
              <export_timestamp>@STAMP@</export_timestamp>
              <panel_area_m2>2.583</panel_area_m2>
              <power_density_w_per_m2>212.91</power_density_w_per_m2>
              <is_bifacial>true</is_bifacial>
            </metadata>
          </panel_info>
        </technique>
      </extra>
        <instance_geometry url="#12/417_geometry">
          <bind_material>
            <technique_common>
              <instance_material symbol="12/417_material" target="#12/417_material">
                <bind_vertex_input semantic="UVSET" input_semantic="TEXCOORD" input_set="0"/>
              </instance_material>
            </technique_common>
          </bind_material>
        </instance_geometry>
      </node>
    </visual_scene>
  </library_visual_scenes>
  <scene>
    <instance_visual_scene url="#scene"/>
  </scene>
</COLLADA>
)";

TGIS_Point3D pt(double x, double y, double z) { return {x, y, z, 0}; }

// A landscape module on a roof facing south, 2 m along the row and 1.12 m up it.
PANEL samplePanel(const std::string& file) {
    PANEL p{};
    SetPanelText(p.ModuleType, QStringLiteral("ZV-M72 550 BF"));
    SetPanelText(p.Name, QStringLiteral("12/417"));
    SetPanelText(p.Filename, QString::fromStdString(file));
    p.PP[0] = pt(500, 700, 39.9);
    p.PP[1] = pt(510, 700, 39.9);
    p.PP[2] = pt(500, 704, 41.9);
    p.Corners[0] = pt(500.5, 700.25, 40);
    p.Corners[1] = pt(500.5, 701.25, 40.5);
    p.Corners[2] = pt(502.5, 701.25, 40.5);
    p.Corners[3] = pt(502.5, 700.25, 40);
    p.CenterPoint = pt(501.5, 700.75, 40.25);
    p.CenterLat = 32.0640219;
    p.CenterLon = 34.7707146;
    p.EPSG = 2039;
    p.RawEnergy = 812.5;
    p.AdjustedEnergy = 790.25;
    p.Shaded_Hours = 120;
    p.Length = 2278;
    p.Width = 1134;
    p.Thickness = 35;
    p.DTilt = 26.5651;
    p.DAzimuth = 180;
    p.Lift = 0.2;
    p.Opacity = 80;
    p.Gapmm = 20;
    p.Repeat = 3;
    p.Landscape = true;
    p.Active = true;
    p.Color1 = 0x800000;
    p.Color2 = 0x0000FF;
    p.Cleaningfactor = 2;
    p.RoofType = 0;
    p.Efficiency = 21.3;
    p.PanelPowerratingKW = 0.55;
    p.Weight_kg = 32;
    p.MaxPowerNOCT_W = 414;
    p.TempCoeff_Pmax_PercentPercent = -0.3;
    p.NOCT_C = 43;
    p.BifacialFactor_Percent = 70;
    p.AnnualDegradation = 0.004;
    p.Annual_kWh = 790.25;
    p.Shadingloss_kWh = 22.25;
    return p;
}

QStringList linesOf(const std::string& text) {
    QStringList lines = QString::fromStdString(text).split('\n');
    if (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
    return lines;
}

// Line by line, naming the first line that differs.
void expectSameLines(const QStringList& actual, const QStringList& expected) {
    const qsizetype n = std::min(actual.size(), expected.size());
    for (qsizetype i = 0; i < n; ++i)
        ASSERT_EQ(actual[i].toStdString(), expected[i].toStdString()) << "line " << i + 1;
    EXPECT_EQ(actual.size(), expected.size());
}

class PanelColladaWriterTest : public ::testing::Test {
protected:
    ScratchDir dir;

    void SetUp() override {
        resetPanelStore();
        resetPanelCatalog();
        resetSessionPaths();
        sessionPaths().CTQ_Path = dir.path("data/");
        std::filesystem::create_directories(dir.path("PANELS"));
        panelStore().ModuleType = QStringLiteral("ZV-M72 550 BF");
    }
    void TearDown() override {
        resetPanelStore();
        resetPanelCatalog();
        resetSessionPaths();
        resetRunLog();
    }

    // Stores the sample panel and writes it as the placement does.
    bool writeSample(const std::string& file, bool box) {
        PanelStore& store = panelStore();
        store.panels[0] = samplePanel(file);
        store.NumPanelsCreated = 1;
        const PANEL& p = store.panels[0];
        return WritePanelColladaFile(QString::fromStdString(file), p.Corners, 8, 6, 4, box, p.Color1, p.Color2,
                                     p.Opacity, 0, nullptr);
    }
    // The catalogue chose the dark texture, installed as `installed`.
    void chooseTexture(const std::string& installed, const std::string& bytes) {
        writeTextFile(dir.path("data/" + installed), bytes);
        panelCatalog().PanelImageTexture = QStringLiteral("PNEG.JPG");
        panelCatalog().GlobalPanelJPGName = QString::fromStdString(dir.path("PANELS/PNEG.JPG"));
    }
};

const std::string kJpegBytes = std::string("\xFF\xD8\xFF\xE0", 4) + "0123456789abcdef";
const std::string kPngBytes = std::string("\x89PNG\r\n\x1A\n", 8) + "0123456789abcdef";

TEST_F(PanelColladaWriterTest, TexturedBoxIsWrittenLineByLineAsTheTablesSay) {
    chooseTexture("PNEG.JPG", kJpegBytes);
    const std::string file = dir.path("PANELS/Panel-12_417.dae");
    ASSERT_TRUE(writeSample(file, true));

    QStringList actual = linesOf(readTextFile(file));
    // The export time is a date text; the rest of that line is fixed.
    const QRegularExpression stamp(QStringLiteral(
        "^(              <export_timestamp>)\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d(</export_timestamp>)$"));
    qsizetype stamps = 0;
    for (QString& line : actual)
        if (stamp.match(line).hasMatch()) {
            line.replace(stamp, QStringLiteral("\\1@STAMP@\\2"));
            ++stamps;
        }
    EXPECT_EQ(stamps, 1);
    QString expected = QString::fromUtf8(kTexturedBox);
    expected.replace("@DATE@", PanelColladaBuildDate()).replace("@PATH@", QString::fromStdString(file));
    expectSameLines(actual, linesOf(expected.toStdString()));

    // The texture was made beside the panel files from the installed picture,
    // and the panel now names it by its leaf.
    EXPECT_EQ(readTextFile(dir.path("PANELS/PNEG.JPG")), kJpegBytes);
    EXPECT_STREQ(panelStore().panels[0].TextureName, "PNEG.JPG");
}

TEST_F(PanelColladaWriterTest, BuildDateReadsLikeOct172025) {
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^(Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec) [1-9]\\d? \\d{4}$"))
                    .match(PanelColladaBuildDate())
                    .hasMatch())
        << PanelColladaBuildDate().toStdString();
}

TEST_F(PanelColladaWriterTest, PictureInAnotherFormatGivesTheTextureItsTrueExtension) {
    chooseTexture("PNEG.JPG", kPngBytes);
    const std::string file = dir.path("PANELS/Panel-12_417.dae");
    ASSERT_TRUE(writeSample(file, true));
    const std::string text = readTextFile(file);
    EXPECT_NE(text.find("      <init_from>PNEG.PNG</init_from>\n"), std::string::npos);
    EXPECT_NE(text.find("            <picture>PNEG.PNG</picture>\n"), std::string::npos);
    EXPECT_EQ(readTextFile(dir.path("PANELS/PNEG.PNG")), kPngBytes);
}

TEST_F(PanelColladaWriterTest, FlatPanelHasFourVerticesOneFaceAndNoTexture) {
    chooseTexture("PNEG.JPG", kJpegBytes);
    const std::string file = dir.path("PANELS/Panel-12_417.dae");
    ASSERT_TRUE(writeSample(file, false));
    const std::string text = readTextFile(file);
    EXPECT_EQ(text.find("library_images"), std::string::npos);
    EXPECT_EQ(text.find("TEXCOORD"), std::string::npos);
    for (const char* line :
         {"          <float_array id=\"12/417_positions_array\" count=\"12\">\n",
          "            500.500000 700.250000 40.000000 502.500000 700.250000 40.000000 502.500000 701.250000 "
          "40.500000 500.500000 701.250000 40.500000\n",
          "            <accessor source=\"#12/417_positions_array\" count=\"4\" stride=\"3\">\n",
          "            <diffuse><color>0.00 0.00 0.50 1.0</color></diffuse>\n",
          "        <polylist count=\"1\" material=\"12/417_material\">\n", "          <vcount>4</vcount>\n",
          "          <p>0 1 2 3</p>\n",
          "              <instance_material symbol=\"12/417_material\" target=\"#12/417_material\">\n"
          "              </instance_material>\n"})
        EXPECT_NE(text.find(line), std::string::npos) << line;
}

TEST_F(PanelColladaWriterTest, RewrittenPanelUsesThePrintedForms) {
    PANEL p = samplePanel(dir.path("Panel-12_417.dae"));
    p.Thickness = 0;
    SetPanelText(p.TextureName, QStringLiteral("/somewhere/PDEF.JPG"));
    ASSERT_TRUE(SaveThePanel(p));
    const std::string text = readTextFile(dir.path("Panel-12_417.dae"));
    for (const char* line :
         {"    <contributor><author>Exported by SavePanel</author></contributor>\n",
          "    <visual_scene id=\"scene\" name=\"Solar Panel\">\n", "      <init_from>PDEF.JPG</init_from>\n",
          "            500.500000 700.250000 40.000000 502.500000 700.250000 40.000000 502.500000 701.250000 "
          "40.500000 500.500000 701.250000 40.500000 \n",
          "            0.0 0.0  1.0 0.0  1.0 1.0  0.0 1.0 \n", "          <vcount>4</vcount>\n",
          "          <p>0 0 1 1 2 2 3 3</p>\n", "            <tilt>26.57</tilt>\n"})
        EXPECT_NE(text.find(line), std::string::npos) << line;
    // Only the panel data block rides in the node.
    EXPECT_EQ(text.find("panel_specs\""), std::string::npos);
    EXPECT_NE(text.find("      <extra>\n        <technique profile=\"solar_panel_data\">\n"), std::string::npos);
}

TEST_F(PanelColladaWriterTest, ExportBlockDiffersWhereTheTableSays) {
    QStringList block;
    AddPanelDataToStringList(block, samplePanel("/models/PANELS/Panel-12_417.dae"), 7);
    const QString text = block.join('\n') + '\n';
    for (const char* line :
         {"        <extra>\n          <technique profile=\"solar_panel_specs\">\n"
          "            <module_type>ZV-M72 550 BF</module_type>\n"
          "            <original_filename>/models/PANELS/Panel-12_417.dae</original_filename>\n"
          "          </technique>\n        </extra>\n        <extra>\n"
          "          <technique profile=\"solar_panel_data\">\n            <panel_info>\n"
          "              <name>12/417</name>\n",
          "              <picture> </picture>\n"
          "              <original_path>/models/PANELS/Panel-12_417.dae</original_path>\n",
          "              <tilt>26.6</tilt>\n              <azimuth>180.0</azimuth>\n",
          "                <pp_1 x=\"510.000000\" y=\"700.000000\" z=\"39.900000\"/>\n",
          "              <energy_data>\n                <raw_energy>812.500</raw_energy>\n"
          "                <adjusted_energy>790.250</adjusted_energy>\n                <shaded_hours>120</shaded_hours>\n"
          "                <shading_percent>0.00</shading_percent>\n                <monthly_radiation>\n"
          "                  <month_1>0.000</month_1>\n",
          "                <power_stc_csv>0.55_W</power_stc_csv>\n",
          "                <panel_index>7</panel_index>\n"
          "                <data_source>ModelExport_Enhancement</data_source>\n"
          "                <panel_area_m2>2.583</panel_area_m2>\n"
          "                <power_density_w_per_m2>0.21</power_density_w_per_m2>\n",
          "            </panel_info>\n          </technique>\n        </extra>\n"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(line))) << line;
    EXPECT_FALSE(text.contains("raw_energy_kwh"));
    EXPECT_TRUE(QRegularExpression(QStringLiteral("<export_timestamp>\\d{10}</export_timestamp>")).match(text).hasMatch());
}

TEST_F(PanelColladaWriterTest, FailedWriteIsLoggedAndLeavesNoFile) {
    const std::string log = dir.path("run.log");
    runLog().fp_prt = std::fopen(log.c_str(), "w");
    writeTextFile(dir.path("blocker"), "a file where a folder should be");
    const std::string file = dir.path("blocker/Panel-12_417.dae");
    EXPECT_FALSE(writeSample(file, false));
    resetRunLog();
    EXPECT_NE(readTextFile(log).find("ERROR saving DAE file: " + file), std::string::npos) << readTextFile(log);
    // A panel index outside the store writes nothing either.
    EXPECT_FALSE(WritePanelColladaFile(QString::fromStdString(dir.path("x.dae")), nullptr, 0, 0, 0, false, 0, 0, 100,
                                       3, nullptr));
}

TEST_F(PanelColladaWriterTest, EngineLoadsThePanelAsItsLayerAtTheCorners) {
    chooseTexture("PNEG.JPG", kJpegBytes);
    const std::string file = dir.path("PANELS/Panel-12_417.dae");
    ASSERT_TRUE(writeSample(file, true));
    testsupport::EngineFixtureGuard guard;
    ASSERT_EQ(At3d_Read(AT3D_READ_DAE, file.c_str(), 1.0), 1);
    ASSERT_EQ(At3d_LayerCount(), 1);
    char name[AT3D_NAME_SIZE] = {};
    ASSERT_NE(At3d_GetNextLayer(nullptr, name), nullptr);
    EXPECT_STREQ(name, "Panel-12_417_12_417_geometry");
    // Twelve triangles of the flat box, every vertex on one of the corners,
    // and every corner used.
    EXPECT_EQ(At3d_FaceCount(name), 12);
    const PANEL& p = panelStore().panels[0];
    bool used[4] = {};
    for (int v = 0; v < At3d_VertexCount(name); ++v) {
        double xyz[3];
        ASSERT_EQ(At3d_GetVertex(v, name, xyz), 1);
        int corner = -1;
        for (int c = 0; c < 4; ++c)
            if (std::fabs(xyz[0] - p.Corners[c].X) < 1e-6 && std::fabs(xyz[1] - p.Corners[c].Y) < 1e-6 &&
                std::fabs(xyz[2] - p.Corners[c].Z) < 1e-6)
                corner = c;
        ASSERT_GE(corner, 0) << xyz[0] << " " << xyz[1] << " " << xyz[2];
        used[corner] = true;
    }
    EXPECT_TRUE(used[0] && used[1] && used[2] && used[3]);
    EXPECT_FALSE(testsupport::EngineFixtureGuard::logContains("texture not found"));
}

}  // namespace
