#include "PanelDaeText.h"

#include <QFile>
#include <QSaveFile>
#include <QStringDecoder>
#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <vector>

namespace paneldae {

bool ReadText(const QString& path, QString& text) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    QByteArray bytes = file.readAll();
    if (bytes.startsWith("\xEF\xBB\xBF")) bytes.remove(0, 3);
    QStringDecoder utf8(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    text = utf8(bytes);
    // Files printed by older writers are 8-bit text.
    if (utf8.hasError()) text = QString::fromLatin1(bytes);
    return true;
}

bool ReadLines(const QString& path, QStringList& lines) {
    QString text;
    if (!ReadText(path, text)) return false;
    lines = text.split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
    for (QString& line : lines)
        if (line.endsWith(QLatin1Char('\r'))) line.chop(1);
    return true;
}

bool WriteLines(const QString& path, const QStringList& lines, QString* error) {
    QSaveFile file(path);
    bool ok = file.open(QIODevice::WriteOnly);
    for (qsizetype i = 0; ok && i < lines.size(); ++i) {
        QByteArray bytes = lines[i].toUtf8();
        bytes.append('\n');
        ok = file.write(bytes) == bytes.size();
    }
    ok = ok && file.commit();
    if (!ok && error) *error = file.errorString();
    return ok;
}

QString Fmt(const char* format, ...) {
    va_list args;
    va_start(args, format);
    va_list again;
    va_copy(again, args);
    char small[256];
    const int n = std::vsnprintf(small, sizeof small, format, args);
    va_end(args);
    QString result;
    if (n < 0) {
        result = QString();
    } else if (n < int(sizeof small)) {
        result = QString::fromUtf8(small, n);
    } else {
        std::vector<char> big(std::size_t(n) + 1);
        std::vsnprintf(big.data(), big.size(), format, again);
        result = QString::fromUtf8(big.data(), n);
    }
    va_end(again);
    return result;
}

QString XmlText(const QString& text) {
    QString out = text;
    out.replace(QLatin1Char('&'), QLatin1String("&amp;"));
    out.replace(QLatin1Char('<'), QLatin1String("&lt;"));
    out.replace(QLatin1Char('>'), QLatin1String("&gt;"));
    return out;
}

QString PlainText(const QString& text) {
    QString out = text;
    out.replace(QLatin1String("&lt;"), QLatin1String("<"));
    out.replace(QLatin1String("&gt;"), QLatin1String(">"));
    out.replace(QLatin1String("&amp;"), QLatin1String("&"));
    return out;
}

QString TagText(const QString& text, const QString& tag, qsizetype from) {
    const QString open = QLatin1Char('<') + tag + QLatin1Char('>');
    const qsizetype start = text.indexOf(open, from);
    if (start < 0) return QString();
    const qsizetype begin = start + open.size();
    const qsizetype end = text.indexOf(QLatin1String("</") + tag + QLatin1Char('>'), begin);
    if (end < 0) return QString();
    return text.mid(begin, end - begin);
}

QString AttributeValue(const QString& line, const QString& name) {
    const QString key = name + QLatin1String("=\"");
    qsizetype at = line.indexOf(key);
    // "id=" must not be found inside "sid=" or "input_id=".
    while (at > 0 && !line[at - 1].isSpace()) at = line.indexOf(key, at + 1);
    if (at < 0) return QString();
    const qsizetype begin = at + key.size();
    const qsizetype end = line.indexOf(QLatin1Char('"'), begin);
    if (end < 0) return QString();
    return line.mid(begin, end - begin);
}

QString SafeName(const QString& name) {
    QString safe = name;
    safe.replace(QLatin1Char('/'), QLatin1Char('_'));
    return safe;
}

QString LeafName(const QString& path) {
    const qsizetype cut = std::max(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
    return path.mid(cut + 1);
}

QString PointAttributes(const TGIS_Point3D& p) {
    return Fmt("x=\"%.6f\" y=\"%.6f\" z=\"%.6f\"", p.X, p.Y, p.Z);
}

int IntOfNumber(double number) {
    if (std::isnan(number)) return 0;
    return static_cast<int>(std::clamp(number, double(INT_MIN), double(INT_MAX)));
}

}  // namespace paneldae
