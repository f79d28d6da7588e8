#include "DrawingFrame.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace render {

namespace {

constexpr double kDegToRad = 3.14159265358979323846 / 180.0;
// Depth range kept within what a 24-bit depth buffer separates well.
constexpr double kDepthRatio = 1.0 / 20000.0;
constexpr double kEmptySceneFar = 1000.0;

}  // namespace

void clipPlanes(const engine::ViewFrame& frame, const double* minMax, float& nearPlane, float& farPlane) {
    double nearest = 0, farthest = kEmptySceneFar;
    if (minMax) {
        nearest = std::numeric_limits<double>::infinity();
        farthest = -std::numeric_limits<double>::infinity();
        for (int corner = 0; corner < 8; ++corner) {
            double depth = 0;
            for (int axis = 0; axis < 3; ++axis) {
                const double c = minMax[2 * axis + ((corner >> axis) & 1)];
                depth += (c - frame.eye[axis]) * frame.forward[axis];
            }
            nearest = std::min(nearest, depth);
            farthest = std::max(farthest, depth);
        }
    }
    const double far = std::max(1.0, farthest * 1.02 + 0.5);
    const double near = std::max({nearest * 0.98, far * kDepthRatio, 1e-3});
    nearPlane = float(near);
    farPlane = float(std::max(far, near + 1.0));
}

ViewMatrices viewMatrices(const engine::ViewFrame& frame, int width, int height, const double* minMax) {
    ViewMatrices view;
    for (int i = 0; i < 3; ++i) view.eye[i] = frame.eye[i];
    double right[3], up[3], forward[3];
    toDrawing(frame.right, right);
    toDrawing(frame.up, up);
    toDrawing(frame.forward, forward);
    view.rotation = QMatrix4x4(float(right[0]), float(right[1]), float(right[2]), 0,        //
                               float(up[0]), float(up[1]), float(up[2]), 0,                 //
                               float(-forward[0]), float(-forward[1]), float(-forward[2]), 0,  //
                               0, 0, 0, 1);
    clipPlanes(frame, minMax, view.nearPlane, view.farPlane);
    const double aspect = height > 0 ? double(width) / double(height) : 1.0;
    const double f = 1.0 / std::tan(std::clamp(frame.fieldOfView, 1.0, 170.0) * 0.5 * kDegToRad);
    const double n = view.nearPlane, fa = view.farPlane;
    view.projection = QMatrix4x4(float(f / aspect), 0, 0, 0,                                   //
                                 0, float(f), 0, 0,                                            //
                                 0, 0, float((fa + n) / (n - fa)), float(2 * fa * n / (n - fa)),  //
                                 0, 0, -1, 0);
    return view;
}

QMatrix4x4 modelViewAt(const ViewMatrices& view, const double origin[3]) {
    const double shift[3] = {origin[0] - view.eye[0], origin[1] - view.eye[1], origin[2] - view.eye[2]};
    double drawn[3];
    toDrawing(shift, drawn);
    QMatrix4x4 translation;
    translation.translate(float(drawn[0]), float(drawn[1]), float(drawn[2]));
    return view.rotation * translation;
}

}  // namespace render
