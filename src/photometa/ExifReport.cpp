#include "ExifReport.h"

#include <QFileInfo>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <type_traits>

#include "DroneTable.h"
#include "geo/Geoid.h"

namespace {

// Thermal sensors' widths in millimetres, for a 35 mm equivalent they don't report.
constexpr double Z30_SENSOR_MM = 9.071428;
constexpr double XT_SENSOR_MM = 7.6;
constexpr float XT2_LOW_ALTITUDE = 12;
constexpr int RTK_ABSENT = -999;
constexpr int RTK_FROM_ACCURACY = 50;

// A value for a field of a smaller type: beyond its range it stops at the
// ends, and a NaN in a whole-number field reads 0.
template <class Number>
Number narrowed(double value) {
    if constexpr (std::is_same_v<Number, double>) {
        return value;
    } else {
        if (std::isnan(value)) return std::is_integral_v<Number> ? Number(0) : Number(value);
        const double lowest = static_cast<double>(std::numeric_limits<Number>::lowest());
        const double highest = static_cast<double>(std::numeric_limits<Number>::max());
        return static_cast<Number>(std::clamp(value, lowest, highest));
    }
}

// One report, read tag by tag: a tag that is absent, or no number, leaves the field as it was.
struct Report {
    const QStringList& lines;

