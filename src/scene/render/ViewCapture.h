// The current view as a picture of any size, and its image file: rendered
// into an offscreen framebuffer, with the overlays painted over it.
#pragma once

#include <QImage>
#include <QSurfaceFormat>
#include <QString>

#include "OverlayPainter.h"
#include "SceneRenderer.h"

namespace render {

// The 3.3 core format the renderer asks of every context.
QSurfaceFormat renderSurfaceFormat();

// Renders with renderer, whose context is current; a null image when the
// framebuffer can't be made at that size.
QImage renderViewImage(SceneRenderer& renderer, DecalPictures& decals, int width, int height);

// The same in a context of its own (no window needed, only a running
// QGuiApplication); its objects on the card are freed before it returns.
QImage renderViewImageOffscreen(int width, int height);

// Writes the picture as JPEG (".jpg", ".jpeg"), PNG or BMP by the path's
// extension, through a temporary file renamed into place. False (logged)
// for another extension or a failed write.
bool writeViewImage(const QImage& image, const QString& path);

// Renderer hooks for a host without a window: nothing to draw on, but
// At3d_Save_Thumbnail_Image renders offscreen.
void attachOffscreenRenderer();

}  // namespace render
