#include "PanelEditing.h"

#include <QFileInfo>
#include <QSet>
#include <algorithm>
#include <cmath>
#include <vector>

#include "AdjacencyGrouping.h"
#include "ConstructionChain.h"
#include "PanelColladaWriter.h"
#include "PanelGeometryRoof.h"
#include "PanelGeometryVector.h"
#include "PanelInfo.h"
#include "PanelLayers.h"
#include "PanelNames.h"
#include "PanelPicking.h"
#include "PanelStore.h"
#include "PanelStoreOps.h"
#include "PanelText.h"
#include "PlacementDae.h"
#include "PlacementSnap.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/RunLog.h"
#include "geo/Frames.h"
#include "geo/GeoConversions.h"
#include "scene/engine_interface.h"

namespace {

constexpr double kNoVector = -9990;
constexpr double kFootDepth = 22;   // m below the corner the roof is looked for
constexpr double kFootSkip = 0.03;  // m: the panel's own surface
constexpr double kDefaultLift = 0.5;

bool panelLayer(const QString& layer) {
    return !layer.isEmpty() && (layer[0] == 'P' || layer[0] == 'p') && layer.contains("_geometry") &&
           !layer.contains("_roof");
}

// The selected panel first, then (for a group) the panels of its letter.
std::vector<int> panelsToMove(int selected) {
    std::vector<int> list{selected};
    const PanelEditState& edit = panelEditState();
    if (edit.PanelOrGroup <= 1) return list;
    const PanelStore& store = panelStore();
    const char letter = store.panels[selected].GroupingName;
    for (const QString& layer : SceneLayerNames()) {
        if (int(list.size()) >= MAX_PANELS_MOVED) break;
        if (layer == edit.GlobalLayerName || !panelLayer(layer)) continue;
        const int index = GetPanelIndexFromLayer(layer);
        if (index < 0 || store.panels[index].GroupingName != letter) continue;
        if (std::find(list.begin(), list.end(), index) == list.end()) list.push_back(index);
    }
    return list;
}

// The move that puts the corner nearest to the line's start, where it
// stands on the roof, onto the line's end; the line itself when no roof lies under it.
TGIS_Point3D footToEnd(const PANEL& panel) {
    const PanelEditState& edit = panelEditState();
    const TGIS_Point3D corner = FindClosestCorner(panel, edit.lineStart);
    TGIS_Point3D below = LiftPointAlongPanelNormal(panel, corner, -float(kFootDepth));
    // The roof's normal follows its clicking order; the search always goes down.
    if (below.Z > corner.Z) below = pgv::sub(pgv::scale(corner, 2), below);
    const double v1[3] = {corner.X - OC(0), corner.Y - OC(1), corner.Z - OC(2)};
    const double v2[3] = {below.X - OC(0), below.Y - OC(1), below.Z - OC(2)};
    double hit[3];
    if (At3d_Get_Line_Mesh_Intersection_Point(v1, v2, kFootSkip, hit, 0) <= 0)
        return pgv::sub(edit.lineEnd, edit.lineStart);
    const TGIS_Point3D onRoof = pgv::make(hit[0] + OC(0), hit[1] + OC(1), hit[2] + OC(2));
    return pgv::sub(edit.lineEnd, onRoof);
}

// The upward normal of the panel's corners; (0, 0, 1) for a degenerate panel.
TGIS_Point3D upwardNormal(const PANEL& p) {
    const TGIS_Point3D n = pgv::normalized(
        pgv::cross(pgv::sub(p.Corners[3], p.Corners[0]), pgv::sub(p.Corners[1], p.Corners[0])), 1e-9,
        pgv::make(0, 0, 1));
    return n.Z < 0 ? pgv::scale(n, -1) : n;
}

}  // namespace

PanelEditState& panelEditState() {
    static PanelEditState state;
    return state;
}

void resetPanelEditState() { panelEditState() = PanelEditState{}; }

