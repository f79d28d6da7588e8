// Air temperature and wind of an hour from the hourly climate list. The list
// is indexed once, so that a panel's year of look-ups costs no scans, with
// the answers of a search from line 1 for the first line that begins with
// "MM-DD,HH:00".
#pragma once

#include <QString>
#include <QStringList>

#include "HourTable.h"

struct HourClimate {
    double ambientTemp = 20;  // degrees C
    double windSpeed = 1;     // m/s; read, and used by no formula
};

class HourClimateIndex {
public:
    // Line 0 of the list is its header.
    explicit HourClimateIndex(const QStringList& lines);
    // The defaults where no line begins with the hour's key, or where that
    // line has fewer than 7 fields; a field that is no number keeps its default.
    HourClimate lookup(int month, int day, int hour) const;

private:
    HourTable<HourClimate> firstLineOfKey_;
};
