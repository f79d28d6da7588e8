#include "ClimateIrradianceLookup.h"

#include <cstdio>

#include "ClimateText.h"

std::size_t HourIrradianceIndex::HourKeyHash::operator()(const HourKey& k) const {
    return (std::size_t(unsigned(k.month)) * 1000003u) ^ (std::size_t(unsigned(k.day)) * 10007u) ^ unsigned(k.hour);
}

HourIrradianceIndex::HourIrradianceIndex(const QStringList& lines) {
    const ClimateCLocale cNumbers;
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QByteArray line = lines[i].toUtf8();
        HourKey key{};
        int minute = 0;
        IrradianceComponents c;
        double temperature = 0, wind = 0;
        if (std::sscanf(line.constData(), "%d-%d,%d:%d,%lf,%lf,%lf,%lf,%lf", &key.month, &key.day, &key.hour, &minute,
                        &c.beam, &c.diffuse, &c.reflected, &temperature, &wind) < 9)
            continue;
        firstLineOfHour_.try_emplace(key, c);
    }
}

const IrradianceComponents* HourIrradianceIndex::find(int month, int day, int hour) const {
    const auto it = firstLineOfHour_.find(HourKey{month, day, hour});
    return it == firstLineOfHour_.end() ? nullptr : &it->second;
}

QStringList LoadHourlyClimateList(const std::string& path) {
    std::vector<std::string> lines;
    QStringList list;
    if (!ReadTextLines(path, lines)) return list;
    list.reserve(static_cast<qsizetype>(lines.size()));
    for (const std::string& line : lines) list.append(QString::fromStdString(line));
    return list;
}

IrradianceComponents GetRealIrradianceForTime(const std::string& date, const std::string& time,
                                              const HourIrradianceIndex& TS) {
    IrradianceComponents result{-1, -1, -1};
    int year = 0, month = 0, day = 0, hour = 0, minute = 0;
    std::sscanf(date.c_str(), "%4d-%2d-%2d", &year, &month, &day);
    std::sscanf(time.c_str(), "%2d:%2d", &hour, &minute);
    if (const IrradianceComponents* found = TS.find(month, day, hour)) result = *found;
    return result;
}
