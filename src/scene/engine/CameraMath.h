// Camera geometry shared by the camera calls, picking and the renderer:
// the frame of the active camera, pixel rays, projection and scene fitting.
// Local frame: X east, Y north, Z up.
#pragma once

#include "EngineState.h"

namespace engine {

// What the active camera sees: eye position and an orthonormal basis
// (right = forward x up), with the vertical field of view in degrees.
struct ViewFrame {
    double eye[3];
    double forward[3];
    double up[3];
    double right[3];
    double fieldOfView;
};

// Frame of the default orbit camera: a = angles[2], p = angles[0],
// forward = (sin a cos p, cos a cos p, -sin p), eye = viewPoint - distance *
// forward, up = (sin a sin p, cos a sin p, cos p) before the roll angles[1],
// which turns up towards right.
ViewFrame orbitViewFrame(const OrbitCamera& camera);
// Frame of a roaming camera: looks from eye to center; upRotation (degrees)
// rolls about the view axis, turning up towards right as angles[1] does.
ViewFrame roamingViewFrame(const RoamingCamera& camera);
// Active camera: the default orbit camera, or the active roaming camera.
ViewFrame currentViewFrame(const EngineState&);

// Ray through the centre of pixel (x, y), y from the top of the surface:
// perspective with the vertical field of view and aspect width/height.
// direction is unit length. False when the surface has no size.
bool pixelRay(const EngineState&, int x, int y, double origin[3], double direction[3]);
// Same for sub-pixel positions (x, y in pixels, 0,0 the top-left corner).
bool screenRay(const EngineState&, double x, double y, double origin[3], double direction[3]);

// Pixel holding the projection of point; false when the point is not in
// front of the eye or the surface has no size. The pixel may lie outside the surface.
bool projectToPixel(const EngineState&, const double point[3], int& x, int& y);
// Same with sub-pixel precision (pixel centres at +0.5).
bool projectToScreen(const EngineState&, const double point[3], double& x, double& y);

// Home view from the bounds of all layers: homeViewPoint = centre,
// initialDistance = distance = radius / sin(fov/2) * 1.1 (at least 1),
// view point = home, stored pan cleared. Nothing changes for an empty scene.
void fitCameraToScene(EngineState&);
// Xmin,Xmax,Ymin,Ymax,Zmin,Zmax over the 3D and line vertices of all layers;
// false when there is none.
bool sceneBounds(const EngineState&, double minMax[6]);

}  // namespace engine
