// The drawing surface inside ViewPanel: an OpenGL 3.3 core widget that
// draws the engine's state and attaches itself as the engine's renderer, so
// At3d_RenderOpenGLScene repaints it and At3d_Save_Thumbnail_Image renders
// the current view at any size. It takes the surface's size for the engine
// (At3d_Size), so picking and drawing see the same pixels. While
// LIBFLAG_NO_DRAW is set it keeps showing the last frame.
#pragma once

#include <QImage>
#include <QOpenGLWidget>
#include <QTimer>

#include "OverlayPainter.h"
#include "SceneRenderer.h"

class ViewPanelGL : public QOpenGLWidget {
    Q_OBJECT

public:
    explicit ViewPanelGL(QWidget* parent = nullptr);
    ~ViewPanelGL() override;

    // Mouse presses reach At3d_Mouse_Down (left 1, right 2) only while this
    // is on: the window's dispatcher decides. Every press also goes on to
    // the parent as usual.
    void setEngineMouseInput(bool on) { engineMouseInput_ = on; }
    bool engineMouseInput() const { return engineMouseInput_; }

    // The current view at width x height pixels with its overlays; rendered
    // offscreen when the widget has no context yet.
    QImage renderView(int width, int height);

    int framesPainted() const { return framesPainted_; }

protected:
    void initializeGL() override;
    void resizeGL(int width, int height) override;
    void paintGL() override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    static void renderHook(void* context);
    static int thumbnailHook(void* context, const char* path, int width, int height);
    void releaseRenderer();

    render::SceneRenderer renderer_{true};
    render::DecalPictures decals_;
    QTimer strobeTimer_;
    bool engineMouseInput_ = false;
    int framesPainted_ = 0;
};
