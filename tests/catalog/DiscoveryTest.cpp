// The information file's row, the catalogue table and coverage layer made
// from hand-written information files, the older form's removal, and the
// list of unanalysed models, against text written from the formats.
#include <QFile>
#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include "CatalogFixture.h"
#include "app/services/FileHelpers.h"
#include "catalog/ModelDiscovery.h"
#include "catalog/ModelInf.h"

using Kind = ScriptedDialogService::Question::Kind;

namespace {

std::string infText(const std::string& row) { return std::string(MODEL_INF_HEADER) + "\n" + row + "\n"; }

}  // namespace

TEST_F(CatalogTest, InfRowKeepsOneDecimalForTheExtentAndSixForThePosition) {
    ModelInfRecord r;
    r.Project = "Site";
    r.Model = "/data/Site_model.obj";
    r.Creation = "2023-05-01 10:20:30";
    r.LastAccessed = "2024-01-02 03:04:05";
    const double extent[6] = {178000.04, 178020.07, 663000.26, 663030.74, 39.96, 52};
    std::copy(extent, extent + 6, r.MinMax);
    r.Vertices = 8;
    r.Faces = 12;
    r.Image = "/data/Site_model_INF.JPG";
    r.Comment = "Made by Orvo  ";
    r.Lat = 31.5;
    r.Lon = -34.125;
    EXPECT_EQ(ModelInfRow(r),
              "Site,/data/Site_model.obj,2023-05-01 10:20:30,2024-01-02 03:04:05,178000.0,178020.1,663000.3,"
              "663030.7,40.0,52.0,8,12,/data/Site_model_INF.JPG,Made by Orvo  ,31.500000,-34.125000");
}

TEST_F(CatalogTest, InfNamesReplaceTheExtensionAndTheProjectStopsAtModel) {
    EXPECT_EQ(ModelInfFile("/a.b/Site_model_v2.obj"), "/a.b/Site_model_v2_INF.CSV");
    EXPECT_EQ(ModelInfImage("/a.b/Site"), "/a.b/Site_INF.JPG");
    EXPECT_EQ(ModelInfProject("/a.b/Site_model_v2.obj"), "Site");
    EXPECT_EQ(ModelInfProject("/a.b/Tower.OBJ"), "Tower");
}

// Two analysed models in two folders; the second's file is in lower case.
class Catalogue : public CatalogTest {
protected:
    QString alpha, beta;
    void SetUp() override {
        CatalogTest::SetUp();
        alpha = write("site/a/Alpha.obj", "v 0 0 0\n");
        beta = write("site/b/Beta.obj", "v 0 0 0\n");
        write("site/a/Alpha_INF.CSV",
              infText("Alpha," + alpha.toStdString() +
                      ",2023-01-02 03:04:05,2024-02-03 04:05:06,1000.0,1100.0,2000.0,2300.0,10.0,20.0,8,12," +
                      dir.path("site/a/Alpha_INF.JPG") + ",First  ,31.250000,34.500000"));
        write("site/b/Beta_inf.csv",
              infText("Beta," + beta.toStdString() + ",2022-12-31 23:59:59,2024-03-04 05:06:07,0.0,1001.2,-50.0,-10.0,"
                      "1.0,2.0,4,2," + dir.path("site/b/Beta_INF.JPG") + ",,0.000000,0.000000"));
        catalogState().GlobalWhereSearched3dModels = path("site/");
    }
};

TEST_F(Catalogue, ModelsTableIsWrittenRowByRowFromTheInformationFiles) {
    const QStringList files = FindModelsFromInf();
    ASSERT_EQ(files, (QStringList{path("site/a/Alpha_INF.CSV"), path("site/b/Beta_inf.csv")}));
    EXPECT_EQ(Prepare3DModelsLocation(files), 2);
    EXPECT_EQ(catalogState().FNCSV, orvoT("models.csv"));
    EXPECT_EQ(testsupport::readTextFile(orvoT("models.csv").toStdString()),
              "Project,Created,LastAccessed,Faces,Comment,Model,Lat,Lon,East,North\n"
              "Alpha,2023-01-02 03:04:05,2024-02-03 04:05:06,12,First  ," + alpha.toStdString() +
                  ",31.250000,34.500000,1050,2150\n"
                  "Beta,2022-12-31 23:59:59,2024-03-04 05:06:07,2,," + beta.toStdString() +
                  ",0.000000,0.000000,501,-30\n");
}

