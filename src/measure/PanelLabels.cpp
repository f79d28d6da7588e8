#include "PanelLabels.h"

#include "BillboardState.h"
#include "Billboards.h"
#include "app/services/ToolkitColor.h"
#include "geo/Frames.h"
#include "solar/design/ConstructionChain.h"

namespace {

// The picture stands this far above the panel's centre.
constexpr double LABEL_PIVOT_RISE = 0.25;

}  // namespace

void InstallPanelLabels() {
    panelLabelHooks().makeLabel = [](const TGIS_Point3D& center, const QString& text, int color) {
        const double position[3] = {center.X - OC(0), center.Y - OC(1), center.Z - OC(2)};
        const double pivot[3] = {position[0], position[1], position[2] + LABEL_PIVOT_RISE};
        float rgb[3];
        ToolkitColorToRgb(color, rgb);
        BillboardState& b = billboardState();
        b.ISPANEL = true;
        MakeBillboard(position, pivot, text, rgb, false, false);
        b.ISPANEL = false;
    };
}
