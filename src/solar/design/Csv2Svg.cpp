#include "Csv2Svg.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>
#include <cstdlib>
#include <vector>

#include "Csv2SvgScript.h"
#include "app/services/RunLog.h"

namespace {

constexpr int kSteelGrey = 0x808080;

struct DataRow {
    QString raw;
    QStringList f;
};

double num(const QString& text) { return std::strtod(text.toLatin1().constData(), nullptr); }

QString n2(double v) { return QString::asprintf("%.2f", v); }

QString xmlEscape(const QString& text) { return text.toHtmlEscaped(); }

QString hexColour(int c) { return QString::asprintf("#%02X%02X%02X", c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF); }

bool isHebrew(const QString& text) {
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c.unicode() >= 0x0590 && c.unicode() <= 0x05FF; });
}

QString rtlAttributes(const QString& text) {
    return isHebrew(text)
               ? QStringLiteral(" direction='rtl' unicode-bidi='embed' font-family='Arial, David, sans-serif'")
               : QString();
}

bool isNumber(const QString& text) {
    const QByteArray b = text.toLatin1();
    char* end = nullptr;
    std::strtod(b.constData(), &end);
    return !b.isEmpty() && end && *end == 0;
}

struct Page {
    CSVU_Meta meta;
    double minx = 0, miny = 0, scale = 1, ox = 0, oy = 0;
    CSVU_P at(double x, double y) const { return {ox + (x - minx) * scale, oy - (y - miny) * scale}; }
};

struct Dimension {
    CSVU_P A, B;       // page ends of the drawn line
    CSVU_P Ad, Bd;     // ends of the dimension
    double Lw = 0;     // drawing length shown
    double theta = 0;  // degrees
    QString label;
};

QString line(CSVU_P a, CSVU_P b, const char* marker) {
    return QStringLiteral("  <line x1='") + n2(a.x) + "' y1='" + n2(a.y) + "' x2='" + n2(b.x) + "' y2='" + n2(b.y) +
           "' stroke='#000' stroke-width='0.6' " + marker + "/>\n";
}

// Real length, label, arrows with a gap for the label, and the label itself.
void drawDimension(const Dimension& d, QString& svg) {
    const CSVU_P u = (d.Bd - d.Ad).unit();
    const bool vertical = std::fabs(d.Bd.x - d.Ad.x) < NEAR_ZERO;
    const double gapMin = vertical ? GAP_MIN_VERT_MM : GAP_MIN_ANG_MM;
    const double gapFact = vertical ? GAP_FACT_VERT : GAP_FACT_ANG;
    const double dimLen = (d.Bd - d.Ad).length();
    const CSVU_P mid = (d.Ad + d.Bd) * 0.5;
    double gap = std::max(gapMin, d.label.size() * FONT_PX * gapFact * PX_TO_MM + GAP_PAD_MM);
    if (gap > dimLen - 2) gap = std::max(0.0, dimLen - 2);
    const CSVU_P k1 = mid - u * (gap / 2), k2 = mid + u * (gap / 2);
    svg += line(d.Ad, k1, "marker-start='url(#arrStart)'");
    svg += line(k2, d.Bd, "marker-end='url(#arrEnd)'");
    const double th = d.theta * M_PI / 180.0;
    const CSVU_P text = mid + CSVU_P{std::sin(th), -std::cos(th)} * -TEXT_OFFSET_MM;
    svg += QStringLiteral("  <text x='") + n2(text.x) + "' y='" + n2(text.y) + "' font-size='" + n2(FONT_PX) +
           "' font-weight='bold' fill='#000' text-anchor='middle' dominant-baseline='middle' transform='rotate(" +
           n2(d.theta) + " " + n2(text.x) + " " + n2(text.y) + ")'>" + xmlEscape(d.label) + "</text>\n";
}

// The drawing length: the pure axis distance for axis-parallel lines.
double realLength(const CSVU_P& uAB, double dx, double dy, QString& log) {
    if (std::fabs(uAB.x) < NEAR_ZERO) {
        log += QStringLiteral("VERTICAL\n");
        return std::fabs(dy);
    }
    if (std::fabs(uAB.y) < NEAR_ZERO) {
        log += QStringLiteral("HORIZONTAL\n");
        return std::fabs(dx);
    }
    log += QStringLiteral("ANGLED\n");
    return std::sqrt(dx * dx + dy * dy);
}

QString numberLabel(double Lw, const CSVU_Meta& meta) {
    const double value = Lw * meta.dimFactor / DIM_DIVISOR;
    // A double holds no more than 15 decimals worth printing; a file asking
    // for millions would make labels of gigabytes.
    int dec = std::clamp(meta.dimDec, 0, 15);
    if (std::fabs(value - std::round(value)) < INT_TOL) dec = 0;
    return QString::asprintf(" %.*f ", dec, value);
}