    QString text(const char* tag) const { return GetExifTag(lines, tag); }
    bool has(const char* tag) const { return !text(tag).isEmpty(); }
    // The number a value begins with: "32.1 S" reads 32.1, its letter is looked at apart.
    template <class Number>
    bool read(const char* tag, Number& field) const {
        const QByteArray value = text(tag).toUtf8();
        const char* begin = value.constData();
        const char* end = begin + value.size();
        if (begin < end && *begin == '+') ++begin;
        double number = 0;
        const auto [next, error] = std::from_chars(begin, end, number);
        if (error != std::errc() || next == begin) return false;
        field = narrowed<Number>(number);
        return true;
    }
    void read(const char* tag, QString& field) const {
        const QString value = text(tag);
        if (!value.isEmpty()) field = value;
    }
};

// Seconds of the day of "HH:MM:SS".
float secondsOfDay(QString time) {
    int h = 0, m = 0;
    float s = 0;
    std::sscanf(time.replace(':', ' ').toUtf8().constData(), "%d%d%f", &h, &m, &s);
    return static_cast<float>(3600.0 * h + 60.0 * m + s);
}

void readStrings(const Report& r, EXIF& e) {
    r.read("Make", e.Make);
    r.read("Camera Model Name", e.Model);
    r.read("GPS Date Stamp", e.GPSDate);
    r.read("GPS Time Stamp", e.GPSTime);
    r.read("GPS Altitude Ref", e.AltitudeRef);
    r.read("User Comment", e.UserComment);
    r.read("Serial Number", e.SerialNumber);
    r.read("Focal Length In 35mm Format", e.FocalLengthString);
    r.read("File Modification Date/Time", e.TrackCreateDate);
    r.read("Duration", e.TrackDuration);
    r.read("Track Duration", e.TrackDuration);
    r.read("Title", e.Title);
    r.read("File Size", e.FileSize);
    r.read("Image Size", e.ImageSize);
    e.FilePath = r.text("File Path");
    if (e.FilePath.isEmpty() && r.has("File Name")) e.FilePath = r.text("Directory") + "/" + r.text("File Name");
    r.read("File Modification Date/Time", e.FileModificationDateTime);
    r.read("File Creation Date/Time", e.FileCreationDateTime);
}

void readImage(const Report& r, EXIF& e) {
    r.read("S Min Sample Value", e.ZMin);
    r.read("S Max Sample Value", e.ZMax);
    r.read("Exif Image Width", e.Width);
    r.read("Image Width", e.Width);
    r.read("Exif Image Height", e.Height);
    r.read("Image Height", e.Height);
    r.read("JPEG Quality Estimate", e.JPEGQualityEstimate);
    r.read("Progressive Scans", e.ProgressiveScans);
    r.read("Orientation", e.Orientation);
}

void readAltitudes(const Report& r, EXIF& e) {
    r.read("GPS Altitude", e.GPSAltitude);
    if (!r.read("Absolute Altitude", e.AbsoluteAltitude)) e.AbsoluteAltitude = e.GPSAltitude;
    e.OriginalAbs = e.AbsoluteAltitude;
    // This camera writes its relative altitude ten times too small when low:
    // the absolute one is raised by the difference too.
    if (r.read("Relative Altitude", e.RelativeAltitude) && e.Model.contains("XT2", Qt::CaseInsensitive) &&
        e.RelativeAltitude < XT2_LOW_ALTITUDE) {
        const float dif = 9 * e.RelativeAltitude;
        e.RelativeAltitude *= 10;
        e.AbsoluteAltitude += dif;
    }
    r.read("Above Home Altitude", e.RelativeAltitude);
    r.read("Above Ground Altitude", e.RelativeAltitude);
}

void readAngles(const Report& r, EXIF& e, bool isEvo) {
    r.read("Gimbal Roll Degree", e.GimbalRoll);
    r.read("Sensor Roll", e.GimbalRoll);
    r.read("Camera Orientation NED Roll", e.GimbalRoll);
    r.read("Camera Orientation NED Pitch", e.GimbalPitch);
    r.read("Camera Orientation NED Yaw", e.GimbalYaw);
    r.read("Gimbal Roll", e.GimbalRoll);
    r.read("Roll", isEvo ? e.GimbalRoll : e.FlightRoll);
    r.read("Pitch", e.FlightPitch);
    r.read("Sensor Elevation", e.GimbalPitch);
    r.read("Yaw", e.FlightYaw);
    r.read("Camera Roll", e.GimbalRoll);
    r.read("Roll", e.FlightRoll);
    r.read("Gimbal Yaw Degree", e.GimbalYaw);
    r.read("Gimbal Yaw", e.GimbalYaw);
    if (r.read("Sensor Azimuth", e.GimbalYaw)) e.GimbalYaw = static_cast<float>(e.GimbalYaw * 180 / 3.141592654);
    r.read("GPS Img Direction", e.ImageRotate);
    r.read("Camera Yaw", e.GimbalYaw);
    r.read("Gimbal Pitch Degree", e.GimbalPitch);
    r.read("Gimbal Pitch", e.GimbalPitch);
    if (r.read("Flight Yaw Degree", e.Heading) && e.Heading < 0) e.Heading += 360;
    r.read("Camera Pitch", e.GimbalPitch);
    r.read("Flight Roll Degree", e.FlightRoll);
    r.read("Flight Yaw Degree", e.FlightYaw);
    r.read("Flight Pitch Degree", e.FlightPitch);
}

void readPosition(const Report& r, EXIF& e) {
    if (r.read("GPS Latitude", e.GPSLat) && r.text("GPS Latitude").contains('S')) e.GPSLat = -e.GPSLat;
    if (r.read("GPS Longitude", e.GPSLon) && r.text("GPS Longitude").contains('W')) e.GPSLon = -e.GPSLon;
    r.read("GPS Img Direction", e.GPSDirection);
    r.read("GPS Satellites", e.GPSSatellites);
    r.read("Video Frame Rate", e.VideoFrameRate);
    e.RtkFlag = RTK_ABSENT;
    r.read("Rtk Flag", e.RtkFlag);
    double accuracy = 0;
    if (r.read("GPSZ Accuracy", accuracy) && accuracy < 1) e.RtkFlag = RTK_FROM_ACCURACY;
}

void readRaster(const Report& r, EXIF& e) {
    r.read("Bits Per Sample", e.BitsPerSample);
    const QString scale = r.text("Pixel Scale");
    if (!scale.isEmpty()) {
        std::sscanf(scale.toUtf8().constData(), "%f %f", &e.Xres, &e.Yres);
    } else {
        r.read("X Resolution", e.Xres);
        r.read("Y Resolution", e.Yres);
    }
    float tie[5] = {0, 0, 0, e.TiePointX, e.TiePointY};
    const QString tiePoint = r.text("Model Tie Point");
    if (std::sscanf(tiePoint.toUtf8().constData(), "%f %f %f %f %f", &tie[0], &tie[1], &tie[2], &tie[3], &tie[4]) >= 5) {
        e.TiePointX = tie[3];
        e.TiePointY = tie[4];
    }
}

}  // namespace

