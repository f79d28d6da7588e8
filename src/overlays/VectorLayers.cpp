#include "VectorLayers.h"

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <QDir>
#include <QFileInfo>
#include <cstdio>

#include "app/services/DialogService.h"
#include "app/services/RunLog.h"
#include "geo/CoordinateSystem.h"
#include "geo/GeoState.h"
#include "modeltools/StripPoints.h"

TGIS_LayerVector::TGIS_LayerVector(const QString& name, const QString& path) : Name(name), Path(path) {
    GDALAllRegister();
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName("Memory");
    memory_ = driver->Create(name.toUtf8().constData(), 0, 0, 0, GDT_Unknown, nullptr);
}

TGIS_LayerVector::~TGIS_LayerVector() {
    if (memory_) GDALClose(memory_);
}

int TGIS_LayerVector::ShapeCount() const { return layer_ ? static_cast<int>(layer_->GetFeatureCount(TRUE)) : 0; }

std::unique_ptr<TGIS_LayerVector> ReadVectorLayer(const QString& path) {
    GDALAllRegister();
    GDALDataset* source = static_cast<GDALDataset*>(
        GDALOpenEx(path.toUtf8().constData(), GDAL_OF_VECTOR | GDAL_OF_READONLY, nullptr, nullptr, nullptr));
    if (!source) return nullptr;
    std::unique_ptr<TGIS_LayerVector> result;
    if (source->GetLayerCount() > 0) {
        OGRLayer* layer = source->GetLayer(0);
        result = std::make_unique<TGIS_LayerVector>(QString::fromUtf8(layer->GetName()), path);
        if (result->memory_) result->layer_ = result->memory_->CopyLayer(layer, layer->GetName());
        if (!result->layer_) result.reset();
    }
    GDALClose(source);
    return result;
}

namespace {

// The files a driver writes for one output: OutPath and its siblings of the same stem.
QStringList filesOfStem(const QString& folder, const QString& stem) {
    QStringList files;
    for (const QFileInfo& info : QDir(folder).entryInfoList(QDir::Files))
        if (info.fileName().startsWith(stem + ".")) files << info.absoluteFilePath();
    return files;
}

}  // namespace

bool SaveLayer(const TGIS_LayerVector* ll, const QString& OutPath) {
    if (!ll || !ll->layer()) return false;
    const QFileInfo out(OutPath);
    const QString ext = out.suffix().toLower();
    const char* driverName = ext == "shp" ? "ESRI Shapefile" : ext == "dxf" ? "DXF" : nullptr;
    if (!driverName) {
        PrintRunLog("SaveLayer: no writer for %s\n", OutPath.toUtf8().constData());
        return false;
    }
    GDALAllRegister();
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName(driverName);
    if (!driver) return false;
    const QString folder = out.absolutePath();
    const QString stem = out.completeBaseName();
    const QString staging = stem + ".zvsave";
    for (const QString& old : filesOfStem(folder, staging)) QFile::remove(old);
    // The driver knows a one-file output by a lower-case extension only; an
    // upper-case one would become a folder.
    const QString stagingPath = folder + "/" + staging + "." + ext;
    GDALDataset* ds = driver->Create(stagingPath.toUtf8().constData(), 0, 0, 0, GDT_Unknown, nullptr);
    if (!ds) return false;
    OGRSpatialReference srs;
    const auto& cs = geoState().GlobalCS;
    const bool withSystem = cs && cs->EPSG() > 0 && srs.importFromEPSG(cs->EPSG()) == OGRERR_NONE;
    if (withSystem) srs.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    char** options = nullptr;
    if (ext == "shp") options = CSLSetNameValue(options, "ENCODING", "UTF-8");
    OGRLayer* source = ll->layer();
    OGRLayer* target = ds->CreateLayer(stem.toUtf8().constData(), withSystem ? &srs : nullptr,
                                       source->GetGeomType(), options);
    CSLDestroy(options);
    bool ok = target != nullptr;
    if (ok && ext != "dxf") {
        OGRFeatureDefn* defn = source->GetLayerDefn();
        for (int i = 0; ok && i < defn->GetFieldCount(); ++i)
            ok = target->CreateField(defn->GetFieldDefn(i)) == OGRERR_NONE;
    }
    source->ResetReading();
    for (auto& feature : *source) {
        if (!ok) break;
        OGRFeature copy(target->GetLayerDefn());
        copy.SetFrom(feature.get(), TRUE);
        ok = target->CreateFeature(&copy) == OGRERR_NONE;
    }
    // This GDAL's close reports a failed flush only as the last error.
    CPLErrorReset();
    GDALClose(ds);
    if (CPLGetLastErrorType() == CE_Failure) ok = false;
    const QStringList written = filesOfStem(folder, staging);
    if (!ok) {
        for (const QString& f : written) QFile::remove(f);
        return false;
    }
    for (const QString& f : written) {
        const QString name = QFileInfo(f).fileName();
        const QString tail = name.mid(staging.length());
        const QString final = tail == "." + ext ? out.absoluteFilePath() : folder + "/" + stem + tail;
        if (std::rename(QFile::encodeName(f).constData(), QFile::encodeName(final).constData()) != 0) return false;
    }
    return true;
}

