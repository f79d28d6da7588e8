#include "ViewCapture.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QPainter>
#include <QSaveFile>

#include "RenderModes.h"
#include "scene/engine_interface.h"

namespace render {

namespace {

constexpr int kJpegQuality = 90;

int offscreenThumbnail(void*, const char* path, int width, int height) {
    const QImage image = renderViewImageOffscreen(width, height);
    return !image.isNull() && writeViewImage(image, QString::fromLocal8Bit(path)) ? 1 : 0;
}

}  // namespace

QSurfaceFormat renderSurfaceFormat() {
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setDepthBufferSize(24);
    return format;
}

QImage renderViewImage(SceneRenderer& renderer, DecalPictures& decals, int width, int height) {
    if (!renderer.initialized() || width <= 0 || height <= 0) return {};
    QOpenGLFramebufferObject target(width, height, QOpenGLFramebufferObject::Depth);
    if (!target.isValid() || !target.bind()) {
        engine::engineLog("renderer: no framebuffer of %d x %d pixels", width, height);
        return {};
    }
    engine::EngineState& state = engine::engineState();
    renderer.render(state, width, height, 1.0f, renderClockMilliseconds());
    QImage image = target.toImage().convertToFormat(QImage::Format_RGB32);
    target.release();
    QPainter painter(&image);
    paintOverlays(painter, image.size(), state, decals);
    painter.end();
    return image;
}

QImage renderViewImageOffscreen(int width, int height) {
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        engine::engineLog("renderer: no graphical application to render offscreen with");
        return {};
    }
    QOpenGLContext context;
    context.setFormat(renderSurfaceFormat());
    QOffscreenSurface surface;
    if (!context.create()) {
        engine::engineLog("renderer: no OpenGL context for offscreen rendering");
        return {};
    }
    surface.setFormat(context.format());
    surface.create();
    if (!surface.isValid() || !context.makeCurrent(&surface)) {
        engine::engineLog("renderer: the offscreen surface can't be drawn on");
        return {};
    }
    QImage image;
    {
        SceneRenderer renderer(false);
        DecalPictures decals;
        if (renderer.initialize()) image = renderViewImage(renderer, decals, width, height);
        renderer.release();
    }
    context.doneCurrent();
    return image;
}

bool writeViewImage(const QImage& image, const QString& path) {
    const QString suffix = QFileInfo(path).suffix().toLower();
    const char* format = suffix == "jpg" || suffix == "jpeg" ? "JPG" : suffix == "png" ? "PNG" : suffix == "bmp" ? "BMP" : nullptr;
    if (!format || image.isNull()) {
        engine::engineLog("renderer: can't write a view picture as %s", path.toLocal8Bit().constData());
        return false;
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !image.save(&file, format, format[0] == 'J' ? kJpegQuality : -1) ||
        !file.commit()) {
        engine::engineLog("renderer: writing %s failed", path.toLocal8Bit().constData());
        return false;
    }
    return true;
}

void attachOffscreenRenderer() {
    const At3d_RendererHooks hooks{nullptr, nullptr, offscreenThumbnail};
    At3d_Set_Renderer(&hooks);
}

}  // namespace render
