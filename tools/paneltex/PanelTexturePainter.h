#pragma once
// Paints a solar module's face as seen from above: frame, cells, busbars.

#include <QColor>
#include <QImage>

namespace paneltex {

struct PanelLook {
    QColor frame;     // aluminium or black anodised frame
    QColor backsheet; // shows in the gaps between cells
    QColor cellDark;  // cell colour at its edge
    QColor cellLight; // cell colour at its middle
    QColor busbar;    // the thin conductors across each cell
};

// The all-black module ("PNEG.JPG") and the usual blue one with a silver frame ("PDEF.JPG").
PanelLook darkLook();
PanelLook defaultLook();

// A portrait module of 6 x 10 cells, kTextureWidth x kTextureHeight pixels.
constexpr int kTextureWidth = 360;
constexpr int kTextureHeight = 600;
QImage paintPanelTexture(const PanelLook& look);

} // namespace paneltex
