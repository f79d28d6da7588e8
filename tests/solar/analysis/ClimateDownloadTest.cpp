// The hourly climate file from the services, served by a local server with
// answers generated here: PVGIS first, NASA POWER when PVGIS cannot be
// reached, and the failure paths of both.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <mutex>

#include "ClimateTestServer.h"
#include "app/services/DialogService.h"
#include "app/services/OrvoIni.h"
#include "app/services/SessionPaths.h"
#include "geo/Frames.h"
#include "solar/analysis/ClimateDownload.h"
#include "solar/analysis/ClimateIrradianceLookup.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

// One hour of a generated answer; irradiance, temperature and wind in tenths.
struct AnswerHour {
    int year, month, day, hour;
    bool sun;
    int beam, diffuse, reflected, temperature, wind;
};

int daysIn(int year, int month) {
    static const int days[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && year % 4 == 0 ? 29 : days[month - 1];
}

// 2019 and 2020, so every hour has two values but February 29 one. The
// second year's temperature and wind differ by an even number of tenths,
// so each average is exact in tenths.
std::vector<AnswerHour> twoYears() {
    std::vector<AnswerHour> hours;
    for (int year : {2019, 2020})
        for (int month = 1; month <= 12; ++month)
            for (int day = 1; day <= daysIn(year, month); ++day)
                for (int hour = 0; hour < 24; ++hour) {
                    const bool sun = hour >= 5 && hour <= 16;
                    const int second = year == 2020 ? 1 : 0;
                    hours.push_back({year, month, day, hour, sun,
                                     sun ? (month * 131 + day * 17 + hour * 29 + year) % 9000 : 0,
                                     sun ? (month * 7 + day * 3 + hour * 11 + year * 3) % 3000 : 0,
                                     sun ? (day + hour + year) % 50 : 0,
                                     (month * 37 + day * 5 + hour * 3) % 400 - 150 + 6 * second,
                                     (month + day + hour) % 80 + 4 * second});
                }
    return hours;
}

std::string tenths(int t) {
    return (t < 0 ? "-" : "") + std::to_string(std::abs(t) / 10) + "." + std::to_string(std::abs(t) % 10);
}

std::string hundredths(int h) {
    char text[32];
    std::snprintf(text, sizeof text, "%d.%02d", h / 100, h % 100);
    return text;
}

std::string joinLines(const std::vector<std::string>& lines, const std::string& eol) {
    std::string text;
    for (const std::string& line : lines) text += line + eol;
    return text;
}

// A PVGIS hourly answer: metadata, the header, rows whose minutes are :10 in
// 2019 and :11 in 2020, the legend and the copyright line.
std::string pvgisAnswer(const std::vector<AnswerHour>& hours, const std::string& eol) {
    std::vector<std::string> lines = {"Latitude (decimal degrees):\t32.100", "Longitude (decimal degrees):\t34.800",
                                      "Elevation (m):\t35", "Radiation database:\tPVGIS-SARAH3", "",
                                      "Slope: 0 deg. ", "Azimuth: 0 deg. ", "time,Gb(i),Gd(i),Gr(i),H_sun,T2m,WS10m,Int"};
    for (const AnswerHour& h : hours) {
        char time[32];
        std::snprintf(time, sizeof time, "%04d%02d%02d:%02d%02d", h.year, h.month, h.day, h.hour,
                      h.year == 2019 ? 10 : 11);
        const std::string sunHeight = h.sun ? tenths(100 + h.hour * 37) : (h.hour % 2 ? "0.0" : "-12.5");
        lines.push_back(std::string(time) + "," + tenths(h.beam) + "," + tenths(h.diffuse) + "," +
                        tenths(h.reflected) + "," + sunHeight + "," + tenths(h.temperature) + "," + tenths(h.wind) +
                        ",0.0");
    }
    for (const char* line : {"", "Gb(i): Beam irradiance on the plane (W/m2)",
                             "Gd(i): Diffuse irradiance on the plane (W/m2)",
                             "Gr(i): Reflected irradiance on the plane (W/m2)", "H_sun: Sun height (degree)",
                             "T2m: 2-m air temperature (degree Celsius)", "WS10m: 10-m total wind speed (m/s)",
                             "Int: 1 means solar radiation values are reconstructed", "",
                             "PVGIS (c) European Union, 2001-2024"})
        lines.push_back(line);
    return joinLines(lines, eol);
}

// The hourly file worked out in whole tenths: hours with sun, keys in the
// order they first appear, so February 29 comes after all of 2019.
std::string expectedHourly(const std::vector<AnswerHour>& hours) {
    struct Sum {
        int beam = 0, diffuse = 0, reflected = 0, temperature = 0, wind = 0, count = 0;
    };
    std::vector<std::string> order;
    std::map<std::string, Sum> sums;
    for (const AnswerHour& h : hours) {
        if (!h.sun) continue;
        char key[16];
        std::snprintf(key, sizeof key, "%02d-%02d,%02d:00", h.month, h.day, h.hour);
        if (!sums.count(key)) order.push_back(key);
        Sum& s = sums[key];
        s.beam += h.beam, s.diffuse += h.diffuse, s.reflected += h.reflected;
        s.temperature += h.temperature, s.wind += h.wind, s.count += 1;
    }
    std::string text =
        "MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance,AvgTemperature,"
        "AvgWindSpeed\n";
    for (const std::string& key : order) {
        const Sum& s = sums[key];
        text += key + "," + hundredths(s.beam * 10 / s.count) + "," + hundredths(s.diffuse * 10 / s.count) + "," +
                hundredths(s.reflected * 10 / s.count) + "," + tenths(s.temperature / s.count) + "," +
                tenths(s.wind / s.count) + "\n";
    }
    return text;
}

// A NASA POWER answer for June 21 of 2018 and 2019: fill values, a
// temperature out of range, header lines ending in " \r\n".
std::string nasaAnswer() {
    const std::string header = joinLines(
        {"-BEGIN HEADER-", "NASA/POWER Source Native Resolution Hourly Data",
         "Dates (month/day/year): 01/01/2018 through 12/31/2023 in UTC",
         "Location: latitude  32.1   longitude 34.8", "Elevation from MERRA-2: Average for 0.5 x 0.625 degree = 35.2 meters",
         "The value for missing source data that cannot be computed or is outside of the sources availability range: -999",
         "Parameter(s):", "ALLSKY_SFC_SW_DWN     All Sky Surface Shortwave Downward Irradiance (Wh/m^2)",
         "ALLSKY_SFC_SW_DIFF    All Sky Surface Shortwave Diffuse Irradiance (Wh/m^2)",
         "ALLSKY_SFC_SW_DNI     All Sky Surface Shortwave Downward Direct Normal Irradiance (Wh/m^2)",
         "T2M                   Temperature at 2 Meters (C)", "WS2M                  Wind Speed at 2 Meters (m/s)",
         "-END HEADER-"},
        " \r\n");
    return header + joinLines({"YEAR,MO,DY,HR,ALLSKY_SFC_SW_DWN,ALLSKY_SFC_SW_DIFF,ALLSKY_SFC_SW_DNI,T2M,WS2M",
                               "2018,6,21,4,-999,-999,-999,-999,-999", "2018,6,21,5,120.5,60.25,300.75,22.4,3.1",
                               "2018,6,21,6,500,100,650.5,-999,4", "2018,6,21,7,800.5,200.25,0,30.2,5.5",
                               "2018,6,21,8,900,300,0,32,2", "2019,6,21,4,0,0,0,18.5,1.5",
                               "2019,6,21,5,130.5,70.25,310.25,23.6,2.9", "2019,6,21,6,400,150,520,27,0",
                               "2019,6,21,7,700.5,180.75,0,31.4,6.5", "2019,6,21,8,950,250,0,-95,3"},
                              "\r\n");
}

// Worked out by hand: Gb = global - diffuse, fill values as night at 25
// degrees, -95 degrees as 25, the two years averaged.
const char* const NASA_HOURLY =
    "MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance,AvgTemperature,"
    "AvgWindSpeed\n"
    "06-21,05:00,60.25,65.25,0.00,23.0,3.0\n"
    "06-21,06:00,325.00,125.00,0.00,26.0,2.0\n"
    "06-21,07:00,560.00,190.50,0.00,30.8,6.0\n"
    "06-21,08:00,650.00,275.00,0.00,28.5,2.5\n";

const char* const PVGIS_TARGET =
    "/api/v5_3/seriescalc?lat=32.100000&lon=34.800000&outputformat=csv&browser=0&startyear=2018&endyear=2023"
    "&components=1&angle=0&aspect=0";
const char* const NASA_TARGET =
    "/api/temporal/hourly/point?parameters=ALLSKY_SFC_SW_DWN,ALLSKY_SFC_SW_DIFF,ALLSKY_SFC_SW_DNI,T2M,WS2M"
    "&latitude=32.100000&longitude=34.800000&start=20180101&end=20231231&community=RE&format=CSV&time-standard=UTC";

struct Requests {
    std::mutex mutex;
    std::vector<std::string> targets;
    std::vector<std::string> agents;
    void note(const httplib::Request& request) {
        std::lock_guard<std::mutex> lock(mutex);
        targets.push_back(request.target);
        agents.push_back(request.get_header_value("User-Agent"));
    }
};

class ClimateDownload : public ::testing::Test {
protected:
    void SetUp() override {
        resetFrameState();
        resetSessionPaths();
        resetOrvoIni();
        frameState().MapCenterLat = 32.1;
        frameState().MapCenterLon = 34.8;
        sessionPaths().ORVO_T = dir.path("tmp/");
        std::filesystem::create_directories(dir.path("tmp"));
        std::filesystem::create_directories(dir.path("model"));
        installDialogService(&dialogs);
    }
    void TearDown() override {
        installDialogService(nullptr);
        resetOrvoIni();
        resetSessionPaths();
        resetFrameState();
    }

    // Serves each path's answer with its status and type, noting every request.
    void serve(const std::string& path, int status, const std::string& body, const std::string& type) {
        server.server().Get(path, [this, status, body, type](const httplib::Request& request, httplib::Response& r) {
            requests.note(request);
            r.status = status;
            r.set_content(body, type.c_str());
        });
    }
    void startServices(bool pvgisReachable) {
        ASSERT_TRUE(server.start());
        ORVOINI().writeString("Services", "PVGIS", pvgisReachable ? server.base() : UnusedLocalBase());
        ORVOINI().writeString("Services", "NASAPOWER", server.base());
    }
    std::vector<std::string> messages() const {
        std::vector<std::string> texts;
        for (const auto& q : dialogs.questions())
            if (q.kind == ScriptedDialogService::Question::Message) texts.push_back(q.text.toStdString());
        return texts;
    }
    std::string modelFolder() const { return dir.path("model/"); }
    std::string hourlyPath() const { return dir.path("model/PVGIST_H.csv"); }

    ScratchDir dir;
    ScriptedDialogService dialogs;
    LocalHttpServer server;
    Requests requests;
};

// Switches LC_NUMERIC to a locale with a decimal comma: an installed one,
// or one compiled into dir. The caller switches back to "C".
bool switchToDecimalComma(const ScratchDir& dir) {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"})
        if (std::setlocale(LC_NUMERIC, name)) return true;
    writeTextFile(dir.path("comma.src"),
                  "LC_CTYPE\ncopy \"POSIX\"\nEND LC_CTYPE\n"
                  "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \".\"\ngrouping 3;3\nEND LC_NUMERIC\n");
    std::filesystem::create_directories(dir.path("locales"));
    const std::string command = "localedef -c -i " + dir.path("comma.src") + " -f UTF-8 " +
                                dir.path("locales/xx_XX.UTF-8") + " >/dev/null 2>&1";
    if (std::system(command.c_str()) == -1) return false;
    setenv("LOCPATH", dir.path("locales").c_str(), 1);
    return std::setlocale(LC_NUMERIC, "xx_XX.UTF-8") != nullptr;
}

}  // namespace