PanelDialogKind PreparePanelDialog(const QString& layer, TGIS_Point3D lineStart, TGIS_Point3D lineEnd) {
    PanelEditState& edit = panelEditState();
    PanelStore& store = panelStore();
    edit.GlobalLayerName = layer;
    edit.lineStart = lineStart;
    edit.lineEnd = lineEnd;
    edit.PanelOrGroup = 0;
    edit.FromShowInfo = false;
    edit.GlobalSelectedPanelIndex = -1;
    edit.GlobalNeighbourPanelCenter = {};
    ConstructionGroups& groups = constructionGroups();
    groups.groupCount = PerformAdjacencyGrouping(groups.groups.data());
    if (layer.contains("_roof")) return ON_ROOF_POLYGON;
    const int index = GetPanelIndexFromLayer(layer);
    if (index < 0 || index >= store.NumPanelsCreated) return NO_PANEL;
    edit.GlobalSelectedPanelIndex = index;
    const PANEL& panel = store.panels[index];
    edit.GlobalNeighbourPanelCenter = GetNeighbourCenter(panel, lineStart, lineEnd);
    GetNeighbourCenters(panel, lineStart, lineEnd);
    store.GlobalPanel = panel;
    QString csv;
    edit.GlobalPanelInfo = GetPanelInfo(panel, csv);
    return ON_PANEL;
}

QString PanelDialogCaption(PanelDialogKind kind, const QString& layer) {
    if (kind == ON_PANEL) return "Panel " + layer;
    if (kind == ON_ROOF_POLYGON) return "Roof polygon " + layer;
    return {};
}

void UpdatePanelCornersAfterTranslation(float DX, float DY, float DZ, PANEL& p) {
    const TGIS_Point3D move = pgv::make(DX, DY, DZ);
    for (TGIS_Point3D& corner : p.Corners) corner = pgv::add(corner, move);
    for (TGIS_Point3D& point : p.PP) point = pgv::add(point, move);
    p.CenterPoint = pgv::add(p.CenterPoint, move);
    GPSEastNorth2LatLon(p.CenterPoint.X, p.CenterPoint.Y, p.CenterLat, p.CenterLon);
    SaveThePanel(p);
}

int MovePanels(double DXIN, double DYIN, double DZIN, int IDX2) {
    PanelEditState& edit = panelEditState();
    PanelStore& store = panelStore();
    if (edit.PanelOrGroup == 0) return 0;
    const int selected = GetPanelIndexFromLayer(edit.GlobalLayerName);
    if (selected < 0 || selected >= store.NumPanelsCreated) return 0;
    TGIS_Point3D move = pgv::make(DXIN, DYIN, DZIN);
    if (IDX2 < 0 && DZIN < kNoVector) move = footToEnd(store.GlobalPanel);
    PrintRunLog("MovePanels %s by %.3f %.3f %.3f%s\n", edit.GlobalLayerName.toUtf8().constData(), move.X, move.Y,
                move.Z, IDX2 >= 0 ? " (snap)" : "");
    const std::vector<int> list = panelsToMove(selected);
    for (int index : list) {
        PANEL& panel = store.panels[index];
        const QByteArray layer = GetLayerOfPanel(panel).toUtf8();
        const double delta[3] = {move.X, move.Y, move.Z};
        At3d_Mesh_Static_Translate(layer.constData(), 1, delta);
        UpdatePanelCornersAfterTranslation(float(move.X), float(move.Y), float(move.Z), panel);
    }
    if (panelEditState().labelsShown) AddNamesToPanels(1);
    At3d_RenderOpenGLScene();
    return int(list.size());
}

int DoMovepanels() {
    PanelEditState& edit = panelEditState();
    const bool labels = edit.labelsShown;
    if (labels) AddNamesToPanels(0);
    edit.labelsShown = false;
    const int target = GetPanelIndexFromCoordinates(edit.lineEnd.X, edit.lineEnd.Y, edit.lineEnd.Z);
    const TGIS_Point3D& snap = edit.GlobalMovePanels_PXX;
    const bool snapped = snap.Z > kNoVector;
    const int moved = snapped ? MovePanels(snap.X, snap.Y, snap.Z, target) : MovePanels(0, 0, -9999, -1);
    edit.labelsShown = labels;
    if (labels) AddNamesToPanels(1);
    return moved;
}

