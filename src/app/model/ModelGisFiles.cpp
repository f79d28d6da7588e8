#include "ModelGisFiles.h"

#include <gdal.h>
#include <ogrsf_frmts.h>

#include <QSaveFile>
#include <cstdio>
#include <cstring>
#include <memory>

#include "app/services/GdalDrivers.h"
#include "geo/GeoState.h"
#include "scene/DxfText.h"

namespace {

struct DatasetCloser {
    void operator()(GDALDataset* dataset) const { GDALClose(dataset); }
};
using Dataset = std::unique_ptr<GDALDataset, DatasetCloser>;

// Vector files are read with their bytes as stored: no recoding of text fields.
Dataset openVector(const std::string& path) {
    EnsureGdalDrivers();
    const char* options[] = {"ENCODING=", nullptr};
    return Dataset(GDALDataset::Open(path.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY, nullptr, options, nullptr));
}

class DxfLines {
public:
    DxfLines(std::string layer, bool project) : layer_(std::move(layer)), project_(project) {}

    void addGeometry(const OGRGeometry* geometry) {
        if (!geometry) return;
        switch (wkbFlatten(geometry->getGeometryType())) {
        case wkbLineString:
        case wkbLinearRing:
            addLine(geometry->toLineString());
            break;
        case wkbPolygon:
            for (const OGRLinearRing* ring : *geometry->toPolygon()) addLine(ring);
            break;
        case wkbMultiLineString:
        case wkbMultiPolygon:
        case wkbGeometryCollection:
            for (const OGRGeometry* part : *geometry->toGeometryCollection()) addGeometry(part);
            break;
        default:
            break;
        }
    }

    std::string text() const {
        std::string out;
        for (auto [code, value] : {std::pair<int, std::string>{0, "SECTION"}, {2, "HEADER"}, {9, "$ACADVER"},
                                   {1, "AC1009"}, {0, "ENDSEC"}, {0, "SECTION"}, {2, "ENTITIES"}})
            DxfGroup(out, code, value);
        out += entities_;
        DxfGroup(out, 0, "ENDSEC");
        DxfGroup(out, 0, "EOF");
        return out;
    }

private:
    void point(int firstCode, const OGRPoint& p) {
        double x = p.getX(), y = p.getY();
        const auto& cs = geoState().GlobalCS;
        if (project_ && cs) {
            TGIS_Point xy;
            if (cs->project(TGIS_Point{x, y}, xy)) {
                x = xy.X;
                y = xy.Y;
            }
        }
        DxfGroup(entities_, firstCode, DxfNumber(x));
        DxfGroup(entities_, firstCode + 10, DxfNumber(y));
        DxfGroup(entities_, firstCode + 20, DxfNumber(p.Is3D() ? p.getZ() : 0));
    }

    void addLine(const OGRLineString* line) {
        OGRPoint a, b;
        for (int i = 0; i + 1 < line->getNumPoints(); ++i) {
            line->getPoint(i, &a);
            line->getPoint(i + 1, &b);
            DxfGroup(entities_, 0, "LINE");
            DxfGroup(entities_, 8, layer_);
            point(10, a);
            point(11, b);
        }
    }

    std::string layer_;
    bool project_;
    std::string entities_;
};

std::string layerNameOf(const std::string& path) {
    const auto slash = path.find_last_of('/');
    std::string name = path.substr(slash == std::string::npos ? 0 : slash + 1);
    const auto dot = name.find_last_of('.');
    if (dot != std::string::npos && dot > 0) name.resize(dot);
    for (char& c : name)
        if (static_cast<unsigned char>(c) < 32 || std::strchr("<>/\\\":;?*|=,'`", c)) c = '_';
    return name.empty() ? "0" : name;
}

bool endsWithNoCase(const std::string& text, const std::string& tail) {
    if (text.size() < tail.size()) return false;
    for (std::size_t i = 0; i < tail.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(text[text.size() - tail.size() + i])) != tail[i]) return false;
    return true;
}

}  // namespace

bool ExportVectorToDxf(const std::string& source, const std::string& dxfPath, std::string& error) {
    Dataset dataset = openVector(source);
    if (!dataset) {
        error = CPLGetLastErrorMsg();
        return false;
    }
    const bool kml = endsWithNoCase(source, ".kml");
    DxfLines lines(layerNameOf(source), kml);
    const int layers = kml ? dataset->GetLayerCount() : std::min(1, dataset->GetLayerCount());
    for (int l = 0; l < layers; ++l) {
        OGRLayer* layer = dataset->GetLayer(l);
        layer->ResetReading();
        for (auto& feature : *layer) lines.addGeometry(feature->GetGeometryRef());
    }
    QSaveFile out(QString::fromStdString(dxfPath));
    const std::string text = lines.text();
    if (!out.open(QIODevice::WriteOnly) || out.write(text.data(), static_cast<qint64>(text.size())) < 0 ||
        !out.commit()) {
        error = "can not write " + dxfPath;
        return false;
    }
    return true;
}

QString StateAt(const std::string& kmlPath, double lon, double lat) {
    Dataset dataset = openVector(kmlPath);
    if (!dataset || dataset->GetLayerCount() == 0) return "Unknown";
    const OGRPoint point(lon, lat);
    for (int l = 0; l < dataset->GetLayerCount(); ++l) {
        OGRLayer* layer = dataset->GetLayer(l);
        OGREnvelope extent;
        if (layer->GetExtent(&extent, TRUE) != OGRERR_NONE) continue;
        const double tolerance = (extent.MaxX - extent.MinX) / 200;
        layer->SetSpatialFilterRect(lon - tolerance, lat - tolerance, lon + tolerance, lat + tolerance);
        for (auto& feature : *layer) {
            const OGRGeometry* geometry = feature->GetGeometryRef();
            const int field = feature->GetFieldIndex("name");
            if (!geometry || field < 0 || geometry->Distance(&point) > tolerance) continue;
            return QString::fromUtf8(feature->GetFieldAsString(field));
        }
    }
    return "Unknown";
}

bool ReadTacticalGridNames(const std::string& shpPath, bool& hebrew) {
    hebrew = false;
    Dataset dataset = openVector(shpPath);
    if (!dataset || dataset->GetLayerCount() == 0) return false;
    OGRLayer* layer = dataset->GetLayer(0);
    for (auto& feature : *layer) {
        const int field = feature->GetFieldIndex("name");
        if (field >= 0 && std::strchr(feature->GetFieldAsString(field), '\xE0')) hebrew = true;
    }
    return true;
}

bool ShapeExtentCenter(const std::string& shpPath, TGIS_Point& center) {
    Dataset dataset = openVector(shpPath);
    if (!dataset || dataset->GetLayerCount() == 0) return false;
    OGREnvelope extent;
    if (dataset->GetLayer(0)->GetExtent(&extent, TRUE) != OGRERR_NONE) return false;
    center = TGIS_Point{(extent.MinX + extent.MaxX) / 2, (extent.MinY + extent.MaxY) / 2};
    return true;
}
