// Takes the photographs: the open model drawn by the viewer's own renderer
// from a PhotoCamera, with the principal point and the radial terms of the
// catalogue's camera model applied, so that Ob_World2Pic of a world point
// lands where the renderer drew it. Needs a QGuiApplication (an X server).
#pragma once

#include <QImage>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <memory>

#include "PhotoCamera.h"
#include "scene/render/OverlayPainter.h"
#include "scene/render/SceneRenderer.h"

class PhotoRenderer {
public:
    PhotoRenderer();
    ~PhotoRenderer();
    // False when no OpenGL context can be had.
    bool open();
    // The picture of camera; origin is the map point of the engine's local
    // origin (OC). A null image when the frame can't be drawn.
    QImage take(const PhotoCamera& camera, const double origin[3]);

private:
    QOpenGLContext context_;
    QOffscreenSurface surface_;
    std::unique_ptr<render::SceneRenderer> renderer_;
    render::DecalPictures decals_;
};

// The lens terms of camera applied to an ideal picture drawn with margin
// pixels more on every side (the principal point at its centre shifted by
// the camera's): each picture pixel takes the ideal pixel that the
// catalogue's projection moves onto it. Exposed for the tests.
QImage applyLens(const QImage& ideal, const PhotoCamera& camera, int offsetX, int offsetY);