TEST_F(Catalogue, CoverageLayerHoldsEachModelsRectangleWithItsFields) {
    ASSERT_EQ(Prepare3DModelsLocation(FindModelsFromInf()), 2);
    GDALAllRegister();
    GDALDataset* data = static_cast<GDALDataset*>(
        GDALOpenEx(orvoT("3DmodelsCoverage.shp").toUtf8().constData(), GDAL_OF_VECTOR, nullptr, nullptr, nullptr));
    ASSERT_NE(data, nullptr);
    OGRLayer* layer = data->GetLayer(0);
    ASSERT_EQ(layer->GetFeatureCount(), 2);
    OGRFeatureDefn* definition = layer->GetLayerDefn();
    ASSERT_EQ(definition->GetFieldCount(), 11);
    const char* names[] = {"Project", "3DModel", "Image", "Creation", "LastAccess", "Zmin",
                           "Zmax",    "Vertices", "Faces", "Color",   "Comment"};
    const int widths[] = {40, 40, 40, 20, 20, 20, 20, 20, 20, 20, 40};
    // Paths longer than their field widen it rather than being cut.
    for (int i = 0; i < 11; ++i) {
        EXPECT_STREQ(definition->GetFieldDefn(i)->GetNameRef(), names[i]);
        if (i == 1 || i == 2)
            EXPECT_GE(definition->GetFieldDefn(i)->GetWidth(), widths[i]) << names[i];
        else
            EXPECT_EQ(definition->GetFieldDefn(i)->GetWidth(), widths[i]) << names[i];
    }
    layer->ResetReading();
    OGRFeature* first = layer->GetNextFeature();
    OGRFeature* second = layer->GetNextFeature();
    ASSERT_TRUE(first && second);
    EXPECT_STREQ(first->GetFieldAsString("Project"), "Alpha");
    EXPECT_EQ(QString(first->GetFieldAsString("3DModel")), alpha);
    EXPECT_STREQ(first->GetFieldAsString("Zmax"), "20.0");
    EXPECT_STREQ(first->GetFieldAsString("Vertices"), "8");
    EXPECT_STREQ(first->GetFieldAsString("Comment"), "First");
    EXPECT_STRNE(first->GetFieldAsString("Color"), second->GetFieldAsString("Color"));
    const auto* line = first->GetGeometryRef()->toLineString();
    ASSERT_EQ(line->getNumPoints(), 5);
    const double expected[5][2] = {{1000, 2000}, {1000, 2300}, {1100, 2300}, {1100, 2000}, {1000, 2000}};
    for (int i = 0; i < 5; ++i) {
        EXPECT_DOUBLE_EQ(line->getX(i), expected[i][0]);
        EXPECT_DOUBLE_EQ(line->getY(i), expected[i][1]);
    }
    OGRFeature::DestroyFeature(first);
    OGRFeature::DestroyFeature(second);
    GDALClose(data);
}

TEST_F(CatalogTest, NeighbouringCoverageColoursDiffer) {
    for (int i = 0; i < 8; ++i) EXPECT_NE(COVERAGE_COLORS[i], COVERAGE_COLORS[(i + 1) % 8]) << i;
}

TEST_F(Catalogue, FifteenFieldFileGoesWithThumbnailIconAndDesktopIni) {
    const QString old = write("site/c/Old.obj", "v 0 0 0\n");
    const std::string image = dir.path("site/c/Old_INF.JPG");
    write("site/c/Old_INF.CSV", infText("Old," + old.toStdString() +
                                        ",2020-01-01 00:00:00,2020-01-01 00:00:00,0.0,1.0,0.0,1.0,0.0,1.0,3,1," +
                                        image + ",,31.0"));
    write("site/c/Old_INF.JPG", "jpeg");
    write("site/c/ICON.ICO", "icon");
    write("site/c/desktop.ini", "[.ShellClassInfo]\n");
    write("site/a/icon.ico", "stays");

    EXPECT_EQ(Prepare3DModelsLocation(FindModelsFromInf()), 2);
    for (const char* gone : {"site/c/Old_INF.CSV", "site/c/Old_INF.JPG", "site/c/ICON.ICO", "site/c/desktop.ini"})
        EXPECT_FALSE(QFile::exists(path(gone))) << gone;
    EXPECT_TRUE(QFile::exists(old));
    EXPECT_TRUE(QFile::exists(path("site/a/icon.ico")));
    EXPECT_FALSE(testsupport::readTextFile(orvoT("models.csv").toStdString()).find("Old,") != std::string::npos);
}

TEST_F(Catalogue, ModelOnAGoneDiskLeavesNoRowAndItsFileStays) {
    QFile::remove(alpha);
    QFile::remove(beta);
    EXPECT_EQ(DoExploreModels(), ExploreOutcome::NoRelevantData);
    EXPECT_EQ(messages(), QStringList{"No relevant data found"});
    EXPECT_TRUE(QFile::exists(path("site/a/Alpha_INF.CSV")));
    EXPECT_EQ(testsupport::readTextFile(orvoT("models.csv").toStdString()), std::string(MODELS_CSV_HEADER) + "\n");
    EXPECT_TRUE(shown.empty());
}

TEST_F(Catalogue, ExploreShowsTheTableSortedOnTheThirdColumn) {
    EXPECT_EQ(DoExploreModels(), ExploreOutcome::Shown);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].caption, "2  Models");
    EXPECT_EQ(shown[0].csvFile, orvoT("models.csv"));
    EXPECT_EQ(shown[0].columns, 9);
    EXPECT_EQ(shown[0].sortColumn, 2);
    EXPECT_TRUE(shown[0].maximized);
}

