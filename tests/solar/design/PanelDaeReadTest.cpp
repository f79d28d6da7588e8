// Reading panels back: a written panel through GetPanelsFromDae and
// ReadPanelDAE, the node-by-node reading of files without <panel_info>, the
// image table, and the image kind by magic number.
#include <gtest/gtest.h>

#include <QStringList>
#include <filesystem>
#include <string>

#include "app/services/RunLog.h"
#include "solar/design/PanelColladaData.h"
#include "solar/design/PanelColladaWriter.h"
#include "solar/design/PanelDaeImageType.h"
#include "solar/design/PanelDaeImport.h"
#include "solar/design/PanelDaeReader.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelText.h"
#include "support/TestSupport.h"

namespace {

using testsupport::expectVec;
using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

TGIS_Point3D pt(double x, double y, double z) { return {x, y, z, 0}; }

// A portrait panel at map coordinates with every field of the record set.
PANEL fullPanel(const std::string& file) {
    PANEL p{};
    SetPanelText(p.ModuleType, QStringLiteral("TSM-ZV590 Dual Glass"));
    SetPanelText(p.Name, QStringLiteral("7/88"));
    SetPanelText(p.Filename, QString::fromStdString(file));
    p.PP[0] = pt(178500, 663500, 40);
    p.PP[1] = pt(178510, 663500, 40);
    p.PP[2] = pt(178500, 663505, 42);
    p.Corners[0] = pt(178501.125, 663500.5, 40.25);
    p.Corners[1] = pt(178501.125, 663502.75, 41.125);
    p.Corners[2] = pt(178502.25, 663502.75, 41.125);
    p.Corners[3] = pt(178502.25, 663500.5, 40.25);
    p.CenterPoint = pt(178501.6875, 663501.625, 40.6875);
    p.CenterLat = 32.0640219;
    p.CenterLon = 34.7707146;
    p.EPSG = 2039;
    p.RawEnergy = 950.125;
    p.AdjustedEnergy = 900.5;
    p.Shaded_Hours = 300;
    p.Length = 2384;
    p.Width = 1134;
    p.Thickness = 30;
    p.DTilt = 21.26;
    p.DAzimuth = 183.5;
    p.Lift = 0.15;
    p.Opacity = 90;
    p.Gapmm = 20;
    p.Repeat = 4;
    p.Landscape = false;
    p.Active = true;
    p.Color1 = 0x102030;
    p.Color2 = 0x800000;
    p.Cleaningfactor = 1.5;
    p.RoofType = 0;
    p.Efficiency = 21.8;
    p.PanelPowerratingKW = 0.59;
    p.Weight_kg = 33.5;
    p.MaxPowerNOCT_W = 444;
    p.TempCoeff_Pmax_PercentPercent = -0.29;
    p.NOCT_C = 43;
    p.BifacialFactor_Percent = 80;
    p.AnnualDegradation = 0.004;
    return p;
}

class PanelDaeReadTest : public ::testing::Test {
protected:
    ScratchDir dir;
    std::string log = dir.path("run.log");

