#include <QRegularExpression>
#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>

#include "Csv2Svg.h"

namespace {

double number(const QString& text) { return std::strtod(text.trimmed().toLatin1().constData(), nullptr); }

}  // namespace

int CsvuInt(double value) {
    if (std::isnan(value)) return 0;
    return static_cast<int>(std::clamp(value, double(INT_MIN), double(INT_MAX)));
}

void ParseCsvuMeta(const QString& line, CSVU_Meta& meta) {
    QString body = line.trimmed();
    if (body.startsWith(QLatin1Char('@'))) body.remove(0, 1);
    for (const QString& pair : body.split(QLatin1Char(','))) {
        const int eq = pair.indexOf(QLatin1Char('='));
        if (eq < 0) continue;
        const QString key = pair.left(eq).trimmed().toLower();
        const QString value = pair.mid(eq + 1).trimmed();
        if (key == QLatin1String("page")) {
            const QString page = value.toUpper();
            if (page == QLatin1String("A4"))
                meta.pageWmm = 297, meta.pageHmm = 210;
            else if (page == QLatin1String("A3"))
                meta.pageWmm = 420, meta.pageHmm = 297;
            else if (page == QLatin1String("A2"))
                meta.pageWmm = 594, meta.pageHmm = 420;
        } else if (key == QLatin1String("rotate_deg")) {
            meta.rotateDeg = number(value);
        } else if (key == QLatin1String("margin_mm")) {
            meta.margin = number(value);
        } else if (key == QLatin1String("dim_offset_mm")) {
            meta.dimOffsetMm = number(value);
        } else if (key == QLatin1String("dim_factor")) {
            meta.dimFactor = number(value);
        } else if (key == QLatin1String("dim_dec")) {
            meta.dimDec = int(std::strtol(value.toLatin1().constData(), nullptr, 10));
        } else if (key == QLatin1String("interactive")) {
            meta.interactive = int(std::strtol(value.toLatin1().constData(), nullptr, 10));
        }
    }
}

QStringList SplitCsvuRow(const QString& line) {
    QStringList fields;
    QString current;
    int depth = 0;
    for (QChar c : line) {
        if (c == QLatin1Char('(')) ++depth;
        if (c == QLatin1Char(')') && depth > 0) --depth;
        if (c == QLatin1Char(',') && depth == 0) {
            fields << current.trimmed();
            current.clear();
        } else {
            current += c;
        }
    }
    fields << current.trimmed();
    return fields;
}

bool ParseCsvuColour(const QString& field, int& colour) {
    static const QRegularExpression rgb(
        QStringLiteral("^RGB\\(\\s*([-+0-9.]+)\\s*,\\s*([-+0-9.]+)\\s*,\\s*([-+0-9.]+)\\s*\\)$"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression integer(QStringLiteral("^[-+]?[0-9]+$"));
    const QString f = field.trimmed();
    const QRegularExpressionMatch m = rgb.match(f);
    if (m.hasMatch()) {
        const int r = CsvuInt(number(m.captured(1))) & 0xFF, g = CsvuInt(number(m.captured(2))) & 0xFF,
                  b = CsvuInt(number(m.captured(3))) & 0xFF;
        colour = r | (g << 8) | (b << 16);
        return true;
    }
    if (integer.match(f).hasMatch()) {
        colour = int(std::strtol(f.toLatin1().constData(), nullptr, 10));
        return true;
    }
    return false;
}
