// Facade photographs: a container built by exiftool and the mesh from
// tagged pictures (near and blind cameras renamed away), read back from a
// moved folder, the nearest photograph of a point, and circular browsing.
#include <QDir>
#include <QFile>
#include <QProcess>

#include "ObliqueFixture.h"
#include "geo/GeoConversions.h"
#include "oblique/FacadeContainer.h"
#include "oblique/FacadeStore.h"
#include "oblique/FacadeView.h"
#include "scene/engine_interface.h"
#include "support/SceneBuilders.h"

using testsupport::readTextFile;
using testsupport::writeTextFile;

namespace {

constexpr double EAST = 612000, NORTH = 3612000;

class Facades : public ObliqueFixture {
protected:
    void SetUp() override {
        ObliqueFixture::SetUp();
        resetFacadeState();
        modelSession().GlobalModelFileName = dir.path("site/Model.obj");
        QDir().mkpath(QString::fromStdString(dir.path("site/FACADES/day1")));
    }
    void useUtmZone36() {
        testsupport::writePrjOfEpsg(dir.path("site/Model.prj"), 32636);
        ASSERT_TRUE(LoadGlobalCS(dir.path("site/Model.prj")));
        geoState().GlobalGeoidalSeparation = 0;
        geoState().GlobalGeoidalSeparationSet = true;
    }
    // A picture taken from the map point (east, north, 10) looking along azimuth, level.
    QString picture(const char* name, double east, double north, double azimuth) {
        const QString path = QString::fromStdString(dir.path(std::string("site/FACADES/") + name));
        EXPECT_TRUE(QFile::copy(ZV_SOURCE_DIR "/samples/site/DemoSite.jpg", path));
        double lat = 0, lon = 0;
        GPSEastNorth2LatLon(east, north, lat, lon);
        EXPECT_EQ(QProcess::execute("exiftool",
                                    {"-q", "-overwrite_original", "-Model=M3E", QString::asprintf("-GPSLatitude=%.10f", lat),
                                     "-GPSLatitudeRef=N", QString::asprintf("-GPSLongitude=%.10f", lon),
                                     "-GPSLongitudeRef=E", QString::asprintf("-XMP-drone-dji:GimbalYawDegree=%.1f", azimuth),
                                     "-XMP-drone-dji:GimbalPitchDegree=0", "-XMP-drone-dji:AbsoluteAltitude=+10", path}),
                  0);
        return path;
    }
    static QString row(const QString& picture, double x, double y, double z, double ox, double oy, double oz) {
        return QString::asprintf(" ,%s,%.2f,%.2f,%.2f,%.2f,%.2f,%.2f,90.0,10.0,0.0", picture.toUtf8().constData(), x, y,
                                 z, ox, oy, oz);
    }
};

}  // namespace

TEST_F(Facades, AContainerKeepsThePicturesThatSeeAWallFromOneToThirtyUnits) {
    useUtmZone36();
    // A model with an offset: the wall stands at local x 20, map east EAST + 20.
    frameState().Offset[0] = 100;
    frameState().OriginalobjectCenter[0] = EAST - 100;
    frameState().OriginalobjectCenter[1] = NORTH;
    testsupport::addLayer(testsupport::makeWallX("wall", 20, -50, 50, 0, 30));
    const QString seeing = picture("a.jpg", EAST + 10, NORTH, 90);
    const QString tooNear = picture("b.jpg", EAST + 19.5, NORTH, 90);
    const QString blind = picture("c.jpg", EAST + 10, NORTH, 270);

    EXPECT_EQ(CreateFacadesContainer(), "FACADES");
    EXPECT_EQ(readTextFile(dir.path("site/FACADES/FACADES.FAC")),
              "0000,Image,X,Y,Z,OX,OY,OZ,Azim,Dis to object,Pitch\n" +
                  row(seeing, EAST + 10, NORTH, 10, EAST + 20, NORTH, 10).toStdString() + "\n");
    EXPECT_EQ(dialogs.questions().back().text,
              "1 Images saved 2 skept to " + QString::fromStdString(dir.path("site/FACADES/FACADES.FAC")));
    EXPECT_FALSE(QFile::exists(tooNear));
    EXPECT_TRUE(QFile::exists(QString::fromStdString(dir.path("site/FACADES/b.jpeg"))));
    EXPECT_TRUE(QFile::exists(QString::fromStdString(dir.path("site/FACADES/c.jpeg"))));
    EXPECT_TRUE(QDir(QString::fromStdString(dir.path("site/FACADES"))).entryList({"*.!!!"}).isEmpty());
}