bool MergeShapeFilesFromTS(const QStringList& TS, const QString& MM) {
    if (TS.size() < 2) {
        dialogService().showMessage(" At least two files needed ", "");
        return false;
    }
    std::unique_ptr<TGIS_LayerVector> master = ReadVectorLayer(TS[0]);
    if (!master) {
        dialogService().showMessage("Can not read " + TS[0], "");
        return false;
    }
    for (int i = 1; i < TS.size(); ++i) {
        std::unique_ptr<TGIS_LayerVector> other = ReadVectorLayer(TS[i]);
        if (!other) {
            PrintRunLog("MergeShapeFilesFromTS: can not read %s\n", TS[i].toUtf8().constData());
            continue;
        }
        other->layer()->ResetReading();
        for (auto& feature : *other->layer()) {
            // Fields the master lacks are left behind, as the master's table decides.
            OGRFeature shape(master->layer()->GetLayerDefn());
            shape.SetFrom(feature.get(), TRUE);
            master->layer()->CreateFeature(&shape);
        }
    }
    return SaveLayer(master.get(), MM);
}

TGIS_LayerVector* TGIS_ViewerWnd::Get(const QString& name) const {
    for (const auto& layer : Items)
        if (layer->Name.compare(name, Qt::CaseInsensitive) == 0) return layer.get();
    return nullptr;
}

bool TGIS_ViewerWnd::Delete(const QString& name) {
    for (auto it = Items.begin(); it != Items.end(); ++it) {
        if ((*it)->Name.compare(name, Qt::CaseInsensitive) != 0) continue;
        Items.erase(it);
        return true;
    }
    return false;
}

TGIS_LayerVector* TGIS_ViewerWnd::Add(std::unique_ptr<TGIS_LayerVector> layer) {
    Items.push_back(std::move(layer));
    return Items.back().get();
}

TGIS_LayerVector* GenNewLayer(TGIS_ViewerWnd* GIS, const QString& Layername_in) {
    const QString name = StripPoints(Layername_in);
    // A layer of that name goes first; none there is no error.
    GIS->Delete(name);
    auto layer = std::make_unique<TGIS_LayerVector>(name, QString());
    layer->EPSG = geoState().EPSG;
    OGRSpatialReference srs;
    const bool withSystem = layer->EPSG > 0 && srs.importFromEPSG(layer->EPSG) == OGRERR_NONE;
    if (withSystem) srs.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    if (layer->memory_)
        layer->layer_ = layer->memory_->CreateLayer(name.toUtf8().constData(), withSystem ? &srs : nullptr, wkbUnknown, nullptr);
    if (!layer->layer_) return nullptr;
    return GIS->Add(std::move(layer));
}

bool IsAlreadyInGIS(const QString& name, QString& found, const TGIS_ViewerWnd* GIS) {
    const TGIS_LayerVector* layer = GIS ? GIS->Get(name) : nullptr;
    if (!layer) return false;
    found = layer->Name;
    return true;
}

TGIS_LayerVector* MyGisCreateLayer(const QString& Name_In, const QString& _path, TGIS_ViewerWnd* GIS) {
    QString found;
    if (IsAlreadyInGIS(Name_In, found, GIS)) return GIS->Get(found);
    std::unique_ptr<TGIS_LayerVector> layer = ReadVectorLayer(_path);
    if (!layer) return nullptr;
    layer->Name = StripPoints(Name_In);
    layer->IsKml = QFileInfo(_path).suffix().compare("kml", Qt::CaseInsensitive) == 0;
    return GIS->Add(std::move(layer));
}

int LayerToLayerWKT(const TGIS_LayerVector* from, TGIS_LayerVector* to, const QString& WKT) {
    if (!from || !to || !from->layer() || !to->layer()) return 0;
    std::unique_ptr<OGRGeometry> area;
    if (!WKT.trimmed().isEmpty()) {
        OGRGeometry* parsed = nullptr;
        const QByteArray text = WKT.toUtf8();
        if (OGRGeometryFactory::createFromWkt(text.constData(), nullptr, &parsed) == OGRERR_NONE) area.reset(parsed);
    }
    int added = 0;
    from->layer()->ResetReading();
    for (auto& feature : *from->layer()) {
        const OGRGeometry* geometry = feature->GetGeometryRef();
        if (area && (!geometry || !geometry->Intersects(area.get()))) continue;
        OGRFeature shape(to->layer()->GetLayerDefn());
        shape.SetFrom(feature.get(), TRUE);
        if (to->layer()->CreateFeature(&shape) == OGRERR_NONE) ++added;
    }
    to->EPSG = from->EPSG;
    return added;
}