QString GetExifTag(const QStringList& TS, const QString& Tag) {
    QString found;
    bool matched = false;
    for (const QString& line : TS) {
        const qsizetype colon = line.indexOf(':');
        if (colon < 0 || line.left(colon).trimmed().compare(Tag, Qt::CaseInsensitive) != 0) continue;
        const QString value = line.mid(colon + 1);
        if (!matched || value.size() > found.size()) found = value;
        matched = true;
    }
    const qsizetype dots = Tag.indexOf("...");
    if (!matched && dots >= 0) {
        const QString head = Tag.left(dots);
        for (const QString& line : TS) {
            const qsizetype colon = line.indexOf(':');
            if (colon >= 0 && line.contains(head)) {
                found = line.mid(colon + 1);
                break;
            }
        }
    }
    return found.trimmed();
}

EXIF GetExifFromTS(const QStringList& TS) {
    const Report r{TS};
    EXIF e;
    readStrings(r, e);
    const bool isEvo = e.Model.compare("XT705", Qt::CaseInsensitive) == 0;

    r.read("Focal Length In 35mm Format", e.FocalLengthIn35mm);
    r.read("Sensor Foc Len 35", e.FocalLengthIn35mm);
    if (e.FocalLength == 0) r.read("Focal Length", e.FocalLength);
    if (e.FocalLength == 0) r.read("Sensor Foc Len", e.FocalLength);

    QString taken = r.text("Date/Time Original");
    if (taken.isEmpty()) taken = r.text("Sony Date Time");
    if (!taken.isEmpty()) {
        e.Date = taken.section(' ', 0, 0);
        e.Time = taken.section(' ', 1);
        e.exiftime = secondsOfDay(e.Time);
    }
    readImage(r, e);

    if (!e.Model.isEmpty()) {
        DRONE& drone = photoMetaState().GlobalDRONE;
        drone = GetDroneFromModel(e.Model);
        // Video and raster pictures give their own size.
        if (QFileInfo(e.FilePath).suffix().compare("jpg", Qt::CaseInsensitive) != 0) {
            drone.Width = e.Width;
            drone.Height = e.Height;
        }
    }
    if (e.FocalLengthIn35mm == 0) {
        if (e.Model.contains("Z30"))
            e.FocalLengthIn35mm = static_cast<float>(e.FocalLength * 36 / Z30_SENSOR_MM);
        else if (e.Model.contains("XT"))
            e.FocalLengthIn35mm = static_cast<float>(e.FocalLength * 36 / XT_SENSOR_MM);
    }
    readAltitudes(r, e);
    readAngles(r, e, isEvo);
    readPosition(r, e);

    // Altitudes of this maker are above the geoid already.
    const double separation = GetGMGeoidalSeparation(e.GPSLat, e.GPSLon);
    if (e.Make != "NV") e.AbsoluteAltitude = static_cast<float>(e.AbsoluteAltitude - separation);

    readRaster(r, e);
    if (e.FocalLengthIn35mm == 0) e.FocalLengthIn35mm = e.FocalLength;
    e.DroneName = GetDroneFromModel(e.Model).Name;
    return e;
}
