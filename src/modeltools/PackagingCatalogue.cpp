#include "PackagingCatalogue.h"

#include <QFileInfo>
#include <QSet>

#include "app/services/FileHelpers.h"
#include "app/services/RunLog.h"
#include "scene/FileNameCase.h"

QStringList CatalogueFilesToPack(const QString& oblixList, bool everySecondJpg) {
    const std::string listFolder = FolderOf(oblixList.toStdString());
    const QStringList lines = StringFromFile(oblixList).split('\n');
    QStringList folders;
    for (QString line : lines) {
        line = line.trimmed().remove('"');
        if (line.isEmpty()) continue;
        const QString found = QString::fromStdString(ResolveReferencedFile(listFolder, line.toStdString()));
        if (found.isEmpty()) {
            PrintRunLog("Packing: catalogue %s not found\n", line.toUtf8().constData());
            continue;
        }
        const QString folder = QFileInfo(found).isDir() ? (found.endsWith('/') ? found : found + "/")
                                                        : OrvoExtractLocalFilePath(found);
        if (!folders.contains(folder)) folders.append(folder);
    }

    QStringList files;
    QSet<QString> seen;  // a catalogue folder may lie inside another
    for (const QString& folder : folders) {
        int jpgCount = 0;
        for (const QString& file : Find_Files(folder + "*", true)) {
            if (file.endsWith(".rtree", Qt::CaseInsensitive) || seen.contains(file)) continue;
            seen.insert(file);
            if (everySecondJpg && file.endsWith(".jpg", Qt::CaseInsensitive) && ++jpgCount % 2 == 1) continue;
            files.append(file);
        }
    }
    return files;
}
