// Digitising through the dispatcher's click route: the segments drawn while
// clicking, the finishing click of each kind (line, polygon, roof, area,
// circle, elevated polygon), the files an outline goes to, and outlines
// taken back out of the view.
#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <cmath>

#include "MeasureFixture.h"
#include "app/dispatch/DigitiseMenu.h"
#include "app/dispatch/ViewPanelClick.h"
#include "measure/Digitising.h"
#include "measure/MeasurementFiles.h"
#include "measure/MeasurementMenus.h"
#include "scene/EngineSession.h"

namespace {

class Digitising : public MeasureFixture {
protected:
    // A click on the view panel as the window passes it (the strip counted in y).
    static void click(int x, int y, int button = 1) {
        ClickInput in;
        in.Button = button;
        in.X = x;
        in.Y_IN = y + viewerSettings().StatusbarHeight;
        ViewPanelMouseActivate(in);
    }
    static QStringList ids() {
        QStringList list;
        for (int i = 0; i < At3d_MeasureList_Get_Count(); ++i) {
            MEASURE_DATA item{};
            Get_MeasureList_Item(i, &item);
            list << item.id;
        }
        return list;
    }
    static MEASURE_DATA item(int index) {
        MEASURE_DATA m{};
        Get_MeasureList_Item(index, &m);
        return m;
    }
};

}  // namespace

TEST_F(Digitising, AFirstRightClickAddsOnePointAndASecondDrawsTheEdgeAndFinishes) {
    DigitizeBtnClick();
    Line1Click();
    dialogs.pushFile(measurements("edge.LIN"));
    click(30, 40, 2);
    EXPECT_TRUE(dispatchState().DigiArmed);
    EXPECT_EQ(digitiseState().NWPS, 1);
    EXPECT_EQ(At3d_MeasureList_Get_Count(), 0);
    click(70, 40, 2);
    EXPECT_FALSE(dispatchState().DigiArmed);
    ASSERT_EQ(At3d_MeasureList_Get_Count(), 1);
    EXPECT_TRUE(QString(item(0).id).startsWith("POL_"));
    EXPECT_FLOAT_EQ(item(0).lineWidth, 4);
    // A line saves as ".LIN" with its shape as ".LIN.SHP".
    EXPECT_TRUE(QFileInfo::exists(measurements("edge.LIN")));
    EXPECT_TRUE(QFileInfo::exists(measurements("edge.LIN.SHP")));
    EXPECT_EQ(mainFormState().statusTexts[3], "Saved " + measurements("edge.LIN"));
}

TEST_F(Digitising, AFiveHundredMetreEdgeIsDrawnInStationsOfAtMost222Metres) {
    viewerSettings().DeltaStation = 222;
    DigitizeBtnClick();
    Line1Click();
    click(50, 40, 1);
    // The second click's point, moved 500 m east in the local frame.
    const double a[3] = {digitiseState().WaypointS[0].X, digitiseState().WaypointS[0].Y, 2};
    DigitiseClick(1, a[0] + 500, a[1], 2);
    ASSERT_EQ(At3d_MeasureList_Get_Count(), 3);
    EXPECT_EQ(digitiseState().NWPW, 4);
    EXPECT_NEAR(digitiseState().WaypointW[1].X - a[0], 500.0 / 3, 1e-9);
    EXPECT_NEAR(item(2).vertex2[0] - a[0], 500, 1e-9);
    // Each segment is named after its outline and its second vertex.
    const QString outline = QString::asprintf("POL_%d-", digitiseState().GlobalPolygonMumber);
    EXPECT_EQ(ids(), QStringList({outline + "1", outline + "2", outline + "3"}));
}

