// Measuring and annotation in the real window on the demo site, under Xvfb:
// tool buttons pressed, clicks on the rendered house and flat roof at the
// pixels where known points of the model show, the measure and billboard
// dialogs answered as an operator would, and the files they leave. Each
// test saves a picture of the view under build/test-screens/.
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QToolButton>
#include <cmath>

#include "WindowFixture.h"
#include "measure/ui/TFormBillboard.h"
#include "measure/ui/TFormObjects.h"
#include "measure/ui/TForm_M.h"
#include "scene/engine_interface.h"

namespace {

// The house's south roof: z = 47.82 + (y - 6) tan 30, x -25.35 .. -14.65,
// y 5.65 .. 10 in the file frame. The flat roof: x 8 .. 22, y -10 .. 0 at 51.09.
double southRoofZ(double y) { return 47.82 + (y - 6) * std::tan(30 * M_PI / 180); }
constexpr double FLAT_ROOF_Z = 51.09;
// The ground south of the flat roof building, as the terrain's mesh has it there.
constexpr double GROUND_X = 15, GROUND_Y = -16;

class WindowMeasure : public WindowFixture {
protected:
    static MEASURE_DATA item(int index) {
        MEASURE_DATA m{};
        Get_MeasureList_Item(index, &m);
        return m;
    }
    // Measures between two pixels with the measure tool, saving the line under name.
    static void measure(TFormAt3& form, ViewPanelGL* surface, QPoint a, QPoint b, const QString& name) {
        pressToolButton(form, "MeasureButton");
        click(surface, a);
        EXPECT_EQ(form.statusText(3), "First point taken: click the second point");
        whenDialogOpens<TForm_M>([name](TForm_M* dialog) {
            dialog->NameEdit->setText(name);
            dialog->findChild<QPushButton*>("SaveBtn")->click();
        });
        click(surface, b);
    }
};

}  // namespace

TEST_F(WindowMeasure, AMeasureOnTheHouseRoofIsSavedWithItsLabelAndListed) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    closeUp(-20, 8, 48, 30);
    // Up the south roof from the eaves towards the ridge, 3 m in plan.
    const QPoint low = pixelOf(-20, 6.5, southRoofZ(6.5)), high = pixelOf(-20, 9.5, southRoofZ(9.5));
    ASSERT_EQ(layerAt(low), "house_roof");
    ASSERT_EQ(layerAt(high), "house_roof");

    measure(form, surface, low, high, "Rafter");
    ASSERT_EQ(At3d_MeasureList_Get_Count(), 1);
    const MEASURE_DATA rafter = item(0);
    EXPECT_STREQ(rafter.id, "Rafter");
    // The pixels' points lie within a few centimetres of the ones aimed at.
    EXPECT_NEAR(measureState().Dist2D, 3, 0.15);
    EXPECT_NEAR(measureState().DDZ, 3 * std::tan(30 * M_PI / 180), 0.1);
    EXPECT_NEAR(std::remainder(measureState().AzimuthToTarget, 360.0), 0, 3);
    EXPECT_TRUE(StatusStripText().contains("Slope 30.")) << StatusStripText().toStdString();
    EXPECT_FALSE(form.findChild<QAction*>("MeasureButton")->isChecked());

    // Its label stands in the middle of the line.
    ASSERT_EQ(At3d_Measure_Billboard_Get_Count(), 1);
    const BILLBOARD_DATA label = billboard(0);
    EXPECT_TRUE(QString(label.id).startsWith("Rafter "));
    EXPECT_NEAR(label.position[2], (rafter.vertex1[2] + rafter.vertex2[2]) / 2, 1e-6);
    screenshot(surface, "measure_on_house_roof");
    closeUp(-20, 8, southRoofZ(8), 6);
    screenshot(surface, "measure_label_close_up");

    // "Display measurings" lists it in the map frame.
    chooseMenuItem(form, "Displaymeasurings1");
    QFile csv(QString::fromStdString(sessionPaths().ORVO_T) + "Measurement.csv");
    ASSERT_TRUE(csv.open(QIODevice::ReadOnly));
    const QStringList lines = QString(csv.readAll()).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[1].startsWith(QString::asprintf("Rafter,%.3f,", rafter.vertex1[0] + OC(0))));

    // Esc puts an armed tool away.
    pressToolButton(form, "MeasureButton");
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_MESH_LOCATION), MESH_LOCATION_MEASURE);
    press(&form, Qt::Key_Escape);
    EXPECT_FALSE(form.findChild<QAction*>("MeasureButton")->isChecked());
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_MESH_LOCATION), MESH_LOCATION_OFF);
}

