// The terrain elevation service, against a local server on 127.0.0.1.

#include <gtest/gtest.h>

#include <filesystem>
#include <mutex>

#include "app/services/DialogService.h"
#include "app/services/OrvoIni.h"
#include "app/services/SessionPaths.h"
#include "overlays/WebMapServices.h"
#include "solar/analysis/ClimateTestServer.h"
#include "support/CliRunner.h"
#include "support/TestSupport.h"

using namespace testsupport;

namespace {

class Elevation : public ::testing::Test {
protected:
    void SetUp() override {
        resetSessionPaths();
        resetOrvoIni();
        installDialogService(&dialogs);
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetOrvoIni();
        resetSessionPaths();
    }
    void serve(int status, const std::string& body) {
        server.server().Get("/v1/elevation", [this, status, body](const httplib::Request& request, httplib::Response& r) {
            std::lock_guard<std::mutex> lock(mutex);
            target = request.target;
            agent = request.get_header_value("User-Agent");
            r.status = status;
            r.set_content(body, "text/plain");
        });
        ASSERT_TRUE(server.start());
        ORVOINI().writeString("Services", "Elevation", server.base());
    }
    std::vector<std::string> messages() const {
        std::vector<std::string> texts;
        for (const auto& q : dialogs.questions()) texts.push_back(q.text.toStdString());
        return texts;
    }

    ScriptedDialogService dialogs;
    LocalHttpServer server;
    std::mutex mutex;
    std::string target, agent;
};

}  // namespace

TEST_F(Elevation, GoodAnswerIsReadAsOneNumber) {
    serve(200, "38.5");
    EXPECT_DOUBLE_EQ(GetTerrainElevationFromWeb(32.0640219, 34.771), 38.5);
    EXPECT_EQ(target, "/v1/elevation?latitude=32.064022&longitude=34.771000");
    EXPECT_EQ(agent, "OpenMeteoElevation/1.0");
    EXPECT_TRUE(messages().empty());
}

TEST_F(Elevation, ErrorStatusShowsTheAnswerAndKeepsMinus9999) {
    serve(500, "no such place");
    EXPECT_EQ(GetTerrainElevationFromWeb(1, 2), -9999);
    EXPECT_EQ(messages(), std::vector<std::string>{"Server returned error 500: no such place\n"});
}

TEST_F(Elevation, ErrorStatusWithoutBodyShowsTheStatusAlone) {
    serve(404, "");
    EXPECT_EQ(GetTerrainElevationFromWeb(1, 2), -9999);
    EXPECT_EQ(messages(), std::vector<std::string>{"Server returned error 404\n"});
}

TEST_F(Elevation, NobodyListeningFailsToConnect) {
    ORVOINI().writeString("Services", "Elevation", UnusedLocalBase());
    EXPECT_EQ(GetTerrainElevationFromWeb(1, 2), -9999);
    EXPECT_EQ(messages(), std::vector<std::string>{"Failed to connect. Error: 7\n"});
}

TEST(ElevationCli, PrintsTheHeightFromTheConfiguredService) {
    ScratchDir dir;
    LocalHttpServer server;
    server.server().Get("/v1/elevation", [](const httplib::Request&, httplib::Response& r) {
        r.set_content("12.25\n", "text/plain");
    });
    ASSERT_TRUE(server.start());
    std::filesystem::create_directories(dir.path("Orvo_"));
    writeTextFile(dir.path("Orvo_/Orvo.ini"), "[Services]\nElevation=" + server.base() + "\n");
    CliResult r = runCli("elevation 32.1 34.8", dir, "HOME=" + dir.root());
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "12.250\n");
    writeTextFile(dir.path("Orvo_/Orvo.ini"), "[Services]\nElevation=" + UnusedLocalBase() + "\n");
    CliResult failed = runCli("elevation 32.1 34.8", dir, "HOME=" + dir.root());
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_NE(failed.err.find("Failed to connect."), std::string::npos);
}

TEST(Orthophoto, WmsRequestOfTheBoxIsSavedWithItsLog) {
    ScratchDir dir;
    resetSessionPaths();
    resetOrvoIni();
    sessionPaths().ORVO_T = dir.path("");
    LocalHttpServer server;
    std::mutex mutex;
    std::string query, agent;
    server.server().Get("/arcgis/services/World_Imagery/MapServer/WMSServer",
                        [&](const httplib::Request& request, httplib::Response& r) {
                            std::lock_guard<std::mutex> lock(mutex);
                            query = request.target.substr(request.target.find('?') + 1);
                            agent = request.get_header_value("User-Agent");
                            r.set_content(std::string(20000, 'T'), "image/tiff");
                        });
    ASSERT_TRUE(server.start());
    ORVOINI().writeString("Services", "Orthophoto", server.base());
    const std::string tif = dir.path("a.tif");
    EXPECT_TRUE(DownloadOrthophoto(32, 34.8, 1000, tif));
    // Half of 1000 m: 1000 / 111000 / 2 degrees of latitude, divided by cos 32 for longitude.
    EXPECT_EQ(query,
              "SERVICE=WMS&VERSION=1.3.0&REQUEST=GetMap&LAYERS=0&STYLES=&CRS=EPSG:4326"
              "&BBOX=31.99549550,34.79468839,32.00450450,34.80531161&WIDTH=4096&HEIGHT=4096&FORMAT=image/geotiff");
    EXPECT_EQ(agent, "OrthophotoDownloader/1.0");
    EXPECT_EQ(std::filesystem::file_size(tif), 20000u);
    const std::string url = server.base().substr(0, server.base().size() - 1) +
                            "/arcgis/services/World_Imagery/MapServer/WMSServer?" + query;
    EXPECT_EQ(readTextFile(dir.path("a.log")),
              "Downloading orthophoto: " + url + "\nDownloaded 20000 bytes to " + tif + "\n");
    resetOrvoIni();
    resetSessionPaths();
}

TEST(Orthophoto, FailuresAreLoggedOnly) {
    ScratchDir dir;
    resetSessionPaths();
    resetOrvoIni();
    sessionPaths().ORVO_T = dir.path("");
    ORVOINI().writeString("Services", "Orthophoto", UnusedLocalBase());
    EXPECT_FALSE(DownloadOrthophoto(32, 34.8, 1000, dir.path("a.tif")));
    EXPECT_FALSE(DownloadOrthophoto(32, 34.8, 1000, dir.path("no/such/a.tif")));
    const std::string log = readTextFile(dir.path("a.log"));
    EXPECT_NE(log.find("ERROR: InternetOpenUrl failed\n"), std::string::npos);
    EXPECT_NE(log.find("ERROR: Cannot create output file: " + dir.path("no/such/a.tif") + "\n"), std::string::npos);
    resetOrvoIni();
    resetSessionPaths();
}
