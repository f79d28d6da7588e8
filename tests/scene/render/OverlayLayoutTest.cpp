// Where decals and the status strip go, worked out by hand for a 1000 x 500 surface.
#include <gtest/gtest.h>

#include "scene/render/OverlayLayout.h"

namespace {

engine::ViewDecal decal(const char* type, float size, float x = 0, float y = 0) {
    engine::ViewDecal d;
    d.name = "d";
    d.typeName = type;
    d.size = size;
    d.screenX = x;
    d.screenY = y;
    return d;
}

const QSizeF kSurface(1000, 500);

TEST(OverlayLayout, CornersKeepAMarginOfOnePercentOfTheWidth) {
    // 10% of 1000 = 100 wide; a 200 x 100 picture gives 50 high; margin 10.
    EXPECT_EQ(render::decalRect(decal("Top_Left", 10), kSurface, QSizeF(200, 100)), QRectF(10, 10, 100, 50));
    EXPECT_EQ(render::decalRect(decal("Top_Right", 10), kSurface, QSizeF(200, 100)), QRectF(890, 10, 100, 50));
}

TEST(OverlayLayout, AnywhereCentresOnPercentOfTheSurface) {
    // The system's own "OrvoDecal": 85.1%, 95.1%, 20% wide; a 4:1 picture.
    const QRectF r = render::decalRect(decal("Anywhere", 20, 85.1f, 95.1f), kSurface, QSizeF(400, 100));
    EXPECT_NEAR(r.center().x(), 851.0, 1e-3);
    EXPECT_NEAR(r.center().y(), 475.5, 1e-3);
    EXPECT_NEAR(r.width(), 200.0, 1e-3);
    EXPECT_NEAR(r.height(), 50.0, 1e-3);
}

TEST(OverlayLayout, UnknownTypesAndEmptyPicturesHaveNoPlace) {
    EXPECT_TRUE(render::decalRect(decal("Bottom_Left", 10), kSurface, QSizeF(10, 10)).isEmpty());
    EXPECT_TRUE(render::decalRect(decal("Top_Left", 10), kSurface, QSizeF(0, 10)).isEmpty());
    EXPECT_TRUE(render::decalRect(decal("Top_Left", 10), QSizeF(0, 0), QSizeF(10, 10)).isEmpty());
}

TEST(OverlayLayout, StatusStripCoversTheBottomRows) {
    engine::StatusBar bar;
    bar.shown = 1;
    bar.height = 30;
    EXPECT_EQ(render::statusStripRect(bar, QSize(640, 480)), QRect(0, 450, 640, 30));
    EXPECT_EQ(render::statusStripRect(bar, QSize(640, 20)), QRect(0, 0, 640, 20));
    bar.shown = 0;
    EXPECT_TRUE(render::statusStripRect(bar, QSize(640, 480)).isEmpty());
}

TEST(OverlayLayout, HostColoursAreBlueGreenRed) {
    EXPECT_EQ(render::colourFromBgr(16711680), QColor(0, 0, 255));  // the status strip's default, blue
    EXPECT_EQ(render::colourFromBgr(0x0000FF), QColor(255, 0, 0));
    EXPECT_EQ(render::colourFromBgr(0x123456), QColor(0x56, 0x34, 0x12));
}

}  // namespace
