#include "ClimateInUse.h"

ClimateInUse& climateInUse() {
    static ClimateInUse climate;
    return climate;
}

void SetClimateInUse(const QStringList& lines) {
    ClimateInUse& climate = climateInUse();
    climate.TSPVGIST = lines;
    const QString header = lines.isEmpty() ? QString() : lines.first();
    climate.hasTempData = header.contains(QLatin1String("AvgTemperature"));
    climate.hasWindData = header.contains(QLatin1String("AvgWindSpeed"));
    climate.irradiance = std::make_unique<HourIrradianceIndex>(lines);
    climate.hourClimate = std::make_unique<HourClimateIndex>(lines);
}

void ClearClimateInUse() { SetClimateInUse({}); }
