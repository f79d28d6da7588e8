#include "ZipFiles.h"

#include <zip.h>

#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "app/services/OrvoDialogs.h"
#include "app/services/RunLog.h"
#include "app/session/MainFormState.h"
#include "modeltools/ModelToolProgress.h"

namespace {

QString slashed(const QString& path) { return QString(path).replace('\\', '/'); }

QString progressText(int shown, int total) { return QString::asprintf("Compressing %d out of %d", shown, total); }

// libzip compresses everything inside zip_close, so the operator's progress
// and Cancel are served from its callbacks there.
struct CloseProgress {
    int total = 0;     // files listed, missing ones included
    int added = 0;     // entries actually in the archive
};

void onCloseProgress(zip_t*, double fraction, void* state) {
    auto* p = static_cast<CloseProgress*>(state);
    if (p->added <= 0) return;
    const int entry = std::clamp(int(fraction * p->added), 0, p->added - 1);
    // The status line moves on every tenth file; the bar follows every step.
    const int shown = entry / 10 * 10 + 1;
    ReportModelToolProgress(progressText(shown, p->total), std::llround(fraction * 1000.0), 1000);
}

int onCloseCancel(zip_t*, void*) { return ModelToolCancelled() ? 1 : 0; }

}  // namespace

QStringList ZipEntryNames(const QStringList& TS, bool nopaths) {
    QStringList names;
    names.reserve(TS.size());
    int LD = 999;
    for (const QString& file : TS) LD = std::min<int>(LD, slashed(file).lastIndexOf('/'));
    for (const QString& file : TS) {
        const QString path = slashed(file);
        names.append(nopaths ? path.mid(path.lastIndexOf('/') + 1) : path.mid(LD + 1));
    }
    return names;
}

bool ZipFiles(const QStringList& TS, const QString& ZipFilename, bool nopaths, bool showmessagewhendone) {
    return ZipNamedFiles(TS, ZipEntryNames(TS, nopaths), ZipFilename, showmessagewhendone);
}

bool ZipNamedFiles(const QStringList& sources, const QStringList& names, const QString& ZipFilename,
                   bool showmessagewhendone) {
    if (sources.size() != names.size() || ZipFilename.isEmpty()) return false;
    const QString target = slashed(ZipFilename);
    const QString partial = target + ".part";
    const QByteArray partialPath = partial.toLocal8Bit();
    std::remove(partialPath.constData());

    int error = 0;
    zip_t* archive = zip_open(partialPath.constData(), ZIP_CREATE | ZIP_TRUNCATE, &error);
    if (!archive) {
        PrintRunLog("ZipFiles: can not create %s (libzip error %d)\n", partialPath.constData(), error);
        SSetTextAt3(0, "");
        return false;
    }

    const QString older = QFileInfo(target).canonicalFilePath();
    CloseProgress progress;
    progress.total = int(sources.size());
    bool cancelled = false;
    for (int i = 0; i < sources.size(); ++i) {
        if (ModelToolCancelled()) {
            cancelled = true;
            break;
        }
        const QString source = slashed(sources[i]);
        if (!QFileInfo(source).isFile()) continue;
        // A catalogue swept up whole may hold the older archive itself: it does not go into the new one.
        if (!older.isEmpty() && QFileInfo(source).canonicalFilePath() == older) continue;
        if (i % 10 == 0) ReportModelToolProgress(progressText(i + 1, progress.total), 0, 1000);
        const QByteArray name = names[i].toUtf8();
        zip_source_t* data = zip_source_file(archive, source.toLocal8Bit().constData(), 0, -1);
        if (!data) {
            PrintRunLog("ZipFiles: can not read %s\n", source.toUtf8().constData());
            continue;
        }
        const zip_int64_t index = zip_file_add(archive, name.constData(), data, ZIP_FL_ENC_UTF_8);
        if (index < 0) {
            // A name already taken (the same file listed twice, or two bare names alike): the first stays.
            PrintRunLog("ZipFiles: %s not added: %s\n", name.constData(), zip_strerror(archive));
            zip_source_free(data);
            continue;
        }
        // libzip's own default is level 9: on a model's text and pictures it is 2.5 times
        // slower than zlib's usual 6 and the archive comes out no smaller.
        zip_set_file_compression(archive, zip_uint64_t(index), ZIP_CM_DEFLATE, 6);
        ++progress.added;
    }

    bool written = false;
    if (cancelled || progress.added == 0) {
        if (progress.added == 0 && !cancelled) PrintRunLog("ZipFiles: no file of the list exists\n");
        zip_discard(archive);
    } else {
        zip_register_progress_callback_with_state(archive, 0.005, onCloseProgress, nullptr, &progress);
        zip_register_cancel_callback_with_state(archive, onCloseCancel, nullptr, nullptr);
        if (zip_close(archive) == 0) {
            written = std::rename(partialPath.constData(), target.toLocal8Bit().constData()) == 0;
            if (!written) PrintRunLog("ZipFiles: can not rename %s\n", partialPath.constData());
        } else {
            PrintRunLog("ZipFiles: %s not written: %s\n", target.toUtf8().constData(), zip_strerror(archive));
            zip_discard(archive);
        }
    }
    if (!written) std::remove(partialPath.constData());
    SSetTextAt3(0, "");
    if (written && showmessagewhendone) MyShowMessage(target + "\nCreated");
    return written;
}
