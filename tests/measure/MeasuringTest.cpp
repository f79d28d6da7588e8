// Measuring with the engine's rubberband: two clicks on a roof, the figures
// of the line, the measure dialog's three ways out (kept with its label,
// taken as the scale, dropped), the observer tool, a selected measure or
// area on the strip, and the line of sight of two map points.
#include <gtest/gtest.h>

#include <cmath>

#include "MeasureFixture.h"
#include "app/model/CameraTools.h"
#include "measure/MeasureDisplay.h"
#include "measure/Measuring.h"
#include "scene/EngineSession.h"
#include "support/SceneBuilders.h"

namespace {

class Measuring : public MeasureFixture {
protected:
    int dialogCalls = 0;
    MeasureDialogValues shown;

    // The dialog answers result after the operator typed name.
    void answerDialog(int result, const QString& name = {}, int widthIndex = 1, int color = 0x0000FF,
                      bool show = true) {
        measureForms().measureDialog = [=, this](MeasureDialogValues& values) {
            ++dialogCalls;
            shown = values;
            values.name = name;
            values.widthIndex = widthIndex;
            values.color = color;
            values.show = show;
            return result;
        };
    }
    // Arms the measure tool and clicks twice on the roof.
    void measureBetween(int x1, int y1, int x2, int y2) {
        SetControlChecked("MeasureButton", true);
        MeasureButtonClick();
        ASSERT_EQ(At3d_Mouse_Down(x1, y1, 1), 1);
        ASSERT_EQ(At3d_Mouse_Down(x2, y2, 1), 1);
        Display_Rubberband_Data(AT3D_NOTIFY_RUBBERBAND);
    }
};

}  // namespace

TEST_F(Measuring, TheMeasureToolArmsTheRubberbandAndShowsTheLists) {
    SetControlChecked("SelectObservertargetBtn", true);
    SetControlChecked("MeasureButton", true);
    MeasureButtonClick();
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_MESH_LOCATION), MESH_LOCATION_MEASURE);
    EXPECT_EQ(viewerSettings().MEASUREOROBSERVER, 1);
    EXPECT_FALSE(ControlChecked("SelectObservertargetBtn"));
    EXPECT_TRUE(ControlChecked("ShowMeasurementsAndBillboards"));
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_SHOW_BILLBOARDS), 1);
    SetControlChecked("MeasureButton", false);
    MeasureButtonClick();
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_MESH_LOCATION), MESH_LOCATION_OFF);
}

TEST_F(Measuring, ASavedLineKeepsItsNameWidthColourAndLabel) {
    answerDialog(MOK_SAVE, "Eaves", 2, 0x00FF00);
    double a[3], b[3];
    ASSERT_TRUE(roofPoint(20, 40, a));
    ASSERT_TRUE(roofPoint(80, 40, b));
    measureBetween(20, 40, 80, 40);
    ASSERT_EQ(dialogCalls, 1);
    const double length = std::hypot(b[0] - a[0], b[1] - a[1]);
    EXPECT_EQ(shown.toTarget, QString::asprintf("%.2f", length));
    EXPECT_EQ(shown.elevation, "0.00");

    ASSERT_EQ(At3d_MeasureList_Get_Count(), 1);
    MEASURE_DATA item{};
    ASSERT_TRUE(Get_MeasureList_Item(0, &item));
    EXPECT_STREQ(item.id, "Eaves");
    EXPECT_FLOAT_EQ(item.lineWidth, 8);
    testsupport::expectRgb(item.rgb_Line_Array, 0, 1, 0);
    testsupport::expectVec(item.vertex1, a[0], a[1], a[2], 1e-9);

    // The figures in the map frame, on the session and the strip.
    const DispatchState& d = dispatchState();
    EXPECT_NEAR(d.GlobalX1, a[0] + CENTER_X, 1e-9);
    EXPECT_NEAR(d.GlobalZ2, 2 + CENTER_Z, 1e-9);
    EXPECT_NEAR(measureState().Dist2D, length, 1e-9);
    EXPECT_NEAR(measureState().AzimuthToTarget, 90, 1e-9);
    EXPECT_TRUE(StatusStripText().contains(QString::asprintf("Distance 2D: %.2lfm", length))) << StatusStripText().toStdString();

    // Its label stands in the middle of the line, static, with the length after the name.
    ASSERT_EQ(At3d_Measure_Billboard_Get_Count(), 1);
    BILLBOARD_DATA label{};
    ASSERT_TRUE(Get_Billboard_Data(0, &label));
    EXPECT_EQ(QString(label.id), QString::asprintf("Eaves %.2lf", length));
    EXPECT_EQ(label.alphaFlag, 2);
    EXPECT_EQ(label.staticFlag, 1);
    testsupport::expectVec(label.position, (a[0] + b[0]) / 2, (a[1] + b[1]) / 2, 2, 1e-9);
    EXPECT_NEAR(std::hypot(label.pivot[0] - label.position[0], label.pivot[1] - label.position[1]), 1.5, 1e-9);
    delete[] label.imagePtr;

    // The tool is at rest again and the look tool can take the line.
    EXPECT_FALSE(ControlChecked("MeasureButton"));
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_MESH_LOCATION), MESH_LOCATION_OFF);
    EXPECT_EQ(rubberbandState().hitFlag1, AT3D_HIT);
    EXPECT_EQ(rubberbandState().hitFlag2, AT3D_HIT);
}

