// Construction tables, the frame's drawing CSV and the area fit of a traced
// quadrilateral, against text written by hand.
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QImage>
#include <cstdio>

#include "app/services/DialogService.h"
#include "solar/design/AdjacencyGrouping.h"
#include "solar/design/ConstructionAdjust.h"
#include "solar/design/ConstructionCsv.h"
#include "solar/design/ConstructionFrame.h"
#include "solar/design/ConstructionHelperDae.h"
#include "solar/design/PanelDaeEpsg.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PlacementDae.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

PANEL flatPanel(double x0, double y0, double w, double h, double z = 0) {
    PANEL p;
    p.Corners[0] = {x0, y0, z, 0};
    p.Corners[1] = {x0, y0 + h, z, 0};
    p.Corners[2] = {x0 + w, y0 + h, z, 0};
    p.Corners[3] = {x0 + w, y0, z, 0};
    p.CenterPoint = {x0 + w / 2, y0 + h / 2, z, 0};
    p.RoofType = 1;
    return p;
}

void addPanel(const PANEL& p) {
    PanelStore& s = panelStore();
    s.panels[s.NumPanelsCreated++] = p;
}

class Construction : public ::testing::Test {
protected:
    void SetUp() override {
        resetPanelStore();
        resetConstructionGroups();
    }
};

TEST_F(Construction, OnePortraitPanelFrameLineByLine) {
    // 150 cm panel, flat, 102 cm above the roof; span 160 cm centred under it;
    // blocks 49 cm long pushed back inside the span.
    const QString expected = QStringLiteral(
        "// ===================== CSV for CSV2SVG =====================\n"
        "// Units: coordinates in cm; widths in mm; angles handled by CSV2SVG.\n"
        "@page=A4, margin_mm=10, dim_offset_mm=50, dim_factor=1, dim_dec=1, rotate_deg=0, interactive=1\n"
        "// Panel 1 (3.00 cm), MEASURE=1\n"
        "0.00, 102.00, 150.00, 102.00, 3.00, 16711680, 1\n"
        "// Left edge measure-only line to roof (4 cols)\n"
        "0.00, 102.00, 0.00, 0.00\n"
        "// Right edge measure-only line to roof (4 cols)\n"
        "150.00, 102.00, 150.00, 0.00\n"
        "// Upper span (5.00 cm), 9.00 cm under the panels, MEASURE=1\n"
        "-5.00, 93.00, 155.00, 93.00, 5.00, 8421504, 1\n"
        "// Lower span (5.00 cm), horizontal on the blocks\n"
        "-5.00, 25.50, 155.00, 25.50, 5.00, 8421504\n"
        "// Vertical (3.00 cm), MEASURE=1\n"
        "-2.50, 90.50, -2.50, 28.00, 3.00, 8421504, 1\n"
        "// Vertical (3.00 cm), MEASURE=1\n"
        "152.50, 90.50, 152.50, 28.00, 3.00, 8421504, 1\n"
        "// Block (grey), on the roof\n"
        "-5.00, 11.50, 44.00, 11.50, 23.00, 8421504\n"
        "// Block (grey), on the roof\n"
        "106.00, 11.50, 155.00, 11.50, 23.00, 8421504\n"
        "// Lower span length measure line (under blocks)\n"
        "-5.00, -8.00, 155.00, -8.00\n"
        "// Diagonal: 33% between first and second verticals, MEASURE=1\n"
        "48.65, 90.50, 101.35, 28.00, 3.00, 8421504, 1\n");
    EXPECT_EQ(ConstructionFrameText(1500, 0, 0, 1020, 230, 490), expected);

    ScratchDir dir;
    panelStore().ModelFolder = QString::fromStdString(dir.root()) + "/";
    const QString path = Panel2CSV("A_P(1)", 1500, 0, 0, 1020, 230, 490);
    EXPECT_EQ(path, panelStore().ModelFolder + "Reports/A_P(1).csv");
    EXPECT_EQ(QString::fromStdString(readTextFile(path.toStdString())), expected);
}

TEST_F(Construction, LandscapePanelShortSpanAndFarVerticalOnTheOtherSide) {
    const QString text = ConstructionFrameText(1000, 0, 0, 1020, 230, 490);
    EXPECT_TRUE(text.contains("0.00, 93.00, 100.00, 93.00, 5.00, 8421504, 1\n"));
    EXPECT_TRUE(text.contains("// Vertical (3.00 cm), MEASURE=-1\n97.50, 90.50, 97.50, 28.00, 3.00, 8421504, -1\n"));
}

TEST_F(Construction, TiltedPanelsTwoAcrossWithTheGap) {
    // 30 degrees: cos 0.866025, sin 0.5; P2 starts 2 cm after P1's 200 cm.
    const QString text = ConstructionFrameText(2000, 1000, 30, 500, 0, 0);
    EXPECT_TRUE(text.contains("0.00, 50.00, 173.21, 150.00, 3.00, 16711680, 1\n"));
    EXPECT_TRUE(text.contains("174.94, 151.00, 261.54, 201.00, 3.00, 16711680, 1\n"));
    EXPECT_FALSE(text.contains("Block"));
}

