#include "PanelDaeReader.h"

#include <cmath>
#include <cstdio>

#include "PanelDaeText.h"
#include "PanelText.h"
#include "app/services/RunLog.h"

using paneldae::PlainText;
using paneldae::TagText;

namespace {

constexpr int kMaxShadedHours = 4360;

class BlockFields {
public:
    explicit BlockFields(const QString& block) : block_(block) {}
    // The trimmed text of an element; null when it is missing.
    QString text(const char* tag) const {
        const QString found = TagText(block_, QLatin1String(tag));
        return found.isNull() ? QString() : PlainText(found).trimmed();
    }
    void read(const char* tag, double& value) const {
        const QString t = text(tag);
        if (!t.isNull()) value = t.toDouble();
    }
    void read(const char* tag, int& value) const {
        const QString t = text(tag);
        if (!t.isNull()) value = paneldae::IntOfNumber(t.toDouble());
    }
    void read(const char* tag, bool& value) const {
        const QString t = text(tag);
        if (!t.isNull()) value = t.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
    }
    // sscanf on the element's line, so x, y, z in this order and one blank apart.
    void point(const char* tag, TGIS_Point3D& p) const {
        const QByteArray line = lineOf(tag);
        if (line.isEmpty()) return;
        const QByteArray pattern = QByteArray("<") + tag + " x=\"%lf\" y=\"%lf\" z=\"%lf\"";
        std::sscanf(line.constData(), pattern.constData(), &p.X, &p.Y, &p.Z);
    }
    void colour(const char* tag, TColor& c) const {
        const QByteArray line = lineOf(tag);
        if (line.isEmpty()) return;
        int r = 0, g = 0, b = 0;
        const QByteArray pattern = QByteArray("<") + tag + " r=\"%d\" g=\"%d\" b=\"%d\"";
        if (std::sscanf(line.constData(), pattern.constData(), &r, &g, &b) == 3) c = r + g * 256 + b * 65536;
    }

private:
    // From "<tag " to the end of its line.
    QByteArray lineOf(const char* tag) const {
        const qsizetype at = block_.indexOf(QLatin1Char('<') + QLatin1String(tag) + QLatin1Char(' '));
        if (at < 0) return QByteArray();
        const qsizetype end = block_.indexOf(QLatin1Char('\n'), at);
        return block_.mid(at, end < 0 ? -1 : end - at).toUtf8();
    }
    const QString& block_;
};

void checkShading(PANEL& panel) {
    if (panel.Shaded_Hours < 0 || panel.Shaded_Hours > kMaxShadedHours) {
        PrintRunLog("ReadDAE: WARNING - Invalid shaded hours: %d (should be 0-4360)\n", panel.Shaded_Hours);
        panel.Shaded_Hours = 0;
    }
    // No element carries the direct sun hours, so the share can't be worked out here.
    const double calculated =
        panel.DirectSun_Hours > 0 ? double(100 * panel.Shaded_Hours / panel.DirectSun_Hours) : 0.0;
    if (panel.Shading_Percent == 0 && panel.Shaded_Hours > 0) {
        panel.Shading_Percent = calculated;
    } else if (panel.Shading_Percent > 0 && panel.Shaded_Hours > 0 &&
               std::fabs(panel.Shading_Percent - calculated) > 1) {
        PrintRunLog("ReadDAE: WARNING - Shading percent mismatch: stored=%.2f%%, calculated=%.2f%%\n",
                    panel.Shading_Percent, calculated);
    }
}

void readMonths(const QString& block, PANEL& panel) {
    const QString months = TagText(block, QStringLiteral("monthly_radiation"));
    if (months.isNull()) return;
    bool allZero = true;
    for (int m = 0; m < 12; ++m) {
        const QString value = TagText(months, QStringLiteral("month_%1").arg(m + 1)).trimmed().left(32);
        panel.MonthlyRadiation[m] = std::atof(value.toUtf8().constData());
        if (panel.MonthlyRadiation[m] != 0) allZero = false;
    }
    if (allZero) PrintRunLog("ReadDAE: monthly radiation is zero in all months\n");
}

}  // namespace

