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

}  // namespace

HourClimateIndex::HourClimateIndex(const QStringList& lines) {
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QString& line = lines[i];
        if (line.size() < kKeyLength) continue;
        const QString key = line.left(kKeyLength);
        if (!firstLineOfKey_.contains(key)) firstLineOfKey_.insert(key, climateOfLine(line));
    }
}

HourClimate HourClimateIndex::lookup(int month, int day, int hour) const {
    const QString key = QString::asprintf("%02d-%02d,%02d:00", month, day, hour);
    return firstLineOfKey_.value(key, HourClimate{});
}
