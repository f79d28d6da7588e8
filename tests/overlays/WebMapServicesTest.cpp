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