PANEL ReadPanelDAE(const QString& DAE) {
    PANEL panel{};
    SetPanelText(panel.ModuleType, QStringLiteral("UnknownType"));
    SetPanelText(panel.Filename, DAE);
    panel.Opacity = 100;

    QString text;
    if (!paneldae::ReadText(DAE, text)) return panel;
    const qsizetype open = text.indexOf(QLatin1String("<panel_info>"));
    const qsizetype close = open < 0 ? -1 : text.indexOf(QLatin1String("</panel_info>"), open);
    if (close < 0) return panel;
    const QString block = text.mid(open, close - open);
    const BlockFields fields(block);

    const QLatin1String nodeTag("<node id=\"");
    const qsizetype nodeAt = text.indexOf(nodeTag);
    if (nodeAt >= 0) {
        const qsizetype begin = nodeAt + nodeTag.size();
        const qsizetype end = text.indexOf(QLatin1Char('"'), begin);
        if (end > begin) SetPanelText(panel.Name, PlainText(text.mid(begin, end - begin)));
    }

    const QString moduleType = fields.text("module_type");
    if (!moduleType.isNull()) SetPanelText(panel.ModuleType, moduleType);
    QString texture = fields.text("picture");
    if (texture.isEmpty()) texture = fields.text("texture_filename");
    if (texture.isEmpty()) texture = PlainText(TagText(text, QStringLiteral("init_from"))).trimmed();
    SetPanelText(panel.TextureName, texture);

    fields.read("length", panel.Length);
    fields.read("width", panel.Width);
    fields.read("thickness", panel.Thickness);
    fields.read("weight_kg", panel.Weight_kg);
    fields.read("tilt", panel.DTilt);
    fields.read("azimuth", panel.DAzimuth);
    fields.read("lift", panel.Lift);
    fields.read("landscape", panel.Landscape);
    fields.read("opacity", panel.Opacity);
    fields.read("gap_mm", panel.Gapmm);
    fields.read("repeat", panel.Repeat);
    fields.read("active", panel.Active);
    fields.read("roof_type", panel.RoofType);
    fields.read("power_rating_stc", panel.PanelPowerratingKW);
    panel.PanelPowerratingKW /= 1000.0;
    fields.read("efficiency", panel.Efficiency);
    fields.read("power_rating_noct", panel.MaxPowerNOCT_W);
    fields.read("noct_temperature", panel.NOCT_C);
    fields.read("temp_coeff_pmax_percent_per_c", panel.TempCoeff_Pmax_PercentPercent);
    fields.read("bifacial_factor_percent", panel.BifacialFactor_Percent);
    fields.read("annual_degradation", panel.AnnualDegradation);
    fields.read("cleaning_factor", panel.Cleaningfactor);
    fields.read("epsg", panel.EPSG);
    fields.read("center_lat", panel.CenterLat);
    fields.read("center_lon", panel.CenterLon);
    fields.read("raw_energy_kwh", panel.RawEnergy);
    fields.read("adjusted_energy_kwh", panel.AdjustedEnergy);
    fields.read("shaded_hours", panel.Shaded_Hours);
    fields.read("shading_percent", panel.Shading_Percent);

    if (panel.AnnualDegradation == 0) {
        panel.AnnualDegradation = -0.005;
        PrintRunLog("ReadDAE: Set default degradation to -0.5%% per year\n");
    }
    checkShading(panel);
    readMonths(block, panel);

    const qsizetype metadata = text.indexOf(QLatin1String("<technique profile=\"panel_metadata\">"));
    if (metadata >= 0) {
        const QString original = TagText(text.mid(metadata, text.indexOf(QLatin1String("</technique>"), metadata) - metadata),
                                         QStringLiteral("original_path"));
        if (!original.isNull()) PrintRunLog("ReadDAE: original path %s\n", qPrintable(PlainText(original)));
    }

    fields.point("center_point", panel.CenterPoint);
    fields.point("corner_ll", panel.Corners[0]);
    fields.point("corner_ul", panel.Corners[1]);
    fields.point("corner_ur", panel.Corners[2]);
    fields.point("corner_lr", panel.Corners[3]);
    fields.point("pp_0", panel.PP[0]);
    fields.point("pp_1", panel.PP[1]);
    fields.point("pp_2", panel.PP[2]);
    fields.colour("color1", panel.Color1);
    fields.colour("color2", panel.Color2);
    return panel;
}
