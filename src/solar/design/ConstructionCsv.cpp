#include "ConstructionCsv.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>
#include <cmath>

#include "PanelStore.h"
#include "PlanEdges.h"
#include "app/services/RunLog.h"

namespace {

constexpr double kSideTouch = 0.3;  // m in plan between a right and a left edge
constexpr double kRowZTol = 0.1;    // m of centre height within one row
constexpr int kMaxRows = 10;
constexpr int kMaxPerRow = 100;

// Portrait or landscape, a panel's left edge is LL-UL and its right edge LR-UR.
void leftEdge(const PANEL& p, PlanPoint& a, PlanPoint& b) {
    a = {p.Corners[0].X, p.Corners[0].Y};
    b = {p.Corners[1].X, p.Corners[1].Y};
}
void rightEdge(const PANEL& p, PlanPoint& a, PlanPoint& b) {
    a = {p.Corners[3].X, p.Corners[3].Y};
    b = {p.Corners[2].X, p.Corners[2].Y};
}

// Plan distance of right's right edge to left's left edge, midpoint first.
double rightToLeft(const PANEL& right, const PANEL& left) {
    PlanPoint r0, r1, l0, l1;
    rightEdge(right, r0, r1);
    leftEdge(left, l0, l1);
    return PlanEdgeGap(l0, l1, r0, r1);
}

std::vector<int> walkRow(int start, const std::vector<int>& candidates, std::vector<bool>& used) {
    std::vector<int> row;
    int current = start;
    while (current >= 0 && int(row.size()) < kMaxPerRow) {
        row.push_back(current);
        for (size_t k = 0; k < candidates.size(); ++k)
            if (candidates[k] == current) used[k] = true;
        current = FindNextPanel(current, candidates, used);
    }
    return row;
}

}  // namespace

bool HasLeftNeighbor(int idx, const std::vector<int>& candidates) {
    const PanelStore& store = panelStore();
    for (int other : candidates)
        if (other != idx && rightToLeft(store.panels[other], store.panels[idx]) <= kSideTouch) return true;
    return false;
}

int FindNextPanel(int current, const std::vector<int>& candidates, const std::vector<bool>& used) {
    const PanelStore& store = panelStore();
    for (size_t k = 0; k < candidates.size(); ++k) {
        if (used[k] || candidates[k] == current) continue;
        if (rightToLeft(store.panels[current], store.panels[candidates[k]]) <= kSideTouch) return candidates[k];
    }
    return -1;
}

std::vector<std::vector<int>> OrderGroupRows(const CONSTRUCTION_GROUP& group) {
    const PanelStore& store = panelStore();
    const std::vector<int> members(group.panelIndices, group.panelIndices + group.panelCount);
    std::vector<std::vector<int>> rows;
    if (members.empty()) return rows;

    if (group.rowCount <= 1) {
        int start = members[0];
        for (int m : members)
            if (!HasLeftNeighbor(m, members)) {
                start = m;
                break;
            }
        std::vector<bool> used(members.size(), false);
        rows.push_back(walkRow(start, members, used));
        return rows;
    }

    std::vector<int> byZ = members;
    std::stable_sort(byZ.begin(), byZ.end(),
                     [&](int a, int b) { return store.panels[a].CenterPoint.Z < store.panels[b].CenterPoint.Z; });
    std::vector<std::vector<int>> bands;
    for (int m : byZ) {
        bool placed = false;
        for (auto& band : bands)
            if (std::fabs(store.panels[band[0]].CenterPoint.Z - store.panels[m].CenterPoint.Z) <= kRowZTol) {
                if (int(band.size()) < kMaxPerRow) band.push_back(m);
                placed = true;
                break;
            }
        if (!placed && int(bands.size()) < kMaxRows) bands.push_back({m});
    }
    for (const auto& band : bands) {
        std::vector<bool> used(members.size(), true);
        for (size_t k = 0; k < members.size(); ++k)
            used[k] = std::find(band.begin(), band.end(), members[k]) == band.end();
        int start = band[0];
        double leftX = 999999;
        for (int m : band)
            if (store.panels[m].CenterPoint.X < leftX) {
                leftX = store.panels[m].CenterPoint.X;
                start = m;
            }
        rows.push_back(walkRow(start, members, used));
    }
    return rows;
}

QStringList GenerateConstructionCSVs(const QString& modelFile) {
    QStringList written;
    const QFileInfo model(modelFile);
    QDir folder = model.absoluteDir();
    // Without QDir::CaseSensitive the filter also takes "_Group" files.
    for (const QString& name : folder.entryList({QStringLiteral("*_group*")}, QDir::Files)) folder.remove(name);

    ConstructionGroups& state = constructionGroups();
    state.groupCount = PerformAdjacencyGrouping(state.groups.data());
    const QString base = folder.absoluteFilePath(model.completeBaseName());
    for (int k = 0; k < state.groupCount; ++k) {
        CONSTRUCTION_GROUP& g = state.groups[k];
        ComputeGroupAttributes(g);
        const QString path = base + QString::asprintf("_Group%c_%s.csv", g.groupLetter, g.constructionType);
        QByteArray text;
        for (const auto& row : OrderGroupRows(g)) {
            for (size_t i = 0; i < row.size(); ++i) {
                if (i) text += ',';
                text += QByteArray::number(row[i]);
            }
            text += '\n';
        }
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
            PrintRunLog("GenerateConstructionCSVs: can't write %s\n", path.toUtf8().constData());
            continue;
        }
        written << path;
    }
    return written;
}
