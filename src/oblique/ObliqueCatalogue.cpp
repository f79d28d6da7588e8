#include "ObliqueCatalogue.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include "ObliqueGeometry.h"
#include "OpkList.h"
#include "app/model/ModelSession.h"
#include "app/services/FileHelpers.h"
#include "app/services/GdalDrivers.h"
#include "app/services/RunLog.h"
#include "scene/FileNameCase.h"

namespace {

constexpr double kPi = 3.141592654;

OGRLayer* layerOf(GDALDataset* dataset) { return dataset && dataset->GetLayerCount() > 0 ? dataset->GetLayer(0) : nullptr; }

std::shared_ptr<OGRFeature> owned(OGRFeature* feature) {
    return std::shared_ptr<OGRFeature>(feature, [](OGRFeature* f) { OGRFeature::DestroyFeature(f); });
}

// A field by its name; a shape file keeps only the first 10 characters of a
// name, so "RotationAngle" may stand there as "RotationAn".
int fieldIndex(const OGRFeature& feature, const char* name) {
    const int index = feature.GetFieldIndex(name);
    if (index >= 0 || std::strlen(name) <= 10) return index;
    return feature.GetFieldIndex(std::string(name, 10).c_str());
}

bool hasField(const OGRFeature& feature, const char* name) { return fieldIndex(feature, name) >= 0; }

double readDouble(const OGRFeature& feature, const char* name) {
    const int index = fieldIndex(feature, name);
    return index >= 0 ? feature.GetFieldAsDouble(index) : 0;
}

int readInt(const OGRFeature& feature, const char* name) {
    const int index = fieldIndex(feature, name);
    return index >= 0 ? feature.GetFieldAsInteger(index) : 0;
}

QString readString(const OGRFeature& feature, const char* name) {
    const int index = fieldIndex(feature, name);
    return index >= 0 ? QString::fromUtf8(feature.GetFieldAsString(index)) : QString();
}

void readDate(const OGRFeature& feature, OBLIQUE& O) {
    const int index = fieldIndex(feature, "Date");
    if (index < 0) return;
    int year = 0, month = 0, day = 0, hour, minute, tz;
    float second;
    if (!feature.GetFieldAsDateTime(index, &year, &month, &day, &hour, &minute, &second, &tz))
        std::sscanf(feature.GetFieldAsString(index), "%d%*c%d%*c%d", &year, &month, &day);
    O.Year = year;
    O.Month = month;
    O.Day = day;
}

// The picture of a shape: a bare or relative name lies below the folder of
// the shape file, an absolute one stands; a Windows name is found whatever its case.
QString pictureOf(const QString& shapeFile, QString proj) {
    proj.replace('\\', '/');
    const QString path = QDir::isAbsolutePath(proj) ? proj : OrvoExtractLocalFilePath(shapeFile) + proj;
    const std::string found = FindFileNoCase(path.toStdString());
    return found.empty() ? path : QString::fromStdString(found);
}

// The first four points of the footprint's outer ring.
void readFootprint(const OGRGeometry* geometry, OBLIQUE& O) {
    if (!geometry) return;
    const OGRPolygon* polygon = nullptr;
    const OGRwkbGeometryType type = wkbFlatten(geometry->getGeometryType());
    if (type == wkbPolygon)
        polygon = geometry->toPolygon();
    else if (type == wkbMultiPolygon && geometry->toMultiPolygon()->getNumGeometries() > 0)
        polygon = geometry->toMultiPolygon()->getGeometryRef(0);
    if (!polygon || !polygon->getExteriorRing()) return;
    const OGRLinearRing* ring = polygon->getExteriorRing();
    for (int i = 0; i < 4 && i < ring->getNumPoints(); ++i) {
        O.FPX[i] = static_cast<float>(ring->getX(i));
        O.FPY[i] = static_cast<float>(ring->getY(i));
        O.FPZ[i] = static_cast<float>(ring->getZ(i));
    }
}

const OBLIXEXTENT* folderOfNumber(int kk) {
    const ObliqueStore& store = obliqueStore();
    const int count = std::min(modelSession().KamaOblixExtents, MAX_OBLIX_EXTENTS);
    for (int k = 0; k < count; ++k)
        if (kk >= store.OblixExtents[k].N1 && kk <= store.OblixExtents[k].N2) return &store.OblixExtents[k];
    return nullptr;
}

// The path without its last component ("" when nothing is left).
std::string parentOf(std::string path) {
    while (!path.empty() && path.back() == '/') path.pop_back();
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

}  // namespace

GDALDataset* ObliqueLayer(const QString& shapeFile) {
    ObliqueStore& store = obliqueStore();
    const std::string key = shapeFile.toStdString();
    if (const auto open = store.layers.find(key); open != store.layers.end()) return open->second;
    EnsureGdalDrivers();
    auto* dataset = static_cast<GDALDataset*>(
        GDALOpenEx(key.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY, nullptr, nullptr, nullptr));
    if (!layerOf(dataset)) {
        if (dataset) GDALClose(dataset);
        PrintRunLog("Oblique catalogue: can not open %s\n", key.c_str());
        return nullptr;
    }
    store.layers[key] = dataset;
    return dataset;
}

OBLIQUE OGetFromShp(int kk, const ObliqueShape* shp_in) {
    OBLIQUE O;
    std::unique_ptr<ObliqueShape> byNumber;
    if (kk >= 0) {
        O.PseudoGlobalUid = kk;
        byNumber = GetObliqueShape(kk);
        shp_in = byNumber.get();
    }
    if (!shp_in || !shp_in->feature) return O;
    const OGRFeature& f = *shp_in->feature;

    O.Proj = EcwFromJpg(pictureOf(shp_in->shapeFile, readString(f, "Proj")));
    readDate(f, O);
    O.RotationDeg = readInt(f, "RotationAngle");
    O.MMount = hasField(f, "Camera") ? readInt(f, "Camera") : 0;
    if (hasField(f, "K1")) {
        O.RadialK1 = readDouble(f, "K1");
        O.RadialK2 = readDouble(f, "K2");
        O.RadialK3 = readDouble(f, "K3");
    }
    O.Azimuth = readInt(f, "Azimuth");
    O.Ravia = readInt(f, "Ravia");
    O.Width = readInt(f, "Width");
    O.Height = readInt(f, "Height");
    O.fpc = static_cast<float>(readDouble(f, "fpc"));
    O.QW_mm = static_cast<float>(readDouble(f, "QW_mm"));
    O.Qxorg = readDouble(f, "Qxorg") - SHABESH;
    O.Qyorg = readDouble(f, "Qyorg") - SHABESH;
    O.Qzorg = static_cast<float>(readDouble(f, "Qzorg") - SHABESH);
    O.Qxtarg = readDouble(f, "Qxtarg");
    O.Qytarg = readDouble(f, "Qytarg");
    O.Qztarg = static_cast<float>(readDouble(f, "Qztarg"));
    O.PrincipalXOffset = readDouble(f, "PrincipalXOffset");
    O.PrincipalYOffset = readDouble(f, "PrincipalYOffset");
    O.q11 = readDouble(f, "q11"), O.q12 = readDouble(f, "q12"), O.q13 = readDouble(f, "q13");
    O.q21 = readDouble(f, "q21"), O.q22 = readDouble(f, "q22"), O.q23 = readDouble(f, "q23");
    O.q31 = readDouble(f, "q31"), O.q32 = readDouble(f, "q32"), O.q33 = readDouble(f, "q33");

    // A stored target outranks the stored inclination.
    O.Incl = hasField(f, "Inclination") ? readInt(f, "Inclination") : 45;
    if (O.Qxtarg != 0) {
        double DIST = std::hypot(O.Qxorg - O.Qxtarg, O.Qyorg - O.Qytarg);
        if (DIST < 0.01) DIST = 0.01;
        const double DZ = O.Qzorg - O.Qztarg;
        O.Incl = static_cast<int>(std::atan(DZ / DIST) * 180 / kPi + 0.5);
    }

    O.QPicX00 = static_cast<float>(O.Width / 2);
    O.QPicY00 = static_cast<float>((-O.Height) / 2);
    O.QScale = static_cast<float>(O.Width) / O.QW_mm;
    O.QPicX0 = static_cast<float>(O.QPicX00 + O.PrincipalXOffset * O.QScale);
    O.QPicY0 = static_cast<float>(O.QPicY00 + O.PrincipalYOffset * O.QScale);

    readFootprint(f.GetGeometryRef(), O);
    if (const OGRGeometry* geometry = f.GetGeometryRef()) {
        OGREnvelope env;
        geometry->getEnvelope(&env);
        O.OX0 = env.MinX, O.OX1 = env.MaxX, O.OY0 = env.MinY, O.OY1 = env.MaxY;
    }
    O.Xmin = 0, O.Xmax = static_cast<float>(O.Width);
    O.Ymax = 0, O.Ymin = static_cast<float>(-O.Height);
    return O;
}

OBLIQUE O8Get(int I) { return OGetFromShp(I, nullptr); }

std::unique_ptr<ObliqueShape> GetObliqueShape(int kk) {
    const OBLIXEXTENT* folder = folderOfNumber(kk);
    if (!folder) return nullptr;
    OGRLayer* layer = layerOf(ObliqueLayer(folder->FileName));
    if (!layer) return nullptr;
    // Shape numbers start at 1, the file's feature ids at 0.
    const int number = kk - folder->N1 + 1;
    OGRFeature* feature = layer->GetFeature(number - 1);
    if (!feature) return nullptr;
    auto shape = std::make_unique<ObliqueShape>();
    shape->feature = owned(feature);
    shape->shapeFile = folder->FileName;
    shape->number = number;
    return shape;
}

int GetO8s(const TGIS_Point& point) {
    constexpr double de = 10;
    ObliqueStore& store = obliqueStore();
    QSet<QString> taken;
    int count = 0;
    int BaseUid = 0;
    const int folders = std::min(modelSession().KamaOblixExtents, MAX_OBLIX_EXTENTS);
    for (int k = 0; k < folders; ++k) {
        const QString& shapeFile = store.OblixExtents[k].FileName;
        OGRLayer* layer = layerOf(ObliqueLayer(shapeFile));
        if (!layer) continue;
        // The layer's spatial index does the first cut; full cameras are
        // built only for what it returns.
        layer->SetSpatialFilterRect(point.X - de, point.Y - de, point.X + de, point.Y + de);
        layer->ResetReading();
        while (OGRFeature* raw = layer->GetNextFeature()) {
            ObliqueShape shape{owned(raw), shapeFile, static_cast<int>(raw->GetFID()) + 1};
            const QString picture = EcwFromJpg(pictureOf(shapeFile, readString(*raw, "Proj")));
            if (!QFileInfo::exists(picture) || taken.contains(picture)) continue;
            taken.insert(picture);
            OBLIQUE O = OGetFromShp(-1, &shape);
            O.PseudoGlobalUid = BaseUid + shape.number - 1;
            O.PseudoIndex = count;
            store.GotO8[count++] = O;
            // The last record stored is left out of the count.
            if (count == MAX_GOTO8) {
                layer->SetSpatialFilter(nullptr);
                return MAX_GOTO8 - 1;
            }
        }
        layer->SetSpatialFilter(nullptr);
        BaseUid += static_cast<int>(layer->GetFeatureCount());
    }
    return count;
}

int AnalyzeExtentOfoblixOblix() {
    ObliqueStore& store = obliqueStore();
    ModelSession& model = modelSession();
    if (store.OBLIXOBLIXTXT.isEmpty() || !QFileInfo::exists(store.OBLIXOBLIXTXT)) return 0;
    int Tot = 0;
    int folders = 0;
    for (QString line : StringFromFile(store.OBLIXOBLIXTXT).split('\n')) {
        line = line.trimmed();
        if (line.isEmpty() || !QFileInfo::exists(line)) continue;
        if (folders == MAX_OBLIX_EXTENTS) break;
        OGRLayer* layer = layerOf(ObliqueLayer(line));
        if (!layer) continue;
        OBLIXEXTENT& e = store.OblixExtents[folders];
        e = OBLIXEXTENT{};
        e.N1 = Tot;
        layer->SetSpatialFilter(nullptr);
        layer->ResetReading();
        while (OGRFeature* raw = layer->GetNextFeature()) {
            const ObliqueShape shape{owned(raw), line, static_cast<int>(raw->GetFID()) + 1};
            const OBLIQUE O = OGetFromShp(-1, &shape);
            if (!QFileInfo::exists(O.Proj)) continue;
            ++Tot;
            ++e.Nimages;
        }
        e.N2 = Tot - 1;
        OGREnvelope env;
        if (layer->GetExtent(&env, TRUE) == OGRERR_NONE) e.ext = TGIS_Extent{env.MinX, env.MinY, env.MaxX, env.MaxY};
        e.area = static_cast<float>((e.ext.XMax - e.ext.XMin) * (e.ext.YMax - e.ext.YMin));
        e.FileName = line;
        if (OGRFeature* first = layer->GetFeature(0)) {
            e.FirstDate = readString(*first, "Date");
            OGRFeature::DestroyFeature(first);
        }
        ++folders;
    }
    model.KamaOblixExtents = folders;
    model.KamaOblique = Tot;
    return Tot;
}

int FindObliqueCatalogues(const std::string& modelPath) {
    ModelSession& model = modelSession();
    ObliqueStore& store = obliqueStore();
    const QString folder = QString::fromStdString(FolderOf(modelPath));
    QStringList kept;
    for (const QString& hit : Find_Files(folder + "oblixoblix.shp", true)) {
        const std::string holder = parentOf(hit.toStdString());
        const std::string parent = parentOf(holder);
        const std::string grandparent = parentOf(parent);
        if (parent.empty() || grandparent.empty() || grandparent.size() < 4) continue;
        kept << hit;
    }
    store.OBLIXOBLIXTXT = folder + "OblixOblix.txt";
    if (!kept.isEmpty()) {
        if (!StringToFile(kept.join('\n') + '\n', store.OBLIXOBLIXTXT))
            PrintRunLog("Oblique catalogue: can not write %s\n", store.OBLIXOBLIXTXT.toUtf8().constData());
        model.KamaOblique = AnalyzeExtentOfoblixOblix();
        model.ShowObliques = ", Alt+LClick for Oblique";
        model.INDOOR = false;
        return model.KamaOblique;
    }
    model.ShowObliques = ", Alt+LClick for INDOOR";
    model.INDOOR = true;
    return LoadOpkList(modelPath);
}
