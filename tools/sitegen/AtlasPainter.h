#pragma once
// Paints the demo site's texture atlas procedurally.

#include <QImage>

namespace sitegen {

// A kAtlasSize x kAtlasSize RGB image with every region of AtlasLayout filled.
QImage paintAtlas(unsigned seed);

} // namespace sitegen
