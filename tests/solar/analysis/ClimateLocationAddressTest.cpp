// The site's address line from a reverse geocoder served locally, and the
// plain search that takes fields out of its answer.
#include <gtest/gtest.h>

#include <mutex>

#include "ClimateTestServer.h"
#include "app/services/OrvoIni.h"
#include "solar/analysis/ClimateServices.h"
#include "solar/analysis/LocationAddress.h"

namespace {

class LocationAddress : public ::testing::Test {
protected:
    void SetUp() override {
        resetOrvoIni();
        const auto serve = [this](const httplib::Request& q, httplib::Response& r) {
            std::lock_guard<std::mutex> lock(mutex);
            targets.push_back(q.target);
            agent = q.get_header_value("User-Agent");
            r.status = status;
            r.set_content(answer, "application/json");
        };
        server.server().Get("/data/reverse-geocode-client", serve);
        server.server().Get("/reverse", serve);
        ASSERT_TRUE(server.start());
    }
    void TearDown() override { resetOrvoIni(); }
    void useGeocoder(const std::string& base, const char* api = "client") {
        ORVOINI().writeString("Services", "Geocoding", base);
        ORVOINI().writeString("Services", "GeocodingApi", api);
    }

    LocalHttpServer server;
    std::mutex mutex;
    std::vector<std::string> targets;
    std::string agent;
    std::string answer;
    int status = 200;
};

}  // namespace

TEST(ExtractJsonField, PlainSearchFourCharactersPastTheKey) {
    EXPECT_EQ(ExtractJsonField("{\"city\": \"Haifa\", \"countryName\": \"Israel\"}", "city"), "Haifa");
    EXPECT_EQ(ExtractJsonField("{\"city\": \"Haifa\", \"countryName\": \"Israel\"}", "countryName"), "Israel");
    // Without the blank after the colon the first letter is lost.
    EXPECT_EQ(ExtractJsonField("{\"city\":\"Haifa\"}", "city"), "aifa");
    EXPECT_EQ(ExtractJsonField("{\"city\": \"Haifa\"}", "locality"), "");
    EXPECT_EQ(ExtractJsonField("{\"city\": \"" + std::string(70, 'x') + "\"}", "city"), std::string(55, 'x'));
    EXPECT_EQ(ExtractJsonField("{\"city", "city"), "");
}

TEST_F(LocationAddress, PartsJoinedWithTheirLineEnds) {
    useGeocoder(server.base());
    answer = "{\n  \"latitude\": 32.794044,\n  \"city\": \"Haifa\",\n  \"locality\": \"Hadar\",\n"
             "  \"principalSubdivision\": \"Haifa District\",\n  \"countryName\": \"Israel\"\n}";
    std::string country = "old";
    EXPECT_EQ(GetLocationAddress(32.794044, 34.989571, country), "Haifa\r, Haifa District\r, Israel\r, ");
    EXPECT_EQ(country, "Israel");
    ASSERT_EQ(targets.size(), 1u);
    EXPECT_EQ(targets[0], "/data/reverse-geocode-client?latitude=32.794044&longitude=34.989571");
    EXPECT_EQ(agent, "SolarAnalysis/1.0");

    answer = "{\"city\": \"\", \"locality\": \"Neve Ur\", \"principalSubdivision\": \"\", \"countryName\": \"\"}";
    EXPECT_EQ(GetLocationAddress(32.6, 35.55, country), "Neve Ur\r, ");
    EXPECT_EQ(country, "");
}

TEST_F(LocationAddress, NoServiceOrNoAnswerIsUnknownLocation) {
    std::string country = "old";
    useGeocoder("");
    EXPECT_EQ(GetLocationAddress(32.1, 34.8, country), "Unknown location");
    EXPECT_EQ(country, "");
    EXPECT_TRUE(targets.empty());

    useGeocoder(server.base());
    status = 403;
    answer = "{\"status\": 403, \"description\": \"Forbidden\"}";
    EXPECT_EQ(GetLocationAddress(32.1, 34.8, country), "Unknown location");
    EXPECT_EQ(targets.size(), 1u);

    useGeocoder(UnusedLocalBase());
    EXPECT_EQ(GetLocationAddress(32.1, 34.8, country), "Unknown location");
    EXPECT_EQ(country, "");
}

TEST(JsonStringField, TakesTheValueWhateverTheBlanksAndEscapes) {
    EXPECT_EQ(JsonStringField("{\"city\":\"Haifa\"}", "city"), "Haifa");
    EXPECT_EQ(JsonStringField("{\"city\" :\n \"Tel \\\"Aviv\\\"\"}", "city"), "Tel \"Aviv\"");
    // A key inside another key or a value, and a value that is no string, give nothing.
    EXPECT_EQ(JsonStringField("{\"country_code\":\"il\"}", "country"), "");
    EXPECT_EQ(JsonStringField("{\"note\":\"city\",\"city\":\"Acre\"}", "city"), "Acre");
    EXPECT_EQ(JsonStringField("{\"place_id\":12}", "place_id"), "");
}

TEST_F(LocationAddress, TheDefaultGeocoderIsAskedAsNominatimWithItsAgentAndAskedOnceAPlace) {
    EXPECT_EQ(GeocodingServiceAddress(), "https://nominatim.openstreetmap.org/");
    useGeocoder(server.base(), "nominatim");
    answer = "{\"place_id\":1,\"display_name\":\"Tel Aviv-Yafo, Tel Aviv District, Israel\","
             "\"address\":{\"city\":\"Tel Aviv-Yafo\",\"state\":\"Tel Aviv District\",\"country\":\"Israel\","
             "\"country_code\":\"il\"}}";
    std::string country;
    EXPECT_EQ(GetLocationAddress(32.082093, 34.781221, country), "Tel Aviv-Yafo\r, Tel Aviv District\r, Israel\r, ");
    EXPECT_EQ(country, "Israel");
    ASSERT_EQ(targets.size(), 1u);
    EXPECT_EQ(targets[0], "/reverse?format=jsonv2&lat=32.082093&lon=34.781221&zoom=10&accept-language=en");
    EXPECT_EQ(agent, "Zorvex64/0.1 (solar planner report address)");
    // The report's two pages ask for the same place: the service hears it once.
    EXPECT_EQ(GetLocationAddress(32.082093, 34.781221, country), "Tel Aviv-Yafo\r, Tel Aviv District\r, Israel\r, ");
    EXPECT_EQ(targets.size(), 1u);
    // A town is the place where there is no city.
    answer = "{\"address\":{\"town\":\"Zikhron Ya'akov\",\"state\":\"Haifa District\",\"country\":\"Israel\"}}";
    EXPECT_EQ(GetLocationAddress(32.57, 34.95, country), "Zikhron Ya'akov\r, Haifa District\r, Israel\r, ");
}
