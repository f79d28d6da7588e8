// The flythrough in the real window on the demo site, under Xvfb: a "Fly
// trrough" line clicked on the rendered flat roof becomes a way point file,
// "Flytrough" opens it on the roaming camera, and W walks to the next way
// point.
#include <QMenu>
#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include "WindowFixture.h"
#include "app/services/GdalDrivers.h"
#include "app/services/SessionPaths.h"
#include "motion/Flythrough.h"

namespace {

// The flat-roof building: x 8 .. 22, y -10 .. 0, its roof at 51.09 in the file frame.
constexpr double FLAT_ROOF_Z = 51.09;
constexpr double FLY_ABOVE = 30;

class WindowFlythrough : public WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        resetFlythroughState();
    }
    static std::vector<TGIS_Point3D> pointsOf(const std::string& path) {
        EnsureGdalDrivers();
        std::vector<TGIS_Point3D> points;
        GDALDataset* dataset =
            static_cast<GDALDataset*>(GDALOpenEx(path.c_str(), GDAL_OF_VECTOR, nullptr, nullptr, nullptr));
        if (!dataset) return points;
        OGRLayer* layer = dataset->GetLayer(0);
        while (OGRFeature* feature = layer->GetNextFeature()) {
            if (const auto* p = dynamic_cast<const OGRPoint*>(feature->GetGeometryRef()))
                points.push_back({p->getX(), p->getY(), p->getZ(), feature->GetFieldAsDouble("Pitch")});
            OGRFeature::DestroyFeature(feature);
        }
        GDALClose(dataset);
        return points;
    }
    static void eyeOfCamera(double* eye) {
        double target[3];
        ASSERT_TRUE(At3d_Get_Roaming_Data("R1", eye, target, nullptr, nullptr, 0));
    }
};

}  // namespace

TEST_F(WindowFlythrough, ALineClickedOnTheRoofBecomesAPathThatWWalksAlong) {
    TFormAt3 form;
    ASSERT_TRUE(form.FormCreate(program()));
    ViewPanelGL* surface = form.viewPanel()->surface();
    ASSERT_TRUE(waitForFirstFrame(surface));
    closeUp(15, -5, FLAT_ROOF_Z, 45);
    const double corners[3][2] = {{10, -8}, {20, -8}, {20, -2}};
    std::vector<QPoint> pixels;
    for (const auto& c : corners) pixels.push_back(pixelOf(c[0], c[1], FLAT_ROOF_Z));
    for (const QPoint& p : pixels) ASSERT_EQ(layerAt(p), "flatroof_building");

    dialogs.pushText(QString::number(FLY_ABOVE));
    EXPECT_EQ(form.findChild<QAction*>("FlytrroughDigitize")->text(), "Fly trrough");
    EXPECT_EQ(form.findChild<QAction*>("FlytroughVieport")->text(), "Flytrough");
    EXPECT_EQ(form.findChild<QAction*>("ShowFlytroughwaypints1")->text(), "Show Flytrough waypints");
    chooseMenuItem(form, "FlytrroughDigitize");
    EXPECT_EQ(dialogs.questions().back().title, "Fly above model");
    click(surface, pixels[0]);
    click(surface, pixels[1]);
    const std::string line = dir.path("site/Measurements/fly.POL");
    dialogs.pushFile(QString::fromStdString(line));
    click(surface, pixels[2], Qt::RightButton);
    screenshot(surface, "flythrough_line_on_flat_roof");

    // Three clicks, smoothed three times: ten way points, 30 m above the clicks.
    const std::string waypoints = line + ".SHP";
    const std::vector<TGIS_Point3D> path = pointsOf(waypoints);
    ASSERT_EQ(path.size(), 10u);
    const WAYPOINT& first = digitiseState().WaypointS[0];
    const WAYPOINT& last = digitiseState().WaypointS[2];
    EXPECT_NEAR(path.front().X, first.X + OC(0), 1e-6);
    EXPECT_NEAR(path.front().Y, first.Y + OC(1), 1e-6);
    EXPECT_NEAR(path.front().Z, first.Z + OC(2) + FLY_ABOVE, 1e-6);
    EXPECT_NEAR(path.back().X, last.X + OC(0), 1e-6);
    // The site's offset lifts nothing: map heights are those of the file.
    EXPECT_NEAR(path.front().Z, FLAT_ROOF_Z + FLY_ABOVE, 0.05);
    for (const TGIS_Point3D& p : path) EXPECT_EQ(p.M, -45);

    // The path opened, a video of 4 s asked for.
    dialogs.pushFile(QString::fromStdString(waypoints));
    dialogs.pushText("4");
    chooseMenuItem(form, "FlytroughVieport");
    ASSERT_EQ(dispatchState().KamaFTWP, 10);
    EXPECT_TRUE(form.findChild<QAction*>("FlytroughVieport")->isChecked());
    EXPECT_EQ(cameraState().activeCameraID, 1);
    double eye[3];
    eyeOfCamera(eye);
    const FlythroughState& s = flythroughState();
    EXPECT_NEAR(eye[2] + OC(2), path.front().Z, 0.01);
    screenshot(surface, "flythrough_opened");

    press(&form, Qt::Key_W);
    EXPECT_EQ(s.FTWP[1].Traversed, 1);
    EXPECT_FLOAT_EQ(s.FlytroughSta, s.FTWP[1].Sta);
    eyeOfCamera(eye);
    EXPECT_NEAR(eye[0] + OC(0), path[1].X, 1e-6);
    EXPECT_NEAR(eye[1] + OC(1), path[1].Y, 1e-6);
    EXPECT_NEAR(eye[2] + OC(2), path[1].Z, 1e-6);
    screenshot(surface, "flythrough_after_w");

    chooseMenuItem(form, "ShowFlytroughwaypints1");
    EXPECT_EQ(dialogs.questions().back().title, "10 Flytrough waypoints (10)");
    const QStringList rows =
        QString::fromStdString(testsupport::readTextFile(sessionPaths().ORVO_T + "FTWP.csv")).split('\n');
    ASSERT_EQ(rows.size(), 12);
    EXPECT_EQ(rows[0], "Sta,DH,Pitch,FOV,Azim,Skew,Traversed");
    // The way point W reached: its station, the settings carried to it, reached once.
    const QStringList second = rows[2].split(',');
    ASSERT_EQ(second.size(), 7);
    EXPECT_EQ(second[0], QString::asprintf("%.2f", double(s.FTWP[1].Sta)));
    EXPECT_EQ(second.mid(1, 3), (QStringList{"0", "-45", "80"}));
    EXPECT_EQ(second.mid(5), (QStringList{"0.0", "1"}));
    EXPECT_TRUE(rows[3].endsWith(",0")) << rows[3].toStdString();

    // Unchecked, the walk ends and the default camera returns.
    chooseMenuItem(form, "FlytroughVieport");
    EXPECT_EQ(dispatchState().KamaFTWP, 0);
    EXPECT_EQ(cameraState().activeCameraID, 0);
}
