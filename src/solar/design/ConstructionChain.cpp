#include "ConstructionChain.h"

#include <QFile>
#include <QFileInfo>
#include <QList>
#include <algorithm>
#include <cmath>

#include "AdjacencyGrouping.h"
#include "ConstructionCsv.h"
#include "ConstructionFrame.h"
#include "Csv2Svg.h"
#include "PanelStore.h"
#include "RoofVisibility.h"
#include "app/services/DialogService.h"
#include "app/services/RunLog.h"
#include "geo/Frames.h"
#include "scene/engine_interface.h"

namespace {

constexpr float kDefaultL1 = 2340, kDefaultL2 = 1400;    // mm
constexpr double kDefaultAboveRoof = 1020;               // mm
constexpr float kBlockHeight = 230, kBlockLength = 490;  // mm
constexpr double kRayDepth = 22.0;                       // m below the corner
constexpr double kRaySkip = 0.03;                        // m, the panel's own surface
constexpr int kMaxGroupName = 99;
constexpr double kPanelGapMm = 20;  // between the two panels across
// Colours of the panel labels, by the place of the panel's letter among the letters in use.
constexpr int kLabelColorCount = 7;
constexpr int kLabelColors[kLabelColorCount] = {0x00FFFF, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00A5FF, 0x507FFF};

QStringList csvLines(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    QStringList lines;
    for (const QString& l : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n')))
        if (!l.trimmed().isEmpty()) lines << l.trimmed();
    return lines;
}

// Across the row: the panel's side that runs up the slope.
float acrossMm(const PANEL& p) { return float(p.Landscape ? p.Width : p.Length); }
float alongMm(const PANEL& p) { return float(p.Landscape ? p.Length : p.Width); }

}  // namespace

PanelLabelHooks& panelLabelHooks() {
    static PanelLabelHooks hooks;
    return hooks;
}

void resetPanelLabelHooks() { panelLabelHooks() = PanelLabelHooks{}; }

void AddNamesToPanels(int ma) {
    At3d_MeasureList_Clear();
    At3d_Measure_Billboard_Delete_All();
    At3d_Sphere_Marker_Delete_All();
    if (ma == 0) return;
    ConstructionGroups& state = constructionGroups();
    state.groupCount = PerformAdjacencyGrouping(state.groups.data());
    const PanelStore& store = panelStore();
    QList<char> letters;
    for (int i = 0; i < store.NumPanelsCreated; ++i)
        if (!letters.contains(store.panels[i].GroupingName)) letters << store.panels[i].GroupingName;
    std::sort(letters.begin(), letters.end());
    for (int i = 0; i < store.NumPanelsCreated; ++i) {
        const PANEL& p = store.panels[i];
        const QString name = QString::fromUtf8(p.Name);
        const QString label = name.left(name.indexOf('/')) + (p.GroupingName ? QString(QChar(p.GroupingName)) : "");
        PrintRunLog("AddNamesToPanels: %s %s\n", p.Name, label.toUtf8().constData());
        if (panelLabelHooks().makeLabel)
            panelLabelHooks().makeLabel(p.CenterPoint, label,
                                        kLabelColors[letters.indexOf(p.GroupingName) % kLabelColorCount]);
    }
    At3d_RenderOpenGLScene();
}

double HeightAboveRoofMm(double x, double y, double z, double fallback_mm) {
    const double v1[3] = {x - OC(0), y - OC(1), z - OC(2)};
    const double v2[3] = {v1[0], v1[1], v1[2] - kRayDepth};
    double hit[3] = {0, 0, 0};
    if (At3d_Get_Line_Mesh_Intersection_Point(v1, v2, kRaySkip, hit, 0) <= 0) return fallback_mm;
    return std::sqrt((hit[0] - v1[0]) * (hit[0] - v1[0]) + (hit[1] - v1[1]) * (hit[1] - v1[1]) +
                     (hit[2] - v1[2]) * (hit[2] - v1[2])) *
           1000.0;
}

ConstructionChainResult RunConstructionChain(const QString& modelFile, const QString& customer) {
    ConstructionChainResult result;
    ShowHideroofplanes(0);
    result.groupCsvs = GenerateConstructionCSVs(modelFile);
    AddNamesToPanels(1);
    const PanelStore& store = panelStore();
    for (const QString& path : result.groupCsvs) {
        const QString leaf = QFileInfo(path).completeBaseName();
        const int at = leaf.indexOf(QLatin1String("_Group"));
        const QString groupName = leaf.mid(at + 6).left(kMaxGroupName);
        const QStringList lines = csvLines(path);
        if (lines.isEmpty()) {
            PrintRunLog("%s failed to create csv\n", groupName.toUtf8().constData());
            continue;
        }
        const QStringList first = lines[0].split(QLatin1Char(','));
        const int count = first.size();
        const int idx1 = first[0].trimmed().toInt();
        if (idx1 < 0 || idx1 >= store.NumPanelsCreated) continue;
        const PANEL& p = store.panels[idx1];
        // A panel restored without its module sizes falls back to the usual frame.
        const float tilt = float(p.DTilt);
        const float L1 = acrossMm(p) > 0 ? acrossMm(p) : kDefaultL1;
        const float totalLengthMm = count * alongMm(p);
        float L2 = 0;
        if (lines.size() > 1) {
            const int idx2 = lines[1].split(QLatin1Char(','))[0].trimmed().toInt();
            const float across2 = (idx2 >= 0 && idx2 < store.NumPanelsCreated) ? acrossMm(store.panels[idx2]) : 0;
            L2 = across2 > 0 ? across2 : kDefaultL2;
        }
        const TGIS_Point3D& c1 = p.Corners[3];
        const double aboveRoof = HeightAboveRoofMm(c1.X, c1.Y, c1.Z, kDefaultAboveRoof);
        PrintRunLog("Construction %s: %d panels, L1 %.0f L2 %.0f tilt %.1f above roof %.0f mm, length %.0f mm\n",
                    groupName.toUtf8().constData(), count, L1, L2, tilt, aboveRoof, totalLengthMm);
        if (p.RoofType == 0) continue;  // tiled roofs take hooks, not a frame
        const QString frame = Panel2CSV(groupName, L1, L2, tilt, float(aboveRoof), kBlockHeight, kBlockLength);
        if (frame.isEmpty()) continue;
        result.frameCsvs << frame;
        const double depthCm = (L1 + (L2 > 0 ? kPanelGapMm + L2 : 0)) * std::cos(tilt * M_PI / 180.0) / 10.0;
        // The header is drawn 14 mm high, so only what fits across an A4 page.
        const QString header = QString::asprintf("%s  Tilt: %.1f", groupName.toUtf8().constData(), tilt) +
                               QString::asprintf("     Depth: %.1f", depthCm);
        const QString svg = CSV2SVG(frame, header, customer);
        if (!svg.isEmpty()) result.svgs << svg;
    }
    return result;
}

void CreateConstructionMnuClick(const QString& modelFile, const QString& customer) {
    const ConstructionChainResult result = RunConstructionChain(modelFile, customer);
    for (const QString& svg : result.svgs) dialogService().openDocument(svg);
}
