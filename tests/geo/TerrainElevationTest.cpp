// GetTerrainElevation against a local elevation server.
#include <gtest/gtest.h>

#include <httplib.h>

#include <chrono>
#include <cstdio>
#include <thread>

#include "app/services/OrvoIni.h"
#include "app/services/RunLog.h"
#include "geo/TerrainElevation.h"
#include "support/TestSupport.h"

namespace {

class TerrainElevation : public ::testing::Test {
protected:
    httplib::Server server;
    std::thread thread;
    int port = 0;
    std::string answer;
    int status = 200;
    std::string askedLocations, askedAgent, askedPath;
    testsupport::ScratchDir dir;

    void SetUp() override {
        server.Get("/v1/aster30m", [this](const httplib::Request& req, httplib::Response& res) {
            askedPath = req.path;
            askedLocations = req.get_param_value("locations");
            askedAgent = req.get_header_value("User-Agent");
            res.status = status;
            res.set_content(answer, "application/json");
        });
        port = server.bind_to_any_port("127.0.0.1");
        thread = std::thread([this] { server.listen_after_bind(); });
        while (!server.is_running()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        resetOrvoIni();
        ORVOINI().writeString("Services", "Elevation", "http://127.0.0.1:" + std::to_string(port) + "/");
        runLog().fp_prt = std::fopen(dir.path("log.txt").c_str(), "w");
    }
    void TearDown() override {
        server.stop();
        thread.join();
        resetRunLog();
        resetOrvoIni();
    }
    std::string log() {
        std::fflush(runLog().fp_prt);
        return testsupport::readTextFile(dir.path("log.txt"));
    }
};

}  // namespace

TEST_F(TerrainElevation, ReadsTheElevationOfTheAnswer) {
    answer = "{\"results\": [{\"dataset\": \"aster30m\", \"elevation\":  45.5, "
             "\"location\": {\"lat\": 32.064022, \"lng\": 34.770715}}], \"status\": \"OK\"}";
    EXPECT_EQ(GetTerrainElevation(32.064021933, 34.770714629), 45.5);
    EXPECT_EQ(askedPath, "/v1/aster30m");
    EXPECT_EQ(askedLocations, "32.064022,34.770715");
    EXPECT_EQ(askedAgent, "TerrainQuery/1.0");
    EXPECT_EQ(log(), "Elevation: 45.50 meters\n");
}

TEST_F(TerrainElevation, ServerErrorGivesZeroAndTheOpenMessage) {
    status = 500;
    answer = "{\"error\": \"busy\", \"elevation\": 12}";
    EXPECT_EQ(GetTerrainElevation(32, 34), 0);
    EXPECT_EQ(log(), "ERROR: InternetOpenUrl failed\n");
}

TEST_F(TerrainElevation, OnlyTheFirst4095BytesAreRead) {
    answer = "{\"pad\": \"" + std::string(4100, 'x') + "\", \"elevation\": 45.5}";
    EXPECT_EQ(GetTerrainElevation(32, 34), 0);
    EXPECT_EQ(log(), "ERROR: no elevation in the answer\n");
    answer = "{\"pad\": \"" + std::string(4000, 'x') + "\", \"elevation\": -3.25}";
    EXPECT_EQ(GetTerrainElevation(32, 34), -3.25);
}
