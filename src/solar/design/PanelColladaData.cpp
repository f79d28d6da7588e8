#include "PanelColladaData.h"

#include <QDateTime>

#include "PanelDaeText.h"

using paneldae::Fmt;
using paneldae::PointAttributes;
using paneldae::XmlText;

namespace {

// The two writers share the block and differ in a few elements and forms.
enum class BlockKind { PanelFile, ModelExport };

class BlockLines {
public:
    BlockLines(QStringList& out, int indent) : out_(out), indent_(indent, QLatin1Char(' ')) {}
    void line(const QString& text) { out_ << indent_ + text; }
    void element(const char* tag, const QString& text) {
        line(QLatin1Char('<') + QLatin1String(tag) + QLatin1Char('>') + text + QLatin1String("</") +
             QLatin1String(tag) + QLatin1Char('>'));
    }
    void number(const char* tag, const char* format, double value) { element(tag, Fmt(format, value)); }
    void integer(const char* tag, int value) { element(tag, QString::number(value)); }
    void flag(const char* tag, bool value) { element(tag, value ? QStringLiteral("true") : QStringLiteral("false")); }
    void point(const char* tag, const TGIS_Point3D& p) {
        line(QLatin1Char('<') + QLatin1String(tag) + QLatin1Char(' ') + PointAttributes(p) + QLatin1String("/>"));
    }
    void colour(const char* tag, TColor c) {
        line(Fmt("<%s r=\"%d\" g=\"%d\" b=\"%d\"/>", tag, c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF));
    }
    // The elements of a nested group stand two blanks deeper.
    BlockLines nested() { return BlockLines(out_, int(indent_.size()) + 2); }

private:
    QStringList& out_;
    QString indent_;
};

QString text(const char* field) { return XmlText(QString::fromUtf8(field)); }

void writePanelInfo(QStringList& content, const PANEL& p, int panelIndex, BlockKind kind, int indent) {
    const bool file = kind == BlockKind::PanelFile;
    const QString pad(indent, QLatin1Char(' '));
    content << pad + QStringLiteral("<extra>")
            << pad + QStringLiteral("  <technique profile=\"solar_panel_data\">")
            << pad + QStringLiteral("    <panel_info>");
    BlockLines e(content, indent + 6);

    e.element("name", text(p.Name));
    e.element("module_type", text(p.ModuleType));
    e.element("pname", text(p.Name));
    if (file) {
        e.element("picture", text(p.TextureName));
    } else {
        e.line(QStringLiteral("<picture> </picture>"));
        e.element("original_path", text(p.Filename));
    }
    e.integer("length", p.Length);
    e.integer("width", p.Width);
    e.integer("thickness", p.Thickness);
    e.number("weight_kg", "%.3f", p.Weight_kg);
    e.number("tilt", file ? "%.2f" : "%.1f", p.DTilt);
    e.number("azimuth", file ? "%.2f" : "%.1f", p.DAzimuth);
    e.number("lift", "%.6f", p.Lift);
    e.flag("landscape", p.Landscape);
    e.integer("opacity", p.Opacity);
    e.integer("gap_mm", p.Gapmm);
    e.integer("repeat", p.Repeat);
    e.flag("active", p.Active);
    e.integer("roof_type", p.RoofType);
    e.number("power_rating_stc", "%.6f", p.PanelPowerratingKW);
    e.number("efficiency", "%.12f", p.Efficiency);
    e.number("power_rating_noct", "%.3f", p.MaxPowerNOCT_W);
    e.number("noct_temperature", "%.2f", p.NOCT_C);
    e.number("temp_coeff_pmax_percent_per_c", "%.3f", p.TempCoeff_Pmax_PercentPercent);
    e.number("bifacial_factor_percent", "%.2f", p.BifacialFactor_Percent);
    e.number("annual_degradation", "%.6f", p.AnnualDegradation);
    e.number("cleaning_factor", "%.6f", p.Cleaningfactor);
    e.integer("epsg", p.EPSG);
    e.number("center_lat", "%.7f", p.CenterLat);
    e.number("center_lon", "%.7f", p.CenterLon);
    if (file) {
        e.number("raw_energy_kwh", "%.3f", p.RawEnergy);
        e.number("adjusted_energy_kwh", "%.3f", p.AdjustedEnergy);
        e.integer("shaded_hours", p.Shaded_Hours);
    }
    e.colour("color1", p.Color1);
    e.colour("color2", p.Color2);
    e.point("center_point", p.CenterPoint);

    e.line(QStringLiteral("<reference_points>"));
    BlockLines pp = e.nested();
    pp.point("pp_0", p.PP[0]);
    pp.point("pp_1", p.PP[1]);
    pp.point("pp_2", p.PP[2]);
    e.line(QStringLiteral("</reference_points>"));

    e.line(QStringLiteral("<corners>"));
    BlockLines corners = e.nested();
    corners.point("corner_ll", p.Corners[0]);
    corners.point("corner_ul", p.Corners[1]);
    corners.point("corner_ur", p.Corners[2]);
    corners.point("corner_lr", p.Corners[3]);
    e.line(QStringLiteral("</corners>"));

    if (!file) {
        e.line(QStringLiteral("<energy_data>"));
        BlockLines energy = e.nested();
        energy.number("raw_energy", "%.3f", p.RawEnergy);
        energy.number("adjusted_energy", "%.3f", p.AdjustedEnergy);
        energy.integer("shaded_hours", p.Shaded_Hours);
        energy.number("shading_percent", "%.2f", p.Shading_Percent);
        energy.line(QStringLiteral("<monthly_radiation>"));
        BlockLines months = energy.nested();
        for (int m = 0; m < 12; ++m) {
            const QByteArray tag = "month_" + QByteArray::number(m + 1);
            months.number(tag.constData(), "%.3f", p.MonthlyRadiation[m]);
        }
        energy.line(QStringLiteral("</monthly_radiation>"));
        e.line(QStringLiteral("</energy_data>"));
    }

    // The panel file shows the catalogue's watts; the export repeats the stored kilowatts.
    const double powerStc = file ? p.PanelPowerratingKW * 1000.0 : p.PanelPowerratingKW;
    e.line(QStringLiteral("<!-- CSV_DATA_LOADED: This panel data was populated from CSV -->"));
    e.line(QStringLiteral("<csv_verification>"));
    BlockLines csv = e.nested();
    csv.element("module_from_csv", text(p.ModuleType));
    csv.element("dimensions_csv", Fmt("%dx%dx%d_mm", p.Length, p.Width, p.Thickness));
    csv.element("weight_csv", Fmt("%.2f_kg", p.Weight_kg));
    csv.element("power_stc_csv", Fmt("%.2f_W", powerStc));
    csv.element("power_noct_csv", Fmt("%.2f_W", p.MaxPowerNOCT_W));
    csv.element("efficiency_csv", Fmt("%.2f_percent", p.Efficiency));
    csv.element("temp_coeff_csv", Fmt("%.3f_percent_per_C", p.TempCoeff_Pmax_PercentPercent));
    csv.element("noct_csv", Fmt("%.1f_C", p.NOCT_C));
    csv.element("bifacial_csv", Fmt("%.1f_percent", p.BifacialFactor_Percent));
    csv.element("degradation_csv", Fmt("%.2f_percent_per_year", p.AnnualDegradation * 100.0));
    e.line(QStringLiteral("</csv_verification>"));

    const double area = double(p.Length) * double(p.Width) / 1e6;
    e.line(QStringLiteral("<metadata>"));
    BlockLines meta = e.nested();
    if (file) {
        meta.element("export_timestamp", QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")));
    } else {
        meta.element("export_timestamp", QString::number(QDateTime::currentSecsSinceEpoch()));
        meta.integer("panel_index", panelIndex);
        meta.line(QStringLiteral("<data_source>ModelExport_Enhancement</data_source>"));
    }
    meta.number("panel_area_m2", "%.3f", area);
    meta.number("power_density_w_per_m2", "%.2f", area > 0 ? powerStc / area : 0.0);
    meta.flag("is_bifacial", p.BifacialFactor_Percent > 0);
    e.line(QStringLiteral("</metadata>"));

    content << pad + QStringLiteral("    </panel_info>") << pad + QStringLiteral("  </technique>")
            << pad + QStringLiteral("</extra>");
}

}  // namespace

void EmbedPanelDataInCollada(QStringList& content, const PANEL& panel) {
    writePanelInfo(content, panel, -1, BlockKind::PanelFile, 6);
}

void AddPanelDataToStringList(QStringList& content, const PANEL& panel, int panelIndex) {
    content << QStringLiteral("        <extra>") << QStringLiteral("          <technique profile=\"solar_panel_specs\">")
            << QStringLiteral("            <module_type>") + text(panel.ModuleType) + QStringLiteral("</module_type>")
            << QStringLiteral("            <original_filename>") + text(panel.Filename) +
                   QStringLiteral("</original_filename>")
            << QStringLiteral("          </technique>") << QStringLiteral("        </extra>");
    writePanelInfo(content, panel, panelIndex, BlockKind::ModelExport, 8);
}
