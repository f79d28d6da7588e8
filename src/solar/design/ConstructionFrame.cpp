#include "ConstructionFrame.h"

#include <QSaveFile>
#include <algorithm>
#include <cmath>
#include <vector>

#include "PanelStore.h"
#include "app/services/FileHelpers.h"
#include "app/services/RunLog.h"

namespace {

constexpr double kPanelThick = 3.0;      // cm
constexpr double kSpanThick = 5.0;       // cm
constexpr double kPanelGap = 2.0;        // cm between the two panels
constexpr double kSpanUnderPanel = 9.0;  // cm from the panels' plane to the upper span's centre
constexpr double kVerticalThick = 3.0;   // cm
constexpr double kInward = 2.5;          // cm the end verticals stay inside the span
constexpr double kLandscapeBelow = 140;  // cm: a shorter single panel lies landscape
constexpr double kSpanLandscape = 100;   // cm of upper span under one landscape panel
constexpr double kSpanPortrait = 160;    // cm under one portrait panel
constexpr double kMeasureBelow = -8.0;   // cm, the lower span's measure line
constexpr int kBlue = 0xFF0000;
constexpr int kSteel = 0x808080;

struct V {
    double x, y;
    V operator+(V o) const { return {x + o.x, y + o.y}; }
    V operator-(V o) const { return {x - o.x, y - o.y}; }
    V operator*(double s) const { return {x * s, y * s}; }
};

class FrameWriter {
public:
    void comment(const char* text) { out += QStringLiteral("// ") + QString::fromUtf8(text) + '\n'; }
    void measured(V a, V b, double width, int colour, int measure) {
        out += QString::asprintf("%.2f, %.2f, %.2f, %.2f, %.2f, %d, %d\n", a.x, a.y, b.x, b.y, width, colour, measure);
    }
    void strip(V a, V b, double width, int colour) {
        out += QString::asprintf("%.2f, %.2f, %.2f, %.2f, %.2f, %d\n", a.x, a.y, b.x, b.y, width, colour);
    }
    void measureOnly(V a, V b) { out += QString::asprintf("%.2f, %.2f, %.2f, %.2f\n", a.x, a.y, b.x, b.y); }
    QString out;
};

}  // namespace