TEST_F(ClimateDownload, PvgisAnswerFoldsIntoOneAverageYear) {
    const std::vector<AnswerHour> hours = twoYears();
    serve("/api/v5_3/seriescalc", 200, pvgisAnswer(hours, "\n"), "text/csv");
    serve("/api/temporal/hourly/point", 200, nasaAnswer(), "text/csv");
    startServices(true);

    EXPECT_EQ(DownloadPVGISTdata(modelFolder()), hourlyPath());
    EXPECT_TRUE(messages().empty());
    EXPECT_EQ(readTextFile(hourlyPath()), expectedHourly(hours));
    ASSERT_EQ(requests.targets.size(), 1u);  // NASA POWER is not asked
    EXPECT_EQ(requests.targets[0], PVGIS_TARGET);
    EXPECT_EQ(requests.agents[0], "PVGISDownloader");
}

TEST_F(ClimateDownload, AnswerWithCrlfLineEndsGivesTheSameFile) {
    const std::vector<AnswerHour> hours = twoYears();
    serve("/api/v5_3/seriescalc", 200, pvgisAnswer(hours, "\r\n"), "text/csv");
    startServices(true);
    EXPECT_EQ(DownloadPVGISTdata(modelFolder()), hourlyPath());
    EXPECT_EQ(readTextFile(hourlyPath()), expectedHourly(hours));
}

