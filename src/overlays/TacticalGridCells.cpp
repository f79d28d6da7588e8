#include "TacticalGridCells.h"

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <QFile>
#include <cmath>
#include <memory>

#include "app/model/ModelSession.h"
#include "app/model/TacticalGrid.h"
#include "app/services/DialogService.h"
#include "app/services/FileHelpers.h"
#include "scene/FileNameCase.h"

namespace {

struct DatasetCloser {
    void operator()(GDALDataset* d) const { GDALClose(d); }
};
using Dataset = std::unique_ptr<GDALDataset, DatasetCloser>;

Dataset openGrid(const QString& path) {
    if (path.isEmpty()) return nullptr;
    GDALAllRegister();
    return Dataset(static_cast<GDALDataset*>(
        GDALOpenEx(path.toUtf8().constData(), GDAL_OF_VECTOR | GDAL_OF_READONLY, nullptr, nullptr, nullptr)));
}

// The first two points of a line shape; false for anything shorter.
bool firstTwoPoints(OGRFeature& feature, TGIS_Point& p1, TGIS_Point& p2, double& length) {
    const OGRGeometry* geometry = feature.GetGeometryRef();
    if (!geometry) return false;
    const OGRLineString* line = nullptr;
    const auto type = wkbFlatten(geometry->getGeometryType());
    if (type == wkbLineString) {
        line = geometry->toLineString();
    } else if (type == wkbMultiLineString && geometry->toMultiLineString()->getNumGeometries() > 0) {
        line = geometry->toMultiLineString()->getGeometryRef(0);
    }
    if (!line || line->getNumPoints() < 2) return false;
    p1 = {line->getX(0), line->getY(0)};
    p2 = {line->getX(1), line->getY(1)};
    length = line->get_Length();
    return true;
}

QString fieldText(OGRFeature& feature, const char* name) {
    const int index = feature.GetFieldIndex(name);
    if (index < 0 || !feature.IsFieldSetAndNotNull(index)) return {};
    // GDAL hands text over as UTF-8, recoded from the ".cpg" code page.
    return QString::fromUtf8(feature.GetFieldAsString(index));
}

QString loadedGrid() { return QString::fromStdString(modelSession().TacticalGridFile); }

}  // namespace

QString GetGridNameIn(const QString& gridFile, const TGIS_Point& P) {
    Dataset dataset = openGrid(gridFile);
    if (!dataset || dataset->GetLayerCount() == 0) return {};
    OGRLayer* layer = dataset->GetLayer(0);
    layer->ResetReading();
    for (auto& feature : *layer) {
        const QString name = fieldText(*feature, "name");
        if (name.isEmpty()) continue;
        TGIS_Point p1, p2;
        double length = 0;
        if (!firstTwoPoints(*feature, p1, p2, length)) continue;
        TGIS_Extent extent{std::fmin(p1.X, p2.X), p1.Y - length / 2, std::fmax(p1.X, p2.X), p2.Y + length / 2};
        if (PointInExtent(P, extent)) return name;
    }
    return {};
}

QString GetGridName(const TGIS_Point& P) { return GetGridNameIn(loadedGrid(), P); }

bool GetGridCenterIn(const QString& gridFile, const QString& name, TGIS_Point3D& center) {
    const QString wanted = name.trimmed();
    Dataset dataset = openGrid(gridFile);
    if (!dataset || dataset->GetLayerCount() == 0) return false;
    OGRLayer* layer = dataset->GetLayer(0);
    layer->ResetReading();
    for (auto& feature : *layer) {
        if (fieldText(*feature, "Name").compare(wanted, Qt::CaseInsensitive) != 0) continue;
        TGIS_Point p1, p2;
        double length = 0;
        if (!firstTwoPoints(*feature, p1, p2, length)) continue;
        center.X = (p1.X + p2.X) / 2;
        center.Y = p1.Y;
        const int terrain = feature->GetFieldIndex("Terrain");
        center.Z = terrain >= 0 ? feature->GetFieldAsDouble(terrain) : 0;
        return true;
    }
    return false;
}

bool GetGridCenter(const QString& name, TGIS_Point3D& center) { return GetGridCenterIn(loadedGrid(), name, center); }

void ImportTacticalGridMnuClick() {
    const QString target = QString::fromStdString(ModelFolder()) + "TacticalG.shp";
    FileDialogRequest request;
    request.title = "Open the tactical grid file";
    request.filter = "Tactical grid|TacticalG.SHP";
    QString source;
    int filter = 1;
    if (!dialogService().chooseFile(request, source, filter) || source.isEmpty()) return;
    const QString sourceBase = source.left(source.length() - 4);
    const QString targetBase = target.left(target.length() - 4);
    OrvoCopyFile(source, target);
    for (const char* ext : {".shx", ".prj", ".dbf", ".cpg", ".shp.ini", ".shp.fld"}) {
        const QString suffix = QString::fromLatin1(ext);
        // ".shp.ini" and ".shp.fld" hang on the whole name, the others replace ".shp".
        const QString from = suffix.startsWith(".shp") ? source + suffix.mid(4) : sourceBase + suffix;
        const QString to = suffix.startsWith(".shp") ? target + suffix.mid(4) : targetBase + suffix;
        // Side files come in any case ("TacticalG.SHX" beside "TacticalG.SHP").
        const std::string found = FindFileNoCase(from.toStdString());
        if (!found.empty()) OrvoCopyFile(QString::fromStdString(found), to);
    }
    TryToLoadtacticalGrid();
}
