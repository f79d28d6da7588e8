#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <cpl_conv.h>
#include <cstdio>
#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include "GdalDrivers.h"
#include "GridFiles.h"
#include "RunLog.h"

namespace {

// Sets a GDAL option for this thread while a reader runs.
class ScopedConfigOption {
public:
    ScopedConfigOption(const char* key, const char* value) : key_(key) {
        const char* old = CPLGetThreadLocalConfigOption(key, nullptr);
        if (old) {
            hadOld_ = true;
            old_ = old;
        }
        CPLSetThreadLocalConfigOption(key, value);
    }
    ~ScopedConfigOption() { CPLSetThreadLocalConfigOption(key_, hadOld_ ? old_.constData() : nullptr); }
    ScopedConfigOption(const ScopedConfigOption&) = delete;
    ScopedConfigOption& operator=(const ScopedConfigOption&) = delete;

private:
    const char* key_;
    bool hadOld_ = false;
    QByteArray old_;
};

}  // namespace

bool LoadSpreadsheetGrid(const QString& path, GridRows& rows) {
    EnsureGdalDrivers();
    // Every row is data and every cell text: the grid shows the sheet as it is.
    const ScopedConfigOption xlsxHeaders("OGR_XLSX_HEADERS", "DISABLE");
    const ScopedConfigOption xlsxTypes("OGR_XLSX_FIELD_TYPES", "STRING");
    const ScopedConfigOption xlsHeaders("OGR_XLS_HEADERS", "DISABLE");
    const ScopedConfigOption xlsTypes("OGR_XLS_FIELD_TYPES", "STRING");
    const char* const drivers[] = {"XLSX", "XLS", nullptr};
    GDALDataset* dataset = GDALDataset::Open(QFile::encodeName(path).constData(), GDAL_OF_VECTOR | GDAL_OF_READONLY,
                                             drivers, nullptr, nullptr);
    if (!dataset) {
        PrintRunLog("LoadSpreadsheetGrid: can not open %s\n", QFile::encodeName(path).constData());
        return false;
    }
    GridRows read;
    if (OGRLayer* sheet = dataset->GetLayerCount() > 0 ? dataset->GetLayer(0) : nullptr) {
        sheet->ResetReading();
        while (OGRFeature* feature = sheet->GetNextFeature()) {
            QStringList row;
            for (int field = 0; field < feature->GetFieldCount(); ++field)
                row.append(feature->IsFieldSetAndNotNull(field) ? QString::fromUtf8(feature->GetFieldAsString(field))
                                                                : QString());
            while (!row.isEmpty() && row.last().isEmpty()) row.removeLast();
            read.append(row);
            OGRFeature::DestroyFeature(feature);
        }
    }
    GDALClose(dataset);
    rows = read;
    return true;
}

bool SaveXlsxGrid(const GridRows& rows, const QString& path) {
    EnsureGdalDrivers();
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName("XLSX");
    const QFileInfo target(path);
    QTemporaryDir staging(target.absolutePath() + "/.stagingXXXXXX");
    if (!driver || !staging.isValid()) return false;
    const QString stagedPath = staging.filePath(target.fileName());
    GDALDataset* dataset = driver->Create(QFile::encodeName(stagedPath).constData(), 0, 0, 0, GDT_Unknown, nullptr);
    if (!dataset) return false;
    OGRLayer* sheet = dataset->CreateLayer("Sheet1", nullptr, wkbNone, nullptr);
    qsizetype columns = 0;
    for (const QStringList& row : rows) columns = std::max(columns, row.size());
    bool ok = sheet != nullptr;
    const QStringList header = rows.isEmpty() ? QStringList{} : rows.first();
    for (qsizetype column = 0; ok && column < columns; ++column) {
        const QString name = column < header.size() ? header[column] : QString();
        OGRFieldDefn field(name.toUtf8().constData(), OFTString);
        ok = sheet->CreateField(&field) == OGRERR_NONE;
    }
    for (qsizetype r = 1; ok && r < rows.size(); ++r) {
        OGRFeature* feature = OGRFeature::CreateFeature(sheet->GetLayerDefn());
        for (qsizetype column = 0; column < rows[r].size(); ++column)
            feature->SetField(static_cast<int>(column), rows[r][column].toUtf8().constData());
        ok = sheet->CreateFeature(feature) == OGRERR_NONE;
        OGRFeature::DestroyFeature(feature);
    }
    GDALClose(dataset);
    if (!ok) return false;
    return std::rename(QFile::encodeName(stagedPath).constData(), QFile::encodeName(path).constData()) == 0;
}