TEST_F(ClimateDownload, ErrorAnswerIsShownAndNasaIsNotAsked) {
    const std::string error = "{\"message\":\"Location over the sea. Please, check your input data\"}";
    serve("/api/v5_3/seriescalc", 400, error, "application/json");
    serve("/api/temporal/hourly/point", 200, nasaAnswer(), "text/csv");
    startServices(true);

    EXPECT_EQ(DownloadPVGISTdata(modelFolder()), "");
    EXPECT_EQ(messages(), std::vector<std::string>{error});
    EXPECT_EQ(requests.targets.size(), 1u);
    EXPECT_FALSE(std::filesystem::exists(hourlyPath()));
    EXPECT_EQ(readTextFile(dir.path("tmp/PVGIST_R.csv")), error);  // the body lands like data
}

TEST_F(ClimateDownload, AnswerOfNineLinesIsAnErrorButTenLinesAreFolded) {
    std::vector<std::string> lines = {"Service unavailable"};
    for (int i = 1; i < 9; ++i) lines.push_back("line " + std::to_string(i));
    std::string body = joinLines(lines, "\n");
    server.server().Get("/api/v5_3/seriescalc", [&body](const httplib::Request&, httplib::Response& r) {
        r.set_content(body, "text/plain");
    });
    startServices(true);
    EXPECT_EQ(DownloadPVGISTdata(modelFolder()), "");
    EXPECT_EQ(messages(), std::vector<std::string>{"Service unavailable"});

    body += "line 9\n";  // ten lines, no header: an hourly file with none of its rows
    EXPECT_EQ(DownloadPVGISTdata(modelFolder()), hourlyPath());
    EXPECT_EQ(readTextFile(hourlyPath()),
              "MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance\n");
}

