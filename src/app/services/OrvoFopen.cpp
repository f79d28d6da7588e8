#include "OrvoFopen.h"

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstring>
#include <sys/stat.h>

#include "OrvoDialogs.h"
#include "RunLog.h"
#include "SessionPaths.h"

namespace {

std::FILE* openNative(const QString& fn, const char* mode) {
    return std::fopen(QFile::encodeName(fn).constData(), mode);
}

// On Linux the read-only attribute is the owner's missing write permission.
bool clearReadOnly(const QString& fn) {
    const QByteArray native = QFile::encodeName(fn);
    struct stat info {};
    if (::stat(native.constData(), &info) != 0) return false;
    if (info.st_mode & S_IWUSR) return true;
    return ::chmod(native.constData(), (info.st_mode & 07777) | S_IWUSR) == 0;
}

}  // namespace

QString OrvoTempTwin(const QString& fn) {
    return QString::fromStdString(sessionPaths().ORVO_T) + QFileInfo(fn).fileName();
}

std::FILE* ORVOfopen(const QString& fn, const char* W) {
    if (!W) return nullptr;
    const QFileInfo info(fn);
    const bool exists = info.exists() && !info.isDir();
    if (std::strchr(W, 'r')) {
        if (!exists) return nullptr;
        std::FILE* file = openNative(fn, W);
        if (!file) MyShowMessage("Could not open for input\n[" + fn + "]");
        return file;
    }
    if (!std::strchr(W, 'w') && !std::strchr(W, 'a')) return nullptr;

    const QString twin = OrvoTempTwin(fn);
    if (exists) {
        if (!clearReadOnly(fn)) {
            std::FILE* file = openNative(twin, W);
            if (!file) MyShowMessage("Could not open for output\n" + twin);
            return file;
        }
        std::FILE* file = openNative(fn, W);
        if (!file) PrintRunLog("ORVOfopen: %s: %s\n", QFile::encodeName(fn).constData(), std::strerror(errno));
        return file;
    }
    if (std::FILE* file = openNative(fn, W)) return file;
    MyShowMessage("Can not open for writing " + fn);
    std::FILE* file = openNative(twin, W);
    if (!file) MyShowMessage("Can not open for writing " + twin);
    return file;
}
