// The module catalogue: loose name matching, defaults for missing and bad
// fields, finding and loading "Panels.csv", and the shipped catalogue itself.

#include <gtest/gtest.h>

#include <QStringList>
#include <cmath>
#include <cstdio>

#include "app/services/DialogService.h"
#include "app/services/OrvoIni.h"
#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"
#include "solar/design/PanelCatalog.h"
#include "solar/design/PanelCatalogLine.h"
#include "solar/design/PanelCatalogSettings.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelText.h"
#include "support/TestSupport.h"

using testsupport::ScratchDir;
using testsupport::readTextFile;
using testsupport::writeTextFile;

namespace {

const char* const kCatalogue =
    "Module,L,W,T,kg,W,eff,NOCT W,TC,NOCT,bif,deg\n"
    "Alpha 400 Pro,1722,1134,30,21.0,400,20.5,300,-0.35,45,0,0.5\n"
    "Gamma 600,2384,1134,30,33\n"
    " Beta 500 ,2094,1134,30,26.0,500,21.1,376,-0.30,44,70,0.4\n"
    "Delta 450,?,17x2, - ,??,abc,,338,-0.34,45,80,0.5\n"
    "tsm-Zeta 590,2384,1134,30,33.5,590,21.8,444,-0.29,43,80,0.4\n";

class PanelCatalogTest : public ::testing::Test {
protected:
    void SetUp() override {
        resetPanelCatalog();
        resetPanelStore();
        resetOrvoIni();
        resetSessionPaths();
        installDialogService(&dialogs);
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetRunLog();
    }
    void loadCatalogue(const char* text = kCatalogue) {
        writeTextFile(dir.path("Panels.csv"), text);
        ASSERT_TRUE(LoadPanelSpecifications(QString::fromStdString(dir.path("Panels.csv"))));
    }
    // The catalogue fields of the module a name finds; "" when none is found.
    QString matched(const QString& moduleType) {
        PANEL panel{};
        AddPanelSpecsFromCSV(panel, moduleType);
        return PanelText(panel.ModuleType);
    }