TEST_F(Facades, AMovedContainerFindsItsPicturesAndBrowsingSkipsTheFirstRow) {
    writeTextFile(dir.path("site/FACADES/FACADES.FAC"),
                  "0000,Image,X,Y,Z,OX,OY,OZ,Azim,Dis to object,Pitch\n"
                  " ,D:\\Old\\FACADES\\p0.jpg,0.00,0.00,5.00,10.00,0.00,7.00,90.0,10.0,0.0\n"
                  " ,D:\\Old\\FACADES\\p1.jpg,0.00,10.00,5.00,10.00,10.00,7.00,90.0,10.0,0.0\n"
                  " ,D:\\Old\\FACADES\\p2.jpg,0.00,20.00,5.00,10.00,20.00,9.00,90.0,10.0,0.0\n");
    EXPECT_EQ(LoadFacades(), 3);
    EXPECT_EQ(modelSession().KamaFacades, 3);
    EXPECT_EQ(At3d_MeasureList_Get_Count(), 3);
    const QString folder = QString::fromStdString(dir.path("site/FACADES/"));

    double dxy = 0, dz = 0;
    EXPECT_EQ(FindRelevantFacade(TGIS_Point3D{11, 19, 8, 0}, dxy, dz), folder + "p2.jpg");
    EXPECT_DOUBLE_EQ(dxy, 10);
    EXPECT_DOUBLE_EQ(dz, 9);
    EXPECT_DOUBLE_EQ(facadeState().Facade1Z, 9);
    // Midway between two targets the later row wins.
    EXPECT_EQ(FindRelevantFacade(TGIS_Point3D{10, 5, 7, 0}, dxy, dz), folder + "p1.jpg");

    facadeState().THE_JPG = folder + "P2.JPG";
    EXPECT_EQ(FindNextFacade(1, 0), folder + "p1.jpg");
    EXPECT_DOUBLE_EQ(facadeState().Facade1Z, 5);
    facadeState().THE_JPG = folder + "p1.jpg";
    EXPECT_EQ(FindNextFacade(-1, 0), folder + "p1.jpg");
    facadeState().THE_JPG = folder + "p0.jpg";
    EXPECT_EQ(FindNextFacade(1, 0), "");
}

TEST_F(Facades, NoFacadesFolderMeansNoFacades) {
    QDir(QString::fromStdString(dir.path("site/FACADES"))).removeRecursively();
    EXPECT_EQ(LoadFacades(), 0);
    double dxy = 0, dz = 0;
    EXPECT_EQ(FindRelevantFacade(TGIS_Point3D{0, 0, 0, 0}, dxy, dz), "");
}

TEST_F(Facades, ShowOnModelLooksFromThirtyUnitsBehindTheCamera) {
    facadeState().Facade1X = 0, facadeState().Facade1Y = 0, facadeState().Facade1Z = 5;
    facadeState().Facade2X = 10, facadeState().Facade2Y = 0, facadeState().Facade2Z = 5;
    At3d_SetCameraFieldOfView(0, 45);
    EXPECT_TRUE(ShowFacadeOnModel());
    EXPECT_EQ(readTextFile(sessionPaths().ORVO_T + "Facade.vpt"),
              "7.000000 45.000000\n-30.000000 0.000000 8.000000\n0.000000 0.000000 90.000000\n");
}
