// The session's part of "Orvo.ini": what start-up reads, what the menu
// items write, and the solar configuration that hides controls.
#include <gtest/gtest.h>

#include <string>

#include "app/services/OrvoIni.h"
#include "app/session/MainFormState.h"
#include "app/session/SessionSettings.h"
#include "app/session/SolarConfiguration.h"
#include "app/session/ViewerSettings.h"
#include "geo/GeoState.h"
#include "solar/analysis/ReportRunState.h"
#include "support/TestSupport.h"

using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

class SessionSettings : public ::testing::Test {
protected:
    ScratchDir dir;
    void SetUp() override {
        resetOrvoIni();
        resetViewerSettings();
        resetReportRun();
        resetMainFormState();
        resetGeoState();
    }
    void load(const std::string& text) {
        writeTextFile(dir.path("Orvo.ini"), text);
        ORVOINI().load(dir.path("Orvo.ini"));
        ReadSessionSettings();
    }
    // The settings as a fresh read of the file gives them.
    std::string saved(const char* section, const char* key) {
        OrvoIni again;
        again.load(dir.path("Orvo.ini"));
        return again.readString(section, key, "<none>");
    }
    int checkedTextureItems() {
        return ControlChecked("M16384") + ControlChecked("M8192") + ControlChecked("M4096");
    }
};

}  // namespace

// A size without its own item, or no number at all, checks the default item.
TEST_F(SessionSettings, TheTextureSizeChecksItsItemOrTheDefaultOne) {
    const struct {
        const char* text;
        int size;
        const char* item;
    } cases[] = {{"8192", 8192, "M8192"}, {"big", 16384, "M16384"}, {"2048", 2048, "M16384"}};
    for (const auto& c : cases) {
        resetMainFormState();
        resetViewerSettings();
        load(std::string("[Viewer3D]\nTexture=") + c.text + "\n");
        EXPECT_EQ(viewerSettings().REDUCEJPGSIZE, c.size) << c.text;
        EXPECT_TRUE(ControlChecked(c.item)) << c.text;
        EXPECT_EQ(checkedTextureItems(), 1) << c.text;
    }
}

TEST_F(SessionSettings, EnergyLossDefaultsToTenNotTheInitialFifteen) {
    EXPECT_EQ(reportRun().ENERGYLOSSPERCENT, 15);
    load("");
    EXPECT_EQ(reportRun().ENERGYLOSSPERCENT, 10);
    load("[Viewer3D]\nEnergyLoss=7\n");
    EXPECT_EQ(reportRun().ENERGYLOSSPERCENT, 7);
}

TEST_F(SessionSettings, NonMetricUnitsSetImperialAndTheMenuWritesBack) {
    load("[Solvane]\nUnits=NonMetric3D\n[Viewer3D]\nOpenallmodels=YES\n");
    EXPECT_TRUE(geoState().IMPERIAL);
    EXPECT_TRUE(ControlChecked("Imperialunits1"));
    EXPECT_TRUE(ControlChecked("Openallmodels1"));
    Imperialunits1Click();
    EXPECT_FALSE(geoState().IMPERIAL);
    EXPECT_EQ(saved("Solvane", "Units"), "Metric");
    Openallmodels1Click();
    EXPECT_EQ(saved("Viewer3D", "Openallmodels"), "NO");
}

TEST_F(SessionSettings, SolarConfigurationHidesItsControlsAndIsWrittenBack) {
    load("[Viewer3D]\nConfiguredForSolar=YES\nLast Folder=/data/site one/\n");
    EXPECT_TRUE(viewerSettings().ConfiguredForSolar);
    for (std::string_view name : SOLAR_HIDDEN_CONTROLS) EXPECT_FALSE(ControlVisible(std::string(name))) << name;
    EXPECT_TRUE(ControlVisible("FullViewBtn"));
    SetControlChecked("CofigireforSolarPlanning1", false);
    CofigireforSolarPlanning1Click();
    EXPECT_TRUE(ControlVisible("Realshapefile1"));
    EXPECT_EQ(saved("Viewer3D", "ConfiguredForSolar"), "NO");
    // Keys with blanks survive the writes.
    EXPECT_EQ(saved("Viewer3D", "Last Folder"), "/data/site one/");
}

TEST_F(SessionSettings, StartUpWritesTheSolarConfigurationEvenWhenMissing) {
    load("");
    EXPECT_FALSE(viewerSettings().ConfiguredForSolar);
    EXPECT_EQ(saved("Viewer3D", "ConfiguredForSolar"), "NO");
    EXPECT_TRUE(ControlVisible("AddPRJ1"));
}

TEST_F(SessionSettings, TheTextureItemsWriteTheirSize) {
    load("");
    SetTextureLimit(4096);
    EXPECT_EQ(viewerSettings().REDUCEJPGSIZE, 4096);
    EXPECT_EQ(checkedTextureItems(), 1);
    EXPECT_TRUE(ControlChecked("M4096"));
    EXPECT_EQ(saved("Viewer3D", "Texture"), "4096");
}