    ScratchDir dir;
    ScriptedDialogService dialogs;
};

TEST_F(PanelCatalogTest, LooseMatchingFindsShortenedLongerAndOtherCaseNames) {
    loadCatalogue();
    EXPECT_EQ(matched("Alpha"), "Alpha 400 Pro");               // the file's name contains it
    EXPECT_EQ(matched("Beta 500 BF Special"), "Beta 500");       // it contains the trimmed file's name
    EXPECT_EQ(matched("beta 50"), "Beta 500");                   // only without regard to case
    EXPECT_EQ(matched("TSM-ZETA"), "tsm-Zeta 590");
    EXPECT_EQ(matched("5"), "Beta 500");                         // the first matching line wins, not Delta 450
    EXPECT_EQ(matched("Gamma"), "");                             // a line under 12 fields is no module
    EXPECT_EQ(matched("Omega"), "");
    EXPECT_EQ(matched(""), "");
}

TEST_F(PanelCatalogTest, MatchFillsEveryCatalogueFieldAndEmptiesTheName) {
    loadCatalogue();
    PANEL panel{};
    SetPanelText(panel.Name, "12/417");
    panel.Gapmm = 5;
    AddPanelSpecsFromCSV(panel, "Alpha");
    EXPECT_STREQ(panel.Name, "");
    EXPECT_EQ(panel.Length, 1722);
    EXPECT_EQ(panel.Width, 1134);
    EXPECT_EQ(panel.Thickness, 30);
    EXPECT_DOUBLE_EQ(panel.Weight_kg, 21.0);
    EXPECT_DOUBLE_EQ(panel.PanelPowerratingKW, 0.4);
    EXPECT_DOUBLE_EQ(panel.Efficiency, 20.5);
    EXPECT_DOUBLE_EQ(panel.MaxPowerNOCT_W, 300);
    EXPECT_DOUBLE_EQ(panel.TempCoeff_Pmax_PercentPercent, -0.35);
    EXPECT_DOUBLE_EQ(panel.NOCT_C, 45);
    EXPECT_DOUBLE_EQ(panel.BifacialFactor_Percent, 0);
    EXPECT_DOUBLE_EQ(panel.AnnualDegradation, 0.5);
    EXPECT_EQ(panel.Gapmm, 20);
}

TEST_F(PanelCatalogTest, MissingAndUnreadableFieldsTakeTheirDefaults) {
    loadCatalogue();
    PANEL panel{};
    AddPanelSpecsFromCSV(panel, "Delta");
    EXPECT_EQ(panel.Length, 2465);                // "?"
    EXPECT_EQ(panel.Width, 1134);                 // "17x2" doesn't read
    EXPECT_EQ(panel.Thickness, 35);               // " - "
    EXPECT_DOUBLE_EQ(panel.Weight_kg, 34.6);      // "??"
    EXPECT_DOUBLE_EQ(panel.PanelPowerratingKW, 0.59);  // "abc": 590 W
    EXPECT_DOUBLE_EQ(panel.Efficiency, 21);       // empty
    EXPECT_DOUBLE_EQ(panel.MaxPowerNOCT_W, 338);  // the fields that are there stay
    EXPECT_DOUBLE_EQ(panel.BifacialFactor_Percent, 80);
}

TEST_F(PanelCatalogTest, NoMatchLeavesThePanelAsItWas) {
    loadCatalogue();
    PANEL panel{};
    SetPanelText(panel.ModuleType, "Kept");
    panel.Length = 1;
    SetPanelText(panel.TextureName, "kept.jpg");
    AddPanelSpecsFromCSV(panel, "Gamma");
    EXPECT_STREQ(panel.ModuleType, "Kept");
    EXPECT_EQ(panel.Length, 1);
    EXPECT_STREQ(panel.TextureName, "kept.jpg");
}

TEST_F(PanelCatalogTest, DarkMakersGetTheDarkTextureInThePanelsFolder) {
    loadCatalogue();
    panelStore().ModelFolder = "/site/model/";
    PANEL panel{};
    AddPanelSpecsFromCSV(panel, "Zeta");
    EXPECT_STREQ(panel.TextureName, "/site/model/PANELS/PNEG.JPG");
    EXPECT_EQ(panelCatalog().GlobalPanelJPGName, "/site/model/PANELS/PNEG.JPG");
    EXPECT_EQ(panelCatalog().PanelImageTexture, "PNEG.JPG");
    AddPanelSpecsFromCSV(panel, "Beta");
    EXPECT_STREQ(panel.TextureName, "/site/model/PANELS/PDEF.JPG");
    EXPECT_EQ(PanelTextureForModel("x aiko-abc"), "PNEG.JPG");
    EXPECT_EQ(PanelTextureForModel("TSM 500"), "PDEF.JPG");  // the maker's prefix has its hyphen
}

TEST_F(PanelCatalogTest, LongModelNamesAreCutTo29Characters) {
    loadCatalogue("h\nA-very-long-module-name-of-40-characters,1,2,3,4,5,6,7,8,9,10,11\n");
    PANEL panel{};
    AddPanelSpecsFromCSV(panel, "very-long");
    EXPECT_STREQ(panel.ModuleType, "A-very-long-module-name-of-40");
}

TEST_F(PanelCatalogTest, ModelNamesAreSortedWithoutDuplicatesAndOnlyUsableLines) {
    loadCatalogue("h\nb2,1,2,3,4,5,6,7,8,9,10,11\r\nA1,1,2,3,4,5,6,7,8,9,10,11\r\n"
                  "B2,1,2,3,4,5,6,7,8,9,10,11\r\nshort,1,2\r\n,1,2,3,4,5,6,7,8,9,10,11\r\n");
    EXPECT_EQ(panelCatalog().g_specCount, 6);
    const QStringList names = CatalogModelNames();
    EXPECT_EQ(names, (QStringList{"A1", "b2"}));
    EXPECT_EQ(CatalogModelIndex(names, "B2"), 1);
    EXPECT_EQ(CatalogModelIndex(names, "A"), 0);   // the line a shortened name matches
    EXPECT_EQ(CatalogModelIndex(names, "Q"), -1);
}

TEST_F(PanelCatalogTest, LoadingLogsTheCountOrTheFailure) {
    runLog().fp_prt = std::fopen(dir.path("log.txt").c_str(), "w");
    loadCatalogue();
    const QString missing = QString::fromStdString(dir.path("none.csv"));
    EXPECT_FALSE(LoadPanelSpecifications(missing));
    EXPECT_EQ(panelCatalog().g_specCount, 0);
    EXPECT_TRUE(panelCatalog().g_panelSpecs.isEmpty());
    resetRunLog();
    EXPECT_EQ(readTextFile(dir.path("log.txt")),
              "Loaded 6 panel specifications from " + dir.path("Panels.csv") + "\n" +
                  "ERROR: Failed to load panel specs from " + dir.path("none.csv") + "\n");
}

TEST_F(PanelCatalogTest, InitializeFindsTheCatalogueInASubfolderAnyCase) {
    writeTextFile(dir.path("data/Catalogue/PANELS.CSV"), kCatalogue);
    sessionPaths().CTQ_Path = dir.path("data/");
    ORVOINI().writeString("Solvane3D", "ModuleType", "Beta");
    ASSERT_TRUE(InitializePanels());
    EXPECT_EQ(panelCatalog().GlobalPanelsCSV, QString::fromStdString(dir.path("data/Catalogue/PANELS.CSV")));
    EXPECT_EQ(panelStore().ModuleType, "Beta");
    EXPECT_EQ(panelCatalog().g_specCount, 6);
    EXPECT_TRUE(panelCatalog().PanelsInitialized);
    // Once initialized it doesn't look again.
    sessionPaths().CTQ_Path = dir.path("elsewhere/");
    EXPECT_TRUE(InitializePanels());
    EXPECT_TRUE(dialogs.questions().empty());
}

TEST_F(PanelCatalogTest, InitializeWithoutCatalogueTellsTheOperator) {
    sessionPaths().CTQ_Path = dir.path("empty/");
    EXPECT_FALSE(InitializePanels());
    EXPECT_FALSE(panelCatalog().PanelsInitialized);
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].text, "No Panels.csv found");
}

