#include "FolderWatch.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <QFile>
#include <QMetaObject>
#include <cerrno>
#include <cstring>
#include <map>
#include <vector>

#include "FolderWatchChange.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/RunLog.h"
#include "app/session/StartupState.h"

namespace {

constexpr std::size_t BUFFER_SIZE = 65536;
constexpr uint32_t WATCHED = IN_CREATE | IN_DELETE | IN_CLOSE_WRITE | IN_MOVED_FROM | IN_MOVED_TO;

std::unique_ptr<TFolderWatchObjectEx>& theWatch() {
    static std::unique_ptr<TFolderWatchObjectEx> watch;
    return watch;
}

}  // namespace

TFolderWatchObjectEx::TFolderWatchObjectEx(OnChange onChange) : onChange_(std::move(onChange)) {}

TFolderWatchObjectEx::~TFolderWatchObjectEx() { stop(); }

void TFolderWatchObjectEx::stop() {
    if (worker_.joinable()) {
        const std::uint64_t one = 1;
        if (::write(wake_, &one, sizeof one) < 0) PrintRunLog("Folder watch: cannot wake its worker\n");
        worker_.join();
    }
    if (notify_ >= 0) ::close(notify_);
    if (wake_ >= 0) ::close(wake_);
    notify_ = wake_ = -1;
}

bool TFolderWatchObjectEx::SetPathToMonitor(const QString& path) {
    stop();
    if (path.isEmpty()) {
        PrintRunLog("TDirectoryThreadEx::Execute: empty path\n");
        return false;
    }
    notify_ = inotify_init1(IN_CLOEXEC);
    wake_ = eventfd(0, EFD_CLOEXEC);
    if (notify_ < 0 || wake_ < 0 || inotify_add_watch(notify_, QFile::encodeName(path).constData(), WATCHED) < 0) {
        PrintRunLog("TDirectoryThreadEx::Execute: cannot watch %s: %s\n", QFile::encodeName(path).constData(),
                    std::strerror(errno));
        stop();
        return false;
    }
    worker_ = std::thread([this, notify = notify_, wake = wake_] { run(notify, wake); });
    return true;
}

// The worker: nothing of the window is touched here, each change is queued to the main thread.
void TFolderWatchObjectEx::run(int notify, int wake) {
    std::vector<char> buffer(BUFFER_SIZE);
    // A new file is reported as added once its writer closes it, so that its
    // content is there; a file is reported modified when a writer closes it.
    std::map<std::string, bool> beingCreated;
    const auto post = [this](int action, const std::string& name) {
        QMetaObject::invokeMethod(
            this, [this, action, name = QFile::decodeName(name.c_str())] { onChange_(action, name); },
            Qt::QueuedConnection);
    };
    for (;;) {
        pollfd waits[2] = {{notify, POLLIN, 0}, {wake, POLLIN, 0}};
        if (::poll(waits, 2, -1) < 0) {
            if (errno == EINTR) continue;
            break;
        }
        if (waits[1].revents) break;
        const ssize_t got = ::read(notify, buffer.data(), buffer.size());
        if (got <= 0) {
            if (got < 0 && errno == EINTR) continue;
            break;
        }
        for (ssize_t at = 0; at < got;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
            const std::string name = event->len ? event->name : "";
            if (event->mask & IN_CREATE) {
                if (event->mask & IN_ISDIR)
                    post(FOLDER_ADDED, name);
                else
                    beingCreated[name] = true;
            } else if (event->mask & IN_CLOSE_WRITE) {
                post(beingCreated.erase(name) ? FOLDER_ADDED : FOLDER_MODIFIED, name);
            } else if (event->mask & IN_DELETE) {
                beingCreated.erase(name);
                post(FOLDER_REMOVED, name);
            } else if (event->mask & IN_MOVED_FROM) {
                post(FOLDER_RENAMED_OLD, name);
            } else if (event->mask & IN_MOVED_TO) {
                post(FOLDER_RENAMED_NEW, name);
            }
        }
    }
}

TFolderWatchObjectEx* FolderWatchObjectEx() { return theWatch().get(); }

void AddWatches() {
    if (theWatch()) {
        MyShowMessage("Watches are already in uses");
        return;
    }
    theWatch() = std::make_unique<TFolderWatchObjectEx>(FolderWatchOnChangeEx);
    theWatch()->SetPathToMonitor(QString::fromStdString(startupState().MONITOREDFOLDER));
}

void RemoveWatches() { theWatch().reset(); }
