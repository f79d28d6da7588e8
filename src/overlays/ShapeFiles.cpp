#include "ShapeFiles.h"

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <QDate>
#include <QFileInfo>
#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

#include "app/model/ModelSession.h"
#include "app/model/SceneLayers.h"
#include "app/services/DialogService.h"
#include "app/services/OrvoFopen.h"
#include "app/services/SessionPaths.h"
#include "geo/Frames.h"

namespace {

struct DatasetCloser {
    void operator()(GDALDataset* d) const { GDALClose(d); }
};
using Dataset = std::unique_ptr<GDALDataset, DatasetCloser>;

Dataset openVector(const QString& path) {
    if (path.isEmpty()) return nullptr;
    GDALAllRegister();
    return Dataset(static_cast<GDALDataset*>(
        GDALOpenEx(path.toUtf8().constData(), GDAL_OF_VECTOR | GDAL_OF_READONLY, nullptr, nullptr, nullptr)));
}

// The GIS engine's shape kinds, as the report and the drawing name them.
enum ShapeKind { Unknown, Deleted, Point, MultiPoint, Arc, Polygon, Complex, MultiPatch, Null };
const char* const kShapeKindNames[] = {"Unknown", "Deleted", "Point",      "MultiPoint", "Arc",
                                       "Polygon", "Complex", "MultiPatch", "Null"};

ShapeKind kindOf(const OGRGeometry* geometry) {
    if (!geometry) return Null;
    switch (wkbFlatten(geometry->getGeometryType())) {
        case wkbPoint: return Point;
        case wkbMultiPoint: return MultiPoint;
        case wkbLineString:
        case wkbMultiLineString: return Arc;
        case wkbPolygon:
        case wkbMultiPolygon: return Polygon;
        case wkbGeometryCollection: return Complex;
        case wkbPolyhedralSurface:
        case wkbTIN: return MultiPatch;
        default: return Unknown;
    }
}

// The points of the shape's first part: a line's vertices, a polygon's outer
// ring, a point itself.
std::vector<TGIS_Point3D> firstPart(const OGRGeometry* geometry) {
    std::vector<TGIS_Point3D> points;
    if (!geometry) return points;
    const OGRLineString* line = nullptr;
    switch (wkbFlatten(geometry->getGeometryType())) {
        case wkbPoint: {
            const OGRPoint* p = geometry->toPoint();
            points.push_back({p->getX(), p->getY(), p->getZ(), 0});
            return points;
        }
        case wkbMultiPoint:
            if (geometry->toMultiPoint()->getNumGeometries() > 0) return firstPart(geometry->toMultiPoint()->getGeometryRef(0));
            return points;
        case wkbLineString: line = geometry->toLineString(); break;
        case wkbMultiLineString:
            if (geometry->toMultiLineString()->getNumGeometries() > 0)
                line = geometry->toMultiLineString()->getGeometryRef(0);
            break;
        case wkbPolygon: line = geometry->toPolygon()->getExteriorRing(); break;
        case wkbMultiPolygon:
            if (geometry->toMultiPolygon()->getNumGeometries() > 0)
                line = geometry->toMultiPolygon()->getGeometryRef(0)->getExteriorRing();
            break;
        default: break;
    }
    if (!line) return points;
    for (int i = 0; i < line->getNumPoints(); ++i) points.push_back({line->getX(i), line->getY(i), line->getZ(i), 0});
    return points;
}

double lengthOf(const OGRGeometry* geometry) {
    if (!geometry) return 0;
    switch (wkbFlatten(geometry->getGeometryType())) {
        case wkbLineString:
        case wkbMultiLineString: return OGR_G_Length(OGRGeometry::ToHandle(const_cast<OGRGeometry*>(geometry)));
        case wkbPolygon:
        case wkbMultiPolygon: {
            // A polygon's length is its perimeter.
            std::unique_ptr<OGRGeometry> boundary(geometry->Boundary());
            return boundary ? OGR_G_Length(OGRGeometry::ToHandle(boundary.get())) : 0;
        }
        default: return 0;
    }
}

double areaOf(const OGRGeometry* geometry) {
    if (!geometry) return 0;
    const auto type = wkbFlatten(geometry->getGeometryType());
    if (type != wkbPolygon && type != wkbMultiPolygon) return 0;
    return OGR_G_Area(OGRGeometry::ToHandle(const_cast<OGRGeometry*>(geometry)));
}

QString fieldLine(OGRFeature& feature, int index) {
    const OGRFieldDefn* field = feature.GetFieldDefnRef(index);
    const QByteArray name = field->GetNameRef();
    const char* word = "STRING";
    QString value;
    switch (field->GetType()) {
        case OFTInteger:
        case OFTInteger64:
            word = "NUMBER";
            value = QString::asprintf("%d", static_cast<int>(feature.GetFieldAsInteger64(index)));
            break;
        case OFTReal:
            word = "FLOAT";
            value = QString::asprintf("%lf", feature.GetFieldAsDouble(index));
            break;
        case OFTDate:
        case OFTDateTime: {
            word = "DATE";
            int y = 0, m = 0, d = 0, h = 0, mi = 0, tz = 0;
            float s = 0;
            if (feature.GetFieldAsDateTime(index, &y, &m, &d, &h, &mi, &s, &tz))
                value = QDate(y, m, d).toString("dd/MM/yyyy");
            break;
        }
        default: value = QString::fromUtf8(feature.GetFieldAsString(index)); break;
    }
    // Photograph catalogues keep the camera's position in radians; both forms help.
    if ((name == "CameraLat" || name == "CameraLon") && field->GetType() == OFTReal) {
        const double stored = feature.GetFieldAsDouble(index);
        value = QString::asprintf("%lf %lf", stored, stored * 180 / 3.141592654);
    }
    return QString::asprintf("%s %s ", name.constData(), word) + value + "\n";
}

}  // namespace

