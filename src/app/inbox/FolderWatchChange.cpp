#include "FolderWatchChange.h"

#include <QFile>
#include <QFileInfo>
#include <cstdio>

#include "InboxState.h"
#include "app/services/RunLog.h"
#include "app/session/StartupState.h"
#include "geo/Frames.h"
#include "scene/engine_interface.h"

namespace {

// The same change is reported several times in a row.
constexpr auto REPEAT_WINDOW = std::chrono::milliseconds(100);
constexpr qint64 CENTER_LINE_LIMIT = 200;

const char* logText(int action) {
    switch (action) {
        case FOLDER_ADDED: return "%5d  Added: %s\n";
        case FOLDER_REMOVED: return "%5d  Removed: %s\n";
        case FOLDER_MODIFIED: return "%5d  Modified: %s\n";
        case FOLDER_RENAMED_OLD: return "%5d  Renamed (old name): %s\n";
        case FOLDER_RENAMED_NEW: return "%5d  Renamed (new name): %s\n";
        default: return nullptr;
    }
}

void centerViewOn(const QString& file) {
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly)) return;
    const QByteArray line = in.readLine(CENTER_LINE_LIMIT + 1);
    double x = 0, y = 0, z = 0;
    if (std::sscanf(line.constData(), "%lf%lf%lf", &x, &y, &z) != 3) return;
    At3d_SetCameraViewPoint(x - OC(0), y - OC(1), z - OC(2));
    At3d_RenderOpenGLScene();
}

}  // namespace

void FolderWatchOnChangeEx(int action, const QString& name) {
    InboxState& state = inboxState();
    const auto now = std::chrono::steady_clock::now();
    if (state.anyChange && now - state.lastChange < REPEAT_WINDOW) return;
    state.lastChange = now;
    state.anyChange = true;
    const QString folder = QString::fromStdString(startupState().MONITOREDFOLDER);
    const QString TheFile = folder + name;
    if (QFileInfo(TheFile).suffix().compare("tss", Qt::CaseInsensitive) == 0) return;
    if (const char* text = logText(action)) PrintRunLog(text, action, QFile::encodeName(name).constData());
    if (state.FOLDERMONITORINGBUSY) return;
    if (TheFile.compare(folder + "Center3DView.tmp", Qt::CaseInsensitive) != 0) return;
    state.FOLDERMONITORINGBUSY = true;
    centerViewOn(TheFile);
    state.FOLDERMONITORINGBUSY = false;
}