TEST_F(ClimateDownload, HtmlPageAndAnswerWithoutSunHeightGiveNoHours) {
    std::string page = "<!DOCTYPE html>\n<html>\n<head>\n<title>502 Bad Gateway</title>\n</head>\n<body>\n"
                       "<h1>Bad Gateway</h1>\n<p>The proxy server received an invalid response.</p>\n"
                       "<hr>\n<address>Apache Server</address>\n</body>\n</html>\n";
    server.server().Get("/api/v5_3/seriescalc", [&page](const httplib::Request&, httplib::Response& r) {
        r.status = 502;
        r.set_content(page, "text/html");
    });
    startServices(true);
    EXPECT_EQ(DownloadPVGISTdata(modelFolder()), hourlyPath());
    EXPECT_EQ(readTextFile(hourlyPath()),
              "MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance\n");

    std::filesystem::remove(hourlyPath());
    page = "time,G(i),T2m,WS10m,Int\n";
    for (int hour = 0; hour < 24; ++hour) page += "202006" + std::to_string(10 + hour % 10) + ":1010,500.0,25.0,2.0,0.0\n";
    EXPECT_EQ(DownloadPVGISTdata(modelFolder()), hourlyPath());
    EXPECT_EQ(readTextFile(hourlyPath()),
              "MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance,"
              "AvgTemperature,AvgWindSpeed\n");
}

