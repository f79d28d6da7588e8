#include "SunTableFile.h"

#include <QString>
#include <cstdio>

#include "EnergyModel.h"
#include "app/services/SunGlobalLog.h"
#include "SunPosition.h"
#include "SunTable.h"
#include "app/services/FileHelpers.h"
#include "app/services/SessionPaths.h"

std::string SunTableFileName(const std::string& panelName) {
    std::string clean = panelName;
    for (char& c : clean)
        if (c == '/') c = '_';
    return sessionPaths().ORVO_T + "Panel_" + clean + "_Sun.csv";
}

int GenerateSunPositionData(double latitude, double longitude, int year, double panelTilt, double panelAzimuth,
                            const std::string& fileName) {
    SunTable& table = sunTable();
    std::string text = "Date,Local Time,Altitude,Azimuth,Incident_Angle,IAM_Factor\n";
    int count = 0;
    char row[160];
    for (int month = 1; month <= 12; ++month) {
        const int days = DAYS_IN_MONTH[month - 1] + (month == 2 && IsLeapYear(year) ? 1 : 0);
        for (int day = 1; day <= days; ++day) {
            for (int hour = 0; hour < 24; ++hour) {
                table.GlobalYear = year;
                table.GlobalMonth = month;
                table.GlobalDay = day;
                table.GlobalHour = hour;
                double altitude = 0, azimuth = 0;
                DoSunPosition(year, month, day, hour, latitude, longitude, altitude, azimuth);
                if (!(altitude > 0)) continue;
                const double incident = IncidentAngle(panelTilt, panelAzimuth, altitude, azimuth);
                const double iam = IAMFactor(incident);
                if (!(incident <= 90)) continue;
                std::snprintf(row, sizeof row, "%04d-%02d-%02d,%02d:%02d,%.2f,%.2f,%.2f,%.4f\n", year, month, day,
                              hour, 0, altitude, azimuth, incident, iam);
                text += row;
                ++count;
            }
        }
    }
    // Written whole through a temporary file: a half table never takes the name.
    if (!StringToFile(QString::fromLatin1(text), QString::fromStdString(fileName))) {
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
    if (std::fgets(line, sizeof line, file)) {
        while (std::fgets(line, sizeof line, file) && table.sunCount < SUN_TABLE_ROW_LIMIT) {
            SunHours row;
            if (std::sscanf(line, "%15[^,],%15[^,],%lf,%lf", row.date, row.time, &row.altitude, &row.azimuth) == 4)
                table.sunData[table.sunCount++] = row;
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
