// The panel information texts: the two-column CSV line by line, and the
// headings of the report.
#include <gtest/gtest.h>

#include <QStringList>
#include <algorithm>

#include "solar/design/PanelInfo.h"
#include "solar/design/PanelText.h"

void PrintTo(const QString& text, std::ostream* os) { *os << text.toStdString(); }

namespace {

PANEL examplePanel() {
    PANEL p;
    SetPanelText(p.ModuleType, "TSM-DE09.08 430");
    SetPanelText(p.Name, "12/417");
    SetPanelText(p.Filename, "/data/site/PANELS/Panel-12_417.dae");
    SetPanelText(p.TextureName, "PNEG.JPG");
    p.Row = 3;
    p.GroupingName = 'C';
    p.PP[0] = {385001.004, 6672002.996, 21.126, 0};
    p.PP[1] = {385011.5, 6672002.5, 21.5, 0};
    p.PP[2] = {385001.25, 6672008.75, 24.877, 0};
    p.CenterPoint = {385003.255, 6672004.125, 22.7349, 0};
    p.CenterLat = 60.1234567;
    p.CenterLon = 24.7654321;
    p.EPSG = 3067;
    p.RawEnergy = 512.345;
    p.AdjustedEnergy = 498.7;
    p.Shaded_Hours = 123;
    p.Shading_Percent = 3.14159;
    p.Length = 1762;
    p.Width = 1134;
    p.Thickness = 30;
    p.DTilt = 27.35;
    p.DAzimuth = 181.04;
    p.Lift = 0.1;
    p.Landscape = true;
    p.RoofType = 0;
    p.Efficiency = 21.5;
    p.PanelPowerratingKW = 0.43;
    p.Weight_kg = 21.8;
    p.MaxPowerNOCT_W = 324.75;
    p.TempCoeff_Pmax_PercentPercent = -0.34;
    p.NOCT_C = 43;
    p.BifacialFactor_Percent = 0;
    p.AnnualDegradation = 0.004;
    p.Cleaningfactor = 2;
    return p;
}

TEST(PanelInfo, CsvHoldsEveryFieldInItsFormat) {
    QString csv;
    GetPanelInfo(examplePanel(), csv);
    const QString expected =
        "Field,Data\n"
        "Panel,12\n"
        "Group,417\n"
        "Name,12/417\n"
        "Row,3\n"
        "GroupingName,C\n"
        "Path,/data/site/PANELS/Panel-12_417.dae\n"
        "ModuleType,TSM-DE09.08 430\n"
        "TextureName,PNEG.JPG\n"
        "RoofType,Tiles\n"
        "ShadedHours, 123\n"
        "Shading prcent, 3.14\n"
        "Length,1762 mm\n"
        "Width,1134 mm\n"
        "Thickness,30 mm\n"
        "Weight,21.80 kg\n"
        "Tilt,27.4 degrees\n"
        "Azimuth,181.0 degrees\n"
        "Lift,0.100\n"
        "Landscape,True\n"
        "PowerRating_STC,430.000 W\n"
        "PowerRating_NOCT,324.75 W\n"
        "Efficiency,21.50 %\n"
        "TempCoeff,-0.34 %/C\n"
        "NOCT,43.00 C\n"
        "BifacialFactor,0.00 %\n"
        "AnnualDegradation,0.0040 %/year\n"
        "CleaningFactor,2.00 %\n"
        "EPSG,3067\n"
        "CenterLat,60.123457 degrees\n"
        "CenterLon,24.765432 degrees\n"
        "Center,385003.26;6672004.13;22.73\n"
        "RawEnergy,512.35 kWh/year\n"
        "AdjustedEnergy,498.70 kWh/year\n"
        "ShadedHours,123 hours/year\n"
        "PP1,385001.00;6672003.00;21.13\n"
        "PP2,385011.50;6672002.50;21.50\n"
        "PP3,385001.25;6672008.75;24.88\n";
    const QStringList got = csv.split('\n');
    const QStringList want = expected.split('\n');
    ASSERT_EQ(got.size(), want.size()) << csv.toStdString();
    for (qsizetype i = 0; i < want.size(); ++i) EXPECT_EQ(got[i], want[i]) << "line " << i + 1;
}

TEST(PanelInfo, NameWithoutSlashLeavesPanelAndGroupEmptyAndUnsetLetterIsADash) {
    PANEL p = examplePanel();
    SetPanelText(p.Name, "PANEL");
    p.GroupingName = 0;
    p.RoofType = 1;
    p.Landscape = false;
    QString csv;
    GetPanelInfo(p, csv);
    EXPECT_TRUE(csv.startsWith("Field,Data\nPanel,\nGroup,\nName,PANEL\nRow,3\nGroupingName,-\n"));
    EXPECT_TRUE(csv.contains("\nRoofType,Flat\n"));
    EXPECT_TRUE(csv.contains("\nLandscape,False\n"));
}

TEST(PanelInfo, ReportHasItsSectionsInOrder) {
    QString csv;
    const QString report = GetPanelInfo(examplePanel(), csv);
    EXPECT_TRUE(report.startsWith("=== SOLAR PANEL SPECIFICATIONS ===\n\nModule: TSM-DE09.08 430\nPanel: 12/417\n"));
    qsizetype at = 0;
    for (const char* part : {"PHYSICAL:\n", " m above roof\n\n", "ELECTRICAL:\n", "0.40 %/year\n\n", "LOCATION:\n",
                             "60.1235", "\nENERGY ANALYSIS:\n"}) {
        const qsizetype next = report.indexOf(part, at);
        EXPECT_GE(next, at) << part;
        at = std::max(at, next);
    }
}

}  // namespace
