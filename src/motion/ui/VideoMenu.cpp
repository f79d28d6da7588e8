#include "VideoMenu.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>
#include <QPixmap>
#include <QPointer>
#include <QProgressDialog>
#include <QScreen>
#include <QShortcut>
#include <QWindow>
#include <algorithm>

#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"
#include "motion/VideoOutput.h"

namespace {

// Esc on the progress dialog does what it does on the form: it ends the
// video at the frame reached, which is still encoded. Only Cancel abandons it.
class EscEndsVideo : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            dispatchState().keep_goingAVI = false;
            return true;
        }
        return QObject::eventFilter(watched, event);
    }
};

void runVideoWithProgress(QMainWindow* form) {
    const QString caption = form->windowTitle();
    std::unique_ptr<QProgressDialog> progress;
    videoHooks().progress = [&](int frame, int frames) {
        if (!progress) {
            // Made at the first frame, after the questions.
            progress = std::make_unique<QProgressDialog>("", "Cancel", 0, frames, form);
            progress->setObjectName("VideoProgress");
            progress->setWindowTitle("Create video");
            progress->setWindowModality(Qt::WindowModal);
            progress->setMinimumDuration(0);
            progress->installEventFilter(new EscEndsVideo(progress.get()));
            // The dialog's own Esc shortcut would cancel it.
            for (QShortcut* shortcut : progress->findChildren<QShortcut*>()) {
                if (shortcut->key() != QKeySequence(QKeySequence::Cancel)) continue;
                QObject::disconnect(shortcut, nullptr, progress.get(), nullptr);
                QObject::connect(shortcut, &QShortcut::activated, [] { dispatchState().keep_goingAVI = false; });
            }
        }
        progress->setLabelText(QString("Frame %1 of %2 (Esc ends the video here)").arg(frame).arg(frames));
        progress->setValue(std::min(frame, frames));
        QCoreApplication::processEvents();
    };
    videoHooks().cancelled = [&progress] { return progress && progress->wasCanceled(); };
    const VideoResult result = Createvideo1Click();
    resetVideoHooks();
    progress.reset();
    form->setWindowTitle(caption);
    if (result.made) SSetTextAt3(0, result.output);
}

}  // namespace

void AddVideoMenuItems(QMainWindow* form, QMenu* menu) {
    QAction* video = menu->addAction("Create video");
    video->setObjectName("Createvideo1");
    QPointer<QMainWindow> window(form);
    QObject::connect(video, &QAction::triggered, form, [window] {
        if (window) runVideoWithProgress(window);
    });
    QAction* panorama = menu->addAction("Create panorama");
    panorama->setObjectName("Createpanorama1");
    QObject::connect(panorama, &QAction::triggered, form, [] {
        const QString made = Createpanorama1Click();
        if (!made.isEmpty()) SSetTextAt3(0, made);
    });
}

std::unique_ptr<QImage> GetBmp(QWidget* panel) {
    if (!panel) return nullptr;
    const int width = panel->width() / 4 * 4, height = panel->height() / 4 * 4;
    const QWidget* top = panel->window();
    QScreen* screen = top && top->windowHandle() ? top->windowHandle()->screen() : QGuiApplication::primaryScreen();
    if (!screen || width <= 0 || height <= 0) return nullptr;
    // The screen itself, not the widget: whatever lies above the panel is grabbed too.
    const QPoint origin = panel->mapToGlobal(QPoint(0, 0)) - screen->geometry().topLeft();
    const QPixmap grabbed = screen->grabWindow(0, origin.x(), origin.y(), width, height);
    if (grabbed.isNull()) return nullptr;
    return std::make_unique<QImage>(grabbed.toImage());
}
