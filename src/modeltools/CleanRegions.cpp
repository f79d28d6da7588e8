#include "CleanRegions.h"

#include <QFile>
#include <cmath>

#include "app/model/LayerTable.h"
#include "app/model/ModelSession.h"
#include "app/model/SceneLayers.h"
#include "app/services/FileHelpers.h"
#include "app/services/OrvoDialogs.h"
#include "app/session/DispatchState.h"
#include "geo/Frames.h"
#include "scene/engine/AtomicFile.h"
#include "scene/engine_interface.h"

namespace {

// Toolkit colours (red in the lowest byte) taken in turn by the region lines.
constexpr int REGION_COLOURS[8] = {0x0000FF, 0x00FFFF, 0xFF00FF, 0xFFFF00, 0x0080FF, 0xFF8000, 0x8000FF, 0xFFFFFF};
constexpr int GREEN = 65280;
constexpr int SPHERE_EVERY = 50;

QStringList sortedUnique(QStringList lines) {
    lines.removeAll(QString());
    lines.sort();
    lines.removeDuplicates();
    return lines;
}

}  // namespace

CleanMarkState& cleanMarkState() {
    static CleanMarkState state;
    return state;
}

void resetCleanMarkState() { cleanMarkState() = CleanMarkState{}; }

QStringList ReadTodeleteLines(const std::string& path) {
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly)) return {};
    QStringList lines;
    for (const QByteArray& line : file.readAll().split('\n')) lines << QString::fromUtf8(line).trimmed();
    return sortedUnique(lines);
}

bool WriteTodeleteLines(const std::string& path, QStringList lines) {
    std::string text;
    for (const QString& line : sortedUnique(std::move(lines))) text += line.toStdString() + "\n";
    return engine::WriteFileAtomically(path, text, nullptr);
}

std::vector<CLEAN> ReadCleanRegions(const std::string& path) {
    std::vector<CLEAN> regions;
    for (const QString& line : ReadTodeleteLines(path)) {
        CLEAN region;
        if (std::sscanf(line.toUtf8().constData(), "%d %f %f %f %f", &region.MA, &region.X, &region.Y, &region.Z,
                        &region.R) == 5)
            regions.push_back(region);
    }
    for (CLEAN& region : regions) region.MA = regions.back().MA;
    return regions;
}

int AddLineTemporary(int ma, float deltagova, float RAD) {
    const DispatchState& click = dispatchState();
    CleanMarkState& state = cleanMarkState();
    const double ElevTodeleteAbove = click.GlobalZ1 + deltagova + OC(2);
    double MinZ = 99999, MaxZ = -99999;
    const int colour = REGION_COLOURS[state.colourTurn++ % 8];
    int NL = 0, NF = 0;
    GetTotalVertices(NL, NF);
    const LayerTable& table = layerTable();
    int above = 0;
    for (int k = 0; k < table.NL; ++k) {
        const char* layer = table.layerName[k];
        for (int i = 0, n = At3d_VertexCount(layer); i < n; ++i) {
            double v[3];
            At3d_GetVertex(i, layer, v);
            const double dis = std::hypot(v[0] - click.GlobalX1, v[1] - click.GlobalY1);
            if (dis > RAD) continue;
            const double mapZ = v[2] + OC(2);
            if (ma == 2 && mapZ >= ElevTodeleteAbove) {
                if (above++ % SPHERE_EVERY == 0) AddSphere(v[0] + OC(0), v[1] + OC(1), mapZ, 1.0, GREEN);
            } else if (ma == 1 && dis < RAD) {
                MinZ = std::min(MinZ, mapZ);
                MaxZ = std::max(MaxZ, mapZ);
            }
        }
    }
    if (ma == 1) {
        TGIS_Point3D bottom{click.GlobalX1 + OC(0), click.GlobalY1 + OC(1), MinZ, 0};
        TGIS_Point3D top{bottom.X, bottom.Y, MaxZ, 0};
        AddLineToScene("VL" + QString::number(++state.lineNumber), bottom, top, colour, 4);
    }
    const std::string& list = modelSession().TodeleteVerticesFile;
    QStringList lines = ReadTodeleteLines(list);
    if (!lines.isEmpty() &&
        MyMessageBox(QString::asprintf("%d To delete Items in existing file\nDelete them?", int(lines.size())),
                     "Delete vertices", MB_YESNO) == IDYES)
        lines.clear();
    lines << QString::asprintf("%d %.2lf %.2lf %.2f %.2f", ma, click.GlobalX1 + OC(0), click.GlobalY1 + OC(1),
                               ElevTodeleteAbove, RAD);
    if (!WriteTodeleteLines(list, lines)) MyShowMessage("Cannot write " + QString::fromStdString(list));
    return static_cast<int>(ReadTodeleteLines(list).size());
}

int MarkCloseVertices() { return AddLineTemporary(1, 0, 2); }

int MarkAboveClickedZ() {
    CleanMarkState& state = cleanMarkState();
    const DispatchState& click = dispatchState();
    QString value = QString::asprintf("%.1f %.1f", state.lastBias, state.lastRange);
    if (!MyInputQuery(QString::asprintf("Marked elevation is %.1f", click.GlobalZ1 + OC(2)),
                      "Elevation bias (it can be negative) and range", value))
        return 0;
    float bias = state.lastBias, range = state.lastRange;
    std::sscanf(value.toUtf8().constData(), "%f %f", &bias, &range);
    state.lastBias = bias;
    state.lastRange = range;
    return AddLineTemporary(2, bias, range);
}
