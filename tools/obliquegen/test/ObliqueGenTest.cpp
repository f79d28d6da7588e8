// The generated photographs against the catalogue: a marker at a known
// point of the demo site, drawn into each picture by the same path the
// generator takes, must stand where Ob_World2Pic of the catalogue's record
// (read back by the viewer's reader) puts that point; each facade camera
// must see the tall block's wall within the distances a container keeps; and
// the site's bundled catalogue must hold the generator's cameras.
#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>
#include <array>
#include <cmath>
#include <memory>
#include <ogrsf_frmts.h>

#include "CatalogueFile.h"
#include "DemoFlight.h"
#include "PhotoRenderer.h"
#include "app/model/ModelOpening.h"
#include "geo/Frames.h"
#include "measure/Measuring.h"
#include "oblique/ObliqueCatalogue.h"
#include "oblique/ObliqueGeometry.h"
#include "scene/engine_interface.h"

namespace {

// Corners and ends of the site's buildings, file frame.
constexpr double kPoints[][3] = {
    {44, -14, 65.04},    // tall block, north-east roof corner
    {30, -26, 65.04},    // tall block, south-west roof corner
    {22, 0, 52.09},      // flat roof, north-east parapet corner
    {8, -10, 52.09},     // flat roof, south-west parapet corner
    {-25.35, 10, 50.129},  // house, west end of the ridge
    {-14.65, 10, 50.129},  // house, east end of the ridge
};

class ObliqueGen : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        static int argc = 1;
        static char name[] = "zv_obliquegen_test";
        static char* argv[] = {name, nullptr};
        static QGuiApplication* application = new QGuiApplication(argc, argv);
        (void)application;
        At3d_Start();
        OpenedModel opened;
        ASSERT_TRUE(OpenModelHeadless(ZV_SOURCE_DIR "/samples/site/DemoSite.obj", opened));
        At3d_WriteFlag(LIBFLAG_USE_TEXTURES, 1);
    }

    // The marker: a point drawn over everything, in a colour the site has nowhere.
    static void markAt(const double map[3]) {
        At3d_MeasureList_Clear();
        const float magenta[3] = {1, 0, 1};
        At3d_MeasureList_Set_Parameters(magenta, magenta, magenta, 1, 5, 0, 1);
        At3d_WriteFlag(LIBFLAG_SHOW_MEASURES, 1);
        double local[3];
        for (int i = 0; i < 3; ++i) local[i] = map[i] - OC(i);
        ASSERT_TRUE(At3d_MeasureList_Add_Item("marker", 1, 0, 0, 1, magenta, local, local, local, local));
    }

    // Centre of the marker's pixels in picture coordinates (Y upwards); false when none.
    static bool markerCentre(const QImage& picture, double& px, double& py) {
        double sx = 0, sy = 0;
        int count = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) {
                const QRgb c = picture.pixel(x, y);
                if (qRed(c) > 180 && qGreen(c) < 90 && qBlue(c) > 180) {
                    sx += x + 0.5;
                    sy += y + 0.5;
                    ++count;
                }
            }
        if (count == 0) return false;
        px = sx / count;
        py = -sy / count;
        return true;
    }
};

}  // namespace

TEST_F(ObliqueGen, EveryPictureShowsAPointWhereItsCatalogueRecordProjectsIt) {
    const double* offset = frameState().Offset;
    const std::vector<PhotoCamera> cameras = demoObliqueCameras(offset);
    QTemporaryDir dir;
    const std::string shp = dir.filePath("oblixoblix.shp").toStdString();
    ASSERT_TRUE(writeObliqueCatalogue(shp, cameras, kDemoGroundZ, FlightDate{}, ""));
    GDALDataset* ds = static_cast<GDALDataset*>(GDALOpenEx(shp.c_str(), GDAL_OF_VECTOR, nullptr, nullptr, nullptr));
    ASSERT_NE(ds, nullptr);

    PhotoRenderer renderer;
    ASSERT_TRUE(renderer.open());
    double origin[3];
    for (int i = 0; i < 3; ++i) origin[i] = OC(i);
    // And ground points towards the pictures' corners, where the lens terms are largest.
    std::vector<std::array<double, 3>> points;
    for (const auto& p : kPoints) points.push_back({p[0], p[1], p[2]});
    for (const double x : {-45.0, 0.0, 45.0})
        for (const double y : {-45.0, 0.0, 45.0})
            points.push_back({x, y, GetZFromXY(x + offset[0], y + offset[1]) - offset[2]});
    double lensShift = 0;
    int checked = 0;
    for (std::size_t k = 0; k < cameras.size(); ++k) {
        const PhotoCamera& camera = cameras[k];
        OGRFeature* feature = ds->GetLayer(0)->GetFeature(GIntBig(k));
        ASSERT_NE(feature, nullptr);
        ObliqueShape shape{std::shared_ptr<OGRFeature>(feature, OGRFeature::DestroyFeature),
                           QString::fromStdString(shp), int(k) + 1};
        const OBLIQUE O = OGetFromShp(-1, &shape);
        OBLIQUE ideal = O;
        ideal.RadialK1 = 0;
        for (const auto& point : points) {
            const double map[3] = {point[0] + offset[0], point[1] + offset[1], point[2] + offset[2]};
            double px, py, ix, iy;
            Ob_World2Pic(map[0], map[1], map[2], O, px, py);
            // Away from the edge, where the lens terms apply and the marker is whole.
            if (px < 20 || px > O.Width - 20 || py < -O.Height + 20 || py > -20) continue;
            Ob_World2Pic(map[0], map[1], map[2], ideal, ix, iy);
            if (O.RadialK1 != 0) lensShift = std::max(lensShift, std::hypot(px - ix, py - iy));
            markAt(map);
            const QImage picture = renderer.take(camera, origin);
            ASSERT_EQ(picture.size(), QSize(camera.width, camera.height));
            double mx, my;
            ASSERT_TRUE(markerCentre(picture, mx, my)) << camera.name << " " << point[0] << " " << point[1];
            EXPECT_NEAR(mx, px, 1.5) << camera.name << " " << point[0] << " " << point[1];
            EXPECT_NEAR(my, py, 1.5) << camera.name << " " << point[0] << " " << point[1];
            ++checked;
        }
    }
    At3d_MeasureList_Clear();
    GDALClose(ds);
    // Most points in most pictures, and the lens terms moved them visibly.
    EXPECT_GE(checked, 40);
    EXPECT_GT(lensShift, 2.0);
}

