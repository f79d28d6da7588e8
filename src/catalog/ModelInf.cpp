#include "ModelInf.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "app/model/LayerTable.h"
#include "app/model/ModelSession.h"
#include "app/services/FileHelpers.h"
#include "app/services/RunLog.h"
#include "geo/Frames.h"
#include "geo/GeoConversions.h"
#include "geo/GeoState.h"
#include "scene/engine_interface.h"

namespace {

QString withoutExtension(const QString& path) {
    const int slash = path.lastIndexOf('/');
    const int dot = path.lastIndexOf('.');
    return dot > slash ? path.left(dot) : path;
}

QString stamp(const QDateTime& time) { return time.toString("yyyy-MM-dd hh:mm:ss"); }

struct TopViewPoint {
    double x, y, z;
};

// The engine's vertices in its own frame. Which axis stands up there depends
// on the open's quarter turn, so the up axis is the one whose span matches the
// file's height span.
std::vector<TopViewPoint> engineVertices() {
    std::vector<std::array<double, 3>> all;
    char name[AT3D_NAME_SIZE] = {};
    for (void* layer = At3d_GetNextLayer(nullptr, name); layer; layer = At3d_GetNextLayer(layer, name)) {
        const int n = At3d_VertexCount(name);
        for (int i = 0; i < n; ++i) {
            std::array<double, 3> v{};
            if (At3d_GetVertex(i, name, v.data())) all.push_back(v);
        }
    }
    std::vector<TopViewPoint> points;
    if (all.empty()) return points;
    double lo[3], hi[3];
    for (int a = 0; a < 3; ++a) {
        lo[a] = std::numeric_limits<double>::max();
        hi[a] = -lo[a];
    }
    for (const auto& v : all)
        for (int a = 0; a < 3; ++a) lo[a] = std::min(lo[a], v[a]), hi[a] = std::max(hi[a], v[a]);
    const FrameState& f = frameState();
    const double height = f.OriginalModelMinMax[5] - f.OriginalModelMinMax[4];
    int up = 2;
    for (int a = 0; a < 2; ++a)
        if (std::fabs((hi[a] - lo[a]) - height) < std::fabs((hi[up] - lo[up]) - height)) up = a;
    const int ax = up == 0 ? 1 : 0;
    const int ay = up == 2 ? 1 : 2;
    points.reserve(all.size());
    for (const auto& v : all) points.push_back({v[ax], v[ay], v[up]});
    return points;
}

// A plain picture from above: every vertex a dot, low blue to high red, on white.
QImage topView(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    const std::vector<TopViewPoint> points = engineVertices();
    if (points.empty()) return image;
    double x0 = points[0].x, x1 = x0, y0 = points[0].y, y1 = y0, z0 = points[0].z, z1 = z0;
    for (const TopViewPoint& p : points) {
        x0 = std::min(x0, p.x), x1 = std::max(x1, p.x);
        y0 = std::min(y0, p.y), y1 = std::max(y1, p.y);
        z0 = std::min(z0, p.z), z1 = std::max(z1, p.z);
    }
    const double scale = std::min((width - 1) / std::max(x1 - x0, 1e-9), (height - 1) / std::max(y1 - y0, 1e-9));
    const double offX = (width - 1 - (x1 - x0) * scale) / 2;
    const double offY = (height - 1 - (y1 - y0) * scale) / 2;
    for (const TopViewPoint& p : points) {
        const int px = static_cast<int>(offX + (p.x - x0) * scale);
        const int py = static_cast<int>(height - 1 - (offY + (p.y - y0) * scale));
        const double t = z1 > z0 ? (p.z - z0) / (z1 - z0) : 0.5;
        image.setPixel(std::clamp(px, 0, width - 1), std::clamp(py, 0, height - 1),
                       qRgb(static_cast<int>(255 * t), 64, static_cast<int>(255 * (1 - t))));
    }
    return image;
}

bool writeTopView(const QString& path, int width, int height) {
    const QString temporary = path + ".tmp.jpg";
    if (!topView(width, height).save(temporary, "JPG", 90)) {
        QFile::remove(temporary);
        return false;
    }
    QFile::remove(path);
    return QFile::rename(temporary, path);
}

}  // namespace

QString ModelInfProject(const QString& modelPath) {
    QString project = QFileInfo(withoutExtension(modelPath)).fileName();
    const int cut = project.indexOf("_model");
    return cut >= 0 ? project.left(cut) : project;
}

QString ModelInfFile(const QString& modelPath) { return withoutExtension(modelPath) + "_INF.CSV"; }

QString ModelInfImage(const QString& modelPath) { return withoutExtension(modelPath) + "_INF.JPG"; }

QString ModelInfRow(const ModelInfRecord& r) {
    return QString::asprintf("%s,%s,%s,%s,%.1lf,%.1lf,%.1lf,%.1lf,%.1lf,%.1lf,%d,%d,%s,%s,%lf,%lf",
                             r.Project.toUtf8().constData(), r.Model.toUtf8().constData(),
                             r.Creation.toUtf8().constData(), r.LastAccessed.toUtf8().constData(), r.MinMax[0],
                             r.MinMax[1], r.MinMax[2], r.MinMax[3], r.MinMax[4], r.MinMax[5], r.Vertices, r.Faces,
                             r.Image.toUtf8().constData(), r.Comment.toUtf8().constData(), r.Lat, r.Lon);
}

ModelInfRecord ModelInfOfOpenModel(const QString& modelPath) {
    ModelInfRecord r;
    r.Project = ModelInfProject(modelPath);
    r.Model = modelPath;
    r.Creation = stamp(GetTimeStamp(modelPath));
    r.LastAccessed = stamp(QDateTime::currentDateTime());
    const FrameState& f = frameState();
    std::copy(f.OriginalModelMinMax, f.OriginalModelMinMax + 6, r.MinMax);
    int NL = 0, NF = 0;
    r.Vertices = GetTotalVertices(NL, NF);
    r.Faces = NF;
    r.Image = ModelInfImage(modelPath);
    r.Comment = modelSession().ModelComment;
    const double east = (r.MinMax[0] + r.MinMax[1]) / 2;
    const double north = (r.MinMax[2] + r.MinMax[3]) / 2;
    if (geoState().GlobalCS) {
        GPSEastNorth2LatLon(east, north, r.Lat, r.Lon);
    } else {
        r.Lat = north;
        r.Lon = east;
    }
    return r;
}

bool WriteModelInf(const QString& modelPath, int thumbnailWidth, int thumbnailHeight) {
    const ModelInfRecord record = ModelInfOfOpenModel(modelPath);
    const QString text = QString(MODEL_INF_HEADER) + "\n" + ModelInfRow(record) + "\n";
    if (!StringToFile(text, ModelInfFile(modelPath))) {
        PrintRunLog("Cannot write %s\n", ModelInfFile(modelPath).toUtf8().constData());
        return false;
    }
    const QByteArray image = record.Image.toUtf8();
    if (At3d_Save_Thumbnail_Image(image.constData(), thumbnailWidth, thumbnailHeight)) return true;
    if (writeTopView(record.Image, thumbnailWidth, thumbnailHeight)) return true;
    PrintRunLog("Cannot write %s\n", image.constData());
    return false;
}
