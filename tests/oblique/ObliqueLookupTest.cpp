// The lookup of a click: the azimuth filter, the pixel test and the rank by
// distance from the picture's centre; the OPK list's near cameras; and the
// report of the cameras that really see the point.
#include <gtest/gtest.h>

#include "CatalogueWriter.h"
#include "ObliqueFixture.h"
#include "oblique/ObliqueLookup.h"
#include "oblique/ObliqueCatalogue.h"
#include "support/SceneBuilders.h"

using testsupport::readTextFile;
using testsupport::writeTextFile;

namespace {

// A 400 m ground at map height 40 with the model centre far from the
// origin, and catalogues of nadir cameras 100 m above it (50 mm lens, 100
// pixels a millimetre, 3600 x 2400 pixels): a camera d metres east of the
// point sees it 50 d pixels left of the centre.
class Lookup : public ObliqueFixture {
protected:
    static constexpr double CX = 180000, CY = 660000, CZ = 40;
    QStringList shown;
    int closed = 0;

    void SetUp() override {
        ObliqueFixture::SetUp();
        testsupport::addLayer(testsupport::makeSquare("ground", 0, 0, 0, 400));
        FrameState& f = frameState();
        f.OriginalobjectCenter[0] = CX;
        f.OriginalobjectCenter[1] = CY;
        f.OriginalobjectCenter[2] = CZ;
        obliqueHooks().showObliqueBigWindow = [this](int index, int uid) {
            shown << QString::asprintf("%d %d %s", index, uid,
                                       QFileInfo(obliqueStore().OOO[index].Proj).fileName().toUtf8().constData());
        };
        obliqueHooks().closeObliqueWindow = [this] { ++closed; };
    }
    std::string cat() const { return dir.path("site/obl/c1/oblixoblix.shp"); }
    TestShot nadir(const std::string& name, double east, double north, int incl, int azimuth) {
        TestShot s = shotAt(name, CX, CY, 50);
        s.qxorg = CX + east, s.qyorg = CY + north, s.qzorg = CZ + 100;
        s.inclination = incl;
        s.azimuth = azimuth;
        touch(dir.path("site/obl/c1/" + name));
        return s;
    }
    void open(const std::vector<TestShot>& shots) {
        writeCatalogue(cat(), shots);
        writeTextFile(dir.path("site/OblixOblix.txt"), cat() + "\n");
        obliqueStore().OBLIXOBLIXTXT = QString::fromStdString(dir.path("site/OblixOblix.txt"));
        AnalyzeExtentOfoblixOblix();
    }
    QStringList ranked() const {
        QStringList names;
        for (int i = 0; i < obliqueStore().relevants; ++i)
            names << QFileInfo(obliqueStore().OOO[i].Proj).completeBaseName();
        return names;
    }
};

}  // namespace

TEST_F(Lookup, PhotographsRankByTheirPointsDistanceFromThePictureCentre) {
    open({nadir("A.jpg", 3, 0, 90, 0),       // 150 pixels
          nadir("B.jpg", 0, 1, 85, 0),       // 50 pixels
          nadir("C.jpg", 30, 0, 90, 0),      // 1500 pixels, inside the half width of 1800
          nadir("D.jpg", 40, 0, 90, 0),      // 2000 pixels: outside the picture
          nadir("E.jpg", 0, 0, 45, 200),     // looks away from the view
          nadir("F.jpg", 2, 0, 80, 200),     // looks away, but 80 degrees steep passes
          nadir("G.jpg", 0, 0, 45, 30),      // 40 degrees off the view: not within
          nadir("H.jpg", -7, 0, 45, 20)});   // 30 degrees off the view, 350 pixels
    cameraState().cameraZAngle = -10;
    StretchOblique(TGIS_Point3D{CX, CY, CZ, 0});

    EXPECT_EQ(ranked(), (QStringList{"B", "F", "A", "H", "C"}));
    EXPECT_EQ(mainFormState().statusTexts[2], " 8 Oblique images. Azimuth 350  5 relevants   ");
    EXPECT_EQ(shown, QStringList{"0 -9 B.jpg"});
}

TEST_F(Lookup, AScaledModelIsLookedUpAtTheUnscaledPoint) {
    open({nadir("A.jpg", 3, 0, 90, 0)});
    frameState().SCALE = 2;
    // Twice as far from the centre as the photographed point.
    StretchOblique(TGIS_Point3D{CX + 10, CY - 4, CZ, 0});
    EXPECT_DOUBLE_EQ(obliqueStore().ForOBLIpoint.X, CX + 5);
    EXPECT_DOUBLE_EQ(obliqueStore().ForOBLIpoint.Y, CY - 2);
    ASSERT_EQ(obliqueStore().relevants, 1);
}

