// The drawing frame (X east, Y up, Z south) and the camera's matrices in it.
// Vertices reach OpenGL relative to an origin kept in double and the view is
// built around the eye, so a float only ever holds a short distance.
#pragma once

#include <QMatrix4x4>

#include "scene/engine/CameraMath.h"

namespace render {

// Engine axes (east, north, up) to drawing axes: (x, y, z) -> (x, z, -y).
inline void toDrawing(const double in[3], double out[3]) {
    const double x = in[0], y = in[1], z = in[2];
    out[0] = x;
    out[1] = z;
    out[2] = -y;
}

struct ViewMatrices {
    double eye[3] = {0, 0, 0};  // engine frame
    QMatrix4x4 rotation;        // drawing frame about the eye: rows right, up, -forward
    QMatrix4x4 projection;
    float nearPlane = 0.1f;
    float farPlane = 1000.0f;
};

// Near and far planes that hold the box (Xmin,Xmax,Ymin,Ymax,Zmin,Zmax,
// engine frame) seen from the frame's eye; null for an empty scene.
void clipPlanes(const engine::ViewFrame& frame, const double* minMax, float& nearPlane, float& farPlane);

// The projection is the one of engine::screenRay for a surface of
// width x height pixels, so a drawn point lands on the pixel that picks it.
ViewMatrices viewMatrices(const engine::ViewFrame& frame, int width, int height, const double* minMax);

// Model-view matrix of vertices given in the drawing frame relative to
// origin (engine frame): the shift origin - eye is taken in double.
QMatrix4x4 modelViewAt(const ViewMatrices& view, const double origin[3]);

}  // namespace render
