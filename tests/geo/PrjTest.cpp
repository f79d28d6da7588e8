// Identifying the coordinate system of a ".prj" file.
#include <gtest/gtest.h>

#include <ogr_spatialref.h>

#include "geo/Prj.h"
#include "support/TestSupport.h"

namespace {

std::string wktOf(int epsg, bool esri) {
    OGRSpatialReference srs;
    srs.importFromEPSG(epsg);
    if (esri) srs.morphToESRI();
    char* text = nullptr;
    srs.exportToWkt(&text);
    std::string wkt = text;
    CPLFree(text);
    return wkt;
}

}  // namespace

TEST(Prj, WktWithAuthorityGivesItsCode) {
    EXPECT_EQ(EpsgFromWkt(wktOf(2039, false)), 2039);
    EXPECT_EQ(EpsgFromWkt(wktOf(32636, false)), 32636);
}

TEST(Prj, EsriFlavouredWktIsIdentified) {
    const std::string esri = wktOf(32636, true);
    ASSERT_EQ(esri.find("AUTHORITY"), std::string::npos);
    EXPECT_EQ(EpsgFromWkt(esri), 32636);
}

TEST(Prj, GarbageAndMissingFilesGiveMinusOne) {
    testsupport::ScratchDir dir;
    testsupport::writeTextFile(dir.path("x.prj"), "this is no WKT");
    EXPECT_EQ(EpsgFromPrjFile(dir.path("x.prj")), -1);
    EXPECT_EQ(EpsgFromPrjFile(dir.path("none.prj")), -1);
    testsupport::writeTextFile(dir.path("ok.PRJ"), wktOf(2039, false));
    EXPECT_EQ(EpsgFromPrjFile(dir.path("ok.PRJ")), 2039);
}
