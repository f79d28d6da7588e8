#include "Volume.h"

#include <QByteArray>
#include <QSaveFile>
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "RoofFlatPlane.h"
#include "RoofGeometry.h"

VOLUME CreateVolumeByProjection(const PLANE* largePlane, const PLANE* smallPlane) {
    VOLUME volume;
    volume.Bottom = *largePlane;
    volume.Top = *smallPlane;
    int n = smallPlane->Npoints;
    if (n > 1 && std::fabs(smallPlane->P[0].X - smallPlane->P[n - 1].X) < 1e-6 &&
        std::fabs(smallPlane->P[0].Y - smallPlane->P[n - 1].Y) < 1e-6)
        --n;
    volume.NumWalls = std::max(n, 0);
    volume.Walls.resize(volume.NumWalls);
    for (int i = 0; i < volume.NumWalls; ++i) {
        const TGIS_Point3D& top = smallPlane->P[i];
        const TGIS_Point3D& next = smallPlane->P[(i + 1) % n];
        PLANE& wall = volume.Walls[i];
        wall.Npoints = 4;
        wall.P[0] = top;
        wall.P[1] = next;
        wall.P[2] = ProjectPoint(largePlane, next);
        wall.P[3] = ProjectPoint(largePlane, top);
    }
    return volume;
}

VOLUME CreateVolumeAndExport(PLANE* plane1, PLANE* plane2, const QString& objFileName) {
    PLANE flat1 = FlatPlane(plane1, 0);
    PLANE flat2 = FlatPlane(plane2, 0);
    const bool firstIsSmaller = CalculatePlaneArea(&flat1) < CalculatePlaneArea(&flat2);
    const VOLUME volume = firstIsSmaller ? CreateVolumeByProjection(&flat2, &flat1)
                                         : CreateVolumeByProjection(&flat1, &flat2);
    ExportToOBJ(&volume, objFileName);
    return volume;
}

static void WriteLine(QByteArray& file, const char* format, auto... values) {
    char line[256];
    const int length = std::snprintf(line, sizeof line, format, values...);
    file.append(line, std::clamp(length, 0, static_cast<int>(sizeof line) - 1));
}

static void WriteVertices(QByteArray& file, const PLANE& plane) {
    for (int i = 0; i < plane.Npoints; ++i) WriteLine(file, "v %f %f %f\n", plane.P[i].X, plane.P[i].Y, plane.P[i].Z);
}

// One face over count vertices from first (1-based).
static void WriteFace(QByteArray& file, int first, int count) {
    file.append('f');
    for (int i = 0; i < count; ++i) WriteLine(file, " %d", first + i);
    file.append('\n');
}

void ExportToOBJ(const VOLUME* volume, const QString& fileName) {
    QByteArray file;
    WriteLine(file, "# OBJ file created by TGIS volume exporter\n");
    WriteLine(file, "# Top plane: %d points\n", volume->Top.Npoints);
    WriteLine(file, "# Bottom plane: %d points\n", volume->Bottom.Npoints);
    WriteLine(file, "# Number of walls: %d\n\n", volume->NumWalls);
    WriteVertices(file, volume->Top);
    WriteVertices(file, volume->Bottom);
    for (int i = 0; i < volume->NumWalls; ++i) WriteVertices(file, volume->Walls[i]);
    int offset = 1;
    WriteFace(file, offset, volume->Top.Npoints);
    offset += volume->Top.Npoints;
    WriteFace(file, offset, volume->Bottom.Npoints);
    offset += volume->Bottom.Npoints;
    for (int i = 0; i < volume->NumWalls; ++i) {
        WriteFace(file, offset, volume->Walls[i].Npoints);
        offset += volume->Walls[i].Npoints;
    }
    QSaveFile out(fileName);
    if (!out.open(QIODevice::WriteOnly)) return;
    out.write(file);
    out.commit();
}
