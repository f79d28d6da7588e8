#include "LatLonText.h"

#include <QStringList>

#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr long long kUnitsPerSecond = 10000;
constexpr long long kUnitsPerMinute = 60 * kUnitsPerSecond;
constexpr long long kUnitsPerDegree = 60 * kUnitsPerMinute;

// Counting in ten-thousandths of a second first, so that 59.99996" carries
// into the minutes instead of printing as 60.0000".
QString angleToText(double radians, char positive, char negative) {
    const double degrees = radians * 180.0 / kPi;
    const long long units = std::llround(std::fabs(degrees) * kUnitsPerDegree);
    const char hemisphere = (degrees < 0 && units > 0) ? negative : positive;
    return QString::asprintf("%lld\u00b0%02lld'%02lld.%04lld\"%c", units / kUnitsPerDegree,
                             units % kUnitsPerDegree / kUnitsPerMinute, units % kUnitsPerMinute / kUnitsPerSecond,
                             units % kUnitsPerSecond, hemisphere);
}

bool textToAngle(const QString& text, char positive, char negative, double limit, double& radians) {
    QString t = text.trimmed().toUpper();
    bool negate = false;
    const auto takeLetter = [&](QChar letter) {
        if (letter == QChar(negative)) negate = true;
        else if (letter != QChar(positive)) return false;
        return true;
    };
    if (!t.isEmpty() && t.back().isLetter()) {
        if (!takeLetter(t.back())) return false;
        t.chop(1);
    } else if (!t.isEmpty() && t.front().isLetter()) {
        if (!takeLetter(t.front())) return false;
        t.remove(0, 1);
    }
    t = t.trimmed();
    if (t.startsWith('-') || t.startsWith('+')) {
        if (t.startsWith('-')) {
            if (negate) return false;
            negate = true;
        }
        t.remove(0, 1);
    }
    for (const QChar mark : {QChar(0x00b0), QChar('\''), QChar('"'), QChar('/'), QChar(':')}) t.replace(mark, ' ');
    const QStringList parts = t.split(' ', Qt::SkipEmptyParts);
    if (parts.isEmpty() || parts.size() > 3) return false;
    double value[3] = {0, 0, 0};
    for (int i = 0; i < parts.size(); ++i) {
        bool ok = false;
        value[i] = parts[i].toDouble(&ok);
        if (!ok || !std::isfinite(value[i]) || value[i] < 0) return false;
        // Only the last part may have a fraction, and only degrees may pass 60.
        if (i + 1 < parts.size() && value[i] != std::floor(value[i])) return false;
        if (i > 0 && value[i] >= 60) return false;
    }
    const double degrees = value[0] + value[1] / 60.0 + value[2] / 3600.0;
    if (degrees > limit) return false;
    radians = (negate ? -degrees : degrees) * kPi / 180.0;
    return true;
}

}  // namespace

QString GisLatitudeToStr(double radians) { return angleToText(radians, 'N', 'S'); }
QString GisLongitudeToStr(double radians) { return angleToText(radians, 'E', 'W'); }

bool GisStrToLatitude(const QString& text, double& radians) { return textToAngle(text, 'N', 'S', 90, radians); }
bool GisStrToLongitude(const QString& text, double& radians) { return textToAngle(text, 'E', 'W', 180, radians); }
