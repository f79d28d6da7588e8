#include "FileDialogs.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include "DialogService.h"
#include "FileHelpers.h"
#include "OrvoFopen.h"

namespace {

QString bareExtension(const QString& ext) {
    QString bare = ext.trimmed();
    while (bare.startsWith('*') || bare.startsWith('.')) bare.remove(0, 1);
    return bare;
}

QString withExtension(const QString& name, const QString& ext) {
    if (ext.isEmpty() || !QFileInfo(name).suffix().isEmpty()) return name;
    return name + "." + ext;
}

}  // namespace

QString FilterEntryExtension(const QString& filter, int index) {
    const QStringList parts = filter.split('|');
    const int at = 2 * index - 1;
    if (index < 1 || at >= parts.size()) return {};
    const QString pattern = parts[at].split(';').first().trimmed();
    const int dot = pattern.indexOf('.');
    if (dot < 0) return {};
    const QString ext = pattern.mid(dot + 1);
    if (ext.isEmpty() || ext.contains('*') || ext.contains('?')) return {};
    return ext;
}

int OrvoOpenFile(QString& thefile, const QString& ext, const QString& szFilter, const QString& szTitle,
                 const QString& DefDir) {
    const QString proposed = thefile.trimmed();
    FileDialogRequest request;
    request.title = szTitle;
    request.filter = szFilter;
    request.folder = QFileInfo(DefDir).isDir() ? DefDir : OrvoExtractLocalFilePath(proposed);
    request.proposedName = QFileInfo(proposed).fileName();
    QString chosen;
    int chosenFilter = 1;
    if (!dialogService().chooseFile(request, chosen, chosenFilter)) return 0;
    thefile = withExtension(chosen, bareExtension(ext));
    return QFileInfo(thefile).isFile() ? 1 : 0;
}

QStringList OrvoOpenFiles(const QString& Title, const QString& Filter, const QString& DefDir) {
    FileDialogRequest request;
    request.title = Title;
    request.filter = Filter;
    request.folder = DefDir;
    request.multiple = true;
    QString chosen;
    int chosenFilter = 1;
    if (!dialogService().chooseFile(request, chosen, chosenFilter)) return {};
    return chosen.split('\n', Qt::SkipEmptyParts);
}

int OrvoSaveFile(QString& thefile, const QString& ext, const QString& Filter, const QString& Title, int filterindex) {
    FileDialogRequest request;
    request.save = true;
    request.title = Title;
    request.filter = Filter;
    request.filterIndex = filterindex;
    request.folder = OrvoExtractLocalFilePath(thefile.trimmed());
    request.proposedName = QFileInfo(thefile.trimmed()).fileName();
    request.promptOverwrite = true;
    QString chosen;
    int chosenFilter = filterindex;
    if (!dialogService().chooseFile(request, chosen, chosenFilter)) return 0;
    if (chosenFilter < 1) chosenFilter = 1;

    QString entryExt = FilterEntryExtension(Filter, chosenFilter);
    if (entryExt.isEmpty()) entryExt = bareExtension(ext);
    chosen = withExtension(chosen, entryExt);

    // A name the user can't write to is caught now, while a choice can still
    // be made, rather than when the work behind it is done.
    if (!QFileInfo::exists(chosen)) {
        if (std::FILE* probe = ORVOfopen(chosen, "w")) {
            std::fclose(probe);
            if (QFileInfo::exists(chosen)) {
                QFile::remove(chosen);
            } else {
                chosen = OrvoTempTwin(chosen);
                QFile::remove(chosen);
            }
        }
    }
    thefile = chosen;
    return chosenFilter;
}
