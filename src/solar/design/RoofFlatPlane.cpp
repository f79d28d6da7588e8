#include "RoofFlatPlane.h"

#include <QImageReader>
#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <memory>
#include <numbers>

#include "PanelStore.h"
#include "RoofGeometry.h"
#include "app/services/OrvoDialogs.h"
#include "scene/engine_interface.h"

namespace {

struct LogFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using LogHandle = std::unique_ptr<std::FILE, LogFile>;

// Unbuffered, so the log holds every line even when the session dies mid-fit.
LogHandle OpenFlatPlaneLog() {
    const QString folder = panelStore().ModelFolder;
    if (folder.isEmpty()) return nullptr;
    std::FILE* file = std::fopen((folder + "_Flatpanel.log").toLocal8Bit().constData(), "w");
    if (file) std::setvbuf(file, nullptr, _IONBF, 0);
    return LogHandle(file);
}

__attribute__((format(printf, 2, 3))) void Log(std::FILE* file, const char* format, ...) {
    if (!file) return;
    va_list args;
    va_start(args, format);
    std::vfprintf(file, format, args);
    va_end(args);
}

// Width of the scene's first texture in pixels; 0 when there is none to read.
int FirstTextureWidth() {
    char layer[AT3D_NAME_SIZE] = {};
    if (!At3d_GetNextLayer(nullptr, layer)) return 0;
    char path[AT3D_PATH_SIZE] = {};
    if (!At3d_GetTextureName(layer, path) || !*path) return 0;
    const QSize size = QImageReader(QString::fromLocal8Bit(path)).size();
    return size.isValid() ? size.width() : 0;
}

struct PlaneFit {
    double a = 0, b = 0, c = 0;
    double nx = 0, ny = 0, nz = 1;
    double z(double x, double y) const { return a * x + b * y + c; }
};

bool FitPlane(const TGIS_Point3D* P, int n, PlaneFit& fit) {
    double cx = 0, cy = 0, cz = 0;
    for (int i = 0; i < n; ++i) cx += P[i].X, cy += P[i].Y, cz += P[i].Z;
    cx /= n, cy /= n, cz /= n;
    double xx = 0, xy = 0, xz = 0, yy = 0, yz = 0;
    for (int i = 0; i < n; ++i) {
        const double dx = P[i].X - cx, dy = P[i].Y - cy, dz = P[i].Z - cz;
        xx += dx * dx, xy += dx * dy, xz += dx * dz, yy += dy * dy, yz += dy * dz;
    }
    const double det = xx * yy - xy * xy;
    if (std::fabs(det) < 1e-10) return false;
    fit.a = (yy * xz - xy * yz) / det;
    fit.b = (xx * yz - xy * xz) / det;
    fit.c = cz - fit.a * cx - fit.b * cy;
    const double length = std::sqrt(fit.a * fit.a + fit.b * fit.b + 1);
    fit.nx = -fit.a / length, fit.ny = -fit.b / length, fit.nz = 1 / length;
    return true;
}

}  // namespace

PLANE FlatPlane(PLANE* p, float LiftIn) {
    const LogHandle log = OpenFlatPlaneLog();
    RoofState& roof = roofState();
    roof.useHorizontalPlane = false;
    roof.TilesSlopeDegrees = 0;
    PLANE result;

    const int Npoints = std::min(p->Npoints, MAX_PLANE_POINTS);
    if (Npoints < 1) return result;
    int n = Npoints;
    const TGIS_Point3D& first = p->P[0];
    const TGIS_Point3D& last = p->P[Npoints - 1];
    if (Npoints > 1 && std::fabs(first.X - last.X) < 1e-6 && std::fabs(first.Y - last.Y) < 1e-6 &&
        std::fabs(first.Z - last.Z) < 1e-6)
        --n;
    Log(log.get(), "FlatPlane: %d points, %d fitted, lift %.3f\n", Npoints, n, static_cast<double>(LiftIn));

    PlaneFit fit;
    if (!FitPlane(p->P, n, fit)) {
        Log(log.get(), "Error: Singular matrix (points are collinear). Aborting plane fit.\n");
        return result;
    }
    Log(log.get(), "Plane z = %.6f x + %.6f y + %.3f\n", fit.a, fit.b, fit.c);
    Log(log.get(), "Normal %.6f %.6f %.6f\n", fit.nx, fit.ny, fit.nz);

    double maxDistance = 0;
    for (int i = 0; i < n; ++i) maxDistance = std::max(maxDistance, std::fabs(p->P[i].Z - fit.z(p->P[i].X, p->P[i].Y)));
    Log(log.get(), "Largest distance from the plane %.3f m\n", maxDistance);

    if (roof.ROOF == 1) {
        double DIFF = 0;
        for (int i = 0; i < n; ++i) DIFF += std::fabs(p->P[i].Z - std::fabs(p->P[0].Z));
        if (maxDistance > 0.2) {
            const int answer = MyMessageBox("Use flat roof?",
                                            QString::asprintf("Force flat roof at %.2lf ASL", last.Z),
                                            MB_YESNOCANCEL | MB_ICONQUESTION);
            if (answer == IDCANCEL) return result;
            roof.useHorizontalPlane = true;
        }
        if (DIFF < 0.1 && n == 4 && FirstTextureWidth() < 4200) {
            const double modelTilt = std::acos(std::min(1.0, fit.nz)) * 180.0 / std::numbers::pi;
            QString value = QString::asprintf("%.0f", modelTilt);
            if (MyInputQuery("Probably tiles roof", "Please define the slope in degrees", value))
                roof.TilesSlopeDegrees = value.toDouble();
        }
    }
    result.coplanarity = static_cast<float>(maxDistance);

    if (roof.useHorizontalPlane) {
        roof.TilesSlopeDegrees = 0;
        const double finalZ = last.Z + LiftIn;
        result.Npoints = n;
        for (int i = 0; i < n; ++i) result.P[i] = {p->P[i].X, p->P[i].Y, finalZ, 0};
        Log(log.get(), "Forced level at %.3f\n", finalZ);
    } else if (roof.TilesSlopeDegrees != 0) {
        panelStore().GlobalPanel.Color1 = 0xFF;
        const double rx = p->P[1].X - first.X, ry = p->P[1].Y - first.Y;
        const double length = std::sqrt(rx * rx + ry * ry);
        const double px = length > 0 ? -ry / length : 0, py = length > 0 ? rx / length : 0;
        const double slope = std::tan(roof.TilesSlopeDegrees * std::numbers::pi / 180.0);
        result.Npoints = Npoints;
        for (int i = 0; i < Npoints; ++i) {
            const double distance = (p->P[i].X - first.X) * px + (p->P[i].Y - first.Y) * py;
            const double z = i < 2 ? first.Z : first.Z + distance * slope;
            result.P[i] = {p->P[i].X + fit.nx * LiftIn, p->P[i].Y + fit.ny * LiftIn, z + fit.nz * LiftIn, 0};
        }
        Log(log.get(), "Tiled roof at %.1f degrees\n", roof.TilesSlopeDegrees);
    } else {
        result.Npoints = Npoints;
        for (int i = 0; i < Npoints; ++i) {
            const TGIS_Point3D& q = p->P[i];
            result.P[i] = {q.X + fit.nx * LiftIn, q.Y + fit.ny * LiftIn, fit.z(q.X, q.Y) + fit.nz * LiftIn, 0};
        }
    }
    result.Area = static_cast<float>(CalculatePlaneArea(&result));
    Log(log.get(), "Area %.3f m2, coplanarity %.3f m\n", static_cast<double>(result.Area), static_cast<double>(result.coplanarity));
    return result;
}