TEST_F(Digitising, TwoClicksOfAPolygonMakeACircleOf36SegmentsAndWipeEarlierMeasures) {
    const double a[3] = {0, 0, 2}, b[3] = {1, 1, 2};
    ASSERT_TRUE(At3d_MeasureList_Add_Item("Earlier", 1, 0, 0, 2, nullptr, a, b, a, a));
    DigitizeBtnClick();
    PolygonMnuClick();
    dialogs.pushFile(measurements("circle.POL"));
    double centre[3], rim[3];
    ASSERT_TRUE(roofPoint(50, 40, centre));
    ASSERT_TRUE(roofPoint(62, 40, rim));
    click(50, 40, 1);
    click(62, 40, 2);
    ASSERT_EQ(At3d_MeasureList_Get_Count(), 36);
    const double radius = std::hypot(rim[0] - centre[0], rim[1] - centre[1]);
    for (int i = 0; i < 36; ++i) {
        const MEASURE_DATA m = item(i);
        EXPECT_NEAR(std::hypot(m.vertex1[0] - centre[0], m.vertex1[1] - centre[1]), radius, 1e-9);
        EXPECT_NEAR(m.vertex1[2], 2, 1e-9);
    }
    EXPECT_EQ(QString(item(35).id), QString::asprintf("POL_%d-35", digitiseState().GlobalPolygonMumber));
    std::vector<MEASURE_DATA> saved;
    ASSERT_TRUE(ReadMeasureFile(measurements("circle.POL"), saved));
    EXPECT_EQ(saved.size(), 36u);
}

TEST_F(Digitising, AClosedPolygonGetsItsClosingEdgeOnTheMesh) {
    DigitizeBtnClick();
    PolygonMnuClick();
    dialogs.pushFile(measurements("poly.POL"));
    click(30, 30, 1);
    click(70, 30, 1);
    click(70, 50, 2);
    // Two clicked edges and the closing edge back to the first point.
    ASSERT_EQ(At3d_MeasureList_Get_Count(), 3);
    const MEASURE_DATA closing = item(2);
    const WAYPOINT& first = digitiseState().WaypointS[0];
    testsupport::expectVec(closing.vertex2, first.X, first.Y, 2, 1e-9);
}

TEST_F(Digitising, ACancelledSaveTakesTheOutlineOutOfTheView) {
    const double a[3] = {0, 0, 2}, b[3] = {1, 1, 2};
    ASSERT_TRUE(At3d_MeasureList_Add_Item("Kept", 1, 0, 0, 2, nullptr, a, b, a, a));
    DigitizeBtnClick();
    PolygonMnuClick();
    dialogs.pushCancel();
    click(30, 30, 1);
    click(70, 30, 1);
    click(70, 50, 2);
    EXPECT_EQ(ids(), QStringList({"Kept"}));
    EXPECT_EQ(mainFormState().statusTexts[3], "Outline not saved");
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_HOLD_INPUT), 0);
}

TEST_F(Digitising, AnElevatedPolygonIsSavedWithoutAskingAndStandsAboveTheMesh) {
    DigitizeBtnClick();
    dialogs.pushText("0.5");
    Eelevatedpolygon1Click();
    click(30, 30, 1);
    click(70, 30, 1);
    click(70, 50, 2);
    // Only the height was asked; the clicked segments stand 0.5 m up.
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_NEAR(item(0).vertex1[2], 2.5, 1e-9);
    const QStringList saved = QDir(measurements("")).entryList({"*.POL"});
    ASSERT_EQ(saved.size(), 1);
    EXPECT_TRUE(saved[0].contains(QRegularExpression("^\\d{8}_\\d{6}\\.POL$"))) << saved[0].toStdString();
}

TEST_F(Digitising, ABlockOfHeightPointOneIsARoofAndNeedsThreePoints) {
    DigitizeBtnClick();
    dialogs.pushText("0.1");
    dialogs.pushCancel();
    BlockMenuClick();
    click(30, 30, 1);
    click(70, 30, 2);
    EXPECT_FALSE(dispatchState().DigiArmed);
    EXPECT_EQ(dialogs.questions().back().text, "At least 3 point needed");
    // No circle either: the two clicks' edge stays.
    EXPECT_EQ(At3d_MeasureList_Get_Count(), 1);
}

