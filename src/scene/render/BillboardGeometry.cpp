#include "BillboardGeometry.h"

#include <cmath>

namespace render {

namespace {

constexpr double kDegToRad = 3.14159265358979323846 / 180.0;

}  // namespace

bool billboardQuad(const BILLBOARD_DATA& data, const engine::ViewFrame& view, BillboardQuad& quad) {
    if (data.imageWidth <= 0 || data.imageHeight <= 0 || !(data.height > 0)) return false;
    const double height = data.height;
    const double width = height * double(data.imageWidth) / double(data.imageHeight);
    double right[3], up[3];
    if (data.staticFlag) {
        const double a = data.rotationStatic[1] * kDegToRad;
        right[0] = std::cos(a);
        right[1] = -std::sin(a);
        right[2] = 0;
        up[0] = 0;
        up[1] = 0;
        up[2] = 1;
    } else {
        for (int i = 0; i < 3; ++i) {
            right[i] = view.right[i];
            up[i] = view.up[i];
        }
    }
    // Offsets of the bottom-left corner from the pivot, along right and up.
    double left = -0.5 * width, bottom = 0;
    if (data.pivotTypeFlag == 0) bottom = -0.5 * height;
    if (data.pivotTypeFlag == 1) left = 0;
    const double along[4][2] = {{left, bottom}, {left + width, bottom}, {left + width, bottom + height}, {left, bottom + height}};
    for (int c = 0; c < 4; ++c)
        for (int i = 0; i < 3; ++i) quad.corners[c][i] = data.pivot[i] + along[c][0] * right[i] + along[c][1] * up[i];
    return true;
}

}  // namespace render
