// Reading oblique catalogues: the camera of a shape, the running numbers of
// the folders, the candidates of a point and the search at model load.
#include <gtest/gtest.h>

#include "CatalogueWriter.h"
#include "ObliqueFixture.h"
#include "oblique/ObliqueCatalogue.h"

using testsupport::readTextFile;
using testsupport::writeTextFile;

namespace {

class Catalogue : public ObliqueFixture {
protected:
    std::string cat(const std::string& folder) const { return dir.path("site/obl/" + folder + "/oblixoblix.shp"); }
    std::string pic(const std::string& folder, const std::string& name) const {
        return dir.path("site/obl/" + folder + "/" + name);
    }
    void list(const std::vector<std::string>& lines) {
        std::string text;
        for (const std::string& line : lines) text += line + "\n";
        writeTextFile(dir.path("site/OblixOblix.txt"), text);
        obliqueStore().OBLIXOBLIXTXT = QString::fromStdString(dir.path("site/OblixOblix.txt"));
    }
    // The first shape of a file, as the lookup hands it on.
    OBLIQUE firstShape(const std::string& shapeFile) {
        GDALDataset* ds = ObliqueLayer(QString::fromStdString(shapeFile));
        EXPECT_NE(ds, nullptr);
        OGRFeature* f = ds->GetLayer(0)->GetFeature(0);
        const ObliqueShape shape{std::shared_ptr<OGRFeature>(f, OGRFeature::DestroyFeature),
                                 QString::fromStdString(shapeFile), 1};
        return OGetFromShp(-1, &shape);
    }
};

}  // namespace

TEST_F(Catalogue, AShapeGivesItsCameraLessTheStoredOffset) {
    TestShot s = shotAt("a.jpg", 1000, 2000);
    s.qxorg = 1000.5, s.qyorg = 1850.25, s.qzorg = 300;
    // 150 m in plan and 100 m down to the target: atan(2/3) = 33.69, rounded 34,
    // which outranks the stored 70.
    s.qxtarg = 1000.5, s.qytarg = 2000.25, s.qztarg = 200;
    s.inclination = 70;
    s.width = 3601, s.height = 2401, s.qwmm = 36.01;
    s.pxo = 0.1, s.pyo = -0.2;
    s.rotation = 90, s.azimuth = 17, s.ravia = 3;
    writeCatalogue(cat("c1"), {s});
    touch(pic("c1", "a.jpg"));
    touch(pic("c1", "a.ecw"));
    list({cat("c1")});
    ASSERT_EQ(AnalyzeExtentOfoblixOblix(), 1);

    const OBLIQUE O = O8Get(0);
    EXPECT_EQ(O.PseudoGlobalUid, 0);
    EXPECT_EQ(O.PseudoIndex, -9);
    EXPECT_EQ(O.Proj, QString::fromStdString(pic("c1", "a.ecw")));
    EXPECT_DOUBLE_EQ(O.Qxorg, 1000.5);
    EXPECT_DOUBLE_EQ(O.Qyorg, 1850.25);
    EXPECT_FLOAT_EQ(O.Qzorg, 300);
    EXPECT_DOUBLE_EQ(O.Qxtarg, 1000.5);
    EXPECT_DOUBLE_EQ(O.Qytarg, 2000.25);
    EXPECT_FLOAT_EQ(O.Qztarg, 200);
    EXPECT_EQ(O.Incl, 34);
    EXPECT_EQ(O.Year, 2023);
    EXPECT_EQ(O.Month, 5);
    EXPECT_EQ(O.Day, 14);
    EXPECT_EQ(O.RotationDeg, 90);
    EXPECT_EQ(O.Azimuth, 17);
    EXPECT_EQ(O.Ravia, 3);
    EXPECT_EQ(O.MMount, 0);
    EXPECT_EQ(O.RadialK1, 0);
    // Halves towards zero: 3601 / 2 = 1800, -2401 / 2 = -1200; 100 pixels a millimetre.
    EXPECT_FLOAT_EQ(O.QPicX00, 1800);
    EXPECT_FLOAT_EQ(O.QPicY00, -1200);
    EXPECT_NEAR(O.QScale, 100, 1e-3);
    EXPECT_NEAR(O.QPicX0, 1810, 1e-3);
    EXPECT_NEAR(O.QPicY0, -1220, 1e-3);
    EXPECT_FLOAT_EQ(O.Xmax, 3601);
    EXPECT_FLOAT_EQ(O.Ymin, -2401);
    // The ring's first four points, clockwise from the south-west corner.
    for (int i = 0; i < 4; ++i) {
        EXPECT_FLOAT_EQ(O.FPX[i], i < 2 ? 995 : 1005);
        EXPECT_FLOAT_EQ(O.FPY[i], i == 0 || i == 3 ? 1995 : 2005);
    }
    EXPECT_DOUBLE_EQ(O.OX0, 995);
    EXPECT_DOUBLE_EQ(O.OY1, 2005);
}

