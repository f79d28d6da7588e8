// Latitude and longitude as text, one format for every display and file.
//
// Written: degrees, minutes and seconds with the hemisphere letter last, no
// blanks: 32°15'48.9227"N and 34°57'02.5804"E. Whole degrees, two-digit
// minutes, seconds with two whole digits and four decimals (about 3 mm), the
// degree sign U+00B0 in UTF-8; N or S, E or W, zero counting as N and E.
//
// Read: that form; degrees/minutes/seconds with slashes (32/15/48.92274),
// blanks or colons; decimal degrees (32.1234567); minutes and seconds may be
// left off. A leading minus, or the letter S or W before or after the number,
// makes it negative. Minutes and seconds lie in 0..60, latitudes within 90
// degrees, longitudes within 180.
#pragma once

#include <QString>

QString GisLatitudeToStr(double radians);
QString GisLongitudeToStr(double radians);
// False, radians unchanged, for text that is none of the forms above.
bool GisStrToLatitude(const QString& text, double& radians);
bool GisStrToLongitude(const QString& text, double& radians);
