#include "EnterLatLonAlt.h"

#include <QStringList>

#include <cmath>
#include <cstdio>

#include "Frames.h"
#include "GeoConversions.h"
#include "LatLonText.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/RunLog.h"

namespace {

bool readLatLon(const QString& latText, const QString& lonText, double& Lat, double& Lon) {
    constexpr double kPi = 3.141592654;
    double latRadians, lonRadians;
    if (!GisStrToLatitude(latText, latRadians) || !GisStrToLongitude(lonText, lonRadians)) return false;
    Lat = latRadians * 180 / kPi;
    Lon = lonRadians * 180 / kPi;
    return true;
}

}  // namespace

TGIS_Point3D EnterLatLonAlt() {
    TGIS_Point3D result;
    QString latText = "32/15/48.92274";
    if (!MyInputQuery("Set the latitude Or [Lat Lon] or [East North]",
                      "Enter the latitude e.g. 32/15/48.92274  or [32.1234567 34.1234566]  or [345678 32345678]", latText))
        return result;

    double first = 0, second = 0;
    double East = 0, North = 0;
    const QByteArray answer = latText.toLatin1();
    if (std::sscanf(answer.constData(), "%lf%lf", &first, &second) == 2) {
        if (std::fabs(first) < 200 && std::fabs(second) < 200) {
            if (!GPSLatLon2EastNorth(first, second, East, North)) return result;
        } else {
            East = first;
            North = second;
        }
    } else if (const QStringList words = latText.split(' ', Qt::SkipEmptyParts);
               words.size() == 2 && readLatLon(words[0], words[1], first, second)) {
        if (!GPSLatLon2EastNorth(first, second, East, North)) return result;
    } else {
        QString lonText = "34/57/2.58040";
        if (!MyInputQuery("Set the longitude", "Enter the longitude e.g. 34/57/2.5804  or 34.1234567", lonText))
            return result;
        double Lat, Lon;
        if (!readLatLon(latText, lonText, Lat, Lon)) {
            PrintRunLog("EnterLatLonAlt: cannot read [%s] [%s]\n", latText.toUtf8().constData(),
                        lonText.toUtf8().constData());
            return result;
        }
        if (!GPSLatLon2EastNorth(Lat, Lon, East, North)) return result;
    }
    result.X = East;
    result.Y = North;
    result.Z = GetZFromXY(East, North);
    return result;
}