    void SetUp() override {
        resetPanelStore();
        runLog().fp_prt = std::fopen(log.c_str(), "w");
    }
    void TearDown() override {
        resetRunLog();
        resetPanelStore();
    }
    std::string logText() {
        std::fflush(runLog().fp_prt);
        return readTextFile(log);
    }
    std::string writePanel(const PANEL& p, bool box) {
        const std::string file = PanelText(p.Filename).toStdString();
        PanelStore& store = panelStore();
        store.panels[0] = p;
        store.NumPanelsCreated = 1;
        EXPECT_TRUE(WritePanelColladaFile(QString::fromStdString(file), nullptr, 0, 0, 4, box, p.Color1, p.Color2,
                                          p.Opacity, 0, nullptr));
        return file;
    }
};

TEST_F(PanelDaeReadTest, WrittenPanelComesBackThroughTheStagingStoreWithoutReferencePoints) {
    const PANEL in = fullPanel(dir.path("Panel-7_88.dae"));
    const std::string file = writePanel(in, false);
    panelStore().NumPanelsCreatedT = 0;
    ASSERT_EQ(GetPanelsFromDae(QString::fromStdString(file)), 1);
    ASSERT_EQ(panelStore().NumPanelsCreatedT, 1);
    const PANEL& out = panelStore().panelsT[0];

    EXPECT_STREQ(out.Name, "7/88");
    EXPECT_STREQ(out.ModuleType, in.ModuleType);
    EXPECT_EQ(PanelText(out.Filename).toStdString(), file);
    EXPECT_EQ(out.Length, 2384);
    EXPECT_EQ(out.Width, 1134);
    EXPECT_EQ(out.Thickness, 30);
    for (int c = 0; c < 4; ++c) expectVec(&out.Corners[c].X, in.Corners[c].X, in.Corners[c].Y, in.Corners[c].Z, 1e-6);
    expectVec(&out.CenterPoint.X, 178501.6875, 663501.625, 40.6875, 1e-6);
    EXPECT_NEAR(out.DTilt, 21.26, 1e-9);
    EXPECT_NEAR(out.DAzimuth, 183.5, 1e-9);
    EXPECT_NEAR(out.Lift, 0.15, 1e-6);
    EXPECT_FALSE(out.Landscape);
    EXPECT_TRUE(out.Active);
    EXPECT_EQ(out.Opacity, 90);
    EXPECT_EQ(out.Gapmm, 20);
    EXPECT_EQ(out.Repeat, 4);
    EXPECT_EQ(out.RoofType, 0);
    // Kilowatts, as written.
    EXPECT_DOUBLE_EQ(out.PanelPowerratingKW, 0.59);
    EXPECT_DOUBLE_EQ(out.Efficiency, 21.8);
    EXPECT_DOUBLE_EQ(out.Weight_kg, 33.5);
    EXPECT_DOUBLE_EQ(out.MaxPowerNOCT_W, 444);
    EXPECT_DOUBLE_EQ(out.TempCoeff_Pmax_PercentPercent, -0.29);
    EXPECT_DOUBLE_EQ(out.NOCT_C, 43);
    EXPECT_DOUBLE_EQ(out.BifacialFactor_Percent, 80);
    EXPECT_DOUBLE_EQ(out.AnnualDegradation, 0.004);
    EXPECT_DOUBLE_EQ(out.Cleaningfactor, 1.5);
    EXPECT_EQ(out.EPSG, 2039);
    EXPECT_NEAR(out.CenterLat, 32.0640219, 1e-7);
    EXPECT_NEAR(out.CenterLon, 34.7707146, 1e-7);
    EXPECT_DOUBLE_EQ(out.RawEnergy, 950.125);
    EXPECT_DOUBLE_EQ(out.AdjustedEnergy, 900.5);
    EXPECT_EQ(out.Shaded_Hours, 300);
    for (const TGIS_Point3D& p : out.PP) expectVec(&p.X, 0, 0, 0, 0);
}

TEST_F(PanelDaeReadTest, SinglePanelReaderTakesWattsReferencePointsAndColours) {
    PANEL in = fullPanel(dir.path("Panel-7_88.dae"));
    in.AnnualDegradation = 0;
    in.Shaded_Hours = 5000;
    const std::string file = writePanel(in, false);
    const PANEL out = ReadPanelDAE(QString::fromStdString(file));

    EXPECT_STREQ(out.Name, "7/88");
    EXPECT_DOUBLE_EQ(out.PanelPowerratingKW, 0.59 / 1000);
    for (int i = 0; i < 3; ++i) expectVec(&out.PP[i].X, in.PP[i].X, in.PP[i].Y, in.PP[i].Z, 1e-6);
    expectVec(&out.Corners[1].X, 178501.125, 663502.75, 41.125, 1e-6);
    EXPECT_EQ(out.Color1, 0x102030);
    EXPECT_EQ(out.Color2, 0x800000);
    EXPECT_DOUBLE_EQ(out.AnnualDegradation, -0.005);
    EXPECT_EQ(out.Shaded_Hours, 0);
    EXPECT_NE(logText().find("ReadDAE: Set default degradation to -0.5% per year\n"), std::string::npos);
    EXPECT_NE(logText().find("ReadDAE: WARNING - Invalid shaded hours: 5000 (should be 0-4360)\n"), std::string::npos);

    // Without the block, or without the file, only the defaults.
    writeTextFile(dir.path("plain.dae"), "<COLLADA><node id=\"1/2\"></node></COLLADA>\n");
    for (const std::string& path : {dir.path("plain.dae"), dir.path("gone.dae")}) {
        const PANEL empty = ReadPanelDAE(QString::fromStdString(path));
        EXPECT_STREQ(empty.ModuleType, "UnknownType");
        EXPECT_EQ(PanelText(empty.Filename).toStdString(), path);
        EXPECT_EQ(empty.Opacity, 100);
        EXPECT_STREQ(empty.Name, "");
    }
}

// An export whose <panel_info> tags were lost keeps its technique blocks: the
// panels are read node by node, the specs profile giving names and paths.
TEST_F(PanelDaeReadTest, FileWithoutPanelInfoIsReadNodeByNode) {
    const std::string file = dir.path("Panels_20250101_101010.dae");
    writeTextFile(file,
                  "<COLLADA>\n  <library_images>\n"
                  "    <image id=\"Panel-3_5_3_5_geometry-material-diffuse-image\">\n"
                  "      <init_from>file://C:/jobs/PANELS/PNEG.JPG</init_from>\n    </image>\n"
                  "  </library_images>\n  <library_visual_scenes>\n"
                  "    <node id=\"Panel-3_5_3_5_geometry-node\" name=\"3/5\">\n"
                  "      <extra>\n        <technique profile=\"solar_panel_specs\">\n"
                  "          <module_type>ZV-M60 450</module_type>\n"
                  "          <original_path>/jobs/PANELS/Panel-3_5.dae</original_path>\n"
                  "          <length>999</length>\n"
                  "        </technique>\n      </extra>\n"
                  "      <extra>\n        <technique profile=\"solar_panel_data\">\n"
                  "          <length>1903</length>\n          <width>1134</width>\n"
                  "          <module_type>ignored here</module_type>\n"
                  "          <power_rating_stc>0.45</power_rating_stc>\n"
                  "          <corner_ur x=\"11.5\" y=\"21.25\" z=\"3\"/>\n"
                  "        </technique>\n      </extra>\n    </node>\n"
                  "    <node id=\"terrain\" name=\"terrain\">\n    </node>\n"
                  "    <node id=\"Panel-4_5_4_5_geometry-node\">\n"
                  "      <extra><technique profile=\"other\"><length>5</length></technique></extra>\n"
                  "      <extra>\n        <technique profile=\"solar_panel_data\">\n"
                  "          <width>1000</width>\n        </technique>\n      </extra>\n    </node>\n"
                  "  </library_visual_scenes>\n</COLLADA>\n");
    ASSERT_EQ(GetPanelsFromDae(QString::fromStdString(file)), 2);
    const PANEL& a = panelStore().panelsT[0];
    EXPECT_STREQ(a.Name, "3/5");
    EXPECT_STREQ(a.ModuleType, "ZV-M60 450");
    EXPECT_STREQ(a.Filename, "/jobs/PANELS/Panel-3_5.dae");
    EXPECT_EQ(a.Length, 1903);
    EXPECT_EQ(a.Width, 1134);
    EXPECT_DOUBLE_EQ(a.PanelPowerratingKW, 0.45);
    expectVec(&a.Corners[2].X, 11.5, 21.25, 3);
    EXPECT_STREQ(a.TextureName, "PNEG.JPG");
    EXPECT_EQ(a.Opacity, 100);
    EXPECT_EQ(a.Repeat, 1);
    EXPECT_TRUE(a.Active);
    EXPECT_EQ(a.RoofType, 1);
    const PANEL& b = panelStore().panelsT[1];
    // A node without a name is named by its id, cut to nine characters.
    EXPECT_STREQ(b.Name, "Panel-4_5");
    EXPECT_STREQ(b.ModuleType, "UnknownType");
    EXPECT_STREQ(b.Filename, file.c_str());
    EXPECT_EQ(b.Length, 0);
    EXPECT_EQ(b.Width, 1000);
    EXPECT_STREQ(b.TextureName, "");
}

// Blocks as the model export writes them: the panel_info mode commits at
// </panel_info> only, and a texture found by name beats the first image.
TEST_F(PanelDaeReadTest, PanelInfoBlocksTakeTheirTextureFromTheImageTable) {
    PANEL named = fullPanel("/jobs/PANELS/Panel-7_88.dae");
    PANEL unnamed = fullPanel("");
    SetPanelText(unnamed.Name, QString());
    QStringList lines{"<COLLADA>", "  <library_images>", "    <image id=\"first\">",
                      "      <init_from>..\\textures\\PDEF.JPG</init_from>", "    </image>",
                      "    <image id=\"notes\"><init_from>readme.txt</init_from></image>",
                      "    <image id=\"Panel-7_88_7_88_geometry-material-diffuse-image\">",
                      "      <init_from>PNEG.JPG</init_from>", "    </image>", "  </library_images>",
                      "      <node id=\"a\">"};
    AddPanelDataToStringList(lines, named, 0);
    lines << "      </node>" << "      <node id=\"b\">";
    AddPanelDataToStringList(lines, unnamed, 1);
    lines << "      </node>" << "      <node id=\"c\">"
          << "        <extra><technique profile=\"solar_panel_data\">" << "          <width>1</width>"
          << "        </technique></extra>" << "      </node>" << "</COLLADA>";
    const std::string file = dir.path("Model_(2).DAE");
    writeTextFile(file, lines.join('\n').toStdString() + "\n");

    ASSERT_EQ(GetPanelsFromDae(QString::fromStdString(file)), 2);
    const PANEL& a = panelStore().panelsT[0];
    EXPECT_STREQ(a.Name, "7/88");
    EXPECT_STREQ(a.TextureName, "PNEG.JPG");
    EXPECT_STREQ(a.Filename, "/jobs/PANELS/Panel-7_88.dae");
    EXPECT_NEAR(a.DTilt, 21.3, 1e-9);  // the export's one decimal
    const PANEL& b = panelStore().panelsT[1];
    EXPECT_STREQ(b.Name, "PANEL");
    EXPECT_STREQ(b.TextureName, "PDEF.JPG");
    EXPECT_STREQ(b.Filename, file.c_str());
}

// Whole-number fields of a damaged file take the int's nearest end for a
// number beyond it, and 0 for one that isn't a number at all.
TEST_F(PanelDaeReadTest, WholeNumbersBeyondTheIntRangeStopAtItsEnds) {
    QStringList lines{"<COLLADA>", "      <node id=\"a\">"};
    AddPanelDataToStringList(lines, fullPanel(""), 0);
    lines << "      </node>" << "</COLLADA>";
    for (QString& line : lines) {
        const qsizetype open = line.indexOf('>'), close = line.lastIndexOf("</");
        if (open < 0 || close <= open) continue;
        const QString tag = line.mid(line.indexOf('<') + 1, open - line.indexOf('<') - 1);
        const QString value = tag == "length"         ? "216000000000000"
                              : tag == "epsg"         ? "-1e300"
                              : tag == "shaded_hours" ? "nan"
                                                      : "";
        if (!value.isEmpty()) line = line.left(open + 1) + value + line.mid(close);
    }
    const std::string file = dir.path("Panel-7_88.dae");
    writeTextFile(file, lines.join('\n').toStdString() + "\n");

    ASSERT_EQ(GetPanelsFromDae(QString::fromStdString(file)), 1);
    const PANEL read = ReadPanelDAE(QString::fromStdString(file));
    const PANEL* const staged = &panelStore().panelsT[0];
    for (const PANEL* p : {staged, &read}) {
        EXPECT_EQ(p->Length, 2147483647);
        EXPECT_EQ(p->EPSG, -2147483647 - 1);
        EXPECT_EQ(p->Shaded_Hours, 0);
        EXPECT_EQ(p->Width, 1134);
    }
}

TEST(PanelDaeImageType, KindComesFromTheFirstBytes) {
    ScratchDir dir;
    const struct {
        std::string bytes;
        const char* kind;
    } cases[] = {{std::string("\xFF\xD8\xFF\xE1", 4), ".jpg"},
                 {std::string("\x89PNG\r\n\x1A\n", 8), ".png"},
                 {"BM", ".bmp"},
                 {"GIF89a", ".gif"},
                 {std::string("II*\0", 4), ".tif"},
                 {std::string("MM\0*", 4), ".tif"},
                 {std::string("RIFF\x10\0\0\0WEBP", 12), ".webp"},
                 {std::string("RIFF\x10\0\0\0WAVE", 12), ".unknown"},
                 {"<html></html>", ".unknown"}};
    int n = 0;
    for (const auto& c : cases) {
        const std::string path = dir.path("image" + std::to_string(n++) + ".jpg");
        writeTextFile(path, c.bytes + std::string(16, '\0'));
        EXPECT_EQ(GetCorrectFileExtensionFromImageFile(QString::fromStdString(path)).toStdString(), c.kind) << n;
    }
    writeTextFile(dir.path("short.png"), "\x89PNG\r\n");
    EXPECT_EQ(GetCorrectFileExtensionFromImageFile(QString::fromStdString(dir.path("short.png"))), ".error");
    EXPECT_EQ(GetCorrectFileExtensionFromImageFile(QString::fromStdString(dir.path("gone.png"))), ".error");
}

}  // namespace