QString ConstructionFrameText(float L1_mm, float L2_mm, float tiltDeg, float aboveRoof_mm, float blockHeight_mm,
                              float blockLength_mm) {
    const double L1 = L1_mm / 10.0, L2 = L2_mm / 10.0;
    const double above = aboveRoof_mm / 10.0, blockH = blockHeight_mm / 10.0, blockL = blockLength_mm / 10.0;
    const bool hasP2 = L2 > 0;
    const double t = tiltDeg * M_PI / 180.0;
    const V u{std::cos(t), std::sin(t)};
    const V n{-std::sin(t), std::cos(t)};

    const V p1a{0, above}, p1b = p1a + u * L1;
    const V p2a = p1b + u * kPanelGap, p2b = p2a + u * L2;
    const V outer = hasP2 ? p2b : p1b;

    FrameWriter w;
    w.out += QStringLiteral("// ===================== CSV for CSV2SVG =====================\n");
    w.out += QStringLiteral("// Units: coordinates in cm; widths in mm; angles handled by CSV2SVG.\n");
    w.out += QStringLiteral(
        "@page=A4, margin_mm=10, dim_offset_mm=50, dim_factor=1, dim_dec=1, rotate_deg=0, interactive=1\n");
    w.comment("Panel 1 (3.00 cm), MEASURE=1");
    w.measured(p1a, p1b, kPanelThick, kBlue, 1);
    if (hasP2) {
        w.comment("Panel 2 (3.00 cm) with 2.00 cm gap after P1, MEASURE=1");
        w.measured(p2a, p2b, kPanelThick, kBlue, 1);
    }
    w.comment("Left edge measure-only line to roof (4 cols)");
    w.measureOnly(p1a, {p1a.x, 0});
    w.comment("Right edge measure-only line to roof (4 cols)");
    w.measureOnly(outer, {outer.x, 0});

    const V down = n * -kSpanUnderPanel;
    V s0, s1;
    if (hasP2) {
        s0 = p1a + u * (0.25 * L1) + down;
        s1 = p2a + u * (0.75 * L2) + down;
    } else {
        const double len = L1 < kLandscapeBelow ? kSpanLandscape : kSpanPortrait;
        const V mid = p1a + u * (L1 / 2) + down;
        s0 = mid - u * (len / 2);
        s1 = mid + u * (len / 2);
    }
    w.comment("Upper span (5.00 cm), 9.00 cm under the panels, MEASURE=1");
    w.measured(s0, s1, kSpanThick, kSteel, 1);

    const double lowerY = blockH + kSpanThick / 2;
    const double lowerTop = blockH + kSpanThick;
    const double x0 = std::min(s0.x, s1.x), x1 = std::max(s0.x, s1.x);
    w.comment("Lower span (5.00 cm), horizontal on the blocks");
    w.strip({x0, lowerY}, {x1, lowerY}, kSpanThick, kSteel);

    // Where a point of the panels falls on the upper span, as a parameter of it.
    const V span = s1 - s0;
    const double spanLen2 = span.x * span.x + span.y * span.y;
    auto onSpan = [&](V p) {
        if (spanLen2 < 1e-9) return 0.0;
        return std::clamp(((p.x - s0.x) * span.x + (p.y - s0.y) * span.y) / spanLen2, 0.0, 1.0);
    };
    std::vector<double> at;
    if (hasP2)
        at = {onSpan(p1a + u * (0.25 * L1)), onSpan(p1a + u * (0.75 * L1)), onSpan(p2a + u * (0.25 * L2)),
              onSpan(p2a + u * (0.75 * L2))};
    else
        at = {0.0, 1.0};
    const double spanLen = std::sqrt(spanLen2);
    const double faceDrop = (kSpanThick / 2) / std::cos(t);
    std::vector<double> vx;
    for (size_t k = 0; k < at.size(); ++k) {
        double along = at[k] * spanLen;
        if (k == 0) along += kInward;
        if (k + 1 == at.size()) along -= kInward;
        vx.push_back((s0 + u * along).x);
    }
    auto upperFaceY = [&](double x) { return s0.y + (x - s0.x) * std::tan(t) - faceDrop; };
    for (size_t k = 0; k < vx.size(); ++k) {
        const bool farLandscape = !hasP2 && L1 < kLandscapeBelow && k + 1 == vx.size();
        w.comment(farLandscape ? "Vertical (3.00 cm), MEASURE=-1" : "Vertical (3.00 cm), MEASURE=1");
        w.measured({vx[k], upperFaceY(vx[k])}, {vx[k], lowerTop}, kVerticalThick, kSteel, farLandscape ? -1 : 1);
    }

    if (blockH > 0 && blockL > 0) {
        std::vector<double> bx = hasP2 ? std::vector<double>{x0, vx[1], vx[2], x1} : vx;
        for (double cx : bx) {
            double a = cx - blockL / 2, b = cx + blockL / 2;
            if (a < x0) b += x0 - a, a = x0;
            if (b > x1) a -= b - x1, b = x1;
            w.comment("Block (grey), on the roof");
            w.strip({a, blockH / 2}, {b, blockH / 2}, blockH, kSteel);
        }
    }

    w.comment("Lower span length measure line (under blocks)");
    w.measureOnly({x0, kMeasureBelow}, {x1, kMeasureBelow});

    const double d0 = vx[0] + 0.33 * (vx[1] - vx[0]);
    const double d1 = vx[0] + 0.67 * (vx[1] - vx[0]);
    w.comment("Diagonal: 33% between first and second verticals, MEASURE=1");
    w.measured({d0, upperFaceY(d0)}, {d1, lowerTop}, kVerticalThick, kSteel, 1);
    return w.out;
}

QString Panel2CSV(const QString& ConstructionName, float L1_mm, float L2_mm, float tiltDeg, float aboveRoof_mm,
                  float blockHeight_mm, float blockLength_mm) {
    const QString folder = panelStore().ModelFolder + QStringLiteral("Reports/");
    OrvoCreateDir(folder);
    const QString path = folder + ConstructionName + QStringLiteral(".csv");
    const QByteArray text =
        ConstructionFrameText(L1_mm, L2_mm, tiltDeg, aboveRoof_mm, blockHeight_mm, blockLength_mm).toUtf8();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        PrintRunLog("Panel2CSV: can't write %s\n", path.toUtf8().constData());
        return QString();
    }
    return path;
}
