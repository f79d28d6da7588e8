#include "MeasurementFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSet>
#include <algorithm>
#include <cstring>

#include "DigitiseState.h"
#include "DigitisedShape.h"
#include "MeasureRecords.h"
#include "Measuring.h"
#include "app/services/RunLog.h"
#include "app/session/DispatchState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Frames.h"
#include "scene/EngineSession.h"

namespace {

QByteArray fileName(const QString& path) { return QFile::encodeName(path); }

bool isPathFile(const QString& path) {
    const QString ext = QFileInfo(path).suffix().toLower();
    return ext == "pol" || ext == "lin";
}

void shiftPoint(double* point, const double* by, double sign) {
    for (int i = 0; i < 3; ++i) point[i] += sign * by[i];
}

void shiftMeasure(MEASURE_DATA& item, const double* by, double sign) {
    for (double* point : {item.vertex1, item.vertex2, item.observer, item.obstruction}) shiftPoint(point, by, sign);
}

// The outline a polygon segment belongs to: its id up to the last "-".
QString outlineOf(const QString& id) { return id.left(id.lastIndexOf('-')); }

bool keptInFile(const QString& id, bool pathFile, bool onlyLast, const QString& lastOutline) {
    if (!pathFile) return !id.contains("POL_");
    return id.contains("POL_") && (!onlyLast || outlineOf(id) == lastOutline);
}

// Segments share their ends: each vertex once, in the order of the outline.
std::vector<TGIS_Point3D> uniqueVertices(const std::vector<TGIS_Point3D>& points) {
    std::vector<TGIS_Point3D> unique;
    QSet<QString> seen;
    for (const TGIS_Point3D& p : points) {
        const QString key = QString::asprintf("%10.2lf %13.2lf %12.2lf", p.X, p.Y, p.Z);
        if (seen.contains(key)) continue;
        seen.insert(key);
        unique.push_back(p);
    }
    return unique;
}

// X.POL gives X.SHP; a digitised line X.LIN gives X.LIN.SHP.
QString shapeFileFor(const QString& M) {
    if (dispatchState().DIGITIZELINEORPOLYGON == 1) return M + ".SHP";
    const QFileInfo info(M);
    return info.dir().filePath(info.completeBaseName() + ".SHP");
}

bool commitBytes(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        PrintRunLog("Can not write %s\n", fileName(path).constData());
        return false;
    }
    return true;
}

bool readAll(const QString& path, QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        PrintRunLog("Can not open %s\n", fileName(path).constData());
        return false;
    }
    bytes = file.readAll();
    return true;
}

}  // namespace

int ExportMeasureData(const QString& M, bool OnlyLastPolygon) {
    const bool pathFile = isPathFile(M);
    const int count = At3d_MeasureList_Get_Count();
    QString lastOutline;
    if (OnlyLastPolygon && count > 0) {
        MEASURE_DATA last{};
        if (Get_MeasureList_Item(count - 1, &last)) lastOutline = outlineOf(QString::fromUtf8(last.id));
    }
    const double oc[3] = {OC(0), OC(1), OC(2)};
    QByteArray bytes;
    std::vector<TGIS_Point3D> points;
    int written = 0;
    for (int i = 0; i < count; ++i) {
        MEASURE_DATA item{};
        if (!Get_MeasureList_Item(i, &item)) continue;
        shiftMeasure(item, oc, +1);
        if (!keptInFile(QString::fromUtf8(item.id), pathFile, OnlyLastPolygon, lastOutline)) continue;
        const MeasureRecordBytes record = EncodeMeasureRecord(item);
        bytes.append(reinterpret_cast<const char*>(record.data()), qsizetype(record.size()));
        ++written;
        for (const double* v : {item.vertex1, item.vertex2}) points.push_back({v[0], v[1], v[2], 0});
    }
    if (written == 0) {
        PrintRunLog("Nothing to save in %s\n", fileName(M).constData());
        return 0;
    }
    if (!commitBytes(M, bytes)) return 0;
    PrintRunLog("%d records saved in %s\n", written, fileName(M).constData());
    if (pathFile) {
        const std::vector<TGIS_Point3D> vertices = uniqueVertices(points);
        CreateSHPfileFromPoints(vertices.data(), int(vertices.size()), viewerSettings().GlobalColor, shapeFileFor(M),
                                dispatchState().DIGITIZELINEORPOLYGON != 1);
    }
    return written;
}

int ExportBillboardData(const QString& B) {
    const double oc[3] = {OC(0), OC(1), OC(2)};
    QByteArray bytes;
    int written = 0;
    const int count = At3d_Measure_Billboard_Get_Count();
    for (int i = 0; i < count; ++i) {
        BILLBOARD_DATA data{};
        const bool read = Get_Billboard_Data(i, &data);
        // A measure's label is made again with its measure.
        if (read && data.alphaFlag != 2) {
            shiftPoint(data.position, oc, +1);
            shiftPoint(data.pivot, oc, +1);
            const BillboardRecordBytes record = EncodeBillboardRecord(data);
            bytes.append(reinterpret_cast<const char*>(record.data()), qsizetype(record.size()));
            bytes.append(reinterpret_cast<const char*>(data.imagePtr), data.imageSize);
            ++written;
        }
        delete[] data.imagePtr;
    }
    if (written == 0) {
        PrintRunLog("No billboards to save in %s\n", fileName(B).constData());
        return 0;
    }
    return commitBytes(B, bytes) ? written : 0;
}

