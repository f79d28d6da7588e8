// The rules of the form "Solar Panels" without its widgets: landscape
// against row pairing, the tiled-roof tilt, the caption's estimate, what OK
// and Cancel leave behind, and the number fields.

#include <gtest/gtest.h>

#include <cstring>

#include "app/services/DialogService.h"
#include "app/services/OrvoIni.h"
#include "app/services/SessionPaths.h"
#include "geo/GeoState.h"
#include "scene/engine_interface.h"
#include "solar/design/PanelCatalog.h"
#include "solar/design/PanelFormLogic.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelText.h"
#include "support/TestSupport.h"

using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

const char* const kCatalogue =
    "Module,L,W,T,kg,W,eff,NOCT W,TC,NOCT,bif,deg\n"
    "ZV-M60 450,1903,1134,30,23.5,450,20.9,338,-0.34,45,0,0.55\n"
    "AIKO-ZV620 ABC,2382,1134,30,32.5,620,23.0,470,-0.26,42,70,0.35\n"
    "ZV-M60 450,1,1,1,1,1,1,1,1,1,1,1\n";

class PanelFormLogicTest : public ::testing::Test {
protected:
    void SetUp() override {
        resetPanelCatalog();
        resetPanelStore();
        resetPanelFormState();
        resetOrvoIni();
        resetSessionPaths();
        resetGeoState();
        installDialogService(&dialogs);
        writeTextFile(dir.path("data/Panels.csv"), kCatalogue);
        sessionPaths().CTQ_Path = dir.path("data/");
        ORVOINI().load(dir.path("Orvo.ini"));
    }
    void TearDown() override { installDialogService(nullptr); }
    std::string setting(const char* key) { return ORVOINI().readString("Solvane3D", key, "<none>"); }

    ScratchDir dir;
    ScriptedDialogService dialogs;
};

TEST_F(PanelFormLogicTest, LandscapeAndPairedRowsExcludeOneAnother) {
    PanelFormState& form = panelFormState();
    form.RowsPairingRG = 2;
    panelform::LandscapeCBClick(true);
    EXPECT_EQ(form.RowsPairingRG, 0);
    panelform::RowsPairingRGClick(0);
    EXPECT_TRUE(form.LandscapeCB);
    panelform::RowsPairingRGClick(1);
    EXPECT_FALSE(form.LandscapeCB);
    panelform::LandscapeCBClick(false);
    EXPECT_EQ(form.RowsPairingRG, 1);
}

TEST_F(PanelFormLogicTest, ActivationOffersTheModelsAndTakesTheFirstWhenNoneIsSet) {
    PanelFormState& form = panelFormState();
    form.RowsGap = 3.5;
    ASSERT_TRUE(panelform::FormActivate());
    EXPECT_EQ(form.PanelsRGItems, (QStringList{"AIKO-ZV620 ABC", "ZV-M60 450"}));
    EXPECT_EQ(form.PanelsRGIndex, 0);
    EXPECT_EQ(panelStore().ModuleType, "AIKO-ZV620 ABC");
    EXPECT_EQ(setting("ModuleType"), "AIKO-ZV620 ABC");
    EXPECT_EQ(panelStore().GlobalPanel.Length, 2382);
    EXPECT_EQ(form.StatusBar1, "Length 2382   Width 1134  ");
    EXPECT_EQ(form.RowsGap, 0);
    EXPECT_FALSE(form.LandscapeCB);
    EXPECT_EQ(form.RowsPairingRG, 2);
}

TEST_F(PanelFormLogicTest, ActivationTakesAShortenedNameAndTheLandscapeSetting) {
    ORVOINI().writeString("Solvane3D", "ModuleType", "M60");
    ORVOINI().writeString("Solvane3D", "LandscapePanel", "1");
    PanelFormState& form = panelFormState();
    ASSERT_TRUE(panelform::FormActivate());
    EXPECT_EQ(form.PanelsRGIndex, 1);
    EXPECT_EQ(panelStore().GlobalPanel.Length, 1903);  // the first of the two lines named so
    EXPECT_TRUE(form.LandscapeCB);
    EXPECT_TRUE(panelStore().GlobalPanel.Landscape);
    EXPECT_EQ(form.RowsPairingRG, 0);
}

// Baseline 6 m east and 8 m north: 10000 mm. Portrait, 1134 + 20 mm a panel
// gives 8.67, so 8; landscape, 1903 + 20 mm gives 5.2, so 5.
TEST_F(PanelFormLogicTest, CaptionEstimatesThePanelsAlongTheBaseline) {
    ORVOINI().writeString("Solvane3D", "ModuleType", "ZV-M60 450");
    PANEL& panel = panelStore().GlobalPanel;
    panel.PP[0] = {1000, 2000, 50.5, 0};
    panel.PP[1] = {1006, 2008, 49.0, 0};
    panel.DAzimuth = 183.26;
    panel.DTilt = 20.04;
    ASSERT_TRUE(panelform::FormActivate());
    EXPECT_EQ(panelFormState().Caption,
              "8 Solar panel(s). Panels azimuth and tilt  183.3  20.0 at: [1000,2000,50.50]");
    panel.Landscape = true;
    EXPECT_EQ(PanelCountCaption(panel).left(20), "5 Solar panel(s). Pa");
    panel.PP[1] = panel.PP[0];
    EXPECT_EQ(PanelCountCaption(panel).left(2), "1 ");  // never fewer than one
}

