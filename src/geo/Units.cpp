#include "Units.h"

#include <cmath>

QString Imperial(double d, bool area) {
    constexpr double kFeetPerMetre = 3.28084;
    constexpr double kSquareFeetPerSquareMetre = 10.7639;
    if (area) return QString::asprintf("%.1fft\u00b2", std::fabs(d) * kSquareFeetPerSquareMetre);
    const float feet = static_cast<float>(std::fabs(d) * kFeetPerMetre);
    const int wholeFeet = static_cast<int>(feet);
    const double inches = (feet - wholeFeet) * 12.0;
    if (wholeFeet > 0) {
        const QString text = QString::asprintf("%d' %.0f\"", wholeFeet, inches);
        return d < 0 ? "-(" + text + ")" : text;
    }
    const QString text = QString::asprintf("%.1f\"", inches);
    return d < 0 ? "-" + text : text;
}

double azimD(double x1, double y1, double x2, double y2) {
    constexpr double kPi = 3.141592654;
    const double dx = std::floor((x2 - x1) * 100 + 0.5) / 100;
    const double dy = std::floor((y2 - y1) * 100 + 0.5) / 100;
    if (dy == 0) {
        if (dx > 0) return 90;
        if (dx < 0) return 270;
        return 0;
    }
    const double a = std::atan(std::fabs(dx / dy)) * 180 / kPi;
    if (dx >= 0 && dy > 0) return a;
    if (dx >= 0) return 180 - a;
    if (dy < 0) return 180 + a;
    return 360 - a;
}

double distance(double x1, double y1, double x2, double y2) { return std::hypot(x2 - x1, y2 - y1); }

double distance(double x1, double y1, double z1, double x2, double y2, double z2) {
    const double dx = x2 - x1, dy = y2 - y1, dz = z2 - z1;
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

void DAzim(double x, double y, double dist, double azDeg, double& outX, double& outY) {
    constexpr double kPi = 3.141592654;
    const double az = azDeg * kPi / 180;
    outX = x + dist * std::cos(kPi / 2 - az);
    outY = y + dist * std::sin(kPi / 2 - az);
}
