// The geoid separation read from the rasters of the data folder. The world
// raster is written here from proj-data's EGM96 grid, as the build does.
#include <gtest/gtest.h>

#include <gdal_priv.h>

#include "app/services/DialogService.h"
#include "app/services/SessionPaths.h"
#include "geo/GeoState.h"
#include "geo/Geoid.h"
#include "support/TestSupport.h"

namespace {

void writeWorldRaster(const std::string& path) {
    GDALAllRegister();
    GDALDatasetUniquePtr grid(GDALDataset::Open("/usr/share/proj/egm96_15.gtx", GDAL_OF_RASTER | GDAL_OF_READONLY));
    ASSERT_TRUE(grid);
    GDALDriver* tiff = GetGDALDriverManager()->GetDriverByName("GTiff");
    GDALDatasetUniquePtr copy(tiff->CreateCopy(path.c_str(), grid.get(), FALSE, nullptr, nullptr, nullptr));
    ASSERT_TRUE(copy);
}

// A 2° square over 34..36 E, 31..33 N of one value.
void writeRegionalRaster(const std::string& path, float value) {
    GDALDriver* tiff = GetGDALDriverManager()->GetDriverByName("GTiff");
    GDALDatasetUniquePtr raster(tiff->Create(path.c_str(), 4, 4, 1, GDT_Float32, nullptr));
    ASSERT_TRUE(raster);
    double gt[6] = {34, 0.5, 0, 33, 0, -0.5};
    raster->SetGeoTransform(gt);
    float cells[16];
    std::fill(cells, cells + 16, value);
    ASSERT_EQ(raster->GetRasterBand(1)->RasterIO(GF_Write, 0, 0, 4, 4, cells, 4, 4, GDT_Float32, 0, 0), CE_None);
}

class Geoid : public ::testing::Test {
protected:
    static testsupport::ScratchDir* data;
    ScriptedDialogService answers;

    static void SetUpTestSuite() {
        data = new testsupport::ScratchDir;
        writeWorldRaster(data->path("GeoidSeparation.tif"));
    }
    static void TearDownTestSuite() { delete data; }
    void SetUp() override {
        resetGeoState();
        sessionPaths().CTQ_Path = data->root();
        installDialogService(&answers);
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetSessionPaths();
        resetGeoState();
    }
};

testsupport::ScratchDir* Geoid::data = nullptr;

}  // namespace

// gdallocationinfo -valonly -wgs84 /usr/share/proj/egm96_15.gtx 34.770714629 32.064021933 gives the
// cell value 18.9997615814209; cs2cs EPSG:4979 EPSG:4326+5773 interpolates -19.0560 for height 0.
TEST_F(Geoid, CellValueAtAKnownPointAgreesWithGdalAndCs2cs) {
    const double n = GetGMGeoidalSeparation(32.064021933, 34.770714629);
    EXPECT_NEAR(n, 18.9997615814209, 1e-6);
    EXPECT_NEAR(n, 19.0560, 0.1);
    EXPECT_TRUE(geoState().GlobalGeoidalSeparationSet);
    EXPECT_TRUE(answers.questions().empty());
}

// echo "0 179.95 0" | cs2cs -f %.4f EPSG:4979 EPSG:4326+5773 gives -21.1978; the
// grid's last half column lies across the date line, in the cell of -180.
TEST_F(Geoid, PointsEastOfTheGridsLastCentreWrapAround) {
    const double n = GetGMGeoidalSeparation(0, 179.95);
    EXPECT_NEAR(n, 21.1533298492432, 1e-6);
    EXPECT_NEAR(n, 21.1978, 0.1);
}

// gdallocationinfo -valonly -wgs84 /usr/share/proj/egm96_15.gtx 35.2 31.8 gives 20.094482421875.
TEST_F(Geoid, BothZeroMeansTheModelsCentreAndTheFirstValueStaysForTheRun) {
    geoState().CenterPwgs = TGIS_Point{35.2, 31.8};
    EXPECT_NEAR(GetGMGeoidalSeparation(0, 0), 20.094482421875, 1e-6);
    EXPECT_NEAR(GetGMGeoidalSeparation(-33.9, 18.4), 20.094482421875, 1e-6);
}

TEST_F(Geoid, RegionalRasterServesThePointsItCovers) {
    testsupport::ScratchDir regional;
    sessionPaths().CTQ_Path = regional.root();
    writeRegionalRaster(regional.path("GeoidSeparation-ilum2.tif"), 42.5f);
    writeWorldRaster(regional.path("GeoidSeparation.tif"));
    EXPECT_EQ(GetGMGeoidalSeparation(32.064021933, 34.770714629), 42.5);
    EXPECT_TRUE(geoState().SecondGeoidalExists);
    EXPECT_EQ(geoState().SecondGeoidalEXT.XMin, 34);
    EXPECT_EQ(geoState().SecondGeoidalEXT.YMax, 33);

    // gdallocationinfo -valonly -wgs84 /usr/share/proj/egm96_15.gtx 18.4 -33.9 gives 31.0149173736572.
    resetGeoState();
    EXPECT_NEAR(GetGMGeoidalSeparation(-33.9, 18.4), 31.0149173736572, 1e-6);
}

TEST_F(Geoid, MissingWorldRasterIsReportedOnce) {
    testsupport::ScratchDir empty;
    sessionPaths().CTQ_Path = empty.root();
    EXPECT_EQ(GetGMGeoidalSeparation(32, 34), 0);
    EXPECT_EQ(GetGMGeoidalSeparation(32, 34), 0);
    EXPECT_FALSE(geoState().GlobalGeoidalSeparationSet);
    ASSERT_EQ(answers.questions().size(), 1u);
    EXPECT_EQ(answers.questions()[0].text.toStdString(), empty.root() + "GeoidSeparation.tif\nIs Missing");
}