TEST_F(Measuring, TheSameTwoPointsMeasuredTwiceGiveTwoItemsAndAnUnnamedLineGetsARandomName) {
    answerDialog(MOK_SAVE, {}, 0, 0x0000FF, false);
    measureBetween(30, 30, 70, 50);
    measureBetween(30, 30, 70, 50);
    ASSERT_EQ(At3d_MeasureList_Get_Count(), 2);
    EXPECT_EQ(At3d_Measure_Billboard_Get_Count(), 0);
    MEASURE_DATA item{};
    ASSERT_TRUE(Get_MeasureList_Item(1, &item));
    EXPECT_TRUE(QString(item.id).startsWith("Random_"));
    EXPECT_FLOAT_EQ(item.lineWidth, 2);
}

TEST_F(Measuring, ACancelledDialogKeepsNothingAndEndsTheTool) {
    answerDialog(0);
    measureBetween(30, 30, 70, 50);
    EXPECT_EQ(At3d_MeasureList_Get_Count(), 0);
    EXPECT_EQ(At3d_Measure_Billboard_Get_Count(), 0);
    EXPECT_FALSE(ControlChecked("MeasureButton"));
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_MESH_LOCATION), MESH_LOCATION_OFF);
}

TEST_F(Measuring, TheScaleAnswerScalesTheModelByTheTrueLengthOverThePlanLength) {
    answerDialog(MOK_SCALE);
    double a[3], b[3];
    ASSERT_TRUE(roofPoint(20, 40, a));
    ASSERT_TRUE(roofPoint(80, 40, b));
    const double length = std::hypot(b[0] - a[0], b[1] - a[1]);
    dialogs.pushText(QString::number(2 * length, 'f', 6));
    measureBetween(20, 40, 80, 40);
    EXPECT_EQ(dialogs.questions().back().value, QString::asprintf("%.2f", length));
    EXPECT_EQ(At3d_MeasureList_Get_Count(), 0);
    EXPECT_NEAR(frameState().SCALE, 2, 1e-5);
    // The roof stands twice as wide and twice as high about the local origin.
    double minMax[6];
    At3d_GetObjectMinMax(minMax);
    EXPECT_NEAR(minMax[1] - minMax[0], 80, 1e-4);
    EXPECT_NEAR(minMax[4], 4, 1e-4);
}

TEST_F(Measuring, TheObserverToolLooksAlongTheLineInsteadOfKeepingIt) {
    answerDialog(MOK_SAVE);
    SetControlChecked("SelectObservertargetBtn", true);
    SelectObservertargetBtnClick();
    ASSERT_EQ(At3d_Mouse_Down(30, 40, 1), 1);
    ASSERT_EQ(At3d_Mouse_Down(70, 40, 1), 1);
    Display_Rubberband_Data(AT3D_NOTIFY_RUBBERBAND);
    EXPECT_EQ(dialogCalls, 0);
    EXPECT_EQ(At3d_MeasureList_Get_Count(), 0);
    EXPECT_TRUE(ControlChecked("LookAtBtn"));
    EXPECT_EQ(cameraState().activeCameraID, 1);
}

