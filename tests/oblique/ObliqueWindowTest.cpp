// The photograph window's logic: circular browsing, the caption, the
// report file and its post on the model, a distance measured through the
// photograph on a generated ground, saving and exporting, and the layer sort.
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <cmath>

#include "ObliqueFixture.h"
#include "app/services/FileHelpers.h"
#include "measure/MeasureState.h"
#include "oblique/ObliqueGeometry.h"
#include "oblique/ObliqueWindow.h"
#include "scene/engine_interface.h"
#include "solar/design/PanelStore.h"
#include "support/SceneBuilders.h"

namespace {

std::string readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string("<missing>");
}

// 3600 x 2400 pixels on a 36 mm sensor, 50 mm lens, principal point at
// picture (1810, -1220); looking north 45 degrees down.
OBLIQUE northCamera(double x, double y, float z) {
    OBLIQUE O;
    O.Qxorg = x, O.Qyorg = y, O.Qzorg = z;
    O.fpc = 50, O.QW_mm = 36, O.Width = 3600, O.Height = 2400, O.QScale = 100;
    O.QPicX00 = 1800, O.QPicY00 = -1200, O.QPicX0 = 1810, O.QPicY0 = -1220;
    O.Xmin = 0, O.Xmax = 3600, O.Ymin = -2400, O.Ymax = 0;
    const double s = std::sqrt(0.5);
    O.q11 = 1, O.q22 = s, O.q23 = -s, O.q32 = s, O.q33 = s;
    O.Proj = "/photos/OB_0042.jpg";
    return O;
}

// A flat ground of 400 m at map height 40 round a centre far from the origin.
class ObliqueWindowOnMesh : public ObliqueFixture {
protected:
    static constexpr double CX = 180000, CY = 660000, CZ = 40;
    void SetUp() override {
        ObliqueFixture::SetUp();
        resetObliqueWindowState();
        resetMeasureState();
        resetPanelStore();
        testsupport::addLayer(testsupport::makeSquare("ground", 0, 0, 0, 400));
        frameState().OriginalobjectCenter[0] = CX;
        frameState().OriginalobjectCenter[1] = CY;
        frameState().OriginalobjectCenter[2] = CZ;
        obliqueWindowState().OBLI_O = northCamera(CX, CY - 100, CZ + 100);
        panelStore().PANELSFOLDER = QString::fromStdString(dir.path("PANELS/"));
        QDir().mkpath(panelStore().PANELSFOLDER);
    }
    void TearDown() override {
        resetObliqueWindowState();
        resetPanelStore();
        ObliqueFixture::TearDown();
    }
    TGIS_Point pictureOf(double x, double y) {
        TGIS_Point p;
        Ob_World2Pic(x, y, CZ, obliqueWindowState().OBLI_O, p.X, p.Y);
        return p;
    }
};

}  // namespace

TEST(ObliqueBrowsing, StepsRoundTheListBothWays) {
    EXPECT_EQ(NextSerial(0, -1, 3), 2);
    EXPECT_EQ(NextSerial(2, 1, 3), 0);
    EXPECT_EQ(NextSerial(1, 1, 3), 2);
    // A number kept from a longer list still lands inside the new one.
    EXPECT_EQ(NextSerial(7, 1, 3), 2);
    EXPECT_EQ(NextSerial(0, 1, 1), 0);
}

TEST(ObliqueCaption, ShowsTheCameraOrTheDistanceOfAnOpkPhotograph) {
    OBLIQUE O;
    O.Azimuth = 123, O.Incl = 45, O.fpc = 80, O.Proj = "/m/OBLIX/A_17.jpg";
    EXPECT_EQ(ObliqueCaption(O, 3), " Az 123 Incl 45 [3] A_17.jpg");
    O.RotationDeg = 90;
    EXPECT_EQ(ObliqueCaption(O, 3), " Az 123 Incl 45 [3] A_17.jpg ROT 90");
    OBLIQUE opk;
    opk.Azimuth = 271, opk.fpc = -12.34f, opk.Proj = "/m/OBLIXS/IMG_5.jpg";
    EXPECT_EQ(ObliqueCaption(opk, 2), "Az 271  DIST 12.3 [2] IMG_5.jpg");
    EXPECT_FALSE(ObliqueHasMatrix(opk));
}

