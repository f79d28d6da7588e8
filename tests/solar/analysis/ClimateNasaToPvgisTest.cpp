// NASA POWER answers rewritten in PVGIS layout, compared with the rows
// worked out by hand from each answer.
#include <gtest/gtest.h>

#include "solar/analysis/ClimateNasaToPvgis.h"
#include "support/TestSupport.h"

using testsupport::readTextFile;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

const std::string PVGIS_HEADER = "time,Gb(i),Gd(i),Gr(i),H_sun,T2m,WS10m,Int\n";

std::string convert(const ScratchDir& dir, const std::string& answer) {
    writeTextFile(dir.path("nasa.csv"), answer);
    EXPECT_TRUE(ConvertNasaPowerToPvgisRaw(dir.path("nasa.csv"), dir.path("raw.csv")));
    return readTextFile(dir.path("raw.csv"));
}

}  // namespace

// Global 412.5 and diffuse 120.25 give beam 292.25; fill values read as
// night at 25 degrees; 71 degrees is out of range; a beam below 0 is 0;
// hour 24, month 0 and day 0 are skipped; year 0 is 2020; -90 degrees stays.
TEST(ClimateNasaToPvgis, ColumnsByNameWithTheirRepairs) {
    ScratchDir dir;
    EXPECT_EQ(convert(dir,
                      "-BEGIN HEADER- \r\n"
                      "NASA/POWER Source Native Resolution Hourly Data \r\n"
                      "The value for missing source data that cannot be computed is -999 \r\n"
                      "ALLSKY_SFC_SW_DWN     All Sky Surface Shortwave Downward Irradiance (Wh/m^2) \r\n"
                      "-END HEADER- \r\n"
                      "YEAR,MO,DY,HR,ALLSKY_SFC_SW_DWN,ALLSKY_SFC_SW_DIFF,ALLSKY_SFC_SW_DNI,T2M,WS2M\r\n"
                      "2018,1,1,0,0,0,0,14.52,3.1\r\n"
                      "2018,1,1,9,412.5,120.25,600.1,17.86,4.75\r\n"
                      "# a remark\r\n"
                      "\r\n"
                      "2018,1,1,10,-999,-999,-999,-999,-999\r\n"
                      "2018,1,1,11,100,150,0,71,2\r\n"
                      "2018,1,1,24,100,50,0,20,1\r\n"
                      "2018,0,1,12,100,50,0,20,1\r\n"
                      "2018,1,0,12,100,50,0,20,1\r\n"
                      "0,12,31,23,10,4,0,-90,0.5\r\n"),
              PVGIS_HEADER +
                  "20180101:00,0.000,0.000,0.000,0.000,14.52,3.10,0\n"
                  "20180101:09,292.250,120.250,0.000,412.500,17.86,4.75,0\n"
                  "20180101:10,0.000,0.000,0.000,0.000,25.00,0.00,0\n"
                  "20180101:11,0.000,150.000,0.000,100.000,25.00,2.00,0\n"
                  "20201231:23,6.000,4.000,0.000,10.000,-90.00,0.50,0\n");
}

// Names in any case and quotes, a date column, the local hour as "HH:MM",
// a units line after the header, no wind column; a row without an hour is
// skipped.
TEST(ClimateNasaToPvgis, AliasesQuotesAndAUnitsLine) {
    ScratchDir dir;
    EXPECT_EQ(convert(dir,
                      "\"Date\",\"LST\",\"allsky_sfc_sw_dwn\",\"ALLSKY_SFC_SW_DIFF\",\"t2m\"\n"
                      "\"\",\"\",\"W/m^2\",\"W/m^2\",\"C\"\n"
                      "\"2019-03-04\",\"13:00\",\"500\",\"200\",\"12.5\"\n"
                      "\"2019/03/05\",\"7:30\",  \"0\",\"0\"  ,\"-5\"\n"
                      "\"20190306\",\"\",\"100\",\"50\",\"1\"\n"),
              PVGIS_HEADER +
                  "20190304:13,300.000,200.000,0.000,500.000,12.50,0.00,0\n"
                  "20190305:07,0.000,0.000,0.000,0.000,-5.00,0.00,0\n");
}

TEST(ClimateNasaToPvgis, AnswerWithoutRowsFailsAndLeavesTheOutput) {
    ScratchDir dir;
    const std::string header = "YEAR,MO,DY,HR,ALLSKY_SFC_SW_DWN,ALLSKY_SFC_SW_DIFF,T2M,WS2M\n";
    for (const std::string& answer : {std::string("{\"messages\":[\"Your request has exceeded the limit\"]}\n"),
                                      header, header + "-,-,-,-,W/m^2,W/m^2,C,m/s\n",
                                      header + "2018,1,1,24,1,1,1,1\n"}) {
        writeTextFile(dir.path("raw.csv"), "previous\n");
        writeTextFile(dir.path("nasa.csv"), answer);
        EXPECT_FALSE(ConvertNasaPowerToPvgisRaw(dir.path("nasa.csv"), dir.path("raw.csv"))) << answer;
        EXPECT_EQ(readTextFile(dir.path("raw.csv")), "previous\n");
    }
    EXPECT_FALSE(ConvertNasaPowerToPvgisRaw(dir.path("none.csv"), dir.path("raw.csv")));
}
