#include "ClimateIrradianceLookup.h"

#include <cstdio>

#include "ClimateText.h"

HourIrradianceIndex::HourIrradianceIndex(const QStringList& lines) {
    const ClimateCLocale cNumbers;
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QByteArray line = lines[i].toUtf8();
        int month = 0, day = 0, hour = 0, minute = 0;
        IrradianceComponents c;
        double temperature = 0, wind = 0;
        if (std::sscanf(line.constData(), "%d-%d,%d:%d,%lf,%lf,%lf,%lf,%lf", &month, &day, &hour, &minute,
                        &c.beam, &c.diffuse, &c.reflected, &temperature, &wind) < 9)
            continue;
        firstLineOfHour_.insertFirst(month, day, hour, c);
    }
}

const IrradianceComponents* HourIrradianceIndex::find(int month, int day, int hour) const {
    return firstLineOfHour_.find(month, day, hour);
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
    ScanDateParts(date.c_str(), year, month, day);
    ScanTimeParts(time.c_str(), hour, minute);
    if (const IrradianceComponents* found = TS.find(month, day, hour)) result = *found;
    return result;
}