bool ReadMeasureFile(const QString& path, std::vector<MEASURE_DATA>& records) {
    records.clear();
    QByteArray bytes;
    if (!readAll(path, bytes)) return false;
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.constData());
    for (qsizetype at = 0; at + qsizetype(MEASURE_RECORD_SIZE) <= bytes.size(); at += MEASURE_RECORD_SIZE)
        records.push_back(DecodeMeasureRecord(data + at));
    if (bytes.size() % qsizetype(MEASURE_RECORD_SIZE) != 0)
        PrintRunLog("%s ends in a record cut short: dropped\n", fileName(path).constData());
    return true;
}

bool ReadBillboardFile(const QString& path, std::vector<BILLBOARD_DATA>& records,
                       std::vector<std::vector<UInt8>>* images) {
    records.clear();
    if (images) images->clear();
    QByteArray bytes;
    if (!readAll(path, bytes)) return false;
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.constData());
    qsizetype at = 0;
    while (at + qsizetype(BILLBOARD_RECORD_SIZE) <= bytes.size()) {
        const BILLBOARD_DATA record = DecodeBillboardRecord(data + at);
        at += BILLBOARD_RECORD_SIZE;
        if (record.imageSize < 0 || record.imageSize > bytes.size() - at) {
            PrintRunLog("%s ends in an entry cut short: dropped\n", fileName(path).constData());
            return true;
        }
        if (!BillboardImageSizeConsistent(record)) {
            PrintRunLog("%s: entry \"%s\" has a picture of the wrong size: left out\n", fileName(path).constData(),
                        record.id);
        } else {
            records.push_back(record);
            if (images) images->emplace_back(data + at, data + at + record.imageSize);
        }
        at += record.imageSize;
    }
    if (at != bytes.size()) PrintRunLog("%s ends in an entry cut short: dropped\n", fileName(path).constData());
    return true;
}

int ImportMeasureData(const QString& M) {
    std::vector<MEASURE_DATA> records;
    if (!ReadMeasureFile(M, records)) return 0;
    // Only the centre comes off: the file's Offset stays in the points.
    const double* center = frameState().OriginalobjectCenter;
    for (MEASURE_DATA& item : records) {
        shiftMeasure(item, center, -1);
        At3d_MeasureList_Add_Item(item.id, item.visible_Flag, item.observer_Flag, item.obstruction_Flag,
                                  item.lineWidth, item.rgb_Line_Array, item.vertex1, item.vertex2, item.observer,
                                  item.obstruction);
    }
    if (QFileInfo(M).suffix().compare("pol", Qt::CaseInsensitive) == 0 && !records.empty()) {
        // The outline is there for the digitising to take up again.
        DigitiseState& digitise = digitiseState();
        const int n = std::min<int>(int(records.size()), MAX_WAYPOINTS - 1);
        for (int i = 0; i < n; ++i)
            digitise.WaypointW[i] = {records[i].vertex1[0], records[i].vertex1[1], records[i].vertex1[2]};
        const MEASURE_DATA& last = records[std::size_t(n - 1)];
        digitise.WaypointW[n] = {last.vertex2[0], last.vertex2[1], last.vertex2[2]};
        digitise.NWPW = n + 1;
    }
    ShowDeleteGroupInSolarMode();
    ReleaseMeasureTools();
    PrintRunLog("%zu records read from %s\n", records.size(), fileName(M).constData());
    return int(records.size());
}

int ImportBillboardData(const QString& B) {
    std::vector<BILLBOARD_DATA> records;
    std::vector<std::vector<UInt8>> images;
    if (!ReadBillboardFile(B, records, &images)) return 0;
    At3d_Measure_Billboard_Delete_All();
    const double oc[3] = {OC(0), OC(1), OC(2)};
    for (std::size_t i = 0; i < records.size(); ++i) {
        BILLBOARD_DATA& data = records[i];
        shiftPoint(data.position, oc, -1);
        shiftPoint(data.pivot, oc, -1);
        At3d_Measure_Billboard_Add_Item(data.id, images[i].empty() ? nullptr : images[i].data(), data.imageWidth,
                                        data.imageHeight, data.alphaFlag, data.pivotTypeFlag, data.staticFlag,
                                        data.visibleFlag, data.oglReplaceFlag, data.typeFlag, data.rgb_Line_Array,
                                        data.lineWidth, data.height, data.position, data.pivot, data.rotationStatic);
    }
    PrintRunLog("%zu billboards read from %s\n", records.size(), fileName(B).constData());
    return int(records.size());
}

bool Save3DMeasurings(const QString& file, const QString& text) {
    QDir().mkpath(QFileInfo(file).absolutePath());
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Append)) {
        PrintRunLog("Can not add to %s\n", fileName(file).constData());
        return false;
    }
    const QByteArray line = text.toUtf8() + '\n';
    return out.write(line) == line.size();
}
