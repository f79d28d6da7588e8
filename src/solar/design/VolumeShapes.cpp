#include "VolumeShapes.h"

#include <QFileInfo>
#include <gdal_priv.h>
#include <memory>
#include <ogrsf_frmts.h>

#include "Volume.h"
#include "app/services/FileDialogs.h"
#include "app/services/GdalDrivers.h"
#include "app/services/OrvoDialogs.h"

namespace {

void AddPoints(const OGRGeometry* geometry, PLANE& plane) {
    if (!geometry || plane.Npoints >= MAX_PLANE_POINTS) return;
    const OGRwkbGeometryType type = wkbFlatten(geometry->getGeometryType());
    if (type == wkbPoint) {
        const auto* point = geometry->toPoint();
        plane.P[plane.Npoints++] = {point->getX(), point->getY(), point->getZ(), 0};
    } else if (type == wkbLineString || type == wkbLinearRing) {
        const auto* line = geometry->toSimpleCurve();
        for (int i = 0; i < line->getNumPoints() && plane.Npoints < MAX_PLANE_POINTS; ++i)
            plane.P[plane.Npoints++] = {line->getX(i), line->getY(i), line->getZ(i), 0};
    } else if (type == wkbPolygon) {
        AddPoints(geometry->toPolygon()->getExteriorRing(), plane);
    } else if (OGR_GT_IsSubClassOf(type, wkbGeometryCollection)) {
        for (const OGRGeometry* part : *geometry->toGeometryCollection()) AddPoints(part, plane);
    }
}

}  // namespace

bool ReadPlaneFromShapeFile(const QString& fileName, PLANE& plane) {
    plane = PLANE{};
    EnsureGdalDrivers();
    std::unique_ptr<GDALDataset> dataset(
        GDALDataset::Open(fileName.toUtf8().constData(), GDAL_OF_VECTOR | GDAL_OF_READONLY));
    if (!dataset || dataset->GetLayerCount() < 1) return false;
    OGRLayer* layer = dataset->GetLayer(0);
    layer->ResetReading();
    std::unique_ptr<OGRFeature> feature(layer->GetNextFeature());
    if (!feature) return false;
    AddPoints(feature->GetGeometryRef(), plane);
    return plane.Npoints > 0;
}

void Createplane1Click() {
    const QString filter = "Vector file(*.SHP)|*.SHP";
    QString first, second;
    if (!OrvoOpenFile(first, "", filter, "Open the 1-st vector file(input)", "")) return;
    if (!OrvoOpenFile(second, "", filter, "Open the 2-nd vector file(input)", "")) return;
    PLANE plane1, plane2;
    if (!ReadPlaneFromShapeFile(first, plane1) || !ReadPlaneFromShapeFile(second, plane2)) return;
    const QFileInfo info1(first), info2(second);
    const QString objFileName = info1.path() + "/" + info1.completeBaseName() + "_" + info2.completeBaseName() + ".obj";
    CreateVolumeAndExport(&plane1, &plane2, objFileName);
    MyShowMessage("\nCreated " + objFileName);
}
