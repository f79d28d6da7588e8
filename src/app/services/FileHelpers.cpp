#include "FileHelpers.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextStream>
#include <cstdio>

#include "RunLog.h"

QString StringFromFile(const QString& File) {
    QFile file(File);
    if (!file.open(QIODevice::ReadOnly)) return {};
    QTextStream in(&file);
    QString text;
    QString line;
    while (in.readLineInto(&line)) text += line + "\n";
    return text;
}

bool StringToFile(const QString& text, const QString& FileName) {
    QSaveFile file(FileName);
    if (!file.open(QIODevice::WriteOnly)) return false;
    file.write(text.toUtf8());
    return file.commit();
}

std::int64_t OrvoFileSize(const QString& infile, std::int64_t& MB) {
    const QFileInfo info(infile);
    if (!info.exists() || info.isDir()) {
        MB = -1;
        return -1;
    }
    const std::int64_t size = info.size();
    MB = size / 1048576;
    return size;
}

bool OrvoCreateDir(const QString& DIR) { return QDir().mkpath(DIR); }

bool OrvoCopyFile(const QString& from, const QString& to) {
    const QString source = QFileInfo(from).absoluteFilePath();
    const QString target = QFileInfo(to).absoluteFilePath();
    const QString staging = target + ".tmp";
    QFile::remove(staging);
    if (!QFile::copy(source, staging)) {
        PrintRunLog("OrvoCopyFile: can not copy %s\n", QFile::encodeName(source).constData());
        return false;
    }
    if (std::rename(QFile::encodeName(staging).constData(), QFile::encodeName(target).constData()) != 0) {
        QFile::remove(staging);
        return false;
    }
    return true;
}

bool OrvoCopyDirectory(const QString& From, const QString& To) {
    const QDir source(From);
    if (!source.exists() || !OrvoCreateDir(To)) return false;
    const QDir target(To);
    bool ok = true;
    QDirIterator it(source.absolutePath(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        const QString relative = source.relativeFilePath(path);
        if (it.fileInfo().isDir())
            ok = OrvoCreateDir(target.filePath(relative)) && ok;
        else
            ok = OrvoCopyFile(path, target.filePath(relative)) && ok;
    }
    return ok;
}

bool ORVODeleteDirectory(const QString& path) {
    QDir dir(path);
    if (dir.exists()) dir.removeRecursively();
    return !QFileInfo::exists(path);
}

QString OrvoStringReplace(const QString& S, const QString& From, const QString& To) {
    if (From.isEmpty()) return S;
    QString result = S;
    return result.replace(From, To, Qt::CaseSensitive);
}

QString OrvoExtractLocalFilePath(const QString& filename) {
    const int slash = filename.lastIndexOf('/');
    return slash < 0 ? QString() : filename.left(slash + 1);
}

namespace {

QStringList findEntries(const QString& folder, const QString& mask, bool usesubdirectories, QDir::Filters kind,
                        bool markFolders) {
    if (!QFileInfo(folder).isDir()) return {};
    const QStringList masks{mask.isEmpty() ? QStringLiteral("*") : mask};
    // Without QDir::CaseSensitive the masks match whatever the case.
    QDirIterator it(folder, masks, kind | QDir::Hidden | QDir::NoDotAndDotDot,
                    usesubdirectories ? QDirIterator::Subdirectories : QDirIterator::NoIteratorFlags);
    QStringList found;
    while (it.hasNext()) {
        const QString path = QDir::cleanPath(it.next());
        found.append(markFolders ? path + "/" : path);
    }
    found.sort();
    return found;
}

}  // namespace

QStringList Find_Files(const QString& Path_WildCard, bool usesubdirectories) {
    const QString folder = OrvoExtractLocalFilePath(Path_WildCard);
    const QString mask = Path_WildCard.mid(folder.size());
    return findEntries(folder.isEmpty() ? QStringLiteral(".") : folder, mask, usesubdirectories, QDir::Files, false);
}

QStringList Find_Directories(const QString& Path, bool usesubdirectories, const QString& Mask) {
    return findEntries(Path, Mask, usesubdirectories, QDir::Dirs, true);
}

QDateTime GetTimeStamp(const QString& FN) {
    QFile file(FN);
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray head = file.read(0x40);
    if (head.size() == 0x40 && head.startsWith("MZ")) {
        const auto u32 = [](const QByteArray& bytes, int at) {
            return static_cast<quint32>(static_cast<quint8>(bytes[at])) |
                   static_cast<quint32>(static_cast<quint8>(bytes[at + 1])) << 8 |
                   static_cast<quint32>(static_cast<quint8>(bytes[at + 2])) << 16 |
                   static_cast<quint32>(static_cast<quint8>(bytes[at + 3])) << 24;
        };
        const quint32 peOffset = u32(head, 0x3C);
        if (file.seek(peOffset)) {
            const QByteArray pe = file.read(12);
            if (pe.size() == 12 && pe.startsWith(QByteArray("PE\0\0", 4)))
                return QDateTime::fromSecsSinceEpoch(u32(pe, 8), Qt::UTC);
        }
    }
    return QFileInfo(FN).lastModified();
}
