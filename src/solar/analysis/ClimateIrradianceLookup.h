// The irradiance of one hour from the hourly climate list. The list is read
// once into an index, so a panel's year of look-ups scans no lines, and the
// index answers exactly as a search of the list from line 1 would.
#pragma once

#include <QStringList>
#include <string>

#include "HourTable.h"

// W/m2 on the horizontal plane.
struct IrradianceComponents {
    double beam = 0;
    double diffuse = 0;
    double reflected = 0;
};

class HourIrradianceIndex {
public:
    // Line 0 of the list is its header. A line counts only when it scans as
    // "%d-%d,%d:%d,%lf,%lf,%lf,%lf,%lf" in full (month, day, hour, minute,
    // beam, diffuse, reflected, temperature, wind), so a list without
    // temperature or wind matches no hour; the first line of an hour wins.
    explicit HourIrradianceIndex(const QStringList& lines);
    // Null when no line has this month, day and hour; minutes are not compared.
    const IrradianceComponents* find(int month, int day, int hour) const;

private:
    HourTable<IrradianceComponents> firstLineOfHour_;
};

// The hourly climate list "PVGIST_H.csv" as lines; empty when it cannot be read.
QStringList LoadHourlyClimateList(const std::string& path);

// date "YYYY-MM-DD" and time "HH:MM" as scanned by "%4d-%2d-%2d" and
// "%2d:%2d". All three components are -1, the mark of an hour without
// climate data, when the list is empty or no line matches.
IrradianceComponents GetRealIrradianceForTime(const std::string& date, const std::string& time,
                                              const HourIrradianceIndex& TS);
