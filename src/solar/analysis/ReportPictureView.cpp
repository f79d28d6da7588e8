#include "ReportPictureView.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "geo/Frames.h"
#include "scene/engine_interface.h"
#include "solar/design/PanelStore.h"

namespace {

constexpr double kLookDown = 50;     // degrees below the horizon
constexpr double kMargin = 4;        // m around the panels
constexpr double kClosest = 15;      // m: a single panel still shows its roof
constexpr double kDefaultFov = 45;   // degrees, when the engine gives none

}  // namespace

ReportCameraView LookAtPanelsForPicture() {
    ReportCameraView before;
    const PanelStore& store = panelStore();
    if (store.NumPanelsCreated <= 0) return before;
    double low[3], high[3];
    std::fill(low, low + 3, std::numeric_limits<double>::max());
    std::fill(high, high + 3, std::numeric_limits<double>::lowest());
    for (int i = 0; i < store.NumPanelsCreated; ++i)
        for (const TGIS_Point3D& c : store.panels[static_cast<std::size_t>(i)].Corners) {
            const double p[3] = {c.X - OC(0), c.Y - OC(1), c.Z - OC(2)};
            for (int k = 0; k < 3; ++k) {
                low[k] = std::min(low[k], p[k]);
                high[k] = std::max(high[k], p[k]);
            }
        }
    At3d_GetCameraAngles(&before.angles[0], &before.angles[1], &before.angles[2]);
    At3d_GetCameraViewPoint(&before.viewPoint[0], &before.viewPoint[1], &before.viewPoint[2]);
    At3d_GetCameraDistance(&before.distance);
    before.valid = true;

    double fov = kDefaultFov;
    if (!At3d_GetCameraFieldOfView(&fov) || !(fov > 1 && fov < 170)) fov = kDefaultFov;
    const double radius =
        0.5 * std::hypot(high[0] - low[0], high[1] - low[1], high[2] - low[2]) + kMargin;
    const double distance = std::max(kClosest, radius / std::tan(fov * 0.5 * M_PI / 180));
    At3d_RotateCamera(0, kLookDown, 0, 0);
    At3d_SetCameraViewPoint((low[0] + high[0]) / 2, (low[1] + high[1]) / 2, (low[2] + high[2]) / 2);
    At3d_SetCameraDistance(distance);
    return before;
}

void RestoreCameraView(const ReportCameraView& view) {
    if (!view.valid) return;
    At3d_RotateCamera(0, view.angles[0], view.angles[1], view.angles[2]);
    At3d_SetCameraViewPoint(view.viewPoint[0], view.viewPoint[1], view.viewPoint[2]);
    At3d_SetCameraDistance(view.distance);
    At3d_RenderOpenGLScene();
}