TEST_F(Catalogue, WithoutATargetTheStoredInclinationOr45Stands) {
    TestShot s = shotAt("a.jpg", 0, 0);
    s.inclination = 70;
    s.camera = 4;
    s.k1 = 1e-4, s.k2 = 2e-6, s.k3 = -3e-9;
    writeCatalogue(cat("c1"), {s}, {.inclination = true, .lens = true, .camera = true});
    writeCatalogue(cat("c2"), {s}, {.inclination = false});
    const OBLIQUE withField = firstShape(cat("c1"));
    EXPECT_EQ(withField.Incl, 70);
    EXPECT_EQ(withField.MMount, 4);
    EXPECT_DOUBLE_EQ(withField.RadialK1, 1e-4);
    EXPECT_DOUBLE_EQ(withField.RadialK3, -3e-9);
    EXPECT_EQ(firstShape(cat("c2")).Incl, 45);
}

TEST_F(Catalogue, FoldersGetRunningNumbersOfTheirExistingPictures) {
    TestShot a = shotAt("a.jpg", 100, 100), b = shotAt("b.jpg", 120, 100), c = shotAt("sub/c.jpg", 140, 130);
    b.year = 2021;
    writeCatalogue(cat("c1"), {a, b, c});
    touch(pic("c1", "a.jpg"));
    touch(pic("c1", "sub/c.jpg"));
    writeCatalogue(cat("c2"), {shotAt("x.jpg", 0, 0), shotAt("y.jpg", 0, 0)});
    writeCatalogue(cat("c3"), {shotAt("z.jpg", 0, 0)});
    touch(pic("c3", "z.jpg"));
    list({cat("c1"), dir.path("site/obl/gone/oblixoblix.shp"), cat("c2"), cat("c3")});

    EXPECT_EQ(AnalyzeExtentOfoblixOblix(), 3);
    EXPECT_EQ(modelSession().KamaOblique, 3);
    ASSERT_EQ(modelSession().KamaOblixExtents, 3);
    const auto& e = obliqueStore().OblixExtents;
    EXPECT_EQ(e[0].N1, 0);
    EXPECT_EQ(e[0].N2, 1);
    EXPECT_EQ(e[0].Nimages, 2);
    EXPECT_EQ(e[0].FileName, QString::fromStdString(cat("c1")));
    EXPECT_EQ(e[0].FirstDate, "2023/05/14");
    EXPECT_DOUBLE_EQ(e[0].ext.XMin, 95);
    EXPECT_DOUBLE_EQ(e[0].ext.XMax, 145);
    EXPECT_DOUBLE_EQ(e[0].ext.YMax, 135);
    EXPECT_FLOAT_EQ(e[0].area, 50 * 40);
    // A folder without pictures keeps its row: N2 = N1 - 1.
    EXPECT_EQ(e[1].N1, 2);
    EXPECT_EQ(e[1].N2, 1);
    EXPECT_EQ(e[1].Nimages, 0);
    EXPECT_EQ(e[2].N1, 2);
    EXPECT_EQ(e[2].N2, 2);

    // Number 1 is shape 2 of the first folder by the plain rule, though its picture is missing.
    EXPECT_EQ(O8Get(1).Proj, QString::fromStdString(pic("c1", "b.jpg")));
    EXPECT_EQ(O8Get(1).Year, 2021);
    EXPECT_EQ(O8Get(2).Proj, QString::fromStdString(pic("c3", "z.jpg")));
    EXPECT_EQ(GetObliqueShape(3), nullptr);
}