TEST_F(ObliqueGen, EachFacadeCameraSeesTheTallBlockWithinTheContainersDistances) {
    // The line of sight takes points without the map offset.
    const double* offset = frameState().Offset;
    for (const PhotoCamera& c : demoFacadeCameras(offset)) {
        const double eye[3] = {c.eye[0] - offset[0], c.eye[1] - offset[1], c.eye[2] - offset[2]};
        const double a = c.azimuth() * 3.141592654 / 180, pitch = -c.inclination() * 3.141592654 / 180;
        const double far[3] = {eye[0] + 30 * std::sin(a), eye[1] + 30 * std::cos(a), eye[2] + 30 * std::tan(pitch)};
        double hit[3];
        const double distance = GetObstruction(eye, far, hit, 0.3);
        EXPECT_GE(distance, 1) << c.name;
        EXPECT_LE(distance, 30) << c.name;
        // The hit lies on the block's south or east wall.
        EXPECT_TRUE(std::fabs(hit[1] - -26) < 0.05 || std::fabs(hit[0] - 44) < 0.05) << c.name;
    }
}

TEST_F(ObliqueGen, TheBundledCatalogueHoldsTheCamerasOfTheGenerator) {
    // A change of the flight without a new run of the generator leaves the site's pictures stale.
    const std::string shp = ZV_SOURCE_DIR "/samples/site/OBLIQUE/Flight_0611/oblixoblix.shp";
    GDALDataset* ds = static_cast<GDALDataset*>(GDALOpenEx(shp.c_str(), GDAL_OF_VECTOR, nullptr, nullptr, nullptr));
    ASSERT_NE(ds, nullptr);
    const std::vector<PhotoCamera> cameras = demoObliqueCameras(frameState().Offset);
    ASSERT_EQ(ds->GetLayer(0)->GetFeatureCount(), GIntBig(cameras.size()));
    for (std::size_t k = 0; k < cameras.size(); ++k) {
        const PhotoCamera& c = cameras[k];
        ObliqueShape shape{std::shared_ptr<OGRFeature>(ds->GetLayer(0)->GetFeature(GIntBig(k)), OGRFeature::DestroyFeature),
                           QString::fromStdString(shp), int(k) + 1};
        ASSERT_NE(shape.feature, nullptr);
        const OBLIQUE O = OGetFromShp(-1, &shape);
        EXPECT_TRUE(QFileInfo::exists(O.Proj)) << O.Proj.toStdString();
        EXPECT_NEAR(O.Qxorg, c.eye[0], 1e-6);
        EXPECT_NEAR(O.Qyorg, c.eye[1], 1e-6);
        EXPECT_NEAR(O.Qzorg, c.eye[2], 1e-4);
        double q[9];
        c.matrix(q);
        const double read[9] = {O.q11, O.q12, O.q13, O.q21, O.q22, O.q23, O.q31, O.q32, O.q33};
        for (int i = 0; i < 9; ++i) EXPECT_NEAR(read[i], q[i], 1e-12) << c.name << " q" << i;
        EXPECT_FLOAT_EQ(O.QPicX0, float(c.width / 2 + c.principalX));
        EXPECT_FLOAT_EQ(O.QPicY0, float(-(c.height / 2) + c.principalY));
        EXPECT_EQ(O.RadialK1, c.k[0]);
    }
    GDALClose(ds);
}