TEST_F(WindowMeasure, ARoofOutlineDigitisedOnTheFlatRoofIsSavedAndBecomesARoofPlane) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    closeUp(15, -5, FLAT_ROOF_Z, 45);
    const double corners[4][2] = {{10, -8}, {20, -8}, {20, -2}, {10, -2}};
    std::vector<QPoint> pixels;
    for (const auto& c : corners) pixels.push_back(pixelOf(c[0], c[1], FLAT_ROOF_Z));
    for (const QPoint& p : pixels) ASSERT_EQ(layerAt(p), "flatroof_building");

    chooseMenuItem(form, "Roofs1");
    EXPECT_EQ(form.helpText(), " \t Click to start 4+ points for flat plane or 3 points for panels. Rightclick to finish.");
    for (int i = 0; i < 3; ++i) click(surface, pixels[std::size_t(i)]);
    // The red outline grows with every click.
    EXPECT_EQ(At3d_MeasureList_Get_Count(), 2);
    EXPECT_EQ(form.statusText(3), "Point 3 of the outline. Right click to finish.");
    screenshot(surface, "roof_outline_on_flat_roof");
    click(surface, pixels[3], Qt::RightButton);
    EXPECT_FALSE(dispatchState().DigiArmed);
    // The outline went to a time-stamped file without a question, and its
    // four points became a roof plane file, added to the scene.
    const QStringList saved = QDir(QString::fromStdString(dir.path("site/Measurements"))).entryList({"*.POL"});
    ASSERT_EQ(saved.size(), 1);
    EXPECT_TRUE(form.statusText(3).startsWith("Saved ")) << form.statusText(3).toStdString();
    const QStringList roofs = QDir(panelStore().PANELSFOLDER).entryList({"*_FlatRoof_*.DAE"});
    ASSERT_EQ(roofs.size(), 1);
    EXPECT_EQ(panelStore().PANELSFOLDER.toStdString(), dir.path("site/PANELS/"));
    bool roofLayer = false;
    char name[AT3D_NAME_SIZE] = {};
    for (void* layer = At3d_GetNextLayer(nullptr, name); layer; layer = At3d_GetNextLayer(layer, name))
        roofLayer = roofLayer || QString(name).contains("roof_polygon");
    EXPECT_TRUE(roofLayer);
}

TEST_F(WindowMeasure, TextBillboardsArePlacedAndMovedWithTheirGroup) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    closeUp(-5, -5, 46, 70);
    placeBillboard(form, surface, pixelOf(-22, 7, southRoofZ(7)), "Antenna");
    placeBillboard(form, surface, pixelOf(-18, 7, southRoofZ(7)), "Antenna");
    placeBillboard(form, surface, pixelOf(12, -5, FLAT_ROOF_Z), "Tank");
    ASSERT_EQ(At3d_Measure_Billboard_Get_Count(), 3);
    EXPECT_STREQ(billboard(0).id, "Antenna");
    EXPECT_EQ(billboard(0).staticFlag, 0);
    screenshot(surface, "billboards_placed");

    // Select the second with a right click on its foot; its menu offers the move.
    pressToolButton(form, "SelectMeasuringBtn");
    const BILLBOARD_DATA before = billboard(1);
    click(surface, pixelOf(before.position[0] + frameState().OriginalobjectCenter[0],
                           before.position[1] + frameState().OriginalobjectCenter[1],
                           before.position[2] + frameState().OriginalobjectCenter[2]),
          Qt::RightButton);
    EXPECT_EQ(dispatchState().GlobalMeasureOrBilboard, 2);
    EXPECT_EQ(dispatchState().GlobalSelectedIdx, 1);
    auto* menu = form.findChild<QMenu*>("PopupMenu1");
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->isVisible());
    form.findChild<QAction*>("MoveAllgroup1")->trigger();
    menu->hide();
    settle(50);
    EXPECT_EQ(form.helpText(), "\tShift+Click for new location");

    // Shift+click on the ground south of the flat roof: both Antennas go, the Tank stays.
    const BILLBOARD_DATA first = billboard(0), tank = billboard(2);
    click(surface, pixelOf(GROUND_X, GROUND_Y, 44), Qt::LeftButton, Qt::ShiftModifier);
    const BILLBOARD_DATA moved = billboard(1), follower = billboard(0);
    const double dx = moved.position[0] - before.position[0], dy = moved.position[1] - before.position[1];
    EXPECT_NEAR(moved.position[0] + frameState().OriginalobjectCenter[0], GROUND_X, 0.5);
    EXPECT_NEAR(follower.position[0] - first.position[0], dx, 1e-9);
    EXPECT_NEAR(follower.position[1] - first.position[1], dy, 1e-9);
    EXPECT_DOUBLE_EQ(billboard(2).position[0], tank.position[0]);
    EXPECT_EQ(dispatchState().MOVEBILLBOARD, 0);
    screenshot(surface, "billboards_moved_with_group");
    closeUp(GROUND_X, GROUND_Y, 44, 8);
    screenshot(surface, "billboards_moved_close_up");
}