TEST(ObliqueWindowSize, FollowsThePhotographsAspect) {
    int w = 900, h = 700;
    FitToAspect(w, h, 1.5);
    EXPECT_EQ(w, 900);
    EXPECT_EQ(h, 600);
    w = 900, h = 700;
    FitToAspect(w, h, 1.0);
    EXPECT_EQ(w, 700);
    EXPECT_EQ(h, 700);
}

TEST_F(ObliqueWindowOnMesh, ReportWritesTheHeaderOnceAndARowAPoint) {
    const QString csv = panelStore().PANELSFOLDER + "Report.csv";
    ASSERT_TRUE(AppendObliqueReport(csv, ObliqueReportText(180000.04, 660000.06, 40.26, 1810.4, -1220.6), "crack",
                                    "OB_0042.jpg"));
    ASSERT_TRUE(AppendObliqueReport(csv, ObliqueReportText(1.24, 2, 3, 4, 5), "", "OB_7.jpg"));
    EXPECT_EQ(readAll(csv),
              "East,North,Elev,N,M,Remark,Image\n"
              "180000.0,660000.1,40.3,1810,-1221,crack,OB_0042.jpg\n"
              "1.2,2.0,3.0,4,5,,OB_7.jpg\n");
}

TEST_F(ObliqueWindowOnMesh, ReportOfThePressedPointFindsItOnTheModel) {
    // The principal point looks along the axis at the target (CX, CY, CZ).
    obliqueWindowState().LastObliMouseDownptg = {1810, -1220};
    dialogs.pushText("wall crack");
    const QString csv = ObliqueReportClick();
    ASSERT_EQ(csv, panelStore().PANELSFOLDER + "Report.csv");
    ASSERT_FALSE(dialogs.questions().empty());
    EXPECT_EQ(dialogs.questions().back().title, "180000.0,660000.0,40.0,1810,-1220,");
    EXPECT_EQ(dialogs.questions().back().text, "Remark?");
    EXPECT_EQ(readAll(csv),
              "East,North,Elev,N,M,Remark,Image\n"
              "180000.0,660000.0,40.0,1810,-1220,wall crack,OB_0042.jpg\n");
    // The blue post: 5 units up from the point, named after the picture.
    ASSERT_EQ(At3d_MeasureList_Get_Count(), 1);
    MEASURE_DATA item{};
    At3d_MeasureList_Get_Item(0, item.id, &item.visible_Flag, &item.observer_Flag, &item.obstruction_Flag,
                              &item.lineWidth, item.rgb_Line_Array, item.vertex1, item.vertex2, item.observer,
                              item.obstruction);
    EXPECT_STREQ(item.id, "/photos/OB_0042.jpg");
    EXPECT_FLOAT_EQ(item.lineWidth, 4);
    EXPECT_FLOAT_EQ(item.rgb_Line_Array[2], 1);
    EXPECT_FLOAT_EQ(item.rgb_Line_Array[0], 0);
    EXPECT_NEAR(item.vertex2[2] - item.vertex1[2], 5, 1e-6);
    EXPECT_NEAR(item.vertex1[0], 0, 1e-3);
    EXPECT_NEAR(item.vertex1[1], 0, 1e-3);
    EXPECT_TRUE(ControlVisible("SelectMeasuringBtn"));
}

TEST_F(ObliqueWindowOnMesh, ACancelledRemarkWritesNothing) {
    obliqueWindowState().LastObliMouseDownptg = {1810, -1220};
    dialogs.pushCancel();
    EXPECT_EQ(ObliqueReportClick(), "");
    EXPECT_FALSE(QFile::exists(panelStore().PANELSFOLDER + "Report.csv"));
    EXPECT_EQ(At3d_MeasureList_Get_Count(), 0);
}