QString ReadShapeFileTatuk(const QString& LayerPath) {
    Dataset dataset = openVector(LayerPath);
    if (!dataset || dataset->GetLayerCount() == 0) return {};
    OGRLayer* layer = dataset->GetLayer(0);
    const QString report = QString::fromStdString(sessionPaths().ORVO_T) + QFileInfo(LayerPath).completeBaseName() + ".txt";
    std::FILE* out = ORVOfopen(report, "w");
    if (!out) return {};
    const QByteArray path = LayerPath.isEmpty() ? QByteArray(" NO PATH") : LayerPath.toUtf8();
    const char* comments = layer->GetMetadataItem("DESCRIPTION");
    std::fprintf(out, "Comments: %s\n", comments ? comments : "");
    OGREnvelope e;
    if (layer->GetExtent(&e, TRUE) != OGRERR_NONE) e = OGREnvelope();
    if (std::fabs(e.MinX) < 1000 && std::fabs(e.MaxX) < 1000 && std::fabs(e.MinY) < 1000 && std::fabs(e.MaxY) < 1000)
        std::fprintf(out, "\n File %s  Xmin,Xmax,Ymin,YMax  Extremes %.7lf %.7lf %.7lf %.7lf \n", path.constData(), e.MinX,
                     e.MaxX, e.MinY, e.MaxY);
    else
        std::fprintf(out, "\n File %s           Extremes %.2lf %.2lf %.2lf %.2lf \n", path.constData(), e.MinX, e.MaxX,
                     e.MinY, e.MaxY);
    std::fprintf(out, "Name is %s\n", layer->GetName());
    layer->ResetReading();
    for (auto& feature : *layer) {
        const OGRGeometry* geometry = feature->GetGeometryRef();
        // The engine numbers shapes from 1.
        std::fprintf(out, "\n UID  %6d %s Length %.2f Area=%.2f %s\n", static_cast<int>(feature->GetFID()) + 1,
                     kShapeKindNames[kindOf(geometry)], lengthOf(geometry), areaOf(geometry), "");
        for (int i = 0; i < feature->GetFieldCount(); ++i)
            std::fputs(fieldLine(*feature, i).toUtf8().constData(), out);
    }
    std::fclose(out);
    return report;
}

void ReadShapeFileTatukAskForFile() {
    FileDialogRequest request;
    request.title = "Open the vector file(input)";
    request.filter = "Vector file(*.SHP;*.DXF;*.KML)|*.SHP;*.dxf;*.kml";
    QString file;
    int filter = 1;
    if (!dialogService().chooseFile(request, file, filter) || file.isEmpty()) return;
    const QString report = ReadShapeFileTatuk(file);
    if (report.isEmpty()) {
        dialogService().showMessage("Can not read " + file, "");
        return;
    }
    dialogService().openDocument(report);
}

ShapeImportCount ImportShapeFileToScene(const QString& FN) {
    ShapeImportCount count;
    Dataset dataset = openVector(FN);
    if (!dataset || dataset->GetLayerCount() == 0) return count;
    OGRLayer* layer = dataset->GetLayer(0);
    layer->ResetReading();
    ShapeKind kind = Unknown;
    bool first = true, previousSet = false;
    TGIS_Point3D previous;
    int I = 0;
    for (auto& feature : *layer) {
        ++I;
        const OGRGeometry* geometry = feature->GetGeometryRef();
        std::vector<TGIS_Point3D> points = firstPart(geometry);
        // A flat file lies on the mesh: its points take the ground's height.
        if (geometry && !geometry->Is3D()) {
            for (TGIS_Point3D& p : points) {
                const double z = GetZFromXY(p.X, p.Y);
                p.Z = z == -9999 ? 0 : z;
            }
        }
        if (first) {
            kind = kindOf(geometry);
            first = false;
        }
        if (points.empty()) continue;
        if (kind == Arc || kind == Polygon) {
            for (std::size_t j = 0; j + 1 < points.size(); ++j) {
                AddLineToScene(QString::number(j + 1), points[j], points[j + 1], 0xFF0000, 3);
                ++count.lines;
            }
        } else if (kind == Point) {
            AddSphere(points[0].X, points[0].Y, points[0].Z, 1.0, 0xFF);
            ++count.points;
            if (previousSet) {
                AddLineToScene(QString::number(I + 1), previous, points[0], 0xFF, 1);
                ++count.lines;
            }
            previous = points[0];
            previousSet = true;
        }
    }
    return count;
}

void Importshapefile1Click() {
    FileDialogRequest request;
    request.title = "Open the shape file(input)";
    request.filter = "Shape file(*.SHP; *.DXF) | *.SHP;*.dxf";
    request.folder = QString::fromStdString(modelSession().MEASUREMENTSFOLDER);
    QString FN;
    int filter = 1;
    if (!dialogService().chooseFile(request, FN, filter) || FN.isEmpty()) return;
    ImportShapeFileToScene(FN);
}
