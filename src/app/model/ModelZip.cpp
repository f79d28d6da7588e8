#include "ModelZip.h"

#include <zip.h>

#include <QDir>
#include <QSaveFile>
#include <QString>
#include <vector>

#include "app/services/FileHelpers.h"
#include "app/services/RunLog.h"
#include "scene/FileNameCase.h"

namespace {

// Names with ".." or a leading "/" could write anywhere.
bool safeEntryName(const QString& name) {
    if (name.isEmpty() || name.startsWith('/') || name.startsWith('\\')) return false;
    const QStringList parts = QString(name).replace('\\', '/').split('/');
    return !parts.contains("..");
}

bool extractEntry(zip_t* archive, zip_int64_t index, const QString& target) {
    zip_file_t* entry = zip_fopen_index(archive, static_cast<zip_uint64_t>(index), 0);
    if (!entry) return false;
    QSaveFile out(target);
    bool ok = out.open(QIODevice::WriteOnly);
    std::vector<char> buffer(1 << 16);
    zip_int64_t got = 0;
    while (ok && (got = zip_fread(entry, buffer.data(), buffer.size())) > 0)
        ok = out.write(buffer.data(), got) == got;
    zip_fclose(entry);
    return ok && got == 0 && out.commit();
}

}  // namespace

bool UnzipFile(const std::string& zipPath, const std::string& destFolder) {
    int error = 0;
    zip_t* archive = zip_open(zipPath.c_str(), ZIP_RDONLY, &error);
    if (!archive) {
        PrintRunLog("UnzipFile: can not open %s (libzip error %d)\n", zipPath.c_str(), error);
        return false;
    }
    const QString dest = QString::fromStdString(destFolder);
    const zip_int64_t count = zip_get_num_entries(archive, 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        const char* raw = zip_get_name(archive, static_cast<zip_uint64_t>(i), ZIP_FL_ENC_GUESS);
        const QString name = QString::fromUtf8(raw ? raw : "").replace('\\', '/');
        if (!safeEntryName(name)) {
            PrintRunLog("UnzipFile: entry %s skipped\n", raw ? raw : "");
            continue;
        }
        const QString target = dest + name;
        if (name.endsWith('/')) {
            QDir().mkpath(target);
            continue;
        }
        QDir().mkpath(QString::fromStdString(FolderOf(target.toStdString())));
        if (!extractEntry(archive, i, target)) PrintRunLog("UnzipFile: entry %s not written\n", raw);
    }
    zip_close(archive);
    return true;
}

QStringList UnzipModel(const std::string& zipPath) {
    const std::string dest = FolderOf(zipPath) + "Unzipped/";
    if (!UnzipFile(zipPath, dest)) return {};
    return Find_Files(QString::fromStdString(dest) + "*.obj", true);
}