TEST_F(Catalogue, AMissingListLeavesEverythingAsItWas) {
    obliqueStore().OBLIXOBLIXTXT = QString::fromStdString(dir.path("site/OblixOblix.txt"));
    modelSession().KamaOblique = 7;
    EXPECT_EQ(AnalyzeExtentOfoblixOblix(), 0);
    EXPECT_EQ(modelSession().KamaOblique, 7);
}

TEST_F(Catalogue, CandidatesMeetA20UnitBoxAndComeOnceWithTheirGlobalNumbers) {
    const double X = 5000, Y = 6000;
    // Footprints reaching to 9.5 units from the point are met, from 10.5 not.
    TestShot near = shotAt("near.jpg", X + 14.5, Y, 5), far = shotAt("far.jpg", X + 15.5, Y, 5);
    writeCatalogue(cat("c1"), {shotAt("a.jpg", X, Y), far, shotAt("nopic.jpg", X, Y)});
    touch(pic("c1", "a.jpg"));
    touch(pic("c1", "far.jpg"));
    // The second folder names the first one's picture by its full path.
    writeCatalogue(cat("c2"), {shotAt(pic("c1", "a.jpg"), X, Y), near});
    touch(pic("c2", "near.jpg"));
    list({cat("c1"), cat("c2")});
    AnalyzeExtentOfoblixOblix();

    ASSERT_EQ(GetO8s(TGIS_Point{X, Y}), 2);
    const auto& got = obliqueStore().GotO8;
    EXPECT_EQ(got[0].Proj, QString::fromStdString(pic("c1", "a.jpg")));
    EXPECT_EQ(got[0].PseudoGlobalUid, 0);
    EXPECT_EQ(got[0].PseudoIndex, 0);
    EXPECT_EQ(got[1].Proj, QString::fromStdString(pic("c2", "near.jpg")));
    // Three shapes in the first folder, then shape 2 of the second.
    EXPECT_EQ(got[1].PseudoGlobalUid, 4);
    EXPECT_EQ(got[1].PseudoIndex, 1);
}

TEST_F(Catalogue, ThreeHundredCandidatesCountAs299) {
    std::vector<TestShot> shots;
    for (int i = 0; i < 301; ++i) {
        const std::string name = "p" + std::to_string(i) + ".jpg";
        shots.push_back(shotAt(name, 0, 0));
        touch(pic("c1", name));
    }
    writeCatalogue(cat("c1"), shots);
    list({cat("c1")});
    AnalyzeExtentOfoblixOblix();
    EXPECT_EQ(GetO8s(TGIS_Point{0, 0}), 299);
    EXPECT_EQ(obliqueStore().GotO8[299].PseudoIndex, 299);
}

TEST_F(Catalogue, ModelLoadListsTheCataloguesFoundBelowTheModel) {
    writeTextFile(dir.path("site/Site.obj"), "");
    writeCatalogue(cat("c2"), {shotAt("a.jpg", 0, 0)});
    writeCatalogue(cat("c1"), {shotAt("a.jpg", 0, 0)});
    touch(pic("c1", "a.jpg"));
    touch(pic("c2", "a.jpg"));
    EXPECT_EQ(FindObliqueCatalogues(dir.path("site/Site.obj")), 2);
    EXPECT_EQ(readTextFile(dir.path("site/OblixOblix.txt")), cat("c1") + "\n" + cat("c2") + "\n");
    EXPECT_FALSE(modelSession().INDOOR);
    EXPECT_EQ(modelSession().KamaOblixExtents, 2);
}

TEST_F(Catalogue, AModelWithoutCatalogueIsIndoor) {
    writeTextFile(dir.path("site/Site.obj"), "");
    EXPECT_EQ(FindObliqueCatalogues(dir.path("site/Site.obj")), 0);
    EXPECT_TRUE(modelSession().INDOOR);
    EXPECT_EQ(modelSession().ShowObliques, ", Alt+LClick for INDOOR");
}