TEST_F(PanelFormLogicTest, TiltBelowTheRoofIsRefusedOnlyOnTiles) {
    PanelFormState& form = panelFormState();
    form.GlobalRoofTilt = 20;
    form.TiltEdit = 5;
    form.RooftypeRG = 0;
    panelform::OKClick();
    EXPECT_FALSE(panelform::FormCloseQuery());
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].text, "For redtiled roof tilt has to be at least 20");
    form.RooftypeRG = 1;
    EXPECT_TRUE(panelform::FormCloseQuery());
    form.RooftypeRG = 0;
    form.TiltEdit = 20;
    EXPECT_TRUE(panelform::FormCloseQuery());
    form.TiltEdit = 5;
    panelform::CancelClick();
    EXPECT_TRUE(panelform::FormCloseQuery());  // only OK is checked
    EXPECT_EQ(dialogs.questions().size(), 1u);
}

TEST_F(PanelFormLogicTest, OkTakesTheFormIntoTheTemplateAndTheSettings) {
    ASSERT_TRUE(panelform::FormActivate());
    geoState().EPSG = 2039;
    PanelFormState& form = panelFormState();
    panelform::PanelsRGClick(1);
    EXPECT_EQ(form.MainStatusText, "  ZV-M60 450");
    EXPECT_EQ(form.StatusBar1, "Length 1903   Width 1134  ");
    SetPanelText(panelStore().GlobalPanel.Name, "3/5");
    form.RooftypeRG = 1;
    form.LiftEdit = -0.35;
    form.TiltEdit = 12.5;
    form.RowsGap = 1.75;
    panelform::RowsPairingRGClick(1);
    panelform::OKClick();
    const PANEL& panel = panelStore().GlobalPanel;
    EXPECT_TRUE(form.GlobalPanelsOK);
    EXPECT_EQ(form.GlobalRowpairing, 1);
    EXPECT_FLOAT_EQ(form.GlobalRowsGap, 1.75f);
    EXPECT_STREQ(panel.ModuleType, "ZV-M60 450");
    EXPECT_STREQ(panel.Name, "");
    EXPECT_EQ(panel.EPSG, 2039);
    EXPECT_EQ(panel.RoofType, 1);
    EXPECT_DOUBLE_EQ(panel.Lift, -0.35);
    EXPECT_DOUBLE_EQ(panel.DTilt, 12.5);
    EXPECT_FALSE(panel.Landscape);
    EXPECT_EQ(setting("ModuleType"), "ZV-M60 450");
    EXPECT_EQ(setting("LandscapePanel"), "0");
    OrvoIni saved;
    saved.load(dir.path("Orvo.ini"));
    EXPECT_EQ(saved.readString("Solvane3D", "ModuleType", ""), "ZV-M60 450");
}

TEST_F(PanelFormLogicTest, CancelLeavesNoTraceButTheClearedMeasureList) {
    testsupport::EngineFixtureGuard engine;
    const double a[3] = {0, 0, 0}, b[3] = {1, 0, 0};
    const float red[3] = {1, 0, 0};
    ASSERT_EQ(At3d_MeasureList_Add_Item("m", 1, 0, 0, 1, red, a, b, a, a), 1);
    ASSERT_TRUE(panelform::FormActivate());
    const PANEL before = panelStore().GlobalPanel;
    PanelFormState& form = panelFormState();
    form.BlockDepth = 0.1;
    form.GlobalPanelsOK = true;
    form.TiltEdit = 33;
    panelform::CancelClick();
    EXPECT_FALSE(form.GlobalPanelsOK);
    EXPECT_EQ(form.BlockDepth, 0);
    EXPECT_EQ(At3d_MeasureList_Get_Count(), 0);
    EXPECT_EQ(std::memcmp(&before, &panelStore().GlobalPanel, sizeof(PANEL)), 0);
    EXPECT_EQ(setting("LandscapePanel"), "<none>");
}

TEST_F(PanelFormLogicTest, GapHelpAsksTheRowSpacingAtTheFormsTilt) {
    PanelFormState& form = panelFormState();
    form.TiltEdit = 25;
    form.RowsGap = 0.5;
    EXPECT_FALSE(panelform::GapHelpClick());
    EXPECT_EQ(form.RowsGap, 0.5);
    double tiltSeen = -1;
    form.rowSpacingHelp = [&tiltSeen](const PANEL& panel) {
        tiltSeen = panel.DTilt;
        return 2.75;
    };
    EXPECT_TRUE(panelform::GapHelpClick());
    EXPECT_EQ(tiltSeen, 25);
    EXPECT_EQ(form.RowsGap, 2.75);
}

TEST(PanelFormFields, NumbersReadInTheCLocaleWithinTheirLimits) {
    double value = 7;
    EXPECT_TRUE(ParseFloatEdit(" 12.5 ", panelform::kTiltEdit, value));
    EXPECT_EQ(value, 12.5);
    EXPECT_TRUE(ParseFloatEdit("90", panelform::kTiltEdit, value));
    EXPECT_FALSE(ParseFloatEdit("90.01", panelform::kTiltEdit, value));
    EXPECT_FALSE(ParseFloatEdit("-1", panelform::kTiltEdit, value));
    EXPECT_FALSE(ParseFloatEdit("1,5", panelform::kTiltEdit, value));
    EXPECT_FALSE(ParseFloatEdit("abc", panelform::kLiftEdit, value));
    EXPECT_EQ(value, 90);  // a refused text leaves the value
    EXPECT_TRUE(ParseFloatEdit("-0.5", panelform::kLiftEdit, value));
    EXPECT_FALSE(ParseFloatEdit("-90.5", panelform::kLiftEdit, value));
    EXPECT_TRUE(ParseFloatEdit("250", panelform::kRowsGapEdit, value));
    EXPECT_EQ(FormatFloatEdit(0.2, panelform::kLiftEdit), "0.20");
    EXPECT_EQ(TiltRefusal(19.99, 0, 20), "For redtiled roof tilt has to be at least 20");
    EXPECT_EQ(TiltRefusal(19.99, 1, 20), "");
}

}  // namespace
