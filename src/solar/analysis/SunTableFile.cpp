#include "SunTableFile.h"

#include <charconv>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <vector>

#include "ClimateText.h"
#include "EnergyModel.h"
#include "SunPosition.h"
#include "SunTable.h"
#include "app/services/SessionPaths.h"
#include "app/services/SunGlobalLog.h"

std::string SunTableFileName(const std::string& panelName) {
    std::string clean = panelName;
    for (char& c : clean)
        if (c == '/') c = '_';
    return sessionPaths().ORVO_T + "Panel_" + clean + "_Sun.csv";
}

namespace {

// One hour of the sun's course with the sun above the horizon, and the
// beginning of its row, "YYYY-MM-DD,HH:00,altitude,azimuth,", ready to copy.
struct SunCourseHour {
    int month = 0;
    int day = 0;
    int hour = 0;
    double altitude = 0;
    double azimuth = 0;
    std::string rowStart;
};

struct SunCourse {
    double latitude = 0;
    double longitude = 0;
    int year = 0;
    bool filled = false;
    std::vector<SunCourseHour> hours;
};

// "%.*f" of the value: std::to_chars in fixed notation writes exactly what
// printf writes in the "C" locale, without its parsing of a format.
void appendFixed(std::string& text, double value, int decimals) {
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals).ptr;
    text.append(buffer, end);
}

// Every panel of a report run asks for the same site and year, and the sun
// position is most of a table's cost: the course is worked out once and
// kept. It is a memo of its arguments alone, so it never answers stale.
const SunCourse& sunCourse(double latitude, double longitude, int year) {
    static SunCourse course;
    if (course.filled && course.latitude == latitude && course.longitude == longitude && course.year == year)
        return course;
    course = SunCourse{latitude, longitude, year, true, {}};
    char date[32];
    for (int month = 1; month <= 12; ++month) {
        const int days = DAYS_IN_MONTH[month - 1] + (month == 2 && IsLeapYear(year) ? 1 : 0);
        for (int day = 1; day <= days; ++day)
            for (int hour = 0; hour < 24; ++hour) {
                double altitude = 0, azimuth = 0;
                DoSunPosition(year, month, day, hour, latitude, longitude, altitude, azimuth);
                if (!(altitude > 0)) continue;
                std::snprintf(date, sizeof date, "%04d-%02d-%02d,%02d:%02d,", year, month, day, hour, 0);
                std::string start = date;
                appendFixed(start, altitude, 2);
                start += ',';
                appendFixed(start, azimuth, 2);
                start += ',';
                course.hours.push_back({month, day, hour, altitude, azimuth, std::move(start)});
            }
    }
    return course;
}

// A field of 1 to 15 characters up to a comma, as "%15[^,]," reads it.
const char* scanTextField(const char* p, char (&field)[16]) {
    std::size_t n = 0;
    while (p[n] && p[n] != ',' && n < 15) ++n;
    if (n == 0 || p[n] != ',') return nullptr;
    std::memcpy(field, p, n);
    field[n] = '\0';
    return p + n + 1;
}

// A plain decimal ("-12.34") as the table writes it, ended by `end` or, for
// the last field, by the line's end; nullptr for anything else.
const char* scanPlainNumber(const char* p, char end, double& value) {
    const char* q = p;
    if (*q == '-') ++q;
    const char* digits = q;
    while (*q >= '0' && *q <= '9') ++q;
    if (q == digits) return nullptr;
    if (*q == '.') {
        const char* fraction = ++q;
        while (*q >= '0' && *q <= '9') ++q;
        if (q == fraction) return nullptr;
    }
    const bool ended = end ? *q == end : (*q == ',' || *q == '\n' || *q == '\r' || *q == '\0');
    if (!ended || std::from_chars(p, q, value).ec != std::errc()) return nullptr;
    return end ? q + 1 : q;
}

