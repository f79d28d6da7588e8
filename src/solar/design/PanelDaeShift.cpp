#include "PanelDaeShift.h"

#include "PanelDaeText.h"
#include "app/services/RunLog.h"

namespace {

// Shifts the numbers of text[from, to), counting components across lines.
QString shiftNumbers(const QString& text, qsizetype from, qsizetype to, const double delta[3], int& component) {
    QString out = text.left(from);
    qsizetype i = from;
    while (i < to) {
        if (text[i].isSpace()) {
            out += text[i++];
            continue;
        }
        qsizetype end = i;
        while (end < to && !text[end].isSpace()) ++end;
        const QString token = text.mid(i, end - i);
        bool ok = false;
        const double value = token.toDouble(&ok);
        out += ok ? paneldae::Fmt("%.6f", value + delta[component++ % 3]) : token;
        i = end;
    }
    return out + text.mid(to);
}

QString shiftAttributes(QString line, const double delta[3]) {
    static const char* const keys[3] = {" x=\"", " y=\"", " z=\""};
    for (int k = 0; k < 3; ++k) {
        const qsizetype at = line.indexOf(QLatin1String(keys[k]));
        if (at < 0) continue;
        const qsizetype begin = at + 4;
        const qsizetype end = line.indexOf(QLatin1Char('"'), begin);
        if (end < 0) continue;
        bool ok = false;
        const double value = line.mid(begin, end - begin).toDouble(&ok);
        if (ok) line.replace(begin, end - begin, paneldae::Fmt("%.6f", value + delta[k]));
    }
    return line;
}

bool isPointElement(const QString& line) {
    return line.contains(QLatin1String("<center_point")) || line.contains(QLatin1String("<corner_")) ||
           line.contains(QLatin1String("<pp_"));
}

}  // namespace

bool ShiftDAE(const QString& file, double dx, double dy, double dz) {
    QStringList lines;
    if (!paneldae::ReadLines(file, lines)) {
        PrintRunLog("ERROR in ShiftDAE: can not read %s\n", qPrintable(file));
        return false;
    }
    const double delta[3] = {dx, dy, dz};
    bool inPositions = false;
    int component = 0;
    for (QString& line : lines) {
        qsizetype from = 0;
        if (!inPositions && line.contains(QLatin1String("<float_array")) &&
            paneldae::AttributeValue(line, QStringLiteral("id")).contains(QLatin1String("positions_array"))) {
            inPositions = true;
            component = 0;
            from = line.indexOf(QLatin1Char('>'), line.indexOf(QLatin1String("<float_array"))) + 1;
            if (from == 0) from = line.size();
        }
        if (inPositions) {
            const qsizetype close = line.indexOf(QLatin1String("</float_array>"), from);
            line = shiftNumbers(line, from, close < 0 ? line.size() : close, delta, component);
            if (close >= 0) inPositions = false;
        } else if (isPointElement(line)) {
            line = shiftAttributes(line, delta);
        }
    }
    QString error;
    if (!paneldae::WriteLines(file, lines, &error)) {
        PrintRunLog("ERROR in ShiftDAE: %s\n", qPrintable(file + QStringLiteral(": ") + error));
        return false;
    }
    return true;
}