TEST_F(ClimateDownload, UnreachablePvgisFallsBackToNasaPower) {
    serve("/api/temporal/hourly/point", 200, nasaAnswer(), "text/csv");
    startServices(false);

    EXPECT_EQ(DownloadPVGISTdata(modelFolder()), hourlyPath());
    EXPECT_TRUE(messages().empty());
    EXPECT_EQ(readTextFile(hourlyPath()), NASA_HOURLY);
    ASSERT_EQ(requests.targets.size(), 1u);
    EXPECT_EQ(requests.targets[0], NASA_TARGET);
    EXPECT_EQ(readTextFile(dir.path("tmp/NASA_POWER_raw.csv")), nasaAnswer());
}

// A 422 answer with JSON, then an HTML page: neither converts, so the raw
// file stays as it was, missing or older.
TEST_F(ClimateDownload, NasaErrorsAfterPvgisFailureEndInTheFailureMessages) {
    std::string body = "{\"messages\":[\"start: date out of range\"]}";
    int status = 422;
    server.server().Get("/api/temporal/hourly/point", [&](const httplib::Request&, httplib::Response& r) {
        r.status = status;
        r.set_content(body, "text/html");
    });
    startServices(false);
    const std::string raw = dir.path("tmp/PVGIST_R.csv");
    EXPECT_EQ(DownloadPVGISTdata(modelFolder()), "");
    EXPECT_EQ(messages(), std::vector<std::string>{"Cannot open file " + raw});

    std::string older;
    for (int i = 0; i < 10; ++i) older += "older line\n";
    writeTextFile(raw, older);
    body = "<html>\n<body>\n<h1>503 Service Temporarily Unavailable</h1>\n</body>\n</html>\n";
    status = 503;
    EXPECT_EQ(DownloadPVGISTdata(modelFolder()), "");
    EXPECT_EQ(messages().back(), "Failed");
    EXPECT_EQ(readTextFile(raw), older);
    EXPECT_EQ(readTextFile(dir.path("tmp/NASA_POWER_raw.csv")), body);  // the page lands like data
    EXPECT_FALSE(std::filesystem::exists(hourlyPath()));
}

TEST_F(ClimateDownload, HourlyFileBesideTheModelIsUsedWithoutAsking) {
    serve("/api/v5_3/seriescalc", 200, pvgisAnswer(twoYears(), "\n"), "text/csv");
    startServices(true);
    writeTextFile(dir.path("model/pvgist_h.csv"), "copied from another site\n");
    EXPECT_EQ(DownloadPVGISTdata(modelFolder()), dir.path("model/pvgist_h.csv"));
    EXPECT_TRUE(requests.targets.empty());
}

TEST_F(ClimateDownload, DecimalCommaLocaleChangesNothing) {
    serve("/api/temporal/hourly/point", 200, nasaAnswer(), "text/csv");
    startServices(false);
    char probe[16] = "";
    if (switchToDecimalComma(dir)) std::snprintf(probe, sizeof probe, "%.2f", 3.25);
    std::string path;
    IrradianceComponents c;
    if (std::string(probe) == "3,25") {
        path = DownloadPVGISTdata(modelFolder());
        c = GetRealIrradianceForTime("2024-06-21", "07:00", HourIrradianceIndex(LoadHourlyClimateList(path)));
    }
    std::setlocale(LC_NUMERIC, "C");
    unsetenv("LOCPATH");
    ASSERT_EQ(std::string(probe), "3,25") << "no locale with a decimal comma could be made (localedef, locales)";

    EXPECT_EQ(path, hourlyPath());
    EXPECT_EQ(requests.targets, std::vector<std::string>{NASA_TARGET});
    EXPECT_EQ(readTextFile(hourlyPath()), NASA_HOURLY);
    EXPECT_EQ(c.beam, 560.0);
    EXPECT_EQ(c.diffuse, 190.5);
    EXPECT_EQ(c.reflected, 0.0);
}