TEST_F(Digitising, ThreeClicksOfAnAreaGiveTheTriangleAndAskForTheVolumeFactor) {
    DigitizeBtnClick();
    AreaMnuClick();
    double p[3][3];
    ASSERT_TRUE(roofPoint(30, 30, p[0]));
    ASSERT_TRUE(roofPoint(70, 30, p[1]));
    ASSERT_TRUE(roofPoint(30, 60, p[2]));
    dialogs.pushText("3");
    click(30, 30, 1);
    click(70, 30, 1);
    click(30, 60, 2);
    const double area = std::fabs((p[1][0] - p[0][0]) * (p[2][1] - p[0][1]) - (p[2][0] - p[0][0]) * (p[1][1] - p[0][1])) / 2;
    EXPECT_EQ(dialogs.questions().back().title, QString::asprintf("The 3D  area is %.1f m\u00b2", area));
    EXPECT_TRUE(StatusStripText().endsWith(QString::asprintf("The volume is  %.2f m\u00b3    (With  factor= 3.00)",
                                                            area * 3)));
    // Width 2, "AREA_" items, the closing one included; nothing saved.
    EXPECT_EQ(ids(), QStringList({"AREA_1", "AREA_2", "AREA_3"}));
    EXPECT_FLOAT_EQ(item(0).lineWidth, 2);
    EXPECT_TRUE(QDir(measurements("")).entryList(QDir::Files).isEmpty());
    EXPECT_NEAR(measureState().LastmeasuredArea, area, 1e-9);
}

TEST_F(Digitising, AbortLeavesWhatWasDrawnAndClicksNoLongerDigitise) {
    DigitizeBtnClick();
    PolygonMnuClick();
    click(30, 30, 1);
    click(70, 30, 1);
    AbortpopupClick();
    click(70, 50, 2);
    EXPECT_EQ(At3d_MeasureList_Get_Count(), 1);
    EXPECT_EQ(digitiseState().NWPS, 2);
}

TEST_F(Digitising, DeletingAnOutlineTakesOnlyItsOwnSegments) {
    const double a[3] = {0, 0, 2}, b[3] = {1, 1, 2};
    for (const char* id : {"POL_12-1", "POL_123-1", "POL_12-2", "M1"})
        ASSERT_TRUE(At3d_MeasureList_Add_Item(id, 1, 0, 0, 2, nullptr, a, b, a, a));
    EXPECT_EQ(KamaPolygonLaticesInScene(), 3);
    DeletePolygonFromView(12);
    EXPECT_EQ(ids(), QStringList({"POL_123-1", "M1"}));
}

TEST_F(Digitising, AnOutlineStopsAtFiveHundredPoints) {
    DigitizeBtnClick();
    Line1Click();
    for (int i = 0; i < 520; ++i) DigitiseClick(1, i * 0.01, 0, 2);
    EXPECT_EQ(digitiseState().NWPS, MAX_WAYPOINTS);
    EXPECT_EQ(digitiseState().NWPW, MAX_WAYPOINTS);
    EXPECT_EQ(At3d_MeasureList_Get_Count(), MAX_WAYPOINTS - 1);
}

TEST_F(Digitising, AnImportedPolygonIsShownAndReadyForReuse) {
    const double a[3] = {0, 0, 2}, b[3] = {4, 0, 2}, c[3] = {4, 3, 2};
    ASSERT_TRUE(At3d_MeasureList_Add_Item("POL_5-1", 1, 0, 0, 4, nullptr, a, b, a, a));
    ASSERT_TRUE(At3d_MeasureList_Add_Item("POL_5-2", 1, 0, 0, 4, nullptr, b, c, a, a));
    ASSERT_EQ(ExportMeasureData(measurements("in.POL"), false), 2);
    At3d_MeasureList_Clear();
    resetDigitiseState();
    ASSERT_TRUE(ImportPolygon(measurements("in.POL")));
    EXPECT_EQ(digitiseState().NWPW, 3);
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_SHOW_MEASURES), 1);
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_NO_DRAW), 0);
    // The last segment's figures are on the strip.
    EXPECT_TRUE(StatusStripText().startsWith("POL_5-2 Distance 2D: 3.00m")) << StatusStripText().toStdString();
}