// Date, time, altitude and azimuth of a row, exactly as
// sscanf("%15[^,],%15[^,],%lf,%lf") == 4 reads them. The rows the table
// writes take the quick way; any other line goes to sscanf itself.
bool scanSunRow(const char* line, bool pointDecimal, SunHours& row) {
    if (pointDecimal) {
        const char* p = scanTextField(line, row.date);
        if (p) p = scanTextField(p, row.time);
        if (p) p = scanPlainNumber(p, ',', row.altitude);
        if (p && scanPlainNumber(p, '\0', row.azimuth)) return true;
        row = SunHours{};
    }
    return std::sscanf(line, "%15[^,],%15[^,],%lf,%lf", row.date, row.time, &row.altitude, &row.azimuth) == 4;
}

}  // namespace

int GenerateSunPositionData(double latitude, double longitude, int year, double panelTilt, double panelAzimuth,
                            const std::string& fileName) {
    SunTable& table = sunTable();
    const SunCourse& course = sunCourse(latitude, longitude, year);
    std::string text = "Date,Local Time,Altitude,Azimuth,Incident_Angle,IAM_Factor\n";
    text.reserve(text.size() + course.hours.size() * 48);
    int count = 0;
    for (const SunCourseHour& h : course.hours) {
        // The energy model's debug prints read the hour in work.
        table.GlobalYear = year;
        table.GlobalMonth = h.month;
        table.GlobalDay = h.day;
        table.GlobalHour = h.hour;
        const double incident = IncidentAngle(panelTilt, panelAzimuth, h.altitude, h.azimuth);
        const double iam = IAMFactor(incident);
        if (!(incident <= 90)) continue;
        text += h.rowStart;
        appendFixed(text, incident, 2);
        text += ',';
        appendFixed(text, iam, 4);
        text += '\n';
        ++count;
    }
    // The last hour of the year was the last in work, sun or not.
    table.GlobalYear = year;
    table.GlobalMonth = 12;
    table.GlobalDay = 31;
    table.GlobalHour = 23;
    // Written whole through a temporary file: a half table never takes the name.
    if (!WriteTextFileAtomically(fileName, text)) {
        PrintSunLog("ERROR: Cannot create sun position file\n");
        return -1;
    }
    PrintSunLog("Sun position data generated: %d entries\n", count);
    return count;
}

void CleanupShadowing() {
    SunTable& table = sunTable();
    table.sunCount = 0;
    table.shadow_initialized = false;
}

bool InitializeShadowing(const std::string& sunCsvPath) {
    SunTable& table = sunTable();
    if (table.shadow_initialized) CleanupShadowing();
    PrintSunLog("Initializing shadowing...\n");
    std::FILE* file = std::fopen(sunCsvPath.c_str(), "r");
    if (!file) {
        PrintSunLog("ERROR: Could not open sun CSV %s\n", sunCsvPath.c_str());
        CleanupShadowing();
        return false;
    }
    table.sunCount = 0;
    // Lines come through a 256-character buffer: a longer line arrives in pieces.
    char line[256];
    // sscanf reads numbers in the locale's notation: the quick way only where that is "C".
    const bool pointDecimal = std::strcmp(std::localeconv()->decimal_point, ".") == 0;
    if (std::fgets(line, sizeof line, file)) {
        while (std::fgets(line, sizeof line, file) && table.sunCount < SUN_TABLE_ROW_LIMIT) {
            SunHours row;
            if (scanSunRow(line, pointDecimal, row)) table.sunData[table.sunCount++] = row;
        }
    }
    std::fclose(file);
    PrintSunLog("Sun positions loaded: %d\n", table.sunCount);
    if (table.sunCount <= 0) {
        PrintSunLog("ERROR: No valid sun positions parsed!\n");
        CleanupShadowing();
        return false;
    }
    table.shadow_initialized = true;
    PrintSunLog("Shadowing initialization completed successfully.\n");
    return true;
}