double GetDZ2TranslatePanel(const PANEL& panel, float DX, float DY) {
    TGIS_Point3D n = pgv::cross(pgv::sub(panel.PP[1], panel.PP[0]), pgv::sub(panel.PP[2], panel.PP[0]));
    const double length = pgv::length(n);
    if (!(length > 1e-6)) return 0;
    n = pgv::scale(n, 1 / length);
    if (n.Z < 0) n = pgv::scale(n, -1);
    if (!(std::fabs(n.Z) > 1e-6)) return 0;
    double DZ = -(n.X * DX + n.Y * DY) / n.Z;
    const double slope = std::acos(std::clamp(n.Z, -1.0, 1.0)) / pgv::kDeg;
    PrintRunLog("GetDZ2TranslatePanel: normal %.4f %.4f %.4f, slope %.2f deg, gradient %.4f %.4f\n", n.X, n.Y, n.Z,
                slope, -n.X / n.Z, -n.Y / n.Z);
    if (slope > 60) PrintRunLog("GetDZ2TranslatePanel: a steep roof\n");
    const double planMove = std::hypot(DX, DY);
    if (planMove < 0.001) PrintRunLog("GetDZ2TranslatePanel: a move of %.4f m is suspect\n", planMove);
    if (std::fabs(DZ) < 0.001 && planMove > 0.1) DZ = 0;
    return DZ;
}

double LiftPanels() {
    PanelEditState& edit = panelEditState();
    PanelStore& store = panelStore();
    QString answer = QString::number(kDefaultLift);
    if (!MyInputQuery("Lift panel(s)", "How much to lift (m)?", answer)) return 0;
    bool ok = false;
    const double lift = answer.toDouble(&ok);
    if (!ok) return 0;
    const int index = GetPanelIndexFromLayer(edit.GlobalLayerName);
    if (index < 0 || index >= store.NumPanelsCreated) {
        // A roof polygon: lifted along its own normal, the whole file's layers with it.
        const QByteArray layer = edit.GlobalLayerName.toUtf8();
        const int count = At3d_VertexCount(layer.constData());
        if (count < 3) return 0;
        std::vector<TGIS_Point3D> points(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
            double v[3];
            At3d_GetVertex(i, layer.constData(), v);
            points[std::size_t(i)] = pgv::make(v[0], v[1], v[2]);
        }
        const TGIS_Point3D vector = LiftPointAlongPolygonNormal(points.data(), count, float(lift));
        const double delta[3] = {vector.X, vector.Y, vector.Z};
        const qsizetype cut = edit.GlobalLayerName.indexOf('_');
        const QString prefix = cut > 0 ? edit.GlobalLayerName.left(cut) : edit.GlobalLayerName;
        for (const QString& name : SceneLayerNames())
            if (name == edit.GlobalLayerName || name.startsWith(prefix + "_"))
                At3d_Mesh_Static_Translate(name.toUtf8().constData(), 1, delta);
        At3d_RenderOpenGLScene();
        return lift;
    }
    store.GlobalPanel = store.panels[index];
    const TGIS_Point3D vector = pgv::scale(upwardNormal(store.GlobalPanel), lift);
    return MovePanels(vector.X, vector.Y, vector.Z, -1) > 0 ? lift : 0;
}

