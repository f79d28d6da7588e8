#include "ShapeFileWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>
#include <gdal_priv.h>

#include "GdalDrivers.h"
#include "RunLog.h"

bool WriteShapeFileStaged(const QString& file, const std::function<bool(GDALDataset*)>& fill) {
    EnsureGdalDrivers();
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName("ESRI Shapefile");
    const QFileInfo target(file);
    QTemporaryDir staging(target.absolutePath() + "/.stagingXXXXXX");
    if (!driver || !staging.isValid()) {
        PrintRunLog("Shape file: can not write beside %s\n", QFile::encodeName(file).constData());
        return false;
    }
    const QString stagedPath = staging.filePath(target.fileName());
    GDALDataset* dataset = driver->Create(QFile::encodeName(stagedPath).constData(), 0, 0, 0, GDT_Unknown, nullptr);
    if (!dataset) return false;
    const bool written = fill(dataset);
    GDALClose(dataset);
    if (!written) return false;

    // Side files of an earlier shape of that name that this one lacks would
    // describe it wrongly.
    const QString base = target.completeBaseName();
    const QDir folder = target.absoluteDir();
    const QStringList made = QDir(staging.path()).entryList(QDir::Files);
    for (const char* ext : {".shp", ".shx", ".dbf", ".prj", ".cpg"}) {
        const QString old = base + ext;
        bool replaced = false;
        for (const QString& name : made) replaced = replaced || name.compare(old, Qt::CaseInsensitive) == 0;
        if (!replaced) QFile::remove(folder.filePath(old));
    }
    // The driver writes lower-case extensions; a target asked for as ".SHP"
    // gets its side files in upper case too (readers find either).
    const bool upper = target.suffix() == "SHP";
    bool moved = true;
    for (const QString& name : made) {
        const QFileInfo staged(name);
        const QString placed = upper ? staged.completeBaseName() + "." + staged.suffix().toUpper() : name;
        const QByteArray from = QFile::encodeName(staging.filePath(name));
        const QByteArray to = QFile::encodeName(folder.filePath(placed));
        moved = std::rename(from.constData(), to.constData()) == 0 && moved;
    }
    return moved;
}
