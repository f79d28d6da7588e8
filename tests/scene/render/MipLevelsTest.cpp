// The CPU box filter that makes the smaller levels of large textures.
#include <gtest/gtest.h>

#include <vector>

#include "scene/render/MipLevels.h"

namespace {

// An image whose texel (x, y) holds red x*10+y, green 255-(x*10+y), blue 7, alpha 255 - y.
std::vector<std::uint8_t> numbered(int width, int height) {
    std::vector<std::uint8_t> rgba;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            rgba.insert(rgba.end(), {std::uint8_t(x * 10 + y), std::uint8_t(255 - (x * 10 + y)), 7,
                                     std::uint8_t(255 - y)});
    return rgba;
}

TEST(MipLevels, EachTexelIsTheRoundedMeanOfItsBlock) {
    // 5 x 3: the last column and row are left out.
    const std::vector<std::uint8_t> image = numbered(5, 3);
    const render::RgbaLevel level = render::halveRgba(image.data(), 5, 3);
    ASSERT_EQ(level.width, 2);
    ASSERT_EQ(level.height, 1);
    ASSERT_EQ(level.rgba.size(), 8u);
    // Block x 2..3, y 0..1: red 20, 21, 30, 31 -> 25.5 -> 26; green 235, 234, 225, 224 -> 229.5 -> 230.
    EXPECT_EQ(level.rgba[4], 26);
    EXPECT_EQ(level.rgba[5], 230);
    EXPECT_EQ(level.rgba[6], 7);
    EXPECT_EQ(level.rgba[7], 255);  // alpha 255, 254, 255, 254 -> 254.5, rounded up
    EXPECT_EQ(level.rgba[0], 6);    // red 0, 1, 10, 11 -> 5.5
}

TEST(MipLevels, ASingleColumnOrRowIsTakenTwice) {
    const std::vector<std::uint8_t> column = numbered(1, 4);
    render::RgbaLevel level = render::halveRgba(column.data(), 1, 4);
    ASSERT_EQ(level.width, 1);
    ASSERT_EQ(level.height, 2);
    EXPECT_EQ(level.rgba[4], 3);  // red 2, 3 twice -> 2.5 -> 3
    const std::vector<std::uint8_t> row = numbered(4, 1);
    level = render::halveRgba(row.data(), 4, 1);
    ASSERT_EQ(level.width, 2);
    ASSERT_EQ(level.height, 1);
    EXPECT_EQ(level.rgba[4], 25);  // red 20, 30 twice -> 25
    level = render::halveRgba(level.rgba.data(), 2, 1);
    level = render::halveRgba(level.rgba.data(), 1, 1);
    EXPECT_EQ(level.width, 1);
    EXPECT_EQ(level.height, 1);
}

}  // namespace
