// Map frame against WGS 84 through GlobalCSFactory, and the latitude and
// longitude text. Reference values come from PROJ's own cs2cs, run by hand.
#include <gtest/gtest.h>

#include "geo/CoordinateSystem.h"
#include "geo/Frames.h"
#include "geo/GeoConversions.h"
#include "geo/GeoState.h"
#include "geo/LatLonText.h"
#include "support/TestSupport.h"

namespace {

constexpr double kDegree = 3.14159265358979323846 / 180;

// The Israeli TM Grid as ESRI software writes it: no authority, ESRI names.
const char* kEsriIsraelTm =
    "PROJCS[\"Israel_TM_Grid\",GEOGCS[\"GCS_Israel\",DATUM[\"D_Israel\",SPHEROID[\"GRS_1980\",6378137.0,"
    "298.257222101]],PRIMEM[\"Greenwich\",0.0],UNIT[\"Degree\",0.0174532925199433]],"
    "PROJECTION[\"Transverse_Mercator\"],PARAMETER[\"False_Easting\",219529.584],"
    "PARAMETER[\"False_Northing\",626907.39],PARAMETER[\"Central_Meridian\",35.20451694444445],"
    "PARAMETER[\"Scale_Factor\",1.0000067],PARAMETER[\"Latitude_Of_Origin\",31.73439361111111],"
    "UNIT[\"Meter\",1.0]]";

struct Reference {
    double east, north, lat, lon;
};

// echo "178500 663500" | cs2cs -f %.9f EPSG:2039 EPSG:4326
// echo "31.7683 35.2137" | cs2cs -f %.4f EPSG:4326 EPSG:2039
const Reference kIsraelTm[] = {{178500, 663500, 32.064021933, 34.770714629},
                               {220333.4649, 630626.1340, 31.7683, 35.2137}};
// echo "700000 3500000" | cs2cs -f %.9f EPSG:32636 EPSG:4326
// echo "32.0 34.8" | cs2cs -f %.4f EPSG:4326 EPSG:32636
const Reference kUtm36[] = {{700000, 3500000, 31.617775075, 35.108485898},
                            {670031.9763, 3541851.3181, 32.0, 34.8}};

// Both directions against cs2cs (printed to 1e-9 degree and 1e-4 m), and a
// round trip that returns to the tenth of a millimetre.
void expectAgreesWithCs2cs(const CoordinateSystem& cs, const Reference& ref) {
    TGIS_Point lonLat, xy, back;
    ASSERT_TRUE(cs.unproject({ref.east, ref.north}, lonLat));
    EXPECT_NEAR(lonLat.X, ref.lon, 2e-9);
    EXPECT_NEAR(lonLat.Y, ref.lat, 2e-9);
    ASSERT_TRUE(cs.project({ref.lon, ref.lat}, xy));
    EXPECT_NEAR(xy.X, ref.east, 2e-4);
    EXPECT_NEAR(xy.Y, ref.north, 2e-4);
    ASSERT_TRUE(cs.project(lonLat, back));
    EXPECT_NEAR(back.X, ref.east, 1e-4);
    EXPECT_NEAR(back.Y, ref.north, 1e-4);
}

class GeoConversions : public ::testing::Test {
protected:
    void SetUp() override {
        resetGeoState();
        resetFrameState();
    }
    void TearDown() override { resetGeoState(); }
};

}  // namespace

TEST_F(GeoConversions, IsraeliGridAndUtm36AgreeWithCs2csInBothDirections) {
    const auto israel = GlobalCSFactory::ByEPSG(2039);
    const auto utm = GlobalCSFactory::ByEPSG(32636);
    ASSERT_TRUE(israel && utm);
    EXPECT_EQ(israel->EPSG(), 2039);
    for (const Reference& ref : kIsraelTm) expectAgreesWithCs2cs(*israel, ref);
    for (const Reference& ref : kUtm36) expectAgreesWithCs2cs(*utm, ref);
}

TEST_F(GeoConversions, EsriPrjFileIsIdentifiedAndConvertsAsTheRegisteredSystem) {
    testsupport::ScratchDir dir;
    testsupport::writeTextFile(dir.path("Model.prj"), kEsriIsraelTm);
    const auto cs = GlobalCSFactory::ByWKTFile(dir.path("Model.prj"));
    ASSERT_TRUE(cs);
    EXPECT_EQ(cs->EPSG(), 2039);
    for (const Reference& ref : kIsraelTm) expectAgreesWithCs2cs(*cs, ref);
}