TEST_F(Construction, GroupTableListsTheRowLeftToRight) {
    ScratchDir dir;
    const std::string model = dir.path("model.obj");
    writeTextFile(dir.path("model_GroupZ_P(1).csv"), "7\n");
    addPanel(flatPanel(1.0, 0, 1.0, 2.0));
    addPanel(flatPanel(2.02, 0, 1.0, 2.0));
    addPanel(flatPanel(0.0, 0, 0.98, 2.0));
    const QStringList written = GenerateConstructionCSVs(QString::fromStdString(model));
    ASSERT_EQ(written.size(), 1);
    EXPECT_EQ(QFileInfo(written[0]).fileName(), "model_GroupA_P(3).csv");
    EXPECT_EQ(readTextFile(written[0].toStdString()), "2,0,1\n");
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(dir.path("model_GroupZ_P(1).csv"))));
}

TEST_F(Construction, TwoRowsListedLowestFirst) {
    ScratchDir dir;
    addPanel(flatPanel(1.0, 2.05, 1.0, 2.0, 1.0));  // upper right
    addPanel(flatPanel(1.0, 0, 1.0, 2.0, 0.0));     // lower right
    addPanel(flatPanel(0.0, 2.05, 1.0, 2.0, 1.0));  // upper left
    addPanel(flatPanel(0.0, 0, 1.0, 2.0, 0.0));     // lower left
    const QStringList written = GenerateConstructionCSVs(QString::fromStdString(dir.path("roof.dae")));
    ASSERT_EQ(written.size(), 1);
    EXPECT_EQ(QFileInfo(written[0]).fileName(), "roof_GroupA_P-P(4).csv");
    EXPECT_EQ(readTextFile(written[0].toStdString()), "3,1\n2,0\n");
}

class Adjust : public ::testing::Test {
protected:
    void SetUp() override { installDialogService(&dialogs); }
    void TearDown() override { installDialogService(nullptr); }
    QString lastMessage() const { return dialogs.questions().empty() ? QString() : dialogs.questions().back().text; }
    ScriptedDialogService dialogs;
    ScratchDir dir;
};

TEST_F(Adjust, SquareScaledToTargetAreaOntoTheAnchor) {
    // 2 x 2 square to 16 m2: factor 2 about the centroid (1, 1), then onto (10, 20).
    const std::string in = dir.path("roof.csv");
    writeTextFile(in,
                  "Corner,X,Y,Z,U,V,L\n"
                  "C1,0,0,5,0,0,2\nC2,2,0,5,1,0,2\nC3,2,2,5,1,1,2\nC4,0,2,5,0,1,2\n"
                  "TargetArea,16\nAnchor,10,20,3\n");
    const QString out = AdjustCSV(QString::fromStdString(in));
    EXPECT_EQ(out.toStdString(), dir.path("roof_adjusted.csv"));
    EXPECT_EQ(readTextFile(out.toStdString()),
              "Corner,X,Y,Z,U,V,L\n"
              "C1,8.000000,18.000000,5.00,0.000000,0.000000,4.000\n"
              "C2,12.000000,18.000000,5.00,1.000000,0.000000,4.000\n"
              "C3,12.000000,22.000000,5.00,1.000000,1.000000,4.000\n"
              "C4,8.000000,22.000000,5.00,0.000000,1.000000,4.000\n"
              "TargetArea,16.000,AdjustedArea,16.000\n"
              "Anchor,10.000000,20.000000,3.00\n");
    EXPECT_TRUE(dialogs.questions().empty());
}

TEST_F(Adjust, EachFaultIsNamed) {
    const std::string head = "Corner,X,Y,Z,U,V,L\n";
    const std::string square = "C1,0,0,5,0,0\nC2,2,0,5,1,0\nC3,2,2,5,1,1\nC4,0,2,5,0,1\n";
    const struct {
        std::string text;
        const char* message;
    } cases[] = {
        {head + square + "TargetArea,16\n",
         "CSV file must contain at least 7 lines (header + 4 corners + area + anchor)"},
        {head + "C1,0,0,5,0\n" + square.substr(13) + "TargetArea,16\nAnchor,1,2\n",
         "Corner 1 must have at least 6 columns"},
        {head + "C1,0,x,5,0,0\n" + square.substr(13) + "TargetArea,16\nAnchor,1,2\n",
         "Invalid numeric data in corner 1"},
        {head + square + "TargetArea\nAnchor,1,2\n", "Target area line is missing or invalid"},
        {head + square + "TargetArea,abc\nAnchor,1,2\n", "Invalid target area value"},
        {head + square + "TargetArea,0\nAnchor,1,2\n", "Target area must be greater than zero"},
        {head + square + "TargetArea,16\nAnchor,1\n", "Anchor line must contain at least X,Y coordinates"},
        {head + square + "TargetArea,16\nAnchor,1,y\n", "Invalid anchor coordinates"},
        {head + "C1,0,0,5,0,0\nC2,1,1,5,1,0\nC3,2,2,5,1,1\nC4,3,3,5,0,1\nTargetArea,16\nAnchor,1,2\n",
         "Degenerate quadrilateral - area is too small"},
    };
    for (const auto& c : cases) {
        const std::string in = dir.path("bad.csv");
        writeTextFile(in, c.text);
        EXPECT_TRUE(AdjustCSV(QString::fromStdString(in)).isEmpty()) << c.message;
        EXPECT_EQ(lastMessage().toStdString(), c.message);
    }
    AdjustCSV(QString::fromStdString(dir.path("none.csv")));
    EXPECT_EQ(lastMessage().toStdString(), "Failed to load CSV file: " + dir.path("none.csv"));
}

