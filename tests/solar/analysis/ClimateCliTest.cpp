// zorvex64-cli climate, fold and nasa2pvgis, run as a user would run them,
// with the services of the user's Orvo.ini pointing at a local server.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>

#include "ClimateTestServer.h"
#include "support/CliRunner.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

using testsupport::CliResult;
using testsupport::runCli;

namespace {

// The CLI reads its settings from $HOME: each test gets a home of its own.
CliResult runCliAtHome(const std::string& arguments, const ScratchDir& dir) {
    return runCli(arguments, dir, "HOME=" + dir.path("home"));
}

// Ten hours of June 15 in two years; at 200 m the temperature drops 1.3
// degrees and the wind grows 4 %.
std::string pvgisAnswer() {
    std::string text = "Latitude (decimal degrees):\t32.100\n\ntime,Gb(i),Gd(i),Gr(i),H_sun,T2m,WS10m,Int\n";
    for (const char* year : {"2019", "2020"})
        for (int hour = 5; hour < 10; ++hour)
            text += std::string(year) + "0615:0" + std::to_string(hour) + "10,400.0,100.0,10.0,30.0," +
                    (year[3] == '9' ? "20.0,4.0" : "22.0,6.0") + ",0.0\n";
    return text + "\nPVGIS (c) European Union, 2001-2024\n";
}

}  // namespace

TEST(ClimateCli, ClimateWritesTheHourlyFileOnceAndPrintsItsPath) {
    ScratchDir dir;
    LocalHttpServer server;
    std::atomic<int> asked{0};
    std::string answer = pvgisAnswer();
    server.server().Get("/api/v5_3/seriescalc", [&](const httplib::Request&, httplib::Response& r) {
        ++asked;
        r.set_content(answer, "text/csv");
    });
    ASSERT_TRUE(server.start());
    writeTextFile(dir.path("home/Orvo_/Orvo.ini"), "[Services]\nPVGIS = " + server.base() + "\n");
    writeTextFile(dir.path("site/.keep"), "");

    const std::string args = "climate 32.1 34.8 " + dir.path("site") + " --altitude 200";
    CliResult r = runCliAtHome(args, dir);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, dir.path("site/PVGIST_H.csv") + "\n");
    std::string expected =
        "MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance,AvgTemperature,"
        "AvgWindSpeed\n";
    for (int hour = 5; hour < 10; ++hour) expected += "06-15,0" + std::to_string(hour) + ":00,400.00,100.00,10.00,19.7,5.2\n";
    EXPECT_EQ(readTextFile(dir.path("site/PVGIST_H.csv")), expected);

    r = runCliAtHome(args, dir);
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(asked.load(), 1);

    answer = "{\"message\":\"Location over the sea\"}";
    r = runCliAtHome("climate 10 -30 " + dir.path("home"), dir);
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.out, "");
    EXPECT_NE(r.err.find("{\"message\":\"Location over the sea\"}\nCould not download PVGIST data\n"),
              std::string::npos) << r.err;
    EXPECT_EQ(runCliAtHome("climate 95 34.8 " + dir.path("site"), dir).exitCode, 2);
    EXPECT_EQ(runCliAtHome("climate 32 34.8 " + dir.path("nowhere"), dir).exitCode, 2);
}

TEST(ClimateCli, FoldAndNasa2pvgisRunAlone) {
    ScratchDir dir;
    writeTextFile(dir.path("nasa.csv"),
                  "YEAR,MO,DY,HR,ALLSKY_SFC_SW_DWN,ALLSKY_SFC_SW_DIFF,T2M,WS2M\n2019,6,15,9,500,100,20,4\n");
    CliResult r = runCliAtHome("nasa2pvgis " + dir.path("nasa.csv") + " " + dir.path("raw.csv"), dir);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, dir.path("raw.csv") + "\n");
    EXPECT_EQ(readTextFile(dir.path("raw.csv")),
              "time,Gb(i),Gd(i),Gr(i),H_sun,T2m,WS10m,Int\n20190615:09,400.000,100.000,0.000,500.000,20.00,4.00,0\n");

    r = runCliAtHome("fold " + dir.path("raw.csv") + " " + dir.path("hourly.csv") + " --altitude 200", dir);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(readTextFile(dir.path("hourly.csv")),
              "MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance,"
              "AvgTemperature,AvgWindSpeed\n06-15,09:00,400.00,100.00,0.00,18.7,4.2\n");

    EXPECT_EQ(runCliAtHome("nasa2pvgis " + dir.path("raw.csv") + " " + dir.path("x.csv"), dir).exitCode, 1);
    r = runCliAtHome("fold " + dir.path("none.csv") + " " + dir.path("x.csv"), dir);
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_NE(r.err.find("PVGIS CSV file not found: " + dir.path("none.csv")), std::string::npos);
    EXPECT_EQ(runCliAtHome("fold " + dir.path("raw.csv") + " --altitude", dir).exitCode, 2);
}
