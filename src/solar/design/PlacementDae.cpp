#include "PlacementDae.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "PanelColladaWriter.h"
#include "PanelFormLogic.h"
#include "PanelGeometry.h"
#include "PanelNames.h"
#include "PanelStore.h"
#include "PanelText.h"
#include "PlacementOrientation.h"
#include "RoofFlatPlane.h"
#include "RowSpacing.h"
#include "app/services/RunLog.h"
#include "geo/GeoConversions.h"
#include "geo/GeoState.h"
#include "scene/engine_interface.h"

namespace {

// Every panel the planner lays out looks the same, whatever the catalogue says.
constexpr int kPanelGapMm = 20;
constexpr int kPanelOpacity = 100;
constexpr TColor kPanelColour = 0x800000;
constexpr float kOutlineLift = 0.2f;  // m, the outline of the capture above the roof

void clearMarks() {
    At3d_MeasureList_Clear();
    At3d_Measure_Billboard_Delete_All();
    At3d_Sphere_Marker_Delete_All();
}

}  // namespace

PlacementHooks& placementHooks() {
    static PlacementHooks hooks;
    return hooks;
}

void resetPlacementHooks() { placementHooks() = PlacementHooks{}; }

QStringList CreatePanelDAE(const TGIS_Point3D* PA, int NP, int Opacity, TColor TC1, TColor TC2, int ThicknessMM,
                           double Tilt, int Repeat_in, int GapMM) {
    PanelStore& store = panelStore();
    const int Repeat = std::max(1, Repeat_in);
    NewPlacementGroup();
    std::vector<TGIS_Point3D> points;
    int totalVertices = 0, totalPolys = 0, firstPanelIndex = 0;
    const int result = CreatePanelGeometry(PA, NP, ThicknessMM / 1000.0f, Tilt, Repeat, GapMM / 1000.0f, points,
                                           totalVertices, totalPolys, firstPanelIndex, runLog().fp_prt);
    if (result < -990) return {};
    QStringList files;
    const bool createBox = ThicknessMM > 0;
    for (int i = firstPanelIndex; i < store.NumPanelsCreated; ++i) {
        PANEL& panel = store.panels[i];
        const QString file = PanelFileNameFromName(PanelText(panel.Name));
        SetPanelText(panel.Filename, file);
        if (WritePanelColladaFile(file, points.data(), totalVertices, totalPolys, NP, createBox, TC1, TC2, Opacity, i,
                                  runLog().fp_prt))
            files << file;
    }
    clearMarks();
    return files;
}

bool CreatePanelsFromPoints(const TGIS_Point3D* P, int NP, QStringList& files) {
    files.clear();
    PanelStore& store = panelStore();
    PanelFormState& form = panelFormState();
    PANEL& global = store.GlobalPanel;
    roofState().ROOF = 2;
    if (NP < 3) return false;
    for (int i = 0; i < 3; ++i) global.PP[i] = P[i];
    global.CenterPoint = P[0];
    GPSEastNorth2LatLon(P[0].X, P[0].Y, global.CenterLat, global.CenterLon);

    double tilt = 0, azimuth = 0;
    CalculateOrientation(P, tilt, azimuth);
    form.GlobalRoofTilt = static_cast<int>(tilt);
    global.DTilt = tilt;
    global.DAzimuth = azimuth;

    form.TiltEdit = std::max(tilt, 8.0);
    form.RooftypeRG = tilt < 10 ? 1 : 0;
    InstallRowSpacingHelp();
    const bool ok = placementHooks().openPanelForm && placementHooks().openPanelForm();
    if (!ok) {
        At3d_MeasureList_Clear();
        form.BlockDepth = 0;
        return false;
    }
    UpdateGlobalPanel();
    global.Gapmm = kPanelGapMm;
    global.Opacity = kPanelOpacity;
    global.Color1 = kPanelColour;
    global.Color2 = kPanelColour;

    // The baseline sets the row length; nobody types a count.
    const double w = (global.Landscape ? global.Length : global.Width) / 1000.0;
    const double g = global.Gapmm / 1000.0;
    const double dist = std::hypot(P[1].X - P[0].X, P[1].Y - P[0].Y);
    global.Repeat = w + g > 0 ? std::max(1, static_cast<int>(std::floor((dist + g) / (w + g)))) : 1;

    PLANE outline;
    outline.Npoints = std::min(NP, MAX_PLANE_POINTS);
    for (int i = 0; i < outline.Npoints; ++i) outline.P[i] = P[i];
    if (FlatPlane(&outline, kOutlineLift).Npoints == 0) {
        form.BlockDepth = 0;
        return false;
    }

    TGIS_Point3D PA[3] = {global.PP[0], global.PP[1], global.PP[2]};
    global.EPSG = geoState().EPSG > 0 ? geoState().EPSG : 0;
    files = CreatePanelDAE(PA, 3, global.Opacity, global.Color1, global.Color2, global.Thickness, global.DTilt,
                           global.Repeat, global.Gapmm);
    if (!files.isEmpty() && placementHooks().addModels) placementHooks().addModels(files);
    form.BlockDepth = 0;
    return true;
}