TEST_F(PanelCatalogTest, SettingsKeepModuleAndOrientationInTheirSection) {
    ORVOINI().load(dir.path("Orvo.ini"));
    EXPECT_FALSE(ReadLandscapeSetting());
    WriteModuleTypeSetting("Alpha 400 Pro");
    WriteLandscapeSetting(true);
    OrvoIni reread;
    reread.load(dir.path("Orvo.ini"));
    EXPECT_EQ(reread.readString("Solvane3D", "ModuleType", ""), "Alpha 400 Pro");
    EXPECT_EQ(reread.readString("Solvane3D", "LandscapePanel", ""), "1");
    ORVOINI().writeString("Solvane3D", "LandscapePanel", "yes");
    EXPECT_FALSE(ReadLandscapeSetting());
}

// The catalogue the installation ships: every line a full module whose
// numbers hold together (efficiency is STC power over the area at 1000 W/m2,
// given to one decimal).
TEST(ShippedPanelCatalog, EveryModuleIsCompleteAndConsistent) {
    resetPanelCatalog();
    resetPanelStore();
    ASSERT_TRUE(LoadPanelSpecifications(ZV_SOURCE_DIR "/data/Panels.csv"));
    const QStringList& lines = panelCatalog().g_panelSpecs;
    ASSERT_GE(lines.size(), 9);
    EXPECT_EQ(CatalogModelNames().size(), lines.size() - 1);
    bool dark = false, aiko = false;
    for (int i = 1; i < lines.size(); ++i) {
        const QStringList fields = lines[i].split(',');
        ASSERT_EQ(fields.size(), 12) << lines[i].toStdString();
        for (const QString& field : fields) EXPECT_FALSE(IsMissingCatalogField(field)) << lines[i].toStdString();
        PANEL panel{};
        AddPanelSpecsFromCSV(panel, fields[0]);
        EXPECT_EQ(PanelText(panel.ModuleType), fields[0]);
        EXPECT_EQ(panel.Length, fields[1].toInt());
        EXPECT_EQ(panel.Width, fields[2].toInt());
        EXPECT_DOUBLE_EQ(panel.AnnualDegradation, fields[11].toDouble());
        EXPECT_GE(panel.Length, 1700);
        EXPECT_LE(panel.Length, 2400);
        EXPECT_GE(panel.Width, 1000);
        EXPECT_LE(panel.Width, 1300);
        EXPECT_GE(panel.PanelPowerratingKW, 0.35);
        EXPECT_LE(panel.PanelPowerratingKW, 0.65);
        const double areaEfficiency = panel.PanelPowerratingKW * 1e9 / (panel.Length * panel.Width) / 10.0;
        EXPECT_NEAR(panel.Efficiency, areaEfficiency, 0.051) << lines[i].toStdString();
        EXPECT_LT(panel.MaxPowerNOCT_W, panel.PanelPowerratingKW * 1000);
        dark = dark || fields[0].startsWith("TSM-");
        aiko = aiko || fields[0].startsWith("AIKO-");
    }
    EXPECT_TRUE(dark);
    EXPECT_TRUE(aiko);
}

}  // namespace
