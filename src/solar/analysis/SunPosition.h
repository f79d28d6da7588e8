// Where the sun stands at a place and hour, in Universal Time: the hour goes
// into the Julian date unchanged, no time zone is applied, because the
// climate series it is matched with are in UTC too.
#pragma once

bool IsLeapYear(int year);

// Gregorian calendar always; hour as a fraction of the day is added last.
double CalculateJulianDate(int year, int month, int day, double hour);

// Altitude in degrees with refraction, azimuth in degrees from north,
// clockwise. Latitude and longitude in decimal degrees, north and east positive.
void DoSunPosition(int year, int month, int day, double hour, double latitude, double longitude, double& altitude,
                   double& azimuth);

// Elapsed seconds as hours, minutes, seconds and milliseconds for the progress line.
void DecodeHMS(float seconds, int& h, int& m, int& s, int& ss);
