#include "PlacementAddPanel.h"

#include <cmath>
#include <cstring>

#include "PanelCatalog.h"
#include "PanelGeometryVector.h"
#include "PanelNames.h"
#include "PanelStore.h"
#include "PanelText.h"
#include "app/services/RunLog.h"

namespace {

bool missingText(const QString& text) {
    return text.isEmpty() || text == "-" || text == "?" || text == "??";
}

TGIS_Point3D meanOfCorners(const PANEL& p) {
    TGIS_Point3D c{};
    for (const TGIS_Point3D& corner : p.Corners) c = pgv::add(c, corner);
    return pgv::scale(c, 0.25);
}

void takeTemplate(PANEL& p, const PANEL& g) {
    if (g.Length != 0) p.Length = g.Length;
    if (g.Width != 0) p.Width = g.Width;
    if (g.Thickness != 0) p.Thickness = g.Thickness;
    p.Landscape = g.Landscape;
    p.Lift = g.Lift;
    p.Efficiency = g.Efficiency;
    p.PanelPowerratingKW = g.PanelPowerratingKW;
    p.Weight_kg = g.Weight_kg;
    p.MaxPowerNOCT_W = g.MaxPowerNOCT_W;
    p.TempCoeff_Pmax_PercentPercent = g.TempCoeff_Pmax_PercentPercent;
    p.NOCT_C = g.NOCT_C;
    p.BifacialFactor_Percent = g.BifacialFactor_Percent;
    p.AnnualDegradation = g.AnnualDegradation;
    p.Cleaningfactor = g.Cleaningfactor;
    p.EPSG = g.EPSG;
    p.CenterLat = g.CenterLat;
    p.CenterLon = g.CenterLon;
    p.RawEnergy = g.RawEnergy;
    p.AdjustedEnergy = g.AdjustedEnergy;
    std::memcpy(p.MonthlyRadiation, g.MonthlyRadiation, sizeof p.MonthlyRadiation);
    p.Shaded_Hours = g.Shaded_Hours;
    p.DirectSun_Hours = g.DirectSun_Hours;
    p.Shading_Percent = g.Shading_Percent;
    p.Annual_kWh = g.Annual_kWh;
    p.Shadingloss_kWh = g.Shadingloss_kWh;
    p.Repeat = g.Repeat != 0 ? g.Repeat : 1;
    p.Gapmm = g.Gapmm;
    p.Active = true;
}

void takeTexts(PANEL& p, const PANEL& g, int index) {
    const PanelStore& store = panelStore();
    if (!missingText(PanelText(g.ModuleType))) SetPanelText(p.ModuleType, PanelText(g.ModuleType));
    if (!missingText(PanelText(g.Filename)))
        SetPanelText(p.Filename, PanelText(g.Filename));
    else
        SetPanelText(p.Filename, store.ModelFolder + "Panel-" + QString::number(index) + ".dae");
    QString texture = PanelText(g.TextureName);
    if (missingText(texture)) texture = panelCatalog().GlobalPanelJPGName;
    if (missingText(texture)) texture = panelCatalog().PanelImageTexture;
    SetPanelText(p.TextureName, texture);
}

// The panel's own normal, turned upward; lift acts along it rather than along Z.
TGIS_Point3D upwardNormal(const PANEL& p) {
    const TGIS_Point3D* c = p.Corners;
    TGIS_Point3D n = pgv::cross(pgv::sub(c[1], c[0]), pgv::sub(c[3], c[0]));
    if (pgv::length(n) < 1e-12) n = pgv::cross(pgv::sub(c[2], c[1]), pgv::sub(c[0], c[1]));
    if (pgv::length(n) < 1e-12) n = pgv::make(0, 0, 1);
    n = pgv::scale(n, 1.0 / pgv::length(n));
    return n.Z < 0 ? pgv::scale(n, -1) : n;
}

}  // namespace

PANEL AddPanelToGlobalArray(const TGIS_Point3D* panelPoints, int NP, const char* Name, float thickness,
                            TColor color1, TColor color2, int opacity, double tilt, double azimuth,
                            const TGIS_Point3D* originalRoofPoints) {
    PanelStore& store = panelStore();
    const PANEL& g = store.GlobalPanel;
    PANEL p{};
    p.Opacity = opacity;
    p.Color1 = color1;
    p.Color2 = color2;
    p.Thickness = static_cast<int>(std::lround(thickness * 1000.0f));
    const std::size_t nameLength = Name ? std::strlen(Name) : 0;
    if (nameLength > sizeof p.Name - 1)
        PrintRunLog("WARNING: Truncating %s from %u to %u chars\n", Name, static_cast<unsigned>(nameLength),
                    static_cast<unsigned>(sizeof p.Name - 1));
    SetPanelText(p.Name, QString::fromUtf8(Name ? Name : ""));

    if (NP >= 4 && panelPoints) {
        for (int i = 0; i < 4; ++i) p.Corners[i] = panelPoints[i];
        p.CenterPoint = meanOfCorners(p);
    } else {
        PrintRunLog("WARNING: NP<4 or panelPoints==NULL; corners not set\n");
    }
    if (originalRoofPoints)
        for (int i = 0; i < 3; ++i) p.PP[i] = originalRoofPoints[i];

    takeTemplate(p, g);
    takeTexts(p, g, store.NumPanelsCreated);
    if (store.GlobalPanelGroup >= 0) p.GroupingName = GroupLetterOfGroup(store.GlobalPanelGroup);
    p.RoofType = g.RoofType;
    p.DTilt = tilt;
    p.DAzimuth = azimuth;

    if (p.Lift != 0) {
        const TGIS_Point3D lift = pgv::scale(upwardNormal(p), p.Lift);
        for (TGIS_Point3D& corner : p.Corners) corner = pgv::add(corner, lift);
        p.CenterPoint = meanOfCorners(p);
    }
    if (p.Length == 0 && g.Length > 0) p.Length = g.Length;
    if (p.Width == 0 && g.Width > 0) p.Width = g.Width;
    if (store.NumPanelsCreated < MAX_PANELS) store.panels[store.NumPanelsCreated++] = p;
    return p;
}
