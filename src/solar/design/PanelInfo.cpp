#include "PanelInfo.h"

#include "PanelText.h"

static QString PointText(const TGIS_Point3D& p) { return QString::asprintf("%.2f;%.2f;%.2f", p.X, p.Y, p.Z); }

static QString CsvText(const PANEL& panel) {
    const QString name = PanelText(panel.Name);
    const qsizetype slash = name.indexOf('/');
    const QString N = slash < 0 ? QString() : name.left(slash);
    const QString G = slash < 0 ? QString() : name.mid(slash + 1);
    QString csv = "Field,Data\n";
    csv += "Panel," + N + "\n";
    csv += "Group," + G + "\n";
    csv += "Name," + name + "\n";
    csv += QString::asprintf("Row,%d\n", panel.Row);
    csv += QString::asprintf("GroupingName,%c\n", panel.GroupingName);
    csv += "Path," + PanelText(panel.Filename) + "\n";
    csv += "ModuleType," + PanelText(panel.ModuleType) + "\n";
    csv += "TextureName," + PanelText(panel.TextureName) + "\n";
    csv += panel.RoofType == 0 ? "RoofType,Tiles\n" : "RoofType,Flat\n";
    csv += QString::asprintf("ShadedHours, %d\n", panel.Shaded_Hours);
    csv += QString::asprintf("Shading prcent, %.2f\n", panel.Shading_Percent);
    csv += QString::asprintf("Length,%d mm\n", panel.Length);
    csv += QString::asprintf("Width,%d mm\n", panel.Width);
    csv += QString::asprintf("Thickness,%d mm\n", panel.Thickness);
    csv += QString::asprintf("Weight,%.2f kg\n", panel.Weight_kg);
    csv += QString::asprintf("Tilt,%.1lf degrees\n", panel.DTilt);
    csv += QString::asprintf("Azimuth,%.1lf degrees\n", panel.DAzimuth);
    csv += QString::asprintf("Lift,%.3f\n", panel.Lift);
    csv += panel.Landscape ? "Landscape,True\n" : "Landscape,False\n";
    csv += QString::asprintf("PowerRating_STC,%.3f W\n", panel.PanelPowerratingKW * 1000.0);
    csv += QString::asprintf("PowerRating_NOCT,%.2f W\n", panel.MaxPowerNOCT_W);
    csv += QString::asprintf("Efficiency,%.2f %%\n", panel.Efficiency);
    csv += QString::asprintf("TempCoeff,%.2f %%/C\n", panel.TempCoeff_Pmax_PercentPercent);
    csv += QString::asprintf("NOCT,%.2f C\n", panel.NOCT_C);
    csv += QString::asprintf("BifacialFactor,%.2f %%\n", panel.BifacialFactor_Percent);
    csv += QString::asprintf("AnnualDegradation,%.4f %%/year\n", panel.AnnualDegradation);
    csv += QString::asprintf("CleaningFactor,%.2f %%\n", panel.Cleaningfactor);
    csv += QString::asprintf("EPSG,%d\n", panel.EPSG);
    csv += QString::asprintf("CenterLat,%.6f degrees\n", panel.CenterLat);
    csv += QString::asprintf("CenterLon,%.6f degrees\n", panel.CenterLon);
    csv += "Center," + PointText(panel.CenterPoint) + "\n";
    csv += QString::asprintf("RawEnergy,%.2f kWh/year\n", panel.RawEnergy);
    csv += QString::asprintf("AdjustedEnergy,%.2f kWh/year\n", panel.AdjustedEnergy);
    csv += QString::asprintf("ShadedHours,%d hours/year\n", panel.Shaded_Hours);
    for (int i = 0; i < 3; ++i) csv += QString::asprintf("PP%d,", i + 1) + PointText(panel.PP[i]) + "\n";
    return csv;
}

static QString ReportText(const PANEL& panel) {
    QString text = "=== SOLAR PANEL SPECIFICATIONS ===\n\n";
    text += "Module: " + PanelText(panel.ModuleType) + "\n";
    text += "Panel: " + PanelText(panel.Name) + "\n\n";
    text += "PHYSICAL:\n";
    text += QString::asprintf("  - Size: %d x %d x %d mm\n", panel.Length, panel.Width, panel.Thickness);
    text += QString::asprintf("  - Weight: %.1f kg\n", panel.Weight_kg);
    text += QString::asprintf("  - Orientation: tilt %.1f degrees, azimuth %.1f degrees, %s\n", panel.DTilt,
                              panel.DAzimuth, panel.Landscape ? "landscape" : "portrait");
    text += QString::asprintf("  - Lift: %.3f m above roof\n\n", panel.Lift);
    text += "ELECTRICAL:\n";
    text += QString::asprintf("  - Power at STC: %.1f W\n", panel.PanelPowerratingKW * 1000.0);
    text += QString::asprintf("  - Power at NOCT: %.1f W\n", panel.MaxPowerNOCT_W);
    text += QString::asprintf("  - Efficiency: %.2f %%\n", panel.Efficiency);
    text += QString::asprintf("  - Temperature coefficient: %.2f %%/C\n", panel.TempCoeff_Pmax_PercentPercent);
    text += QString::asprintf("  - NOCT: %.1f C\n", panel.NOCT_C);
    text += QString::asprintf("  - Bifacial factor: %.1f %%\n", panel.BifacialFactor_Percent);
    text += QString::asprintf("  - Degradation: %.2f %%/year\n\n", panel.AnnualDegradation * 100.0);
    text += "LOCATION:\n";
    text += QString::asprintf("  - Latitude: %.4f\n", panel.CenterLat);
    text += QString::asprintf("  - Longitude: %.4f\n", panel.CenterLon);
    text += "  - Centre: " + PointText(panel.CenterPoint) + "\n";
    text += "\nENERGY ANALYSIS:\n";
    text += QString::asprintf("  - Raw energy: %.1f kWh/year\n", panel.RawEnergy);
    text += QString::asprintf("  - Adjusted energy: %.1f kWh/year\n", panel.AdjustedEnergy);
    text += QString::asprintf("  - Shaded hours: %d (%.2f %%)\n", panel.Shaded_Hours, panel.Shading_Percent);
    return text;
}

QString GetPanelInfo(PANEL panel, QString& csvString) {
    if (panel.GroupingName < ' ') panel.GroupingName = '-';
    csvString = CsvText(panel);
    return ReportText(panel);
}
