#include "CleanOrvoT.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "app/services/SessionPaths.h"

int CleanFolderOfOtherDays(const QString& folder, const QDate& today) {
    int deleted = 0;
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QFileInfo& file : files) {
        if (file.lastModified().date() == today) continue;
        if (QFile::remove(file.absoluteFilePath())) ++deleted;
    }
    return deleted;
}

int Clean_ORVO_T() {
    return CleanFolderOfOtherDays(QString::fromStdString(sessionPaths().ORVO_T), QDate::currentDate());
}