TEST_F(Measuring, AVerticalLineHasNoSlopeAndASelectedAreaShowsItsArea) {
    const double a[3] = {1, 1, 2}, b[3] = {1, 1, 7};
    ASSERT_TRUE(At3d_MeasureList_Add_Item("Mast", 1, 0, 0, 2, nullptr, a, b, a, a));
    MEASURE_DATA item{};
    ASSERT_TRUE(Get_MeasureList_Item(0, &item));
    Display_Measure_Data(0, item);
    EXPECT_EQ(viewerSettings().SelectedIDX, 0);
    EXPECT_DOUBLE_EQ(measureState().Dist2D, 0);
    EXPECT_DOUBLE_EQ(measureState().DDZ, 5);
    EXPECT_EQ(StatusStripText(), "Mast Distance 2D: 0.00m \t3D: 5.00m  \tDZ: 5.00");

    const double c[3] = {4, 5, 2};
    ASSERT_TRUE(At3d_MeasureList_Add_Item("AREA_3", 1, 0, 0, 2, nullptr, a, c, a, a));
    ASSERT_TRUE(Get_MeasureList_Item(1, &item));
    Display_Measure_Data(1, item);
    // The item's distance stands for the area; the selection stays where it was.
    EXPECT_EQ(StatusStripText(), "Area: 5.00m\u00b2");
    EXPECT_EQ(viewerSettings().SelectedIDX, 0);
}

TEST_F(Measuring, ASlopingLineShowsItsSlopeAndAzimuth) {
    const double a[3] = {0, 0, 2}, b[3] = {-3, -3, 2 + std::sqrt(18.0)};
    ASSERT_TRUE(At3d_MeasureList_Add_Item("Ramp", 1, 0, 0, 2, nullptr, a, b, a, a));
    MEASURE_DATA item{};
    ASSERT_TRUE(Get_MeasureList_Item(0, &item));
    Display_Measure_Data(0, item);
    EXPECT_EQ(StatusStripText(),
              "Ramp Distance 2D: 4.24m \t3D: 6.00m  \tDZ: 4.24 Slope 45.0\u00b0  Azimuth 225.0 ");
    geoState().IMPERIAL = true;
    DisplayDistancesInAt3W("");
    EXPECT_TRUE(StatusStripText().startsWith("Ramp Dist 2D:13' 11\"   3D:19' 8\"")) << StatusStripText().toStdString();
}

TEST_F(Measuring, TheLineOfSightOfMapPointsMissesTheOffsetInItsHit) {
    frameState().Offset[0] = 1000;
    frameState().Offset[1] = 2000;
    // From 10 m above the roof at one side down through it: given without Offset.
    const double V1[3] = {CENTER_X + 5, CENTER_Y, CENTER_Z + 12}, V2[3] = {CENTER_X + 5, CENTER_Y, CENTER_Z - 8};
    double hit[3] = {0, 0, 0};
    EXPECT_NEAR(GetObstruction(V1, V2, hit, 0), 10, 1e-9);
    testsupport::expectVec(hit, CENTER_X + 5, CENTER_Y, CENTER_Z + 2, 1e-9);
    // A skip longer than the way to the roof lets the line through.
    EXPECT_EQ(GetObstruction(V1, V2, hit, 11), 0);
}

TEST_F(Measuring, AWallBetweenTheEndsIsReportedAsTheObstruction) {
    testsupport::addLayer(testsupport::makeWallX("wall", 0, -20, 20, 0, 30));
    answerDialog(MOK_SAVE);
    // Both ends on the roof, the wall at x = 0 between them, higher than both.
    measureBetween(30, 40, 70, 40);
    EXPECT_EQ(rubberbandState().hitFlagObstruction, AT3D_HIT);
    EXPECT_TRUE(mainFormState().statusTexts[3].startsWith("Measure kept"));
    EXPECT_NEAR(measureState().SightObstructionDistance, std::fabs(rubberbandState().xyzArray1[0]), 1e-6);
}
