#include "PhotoRenderer.h"

#include <QOpenGLFunctions>
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "scene/engine_interface.h"
#include "scene/render/ViewCapture.h"

namespace {

constexpr const char* kCameraName = "Photograph";
constexpr double kRadToDeg = 180.0 / 3.14159265358979323846;
// Extra pixels drawn around a picture whose lens terms pull pixels in from outside.
constexpr int kLensMargin = 16;

QRgb bilinear(const QImage& image, double x, double y) {
    x = std::clamp(x - 0.5, 0.0, image.width() - 1.0);
    y = std::clamp(y - 0.5, 0.0, image.height() - 1.0);
    const int x0 = std::min(int(x), image.width() - 2), y0 = std::min(int(y), image.height() - 2);
    const double fx = x - x0, fy = y - y0;
    const QRgb a = image.pixel(x0, y0), b = image.pixel(x0 + 1, y0), c = image.pixel(x0, y0 + 1),
               d = image.pixel(x0 + 1, y0 + 1);
    auto mix = [&](int (*channel)(QRgb)) {
        const double top = channel(a) * (1 - fx) + channel(b) * fx;
        const double bottom = channel(c) * (1 - fx) + channel(d) * fx;
        return int(std::lround(top * (1 - fy) + bottom * fy));
    };
    return qRgb(mix(qRed), mix(qGreen), mix(qBlue));
}

}  // namespace

PhotoRenderer::PhotoRenderer() = default;

PhotoRenderer::~PhotoRenderer() {
    if (renderer_ && context_.makeCurrent(&surface_)) {
        renderer_->release();
        renderer_.reset();
        context_.doneCurrent();
    }
}

bool PhotoRenderer::open() {
    context_.setFormat(render::renderSurfaceFormat());
    if (!context_.create()) return false;
    surface_.setFormat(context_.format());
    surface_.create();
    if (!surface_.isValid() || !context_.makeCurrent(&surface_)) return false;
    renderer_ = std::make_unique<render::SceneRenderer>(false);
    return renderer_->initialize();
}

QImage PhotoRenderer::take(const PhotoCamera& camera, const double origin[3]) {
    if (!renderer_ || !context_.makeCurrent(&surface_)) return {};
    const bool lens = camera.k[0] != 0 || camera.k[1] != 0 || camera.k[2] != 0;
    const int margin = lens ? kLensMargin : 0;
    // The renderer keeps the principal point at the frame's centre: draw a
    // frame centred on it, large enough to hold the picture, and cut.
    const int frameWidth = camera.width + 2 * std::abs(camera.principalX) + 2 * margin;
    const int frameHeight = camera.height + 2 * std::abs(camera.principalY) + 2 * margin;
    const int offsetX = frameWidth / 2 - (camera.width / 2 + camera.principalX);
    const int offsetY = frameHeight / 2 - (camera.height / 2 - camera.principalY);

    double eye[3], center[3];
    for (int i = 0; i < 3; ++i) {
        eye[i] = camera.eye[i] - origin[i];
        center[i] = eye[i] + camera.forward[i];
    }
    const double upRotation = 0;
    const double fieldOfView = 2 * std::atan(frameHeight / 2.0 / camera.focalPixels()) * kRadToDeg;
    At3d_Add_Roaming_Camera(kCameraName);
    At3d_Set_Roaming_Data(kCameraName, eye, center, &upRotation, &fieldOfView);
    At3d_Switch_OGL_Camera(kCameraName);
    At3d_Size(frameWidth, frameHeight);
    const QImage frame = render::renderViewImage(*renderer_, decals_, frameWidth, frameHeight);
    if (frame.isNull()) return {};
    if (!lens) return frame.copy(offsetX, offsetY, camera.width, camera.height);
    return applyLens(frame, camera, offsetX, offsetY);
}

QImage applyLens(const QImage& ideal, const PhotoCamera& camera, int offsetX, int offsetY) {
    QImage picture(camera.width, camera.height, QImage::Format_RGB32);
    const double scale = camera.scale();
    const double x0 = camera.width / 2 + camera.principalX, y0 = -(camera.height / 2) + camera.principalY;
    // The frame within which the catalogue's projection applies the lens terms.
    const double marginX = 0.01 * camera.width, marginY = 0.01 * camera.height;
    for (int row = 0; row < camera.height; ++row) {
        QRgb* line = reinterpret_cast<QRgb*>(picture.scanLine(row));
        for (int column = 0; column < camera.width; ++column) {
            const double px = column + 0.5, py = -(row + 0.5);
            const double xd = (px - x0) / scale, yd = (py - y0) / scale;
            // The undistorted point whose distorted image is this pixel, by fixed-point steps.
            double xi = xd, yi = yd;
            for (int step = 0; step < 8; ++step) {
                const double r2 = xi * xi + yi * yi;
                const double distort = camera.k[0] * r2 + camera.k[1] * r2 * r2 + camera.k[2] * r2 * r2 * r2;
                xi = xd / (1 + distort);
                yi = yd / (1 + distort);
            }
            double sx = xi * scale + x0, sy = yi * scale + y0;
            // Near the edge the projection leaves points where they are.
            if (sx < marginX || sx > camera.width - marginX || sy < -camera.height + marginY || sy > -marginY) {
                sx = px;
                sy = py;
            }
            line[column] = bilinear(ideal, sx + offsetX, -sy + offsetY);
        }
    }
    return picture;
}