TEST_F(Lookup, ALocalModelIgnoresTheViewDirection) {
    open({nadir("E.jpg", 0, 0, 45, 200)});
    StretchOblique(TGIS_Point3D{CX, CY, CZ, 0});
    EXPECT_EQ(obliqueStore().relevants, 0);
    EXPECT_EQ(closed, 1);
    EXPECT_TRUE(shown.isEmpty());

    resetObliqueStore();
    frameState().OriginalobjectCenter[0] = 4000;
    frameState().OriginalobjectCenter[1] = 5000;
    // The same photograph and point in a model near the origin.
    open({[this] {
        TestShot s = nadir("E.jpg", 0, 0, 45, 200);
        s.x0 -= CX - 4000, s.x1 -= CX - 4000, s.y0 -= CY - 5000, s.y1 -= CY - 5000;
        s.qxorg = 4000, s.qyorg = 5000;
        return s;
    }()});
    StretchOblique(TGIS_Point3D{4000, 5000, CZ, 0});
    EXPECT_EQ(ranked(), QStringList{"E"});
}

TEST_F(Lookup, OpkCamerasWithin15UnitsAndTenDegreesOfTheViewAreListedInFileOrder) {
    // Cameras south of the point looking north; the view is north.
    const auto line = [](const char* name, double x, double y, double tx, double ty, int rotation) {
        return QString::asprintf("%s %lf %lf 45.000000 %lf %lf 44.000000 0 -6 1.00   0.00 10.00 -1.00 10.00 %d", name,
                                 x, y, tx, ty, rotation);
    };
    ObliqueStore& store = obliqueStore();
    store.TSOPK = {line("P1", CX, CY - 15, CX + 1.74, CY - 5.15, 90),          // 15 away, 10.02 degrees
                   line("P2", CX, CY - 15.01, CX, CY - 5, 0),                  // just beyond 15
                   line("P3", CX + 1, CY - 5, CX + 2.94, CY + 4.81, 0),         // 11.19 degrees
                   line("P4", CX - 3, CY - 4, CX - 3, CY + 6, 180),             // straight north
                   line("P5", CX - 1, CY - 1, CX - 1, CY + 9, 0)};              // no picture
    for (const char* name : {"P1.jpg", "P2.jpg", "P3.jpg", "P4.JPG"}) touch(dir.path(std::string("site/OBLIXS/") + name));
    store.DIR_OPK = QString::fromStdString(dir.path("site/OBLIXS/"));
    modelSession().KamaOPK = store.TSOPK.size();

    StretchOblique(TGIS_Point3D{CX, CY, CZ, 0});
    EXPECT_EQ(ranked(), (QStringList{"P1", "P4"}));
    const OBLIQUE& first = store.OOO[0];
    EXPECT_FLOAT_EQ(first.fpc, -15);
    EXPECT_EQ(first.RotationDeg, 90);
    EXPECT_EQ(first.Azimuth, 10);
    EXPECT_DOUBLE_EQ(first.Qyorg, CY - 15);
    EXPECT_FLOAT_EQ(first.Qzorg, 45);
    EXPECT_NEAR(store.OOO[1].fpc, -5, 1e-6);
    EXPECT_EQ(mainFormState().statusTexts[2], " 5 images. Azimuth 0  2 relevants");
    EXPECT_EQ(shown, QStringList{"0 -9 P1.jpg"});
}

TEST_F(Lookup, OnlyCamerasWithAFreeLineToThePointAreCounted) {
    // A wall 20 m east of the point, 30 m high, between it and a low camera.
    testsupport::addLayer(testsupport::makeWallX("wall", 20, -100, 100, -10, 30));
    TestShot seen = nadir("strip1!IMG_1.jpg", 0, -100, 45, 0);
    TestShot hidden = nadir("IMG_2.jpg", 100, 0, 45, 0);
    hidden.qzorg = CZ + 10;
    open({seen, hidden});
    ASSERT_EQ(modelSession().KamaOblique, 2);

    const QString file = CountRelevantObliquesClick(TGIS_Point3D{CX, CY, CZ, 0});
    // 141.42 m to the camera; 0.01 mm a pixel x 141.42 m / 50 mm = 2.83 cm a pixel.
    EXPECT_EQ(readTextFile(file.toStdString()), "Distance,Res (cm/pix) ,Image\n  141.42     2.83    IMG_1.jpg\n");
    EXPECT_EQ(file, QString::fromStdString(sessionPaths().ORVO_T + "txt.txt"));
    EXPECT_EQ(mainFormState().statusTexts[2], "180000.00 660000.00 40.00  Visible from 1 Cameras out of 2");
}

TEST_F(Lookup, EqualDistancesFollowTheTextOrderOfThePlaces) {
    std::vector<TestShot> shots;
    for (int i = 0; i < 11; ++i) shots.push_back(nadir("N" + std::to_string(i) + ".jpg", 0, 0, 90, 0));
    open(shots);
    StretchOblique(TGIS_Point3D{CX, CY, CZ, 0});
    EXPECT_EQ(ranked(), (QStringList{"N0", "N1", "N10", "N2", "N3", "N4", "N5", "N6", "N7", "N8", "N9"}));
}

TEST_F(Lookup, AFlippedModelTakesNoAzimuthFilter) {
    open({nadir("E.jpg", 0, 0, 45, 200)});
    modelSession().FLIPPED = true;
    StretchOblique(TGIS_Point3D{CX, CY, CZ, 0});
    EXPECT_EQ(ranked(), QStringList{"E"});
}