TEST_F(CatalogTest, ExploreAsksForTheFolderOnceASession) {
    write("site/a/Alpha.obj", "v 0 0 0\n");
    ORVOINI().writeString("Orvo", "Last Drive3D", "/proposed/");
    dialogs.pushText(path("site"));
    EXPECT_EQ(DoExploreModels(), ExploreOutcome::NoFiles);
    EXPECT_EQ(DoExploreModels(), ExploreOutcome::NoFiles);
    EXPECT_EQ(questionsOf(Kind::Input), QStringList{"Browse Folders|Select the master drive/folder"});
    EXPECT_EQ(dialogs.questions().front().value, "/proposed/");
    EXPECT_EQ(messages(), (QStringList{"No 3Dmodels found", "No 3Dmodels found"}));
    EXPECT_EQ(catalogState().GlobalWhereSearched3dModels, path("site/"));
    OrvoIni reread;
    reread.load(dir.path("Orvo.ini"));
    EXPECT_EQ(reread.readString("Orvo", "Last Drive3D", ""), dir.path("site/"));
}

TEST_F(CatalogTest, CancelledFolderFindsNothing) {
    dialogs.pushCancel();
    EXPECT_TRUE(FindModelsFromInf().isEmpty());
    EXPECT_TRUE(catalogState().GlobalWhereSearched3dModels.isEmpty());
}

// Models known by their materials: with and without ".prj", one analysed,
// tiles of a tiled model, a material without its OBJ and an OBJ without one.
class Unanalyzed : public CatalogTest {
protected:
    QString one, two;
    void SetUp() override {
        CatalogTest::SetUp();
        one = write("site/m1/One.obj", "v 0 0 0\n", QDateTime(QDate(2021, 2, 3), QTime(4, 5, 6)));
        write("site/m1/One.mtl", "");
        write("site/m1/one.PRJ", "PROJCS[]");
        two = write("site/m2/Two.OBJ", "v 0 0 0\n", QDateTime(QDate(2020, 1, 1), QTime(0, 0, 0)));
        write("site/m2/Two.mtl", "");
        write("site/m3/Three.obj", "v 0 0 0\n");
        write("site/m3/Three.mtl", "");
        write("site/m3/Three_INF.CSV", "x\n");
        write("site/m4/Tiles/Tile_1.obj", "v 0 0 0\n");
        write("site/m4/Tiles/Tile_1.mtl", "");
        write("site/m4/Part_tile.obj", "v 0 0 0\n");
        write("site/m4/Part_tile.mtl", "");
        write("site/m5/Lonely.mtl", "");
        write("site/m5/NoMaterial.obj", "v 0 0 0\n");
    }
};

TEST_F(Unanalyzed, ListsModelsByMaterialWithTheirPrjAndCountsTheAnalysed) {
    dialogs.pushText(path("site"));
    int analyzed = -1;
    const QStringList list = FindUnopenedModels(analyzed);
    EXPECT_EQ(analyzed, 1);
    EXPECT_EQ(list, (QStringList{"Unanalyzed model", one + ",2021-02-03 04:05:06,Has PRJ",
                                 two + ",2020-01-01 00:00:00,No PRJ"}));
}

TEST_F(Unanalyzed, ClickSavesTheListAndShowsItSortedOnTheSecondColumn) {
    dialogs.pushText(path("site"));
    const QString file = Findunanalyzedmodels1Click();
    EXPECT_EQ(file, orvoT("Unanalyzed_2.csv"));
    EXPECT_EQ(testsupport::readTextFile(file.toStdString()),
              "Unanalyzed model\n" + one.toStdString() + ",2021-02-03 04:05:06,Has PRJ\n" + two.toStdString() +
                  ",2020-01-01 00:00:00,No PRJ\n");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].caption, "1 models already analyzed, 2 not");
    EXPECT_EQ(shown[0].columns, 3);
    EXPECT_EQ(shown[0].sortColumn, 1);
    EXPECT_TRUE(shown[0].selectFirstRow);
}

TEST_F(Unanalyzed, AsksForTheFolderEveryTime) {
    dialogs.pushText(path("site/m3"));
    dialogs.pushText(path("site/m3"));
    EXPECT_TRUE(Findunanalyzedmodels1Click().isEmpty());
    EXPECT_TRUE(Findunanalyzedmodels1Click().isEmpty());
    EXPECT_EQ(questionsOf(Kind::Input).size(), 2);
    EXPECT_EQ(messages(), (QStringList{"No unanalyzed projects found\n", "No unanalyzed projects found\n"}));
    EXPECT_TRUE(catalogState().GlobalWhereSearched3dModels.isEmpty());
    EXPECT_EQ(catalogState().KamaAnalyzed, 1);
    EXPECT_TRUE(shown.empty());
}