TEST(HelperModel, SmallPictureEnlargedAndSpreadAtOneCentimetrePerPixel) {
    ScratchDir dir;
    const QString jpg = QString::fromStdString(dir.path("roof.jpg"));
    QImage picture(100, 50, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(jpg, "JPG"));

    // 100 x 50 px is under 500: 2000 x 1000 px, so 20 m by 10 m.
    const QString dae = JPGandCSV2DAE(jpg, "");
    EXPECT_EQ(dae.toStdString(), dir.path("roof.dae"));
    EXPECT_EQ(QImage(QString::fromStdString(dir.path("roof_upscaled.jpg"))).size(), QSize(2000, 1000));
    const std::string text = readTextFile(dae.toStdString());
    EXPECT_NE(text.find(">0.000000 0.000000 0.000000 20.000000 0.000000 0.000000 20.000000 10.000000 0.000000 "
                        "0.000000 10.000000 0.000000</float_array>"),
              std::string::npos);
    EXPECT_NE(text.find("<init_from>roof_upscaled.jpg</init_from>"), std::string::npos);
    EXPECT_NE(text.find("<p>0 1 5  0 5 4  1 2 6  1 6 5  2 3 7  2 7 6  3 0 4  3 4 7</p>"), std::string::npos);
    EXPECT_EQ(GetEPSGFromDAE(dae), 6991);

    const std::string csv = dir.path("roof.csv");
    writeTextFile(csv, "Corner,X,Y,Z,U,V,L\nC1,1,2,3,0,0,1\nC2,4,2,3,1,0,1\nC3,4,6,3,1,1,1\nC4,1,6,3,0,1,1\n");
    const QString helper = JPGandCSV2DAE(jpg, QString::fromStdString(csv));
    EXPECT_EQ(helper.toStdString(), dir.path("roof_Helper.dae"));
    EXPECT_NE(readTextFile(helper.toStdString())
                  .find(">1.000000 2.000000 3.000000 4.000000 2.000000 3.000000 4.000000 6.000000 3.000000 "
                        "1.000000 6.000000 3.000000</float_array>"),
              std::string::npos);
}

// The menu item: the picture asked for, the trace table beside it fitted to
// its area, the helper model written and added to the scene.
TEST_F(Adjust, TheHelperMenuFitsTheTableBesideThePictureAndAddsTheModel) {
    resetPlacementHooks();
    QStringList added;
    placementHooks().addModels = [&added](const QStringList& files) { added << files; };
    const QString folder = QString::fromStdString(dir.path(""));
    const QString jpg = QString::fromStdString(dir.path("roof.jpg"));
    QImage picture(800, 400, QImage::Format_RGB32);
    picture.fill(Qt::gray);
    ASSERT_TRUE(picture.save(jpg, "JPG"));
    writeTextFile(dir.path("ROOF.CSV"), "Corner,X,Y,Z,U,V,L\n"
                                        "C1,0,0,5,0,0,2\nC2,2,0,5,1,0,2\nC3,2,2,5,1,1,2\nC4,0,2,5,0,1,2\n"
                                        "TargetArea,16\nAnchor,10,20,3\n");
    dialogs.pushCancel();
    EXPECT_TRUE(CreateautoDAEhelper1Click(folder).isEmpty());
    EXPECT_EQ(dialogs.questions().back().title, "Open the roof picture (input)");
    EXPECT_TRUE(added.isEmpty());

    dialogs.pushFile(jpg);
    const QString model = CreateautoDAEhelper1Click(folder);
    EXPECT_EQ(model.toStdString(), dir.path("roof_Helper.dae"));
    EXPECT_EQ(added, QStringList{model});
    EXPECT_TRUE(QFileInfo::exists(QString::fromStdString(dir.path("ROOF_adjusted.csv"))));
    // The fitted corners, not the traced ones, shape the roof.
    EXPECT_NE(readTextFile(model.toStdString()).find(">8.000000 18.000000 5.000000 12.000000 18.000000 5.000000"),
              std::string::npos);

    // A table that doesn't fit makes no model.
    writeTextFile(dir.path("ROOF.CSV"), "Corner,X,Y,Z,U,V,L\nC1,0,0,5,0,0\n");
    dialogs.pushFile(jpg);
    EXPECT_TRUE(CreateautoDAEhelper1Click(folder).isEmpty());
    EXPECT_EQ(added.size(), 1);
    resetPlacementHooks();
}

}  // namespace
