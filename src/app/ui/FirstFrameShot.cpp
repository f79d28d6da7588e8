#include "FirstFrameShot.h"

#include <QCoreApplication>
#include <QImage>
#include <QSaveFile>
#include <QTimer>
#include <cstdio>
#include <memory>

#include "TFormAt3.h"
#include "ViewPanel.h"
#include "app/model/ModelPaths.h"
#include "app/model/ModelSession.h"
#include "app/services/RunLog.h"
#include "app/session/StartupState.h"
#include "scene/EngineSession.h"
#include "scene/render/ViewPanelGL.h"

namespace {

void finish(int code) {
    std::fflush(stdout);
    QCoreApplication::exit(code);
}

bool writePicture(const QImage& image, const QString& path) {
    QSaveFile file(path);
    return !image.isNull() && file.open(QIODevice::WriteOnly) && image.save(&file, "PNG") && file.commit();
}

}  // namespace

bool FirstFrameShotAsked() {
    const StartupState& state = startupState();
    for (int i = 0; i < state.NGlobalARGS; ++i)
        if (state.GlobalArgs[i] == FIRST_FRAME_SHOT_OPTION) return true;
    return false;
}

QString FirstFramePath() {
    const ModelSession& model = modelSession();
    return QString::fromStdString(model.SCREENSHOTSFOLDER + BaseNameOf(model.GlobalModelFileName) + "_first_frame.png");
}

void SaveFirstFrameAndQuit(TFormAt3& form, int timeoutMs) {
    if (!engineSession().fileLoaded) {
        std::fprintf(stderr, "error: no model open, no frame to save\n");
        QTimer::singleShot(0, [] { finish(1); });
        return;
    }
    ViewPanelGL* surface = form.viewPanel()->surface();
    auto done = std::make_shared<bool>(false);
    const auto save = [surface, done] {
        if (*done) return;
        *done = true;
        const QString path = FirstFramePath();
        if (!writePicture(surface->grabFramebuffer(), path)) {
            std::fprintf(stderr, "error: the first frame could not be written to %s\n", path.toLocal8Bit().constData());
            finish(1);
            return;
        }
        PrintRunLog("First frame %s\n", path.toLocal8Bit().constData());
        std::printf("%s\n", path.toLocal8Bit().constData());
        finish(0);
    };
    if (surface->framesPainted() > 0)
        QTimer::singleShot(0, surface, save);
    else
        QObject::connect(surface, &QOpenGLWidget::frameSwapped, surface, save, Qt::QueuedConnection);
    QTimer::singleShot(timeoutMs, surface, [done] {
        if (*done) return;
        *done = true;
        std::fprintf(stderr, "error: no frame was drawn within the time allowed\n");
        finish(1);
    });
}
