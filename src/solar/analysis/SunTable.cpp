#include "SunTable.h"

SunTable& sunTable() {
    static SunTable table;
    return table;
}

void resetSunTable() {
    SunTable& table = sunTable();
    table.sunData.fill(SunHours{});
    table.sunCount = 0;
    table.shadow_initialized = false;
    table.GlobalYear = table.GlobalMonth = table.GlobalDay = table.GlobalHour = 0;
    table.SolarYear = DEFAULT_SOLAR_YEAR;
}