double degrees(CSVU_P v) { return std::atan2(v.y, v.x) * 180.0 / M_PI; }

bool saveText(const QString& path, const QString& text) {
    QSaveFile file(path);
    const QByteArray bytes = text.toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

}  // namespace

QString CSV2SVG(const QString& CSV, const QString& Header, const QString& Footer) {
    QFile in(CSV);
    if (!in.open(QIODevice::ReadOnly)) {
        PrintRunLog("CSV2SVG: can't open %s\n", CSV.toUtf8().constData());
        return QString();
    }
    const QStringList lines = QString::fromUtf8(in.readAll()).split(QLatin1Char('\n'));
    Page page;
    std::vector<DataRow> rows;
    for (const QString& rawLine : lines) {
        const QString t = rawLine.trimmed();
        if (t.isEmpty() || t.startsWith(QLatin1String("//")) || t.startsWith(QLatin1Char('#'))) continue;
        if (t.startsWith(QLatin1Char('@'))) {
            ParseCsvuMeta(t, page.meta);
            continue;
        }
        rows.push_back({t, SplitCsvuRow(t)});
    }

    bool any = false;
    double minx = 0, maxx = 0, miny = 0, maxy = 0;
    for (const DataRow& r : rows) {
        if (r.f.size() < 4) continue;
        const double xs[2] = {num(r.f[0]), num(r.f[2])}, ys[2] = {num(r.f[1]), num(r.f[3])};
        for (int k = 0; k < 2; ++k) {
            if (!any) minx = maxx = xs[k], miny = maxy = ys[k], any = true;
            minx = std::min(minx, xs[k]), maxx = std::max(maxx, xs[k]);
            miny = std::min(miny, ys[k]), maxy = std::max(maxy, ys[k]);
        }
    }
    if (!any) return QString();
    if (maxx - minx < 1e-9) maxx = minx + 1;
    if (maxy - miny < 1e-9) maxy = miny + 1;

    const CSVU_Meta& meta = page.meta;
    miny -= meta.dimOffsetMm, maxy += meta.dimOffsetMm;
    minx -= 5, maxx += 5;
    const double availW = meta.pageWmm - 2 * meta.margin, availH = meta.pageHmm - 2 * meta.margin;
    const double width = maxx - minx, height = maxy - miny;
    page.scale = 0.9 * std::min(availW / width, availH / height);
    page.minx = minx, page.miny = miny;
    page.ox = meta.margin + (availW - width * page.scale) / 2;
    page.oy = meta.margin + (availH - height * page.scale) / 2 + height * page.scale;

    QString log = QStringLiteral("=== CSV2SVG LOG ===\nCSV: ") + CSV + "\nHeader=" + Header + ", Footer=" + Footer +
                  "\n" + QStringLiteral("Polygon dim offset = 1.5 × FONT_PX in mm; label gap pad=") + n2(GAP_PAD_MM) +
                  "mm.\n";
    const double W = meta.pageWmm, H = meta.pageHmm;
    QString svg = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
    svg += QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' width='") + n2(W) + "mm' height='" + n2(H) +
           "mm' viewBox='0 0 " + n2(W) + " " + n2(H) + "'>\n";
    if (meta.interactive == 1) svg += QStringLiteral("<script><![CDATA[\n") + Csv2SvgPanZoomScript() + "]]></script>\n";
    svg += QStringLiteral("<defs>\n");
    svg += QStringLiteral(
        "  <marker id='arrEnd' markerWidth='6' markerHeight='4' refX='5' refY='2' orient='auto'><polygon points='0,0 "
        "6,2 0,4' fill='#333'/></marker>\n");
    svg += QStringLiteral(
        "  <marker id='arrStart' markerWidth='6' markerHeight='4' refX='1' refY='2' orient='auto'><polygon points='6,0 "
        "2,2 6,4' fill='#333'/></marker>\n");
    svg += QStringLiteral("</defs>\n");
    svg += QStringLiteral("<rect x='") + n2(meta.margin / 2) + "' y='" + n2(meta.margin / 2) + "' width='" +
           n2(W - meta.margin) + "' height='" + n2(H - meta.margin) +
           "' fill='none' stroke='#000' stroke-width='0.4'/>\n";
    if (!Header.isEmpty())
        svg += QStringLiteral("<text x='") + n2(W / 2) + "' y='" + n2(meta.margin + 10) +
               "' font-size='14' font-weight='bold' fill='#000' text-anchor='middle'" + rtlAttributes(Header) + ">" +
               xmlEscape(Header) + "</text>\n";
    svg += QStringLiteral("<g id='viewport' transform='rotate(") + n2(meta.rotateDeg) + " " + n2(W / 2) + " " +
           n2(H / 2) + ")'>\n";

    // A strip: x1, y1, x2, y2, width, colour[, measure[, label]].
    // Seven columns and more are always a strip; six only with a colour in the sixth.
    auto stripColour = [](const DataRow& r, int& colour) {
        if (r.f.size() < 6) return false;
        if (ParseCsvuColour(r.f[5], colour)) return true;
        colour = CsvuInt(num(r.f[5]));
        return r.f.size() >= 7;
    };
    for (const DataRow& r : rows) {
        int colour = 0;
        if (!stripColour(r, colour)) continue;
        const CSVU_P A = page.at(num(r.f[0]), num(r.f[1])), B = page.at(num(r.f[2]), num(r.f[3]));
        const CSVU_P off = (B - A).unit().normal() * (num(r.f[4]) * page.scale / 2);
        const CSVU_P c[4] = {A + off, B + off, B - off, A - off};
        QString points;
        for (int k = 0; k < 4; ++k) points += (k ? " " : "") + n2(c[k].x) + "," + n2(c[k].y);
        svg += QStringLiteral("  <polygon points='") + points + "' fill='" + hexColour(colour) + "' stroke='" +
               (colour == kSteelGrey ? QStringLiteral("#000000") : hexColour(colour)) + "' stroke-width='0.4'/>\n";
    }

    for (const DataRow& r : rows) {
        if (r.f.size() < 4) continue;
        int colour = 0;
        const bool strip = stripColour(r, colour);
        Dimension d;
        const double x1 = num(r.f[0]), y1 = num(r.f[1]), x2 = num(r.f[2]), y2 = num(r.f[3]);
        d.A = page.at(x1, y1), d.B = page.at(x2, y2);
        QString custom;
        if (strip) {
            double measure = 0;
            if (r.f.size() >= 7) {
                if (isNumber(r.f[6]))
                    measure = num(r.f[6]);
                else
                    measure = 1, custom = r.f[6];
            }
            if (r.f.size() >= 8) custom = r.f[7];
            if (measure == 0) continue;
            const CSVU_P uAB = (d.B - d.A).unit();
            const double offset = num(r.f[4]) * page.scale / 2 + edgeClearMm;
            const CSVU_P shift = uAB.normal() * (offset * (measure > 0 ? -1 : 1));
            d.Ad = d.A + shift, d.Bd = d.B + shift;
            if (measure < 0) std::swap(d.Ad, d.Bd);
            d.theta = degrees(d.Bd - d.Ad);
        } else {
            const int orientation = r.f.size() >= 5 ? CsvuInt(num(r.f[4])) : 0;
            if (r.f.size() >= 6) custom = r.f[5];
            d.Ad = d.A, d.Bd = d.B;
            if (orientation == 0) {
                const bool sameX = std::fabs(d.Ad.x - d.Bd.x) < NEAR_ZERO;
                if ((!sameX && d.Ad.x > d.Bd.x) || (sameX && d.Ad.y > d.Bd.y)) std::swap(d.Ad, d.Bd);
                d.theta = degrees(d.Bd - d.Ad);
                if (d.theta > 90) d.theta -= 180;
                if (d.theta < -90) d.theta += 180;
            } else {
                d.theta = degrees(d.Bd - d.Ad);
            }
        }
        log += QStringLiteral("Processing line: ") + r.raw + "\n";
        QString axis;
        d.Lw = realLength((d.B - d.A).unit(), x2 - x1, y2 - y1, axis);
        log += QStringLiteral("Calculated length (Lw_cm): ") + n2(d.Lw) + "\n" + axis;
        d.label = custom.isEmpty() ? numberLabel(d.Lw, meta) : custom;
        drawDimension(d, svg);
    }

    svg += QStringLiteral("</g>\n");
    if (!Footer.isEmpty())
        svg += QStringLiteral("<text x='") + n2(W / 2) + "' y='" + n2(H - 0.6 * meta.margin) +
               "' font-size='8' fill='#000' text-anchor='middle'" + rtlAttributes(Footer) + ">" + xmlEscape(Footer) +
               "</text>\n";
    svg += QStringLiteral("</svg>\n");

    const QFileInfo info(CSV);
    const QString base = info.absolutePath() + "/" + info.completeBaseName();
    const QString svgPath = base + ".svg";
    saveText(base + ".log", log);
    if (!saveText(svgPath, svg)) {
        PrintRunLog("CSV2SVG: can't write %s\n", svgPath.toUtf8().constData());
        return QString();
    }
    return svgPath;
}