TEST_F(ObliqueWindowOnMesh, ADistanceBetweenTwoPicturePointsIsMeasuredOnTheModel) {
    // 30 m east and 40 m north of the target: 50 m, azimuth atan(3/4).
    const TGIS_Point3D first = ObliqueDistanceStart(pictureOf(CX, CY));
    EXPECT_TRUE(obliqueWindowState().INDISTANCE);
    EXPECT_EQ(mainFormState().statusTexts[0], "Click on the second point");
    EXPECT_NEAR(first.X, CX, 1e-3);
    EXPECT_NEAR(first.Y, CY, 1e-3);
    const TGIS_Point3D second = ObliqueDistanceFinish(pictureOf(CX + 30, CY + 40));
    EXPECT_FALSE(obliqueWindowState().INDISTANCE);
    EXPECT_NEAR(second.X, CX + 30, 1e-3);
    EXPECT_NEAR(second.Y, CY + 40, 1e-3);
    const MeasureState& m = measureState();
    EXPECT_NEAR(m.Dist2D, 50, 1e-3);
    EXPECT_NEAR(m.Dist3D, 50, 1e-3);
    EXPECT_NEAR(m.DDZ, 0, 1e-3);
    EXPECT_NEAR(m.AzimuthToTarget, 36.8699, 1e-3);
}

TEST_F(ObliqueWindowOnMesh, SaveImageRefusesOtherExtensions) {
    QImage image(8, 6, QImage::Format_RGB888);
    image.fill(Qt::green);
    const QString png = QString::fromStdString(dir.path("view.png"));
    EXPECT_FALSE(SaveObliqueImage(image, png));
    EXPECT_FALSE(QFile::exists(png));
    ASSERT_FALSE(dialogs.questions().empty());
    EXPECT_EQ(dialogs.questions().back().text, png + " is an illegal file extension\nOnly JPG and BMP are accepted");
    EXPECT_TRUE(ObliqueImageExtensionAccepted("/a/b.Jpg"));
    EXPECT_FALSE(ObliqueImageExtensionAccepted("/a/b.jpeg"));
}

TEST_F(ObliqueWindowOnMesh, SaveImageWritesJpegOrBitmapAndShowsIt) {
    QImage image(8, 6, QImage::Format_RGB888);
    image.fill(Qt::green);
    const QString jpg = QString::fromStdString(dir.path("view.JPG"));
    const QString bmp = QString::fromStdString(dir.path("view.bmp"));
    ASSERT_TRUE(SaveObliqueImage(image, jpg));
    ASSERT_TRUE(SaveObliqueImage(image, bmp));
    EXPECT_EQ(readAll(bmp).substr(0, 2), "BM");
    QFile file(jpg);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.read(3) == QByteArray("\xFF\xD8\xFF"));
    const QImage back(jpg);
    EXPECT_EQ(back.size(), QSize(8, 6));
    EXPECT_EQ(dialogs.questions().back().kind, ScriptedDialogService::Question::Document);
    EXPECT_EQ(dialogs.questions().back().text, bmp);
}

TEST_F(ObliqueWindowOnMesh, ExportCopiesThePictureUnderItsOwnName) {
    const std::string picture = dir.path("OBLIX/OB_0042.jpg");
    touch(picture);
    const QString folder = QString::fromStdString(dir.path("out"));
    QDir().mkpath(folder);
    ASSERT_TRUE(ExportObliqueFile(QString::fromStdString(picture), folder));
    EXPECT_EQ(readAll(folder + "/OB_0042.jpg"), "x");
    EXPECT_FALSE(ExportObliqueFile(QString::fromStdString(dir.path("OBLIX/none.jpg")), folder));
}

TEST(ObliqueLayerSort, NamedLayersFirstThenVectorsThenRasters) {
    const std::vector<ZLayerInfo> layers{{"OB_0042", true, false, 0, 0},
                                         {"_Oblisimun", false, false, 0, 1},
                                         {"PERIF", false, false, 0, 2},
                                         {"pplot", false, false, 0, 3},
                                         {"roofs", false, true, 1, 4},
                                         {"fields", false, true, 2, 5}};
    const std::vector<ZORDER> rows = SortZorder(layers);
    std::vector<QString> names;
    std::vector<int> orders;
    for (const ZORDER& row : rows) names.push_back(row.Name), orders.push_back(row.NewZOrder);
    EXPECT_EQ(names, (std::vector<QString>{"pplot", "PERIF", "_Oblisimun", "roofs", "fields", "OB_0042"}));
    EXPECT_EQ(orders, (std::vector<int>{-4444, 3, 101, 204, 305, 2000}));
    EXPECT_EQ(rows.back().layer, 0);
}
