#include "ShapeFromCsv.h"

#include <QFile>
#include <gdal_priv.h>
#include <ogr_spatialref.h>
#include <ogrsf_frmts.h>
#include <optional>

#include "RunLog.h"
#include "ShapeFileWriter.h"

namespace {

struct PolygonRow {
    QString name;
    double color = 0;
    OGRLinearRing ring;
};

std::optional<PolygonRow> readPolygonRow(const QStringList& cells) {
    QStringList row = cells;
    while (!row.isEmpty() && row.last().trimmed().isEmpty()) row.removeLast();
    if (row.size() < 8 || row.size() % 2 != 0) return std::nullopt;
    PolygonRow polygon;
    polygon.name = row[0];
    bool ok = false;
    polygon.color = row[1].trimmed().toDouble(&ok);
    if (!ok) return std::nullopt;
    for (qsizetype at = 2; at + 1 < row.size(); at += 2) {
        bool okX = false;
        bool okY = false;
        const double x = row[at].trimmed().toDouble(&okX);
        const double y = row[at + 1].trimmed().toDouble(&okY);
        if (!okX || !okY) return std::nullopt;
        polygon.ring.addPoint(x, y);
    }
    polygon.ring.closeRings();
    return polygon;
}

bool writeLayer(GDALDataset* dataset, const GridRows& rows, const QString& wkt) {
    OGRSpatialReference srs;
    const bool withSrs = !wkt.isEmpty() && srs.SetFromUserInput(wkt.toUtf8().constData()) == OGRERR_NONE;
    char** options = CSLSetNameValue(nullptr, "ENCODING", "UTF-8");
    OGRLayer* layer = dataset->CreateLayer("Polygons", withSrs ? &srs : nullptr, wkbPolygon, options);
    CSLDestroy(options);
    if (!layer) return false;
    OGRFieldDefn nameField("Polygon", OFTString);
    nameField.SetWidth(40);
    OGRFieldDefn colorField("Color", OFTReal);
    colorField.SetWidth(20);
    colorField.SetPrecision(0);
    if (layer->CreateField(&nameField) != OGRERR_NONE || layer->CreateField(&colorField) != OGRERR_NONE) return false;
    for (const QStringList& cells : rows) {
        std::optional<PolygonRow> row = readPolygonRow(cells);
        if (!row) continue;
        OGRFeature* feature = OGRFeature::CreateFeature(layer->GetLayerDefn());
        feature->SetField("Polygon", row->name.toUtf8().constData());
        feature->SetField("Color", row->color);
        OGRPolygon polygon;
        polygon.addRing(&row->ring);
        feature->SetGeometry(&polygon);
        const bool ok = layer->CreateFeature(feature) == OGRERR_NONE;
        OGRFeature::DestroyFeature(feature);
        if (!ok) return false;
    }
    return true;
}

}  // namespace

bool CreateSHPfileFromRows(const GridRows& rows, const QString& file, const QString& wkt) {
    return WriteShapeFileStaged(file, [&](GDALDataset* dataset) { return writeLayer(dataset, rows, wkt); });
}

bool CreateSHPfileFromCsv(const QString& GlobalCSV, const QString& file, const QString& wkt) {
    GridRows rows;
    if (!LoadCsvGrid(GlobalCSV, rows)) {
        PrintRunLog("CreateSHPfileFromCsv: can not read %s\n", QFile::encodeName(GlobalCSV).constData());
        return false;
    }
    return CreateSHPfileFromRows(rows, file, wkt);
}
