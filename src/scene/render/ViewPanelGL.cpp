#include "ViewPanelGL.h"

#include <QMouseEvent>
#include <QOpenGLContext>
#include <QPainter>

#include "RenderModes.h"
#include "ViewCapture.h"
#include "scene/engine_interface.h"

namespace {

constexpr int kStrobeRepaintMs = 50;

// The panel whose hooks the engine holds; another panel or the offscreen
// hooks may have replaced them since.
ViewPanelGL*& attachedPanel() {
    static ViewPanelGL* panel = nullptr;
    return panel;
}

}  // namespace

ViewPanelGL::ViewPanelGL(QWidget* parent) : QOpenGLWidget(parent) {
    setFormat(render::renderSurfaceFormat());
    // Qt would clear the frame before each paint; under no-draw the last one must stay.
    setUpdateBehavior(QOpenGLWidget::PartialUpdate);
    strobeTimer_.setInterval(kStrobeRepaintMs);
    connect(&strobeTimer_, &QTimer::timeout, this, qOverload<>(&QWidget::update));
    const At3d_RendererHooks hooks{this, &ViewPanelGL::renderHook, &ViewPanelGL::thumbnailHook};
    At3d_Set_Renderer(&hooks);
    attachedPanel() = this;
}

ViewPanelGL::~ViewPanelGL() {
    if (attachedPanel() == this) {
        render::attachOffscreenRenderer();
        attachedPanel() = nullptr;
    }
    releaseRenderer();
}

void ViewPanelGL::releaseRenderer() {
    if (!renderer_.initialized() || !context()) return;
    makeCurrent();
    renderer_.release();
    doneCurrent();
}

void ViewPanelGL::initializeGL() {
    // A widget moved to another window gets a new context: the old objects go with the old one.
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, &ViewPanelGL::releaseRenderer,
            Qt::UniqueConnection);
    renderer_.initialize();
}

void ViewPanelGL::resizeGL(int, int) { At3d_Size(width(), height()); }

void ViewPanelGL::paintGL() {
    engine::EngineState& state = engine::engineState();
    // Under no-draw the last frame stays, whatever asks for a paint.
    if (state.flags[LIBFLAG_NO_DRAW] != 0) return;
    const qreal ratio = devicePixelRatioF();
    renderer_.render(state, int(width() * ratio), int(height() * ratio), float(ratio),
                     render::renderClockMilliseconds());
    QPainter painter(this);
    render::paintOverlays(painter, size(), state, decals_);
    painter.end();
    ++framesPainted_;
    if (render::anyStrobingSphere(state)) {
        if (!strobeTimer_.isActive()) strobeTimer_.start();
    } else {
        strobeTimer_.stop();
    }
}

void ViewPanelGL::mousePressEvent(QMouseEvent* event) {
    if (engineMouseInput_) {
        const int button = event->button() == Qt::LeftButton ? 1 : event->button() == Qt::RightButton ? 2 : 0;
        const QPoint at = event->position().toPoint();
        if (button && At3d_Mouse_Down(at.x(), at.y(), button)) update();
    }
    QOpenGLWidget::mousePressEvent(event);
}

QImage ViewPanelGL::renderView(int width, int height) {
    if (!renderer_.initialized() || !context() || !context()->isValid())
        return render::renderViewImageOffscreen(width, height);
    makeCurrent();
    QImage image = render::renderViewImage(renderer_, decals_, width, height);
    doneCurrent();
    return image;
}

// "Draws now": a shown panel paints before the call returns.
void ViewPanelGL::renderHook(void* context) {
    auto* panel = static_cast<ViewPanelGL*>(context);
    if (panel->isVisible()) panel->repaint();
}

int ViewPanelGL::thumbnailHook(void* context, const char* path, int width, int height) {
    const QImage image = static_cast<ViewPanelGL*>(context)->renderView(width, height);
    return !image.isNull() && render::writeViewImage(image, QString::fromLocal8Bit(path)) ? 1 : 0;
}