TEST_F(GeoConversions, TextsThatNameNoSystemLeaveTheModelWithoutOneAndOutputsZero) {
    testsupport::ScratchDir dir;
    EXPECT_FALSE(GlobalCSFactory::ByWKT("PROJCS[\"broken\""));
    EXPECT_FALSE(GlobalCSFactory::ByWKTFile(dir.path("none.prj")));
    EXPECT_FALSE(GlobalCSFactory::ByEPSG(-1));
    EXPECT_FALSE(LoadGlobalCS(dir.path("none.prj")));
    EXPECT_EQ(geoState().EPSG, -1);
    double lat = 5, lon = 5, east = 5, north = 5;
    GPSEastNorth2LatLon(178500, 663500, lat, lon);
    EXPECT_EQ(lat, 0);
    EXPECT_EQ(lon, 0);
    EXPECT_FALSE(GPSLatLon2EastNorth(32, 34, east, north));
    EXPECT_EQ(east, 0);
    EXPECT_EQ(north, 0);
    EXPECT_EQ(EastNorth2String(178500, 663500), "0°00'00.0000\"N 0°00'00.0000\"E");
}

TEST_F(GeoConversions, ModelCentreOnTheGlobeHoldsNoOffsetButTheSiteDoes) {
    testsupport::ScratchDir dir;
    testsupport::writeTextFile(dir.path("m.prj"), kEsriIsraelTm);
    ASSERT_TRUE(LoadGlobalCS(dir.path("m.prj")));
    EXPECT_EQ(geoState().EPSG, 2039);
    FrameState& f = frameState();
    f.OCENTER[0] = 178500;
    f.OCENTER[1] = 663500;
    f.Offset[0] = 1000;
    f.Offset[1] = 2000;
    SetGeographicCentre();
    EXPECT_NEAR(f.OCENTERLat, 32.064021933, 2e-9);
    EXPECT_NEAR(f.OCENTERLon, 34.770714629, 2e-9);
    EXPECT_EQ(geoState().CenterPwgs.X, f.OCENTERLon);
    EXPECT_EQ(geoState().CenterPwgs.Y, f.OCENTERLat);
    // The model really lies at (179500, 665500): its climate and reports are for there (cs2cs).
    EXPECT_NEAR(f.MapCenterLat, 32.082093215, 2e-9);
    EXPECT_NEAR(f.MapCenterLon, 34.781221285, 2e-9);
}

// 32.064021933° = 32° 3' 50.4789588"; 34.770714629° = 34° 46' 14.5726644".
TEST_F(GeoConversions, EastNorth2StringWritesDegreesMinutesSecondsAndHemisphere) {
    geoState().GlobalCS = GlobalCSFactory::ByEPSG(2039);
    EXPECT_EQ(EastNorth2String(178500, 663500), "32°03'50.4790\"N 34°46'14.5727\"E");
    EXPECT_EQ(GisLatitudeToStr(-33.5 * kDegree), "33°30'00.0000\"S");
    EXPECT_EQ(GisLongitudeToStr(-(70 + 40 / 60.0) * kDegree), "70°40'00.0000\"W");
    // 59.99996" rounds up and carries into the minutes and degrees.
    EXPECT_EQ(GisLatitudeToStr((10 + 59 / 60.0 + 59.99996 / 3600) * kDegree), "11°00'00.0000\"N");
}

TEST(LatLonText, ReadsEveryDocumentedForm) {
    const double dms = 32 + 15 / 60.0 + 48.92274 / 3600;
    const struct {
        const char* text;
        double degrees;
    } good[] = {{"32/15/48.92274", dms},   {"32 15 48.92274", dms},      {"32:15:48.92274", dms},
                {"32°15'48.92274\"N", dms}, {"N32/15/48.92274", dms},     {"32.1234567", 32.1234567},
                {"33/30S", -33.5},          {"-33.5", -33.5},             {" 32/15 ", 32.25}};
    for (const auto& g : good) {
        double radians = 0;
        ASSERT_TRUE(GisStrToLatitude(g.text, radians)) << g.text;
        EXPECT_NEAR(radians / kDegree, g.degrees, 1e-12) << g.text;
    }
    double radians = 0;
    ASSERT_TRUE(GisStrToLongitude("34°46'14.5727\"E", radians));
    EXPECT_NEAR(radians / kDegree, 34 + 46 / 60.0 + 14.5727 / 3600, 1e-12);
    ASSERT_TRUE(GisStrToLongitude("W170.5", radians));
    EXPECT_NEAR(radians / kDegree, -170.5, 1e-12);
}

TEST(LatLonText, RefusesTextOutsideTheForms) {
    for (const char* text : {"", "abc", "91", "32/60/0", "32/15/61", "32.5/10/0", "32/15.5/10", "32E", "-33S",
                             "1/2/3/4", "32//15x"}) {
        double radians = 7;
        EXPECT_FALSE(GisStrToLatitude(text, radians)) << text;
        EXPECT_EQ(radians, 7) << text;
    }
    double radians = 0;
    EXPECT_FALSE(GisStrToLongitude("181", radians));
    EXPECT_FALSE(GisStrToLongitude("34N", radians));
}