int DeletePanels() {
    PanelEditState& edit = panelEditState();
    PanelStore& store = panelStore();
    int deleted = 0;
    if (edit.PanelOrGroup == 1) {
        const QString name = GetPanelNameFromLayer(edit.GlobalLayerName);
        At3d_DeleteLayer(edit.GlobalLayerName.toUtf8().constData());
        DeletePanelByName(name);
        deleted = 1;
    } else if (edit.PanelOrGroup == 2) {
        const int index = GetPanelIndexFromLayer(edit.GlobalLayerName);
        if (index < 0 || index >= store.NumPanelsCreated) return 0;
        const char letter = store.panels[index].GroupingName;
        // From the end: each deletion shortens the list.
        const QStringList layers = SceneLayerNames();
        for (qsizetype i = layers.size() - 1; i >= 0; --i) {
            if (!layers[i].contains("_geometry")) continue;
            const int member = GetPanelIndexFromLayer(layers[i]);
            if (member < 0 || store.panels[member].GroupingName != letter) continue;
            const QString name = PanelText(store.panels[member].Name);
            At3d_DeleteLayer(layers[i].toUtf8().constData());
            DeletePanelByName(name);
            ++deleted;
        }
    }
    At3d_MeasureList_Clear();
    store.NumPanelsCreatedT = 0;
    At3d_Measure_Billboard_Delete_All();
    At3d_Sphere_Marker_Delete_All();
    At3d_RenderOpenGLScene();
    return deleted;
}

QString DuplicatePanel(int sourcePanelIndex, double targetX, double targetY, double targetZ) {
    PanelStore& store = panelStore();
    if (store.NumPanelsCreated >= MAX_PANELS) {
        MyShowMessage("Cannot duplicate panel - maximum limit (500) reached");
        return {};
    }
    if (sourcePanelIndex < 0 || sourcePanelIndex >= store.NumPanelsCreated) {
        MyShowMessage("Invalid source panel index");
        return {};
    }
    const PANEL& source = store.panels[sourcePanelIndex];
    // A duplicate stands in a group of its own.
    const int group = (GetPanelGroup(source) + 555) % 988 + 1;
    PANEL copy = source;
    const QString name = QString::asprintf("%d/%d", HighestPanelNumber() + 1, group);
    const QFileInfo sourceFile(PanelText(source.Filename));
    SetPanelText(copy.Name, name);
    SetPanelText(copy.Filename, sourceFile.path() + "/Panel-" + QString(name).replace('/', '_') + "." +
                                    (sourceFile.suffix().isEmpty() ? QString("dae") : sourceFile.suffix()));
    copy.Active = true;
    UpdatePanelCornersAfterTranslation(float(targetX - source.CenterPoint.X), float(targetY - source.CenterPoint.Y),
                                       float(targetZ - source.CenterPoint.Z), copy);
    store.panels[store.NumPanelsCreated++] = copy;
    return PanelText(copy.Filename);
}

QStringList DuplicateBtnClick() {
    const PanelEditState& edit = panelEditState();
    const PlacementSnapState& neighbours = placementSnapState();
    QStringList files;
    const int source = edit.GlobalSelectedPanelIndex;
    if (neighbours.HowmanyNeighbours == 0) {
        const TGIS_Point3D& c = edit.GlobalNeighbourPanelCenter;
        const QString file = DuplicatePanel(source, c.X, c.Y, c.Z);
        if (file.isEmpty()) {
            MyShowMessage("Could not create duplicate panel");
            return {};
        }
        files << file;
    } else {
        for (int i = 0; i < neighbours.HowmanyNeighbours && panelStore().NumPanelsCreated < MAX_PANELS; ++i) {
            const TGIS_Point3D& c = neighbours.GlobalNeighbourPanelCenters[i];
            const QString file = DuplicatePanel(source, c.X, c.Y, c.Z);
            if (!file.isEmpty()) files << file;
        }
    }
    if (!files.isEmpty() && placementHooks().addModels) placementHooks().addModels(files);
    return files;
}

void ShowpanelsNamesMnuClick(bool show) {
    panelEditState().labelsShown = show;
    AddNamesToPanels(show ? 1 : 0);
}

int DeleteAllPanels() {
    PanelStore& store = panelStore();
    if (store.NumPanelsCreated <= 0) return 0;
    const int count = store.NumPanelsCreated;
    const QStringList layers = SceneLayerNames();
    for (qsizetype i = layers.size() - 1; i >= 0; --i)
        if (GetPanelIndexFromLayer(layers[i]) >= 0) At3d_DeleteLayer(layers[i].toUtf8().constData());
    AddNamesToPanels(0);
    store.NumPanelsCreated = 0;
    store.NumPanelsCreatedT = 0;
    At3d_RenderOpenGLScene();
    return count;
}
