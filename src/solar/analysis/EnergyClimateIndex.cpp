#include "EnergyClimateIndex.h"

namespace {

// The key "%02d-%02d,%02d:00" of a two-digit month, day and hour.
constexpr qsizetype kKeyLength = 11;

HourClimate climateOfLine(const QString& line) {
    HourClimate climate;
    const QStringList fields = line.split(QLatin1Char(','));
    if (fields.size() < 7) return climate;
    bool ok = false;
    const double temperature = fields[5].toDouble(&ok);
    if (ok) climate.ambientTemp = temperature;
    const double wind = fields[6].toDouble(&ok);
    if (ok) climate.windSpeed = wind;
    return climate;
}

int twoDigits(const QString& line, qsizetype at) {
    const QChar a = line[at], b = line[at + 1];
    const bool digits = a >= QLatin1Char('0') && a <= QLatin1Char('9') && b >= QLatin1Char('0') && b <= QLatin1Char('9');
    return digits ? (a.unicode() - '0') * 10 + (b.unicode() - '0') : -1;
}

// Month, day and hour of a line that begins "MM-DD,HH:00"; false otherwise.
bool keyOfLine(const QString& line, int& month, int& day, int& hour) {
    if (line.size() < kKeyLength || line[2] != QLatin1Char('-') || line[5] != QLatin1Char(',') ||
        line[8] != QLatin1Char(':') || line[9] != QLatin1Char('0') || line[10] != QLatin1Char('0'))
        return false;
    month = twoDigits(line, 0), day = twoDigits(line, 3), hour = twoDigits(line, 6);
    return month >= 0 && day >= 0 && hour >= 0;
}

}  // namespace

HourClimateIndex::HourClimateIndex(const QStringList& lines) {
    for (qsizetype i = 1; i < lines.size(); ++i) {
        int month = 0, day = 0, hour = 0;
        if (keyOfLine(lines[i], month, day, hour)) firstLineOfKey_.insertFirst(month, day, hour, climateOfLine(lines[i]));
    }
}

// Only two-digit parts can spell a line's key; anything else has no line.
HourClimate HourClimateIndex::lookup(int month, int day, int hour) const {
    const HourClimate* found = firstLineOfKey_.find(month, day, hour);
    return found ? *found : HourClimate{};
}
