// A synthetic hourly climate year in the layout of the folded climate file
// "PVGIST_H.csv", for sites and machines without the climate services: a
// clear sky from the sun's course, dimmed by a seeded day-by-day cloud cover.
// Nothing in it is measured; it only has to look like a plausible year.
#pragma once

#include <string>
#include <vector>

// One UTC hour. Irradiance on the horizontal plane, W/m2.
struct SyntheticHour {
    int month = 0;
    int day = 0;
    int hour = 0;
    double beam = 0;
    double diffuse = 0;
    // A horizontal plane sees no ground: 0, as in the services' answers for it.
    double reflected = 0;
    double temperature = 0;  // degrees C
    double wind = 0;         // m/s
    double cloudCover = 0;   // 0 clear to 1 overcast; not written to the file
};

// Every hour of the 365 days of DEFAULT_SOLAR_YEAR, in order. The sun is
// DoSunPosition's at the full hour; an hour with the sun at or below the
// horizon has no irradiance. Equal arguments give an equal year.
std::vector<SyntheticHour> MakeSyntheticClimateYear(double latitude, double longitude, unsigned seed);

// The file's text: header with temperature and wind, "MM-DD,HH:00" rows,
// irradiance as FixedText(v, 6, 2), temperature and wind as FixedText(v, 6, 1).
std::string SyntheticClimateText(const std::vector<SyntheticHour>& hours);

// Makes the year and writes it through a temporary file; false when it
// cannot be written.
bool WriteSyntheticClimateFile(double latitude, double longitude, unsigned seed, const std::string& path);