TEST_F(WindowMeasure, MeasuresSavedInOneSessionAreReadIntoTheNext) {
    const QString mes = QString::fromStdString(dir.path("site/Measurements/Roof.MES"));
    double saved[3] = {0, 0, 0};
    {
        TFormAt3 form;
        ASSERT_TRUE(form.FormCreate(program()));
        ViewPanelGL* surface = form.viewPanel()->surface();
        ASSERT_TRUE(waitForFirstFrame(surface));
        measure(form, surface, pixelOf(10, -8, FLAT_ROOF_Z), pixelOf(20, -2, FLAT_ROOF_Z), "Diagonal");
        ASSERT_EQ(At3d_MeasureList_Get_Count(), 1);
        for (int i = 0; i < 3; ++i) saved[i] = item(0).vertex1[i] + OC(i);
        dialogs.pushFile(mes);
        chooseMenuItem(form, "SaveMeasurements1");
        ASSERT_TRUE(QFileInfo::exists(mes));
        EXPECT_EQ(QFileInfo(mes).size(), 224);
        At3d_MeasureList_Clear();
        At3d_Measure_Billboard_Delete_All();
    }
    resetSession();
    installDialogService(&dialogs);
    DeriveUserFolders(dir.root() + "home", program(), false);
    const std::vector<std::string> argv{program(), model};
    CaptureCommandLine(argv, RawCommandLine(argv));
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    ASSERT_EQ(At3d_MeasureList_Get_Count(), 0);
    dialogs.pushFile(mes);
    chooseMenuItem(form, "ImportMeasurements1");
    ASSERT_EQ(At3d_MeasureList_Get_Count(), 1);
    EXPECT_STREQ(item(0).id, "Diagonal");
    // The model has an Offset: the line comes back shifted by it, as the files are made.
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(item(0).vertex1[i] + OC(i), saved[i] + frameState().Offset[i], 1e-6);
}

TEST_F(WindowMeasure, TheIconsFormOffersTheInstalledIconsAndShiftClicksSetARowOfThem) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    pressToolButton(form, "SimanTactiModeBtn");
    auto* icons = form.findChild<TFormObjects*>("FormObjects");
    ASSERT_NE(icons, nullptr);
    settle(50);
    EXPECT_TRUE(icons->isVisible());
    QStringList names;
    QToolButton* flag = nullptr;
    for (QToolButton* button : icons->findChildren<QToolButton*>()) {
        names << button->accessibleName();
        if (button->accessibleName() == "FLAG") flag = button;
    }
    names.sort();
    EXPECT_EQ(names, QStringList({"ANTENNA", "CAMERA", "CRANE_L", "FLAG", "SPHERE", "TENT_S", "WARNING"}));
    ASSERT_NE(flag, nullptr);
    flag->click();
    EXPECT_EQ(icons->NameEdit->text(), "FLAG");
    EXPECT_FALSE(form.findChild<QLabel*>("SatamImage")->pixmap().isNull());
    icons->TextEdit->clear();
    typeText(icons->TextEdit, "Post");
    screenshotOf(icons, "icons_form");
    // The form took the focus and gave it back; the operator zooms in on the flat roof.
    settle(200);
    closeUp(15, -5, FLAT_ROOF_Z, 20);

    const QPoint first = pixelOf(12, -5, FLAT_ROOF_Z), second = pixelOf(16, -5, FLAT_ROOF_Z);
    click(surface, first, Qt::LeftButton, Qt::ShiftModifier);
    click(surface, second, Qt::LeftButton, Qt::ShiftModifier);
    ASSERT_EQ(At3d_Measure_Billboard_Get_Count(), 2);
    EXPECT_TRUE(QString(billboard(0).id).contains(QRegularExpression("^Post\\|FLAG\\d+$"))) << billboard(0).id;
    EXPECT_TRUE(dispatchState().BILLBOARDMODE);
    // Both stand on the roof, four metres apart; the view kept its size while the form came up.
    EXPECT_NEAR(billboard(1).position[0] - billboard(0).position[0], 4, 0.1);
    EXPECT_NEAR(billboard(1).position[2], billboard(0).position[2], 1e-6);
    screenshot(surface, "icon_billboards_on_flat_roof");
    pressToolButton(form, "SimanTactiModeBtn");
    EXPECT_FALSE(icons->isVisible());
    EXPECT_FALSE(dispatchState().BILLBOARDMODE);

    // A Shift+right click offers the point's menu.
    click(surface, pixelOf(14, -3, FLAT_ROOF_Z), Qt::RightButton, Qt::ShiftModifier);
    auto* pointMenu = form.findChild<QMenu*>("ShiftRightClickPopupmenu");
    ASSERT_NE(pointMenu, nullptr);
    EXPECT_TRUE(pointMenu->isVisible());
    pointMenu->hide();
}
