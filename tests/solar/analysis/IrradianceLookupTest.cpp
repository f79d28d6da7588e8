// The indexed look-up answers as the search of the list from line 1 does,
// quirks included; that search is written out here as the reference.
#include <gtest/gtest.h>

#include <cstdio>

#include "solar/analysis/ClimateIrradianceLookup.h"

namespace {

// The search from line 1 for the first line that scans in full with the
// hour's month, day and hour. Each line is scanned once up front, which
// changes nothing since the scan of a line does not depend on the hour asked.
class LinearSearch {
public:
    explicit LinearSearch(const QStringList& TS) : empty_(TS.isEmpty()) {
        for (qsizetype i = 1; i < TS.size(); ++i) {
            Line l;
            l.fields = std::sscanf(TS[i].toUtf8().constData(), "%d-%d,%d:%d,%lf,%lf,%lf,%lf,%lf", &l.month, &l.day,
                                   &l.hour, &l.minute, &l.c.beam, &l.c.diffuse, &l.c.reflected, &l.temperature,
                                   &l.wind);
            lines_.push_back(l);
        }
    }
    IrradianceComponents operator()(const std::string& date, const std::string& time) const {
        IrradianceComponents result{-1, -1, -1};
        if (empty_) return result;
        int year = 0, month = 0, day = 0, hour = 0, minute = 0;
        std::sscanf(date.c_str(), "%4d-%2d-%2d", &year, &month, &day);
        std::sscanf(time.c_str(), "%2d:%2d", &hour, &minute);
        for (const Line& l : lines_) {
            if (l.fields < 9) continue;
            if (l.month == month && l.day == day && l.hour == hour) return l.c;
        }
        return result;
    }

private:
    struct Line {
        int fields = 0, month = 0, day = 0, hour = 0, minute = 0;
        IrradianceComponents c;
        double temperature = 0, wind = 0;
    };
    bool empty_;
    std::vector<Line> lines_;
};

// A daylight year with the odd lines a list can hold: a header that would
// match, a second line for an hour, lines of too few fields, blanks inside
// fields, unpadded and impossible dates, minutes other than 00.
QStringList quirkyList() {
    QStringList lines = {"06-21,12:00,1,2,3,4,5"};
    const int days[12] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int month = 1; month <= 12; ++month)
        for (int day = 1; day <= days[month - 1]; ++day)
            for (int hour = 5; hour <= 16; ++hour)
                lines.append(QString::asprintf("%02d-%02d,%02d:00,%d.%02d,%d.5,%d.25,21.4,3.2", month, day, hour,
                                               month * 50 + hour, day, hour * 3, day + hour));
    lines.insert(5, "01-01,05:00,999,999,999,20.0,1.0");
    lines.insert(3, "01-01,07:00,777,777,777,20.0");
    lines.append({" 3- 4, 17:30, 1.5, 2.5, 3.5, 20, 1", "3-4,18:45,4.5,5.5,6.5,20,1", "13-40,99:00,1,2,3,4,5",
                  "-1--2,-3:00,7,8,9,1,2", "07-01,25:00,7,8,9,1,2trailing", "garbage", "",
                  "12-31,23:00,1e3,-2,0x10,1,1", "12-30,23:00,1,2,3"});
    return lines;
}

void expectSame(const IrradianceComponents& a, const IrradianceComponents& b, const std::string& where) {
    EXPECT_EQ(a.beam, b.beam) << where;
    EXPECT_EQ(a.diffuse, b.diffuse) << where;
    EXPECT_EQ(a.reflected, b.reflected) << where;
}

}  // namespace

TEST(IrradianceLookup, IndexAnswersEveryHourAsTheSearchDoes) {
    const QStringList list = quirkyList();
    const HourIrradianceIndex index(list);
    const LinearSearch linearSearch(list);
    int matched = 0;
    for (int month = -1; month <= 14; ++month)
        for (int day = -2; day <= 41; ++day)
            for (int hour = -3; hour <= 25; ++hour) {
                char date[32], time[16];
                std::snprintf(date, sizeof date, "2024-%02d-%02d", month, day);
                std::snprintf(time, sizeof time, "%02d:30", hour);
                const IrradianceComponents expected = linearSearch(date, time);
                expectSame(GetRealIrradianceForTime(date, time, index), expected, std::string(date) + " " + time);
                matched += expected.beam != -1;
            }
    EXPECT_EQ(matched, 366 * 12 + 5);
    for (const char* date : {"2024-6-21", "2024-03-04", "20240304", "", "garbage", "2024-13-40"})
        for (const char* time : {"12:00", "17", "", "x", "99:00", "23:59"})
            expectSame(GetRealIrradianceForTime(date, time, index), linearSearch(date, time),
                       std::string(date) + " " + time);
}

TEST(IrradianceLookup, FirstLineOfAnHourWinsAndHeaderNeverMatches) {
    const HourIrradianceIndex index(quirkyList());
    const IrradianceComponents first = GetRealIrradianceForTime("2024-01-01", "05:00", index);
    EXPECT_EQ(first.beam, 55.01);  // the inserted 999 line comes later
    EXPECT_EQ(first.diffuse, 15.5);
    EXPECT_EQ(first.reflected, 6.25);
    EXPECT_EQ(GetRealIrradianceForTime("2024-06-21", "12:00", index).beam, 312.21);
    EXPECT_EQ(GetRealIrradianceForTime("2024-03-04", "17:59", index).beam, 1.5);
    EXPECT_EQ(GetRealIrradianceForTime("2024-12-31", "23:00", index).beam, 1000);
}

TEST(IrradianceLookup, ListWithoutTemperatureOrWindMatchesNoHour) {
    const QStringList lists[] = {
        {},
        {"MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance"},
        {"MM-DD,HH:MM,AvgBeamInclinedIrradiance,AvgDiffuseInclinedIrradiance,AvgReflectedIrradiance",
         "06-21,12:00,800.00,120.00,0.00", "06-21,13:00,700.00,110.00,0.00"}};
    for (const QStringList& list : lists) {
        const IrradianceComponents c = GetRealIrradianceForTime("2024-06-21", "12:00", HourIrradianceIndex(list));
        EXPECT_EQ(c.beam, -1);
        EXPECT_EQ(c.diffuse, -1);
        EXPECT_EQ(c.reflected, -1);
    }
}
