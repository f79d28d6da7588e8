// Texture loading with reduction to the size limit, the cache, and texel
// sampling in OBJ orientation.
#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QPainter>
#include <cmath>

#include "scene/engine/TextureImage.h"
#include "support/TestSupport.h"

namespace {

using engine::TextureImage;

using testsupport::expectRgb;

// Four flat quadrants: red top-left, green top-right, blue bottom-left,
// yellow bottom-right.
QImage quadrants(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    QPainter painter(&image);
    const int hw = width / 2, hh = height / 2;
    painter.fillRect(0, 0, hw, hh, QColor(255, 0, 0));
    painter.fillRect(hw, 0, width - hw, hh, QColor(0, 255, 0));
    painter.fillRect(0, hh, hw, height - hh, QColor(0, 0, 255));
    painter.fillRect(hw, hh, width - hw, height - hh, QColor(255, 255, 0));
    painter.end();
    return image;
}

class TextureImageTest : public ::testing::Test {
protected:
    void SetUp() override { engine::clearTextureCache(); }
    void TearDown() override { engine::clearTextureCache(); }
    testsupport::ScratchDir dir;
};

TEST_F(TextureImageTest, LargeJpegIsDecodedReduced) {
    const std::string path = dir.path("big.jpg");
    ASSERT_TRUE(quadrants(4096, 2048).save(QString::fromStdString(path), "JPG", 95));

    auto texture = engine::loadTextureCached(path, 11);
    ASSERT_TRUE(texture);
    EXPECT_EQ(texture->width, 2048);
    EXPECT_EQ(texture->height, 1024);
    ASSERT_EQ(texture->rgba.size(), 2048u * 1024u * 4u);
    float rgb[3];
    // v = 0 is the bottom: (0.25, 0.75) is in the top-left quadrant.
    ASSERT_TRUE(engine::sampleTexture(*texture, 0.25f, 0.75f, rgb));
    expectRgb(rgb, 1, 0, 0, 0.04f);
    ASSERT_TRUE(engine::sampleTexture(*texture, 0.75f, 0.25f, rgb));
    expectRgb(rgb, 1, 1, 0, 0.04f);
    ASSERT_TRUE(engine::sampleTexture(*texture, 0.25f, 0.25f, rgb));
    expectRgb(rgb, 0, 0, 1, 0.04f);

    // A limit above the image keeps it whole.
    auto whole = engine::loadTextureCached(path, 12);
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->width, 4096);
    EXPECT_EQ(whole->height, 2048);
}

TEST_F(TextureImageTest, ReductionBeyondTheDecoderFactorsAndOddSizes) {
    // 3000 wide at 2048: the decoder's 5/8 gives 1875 (3/4 would be 2250).
    const std::string odd = dir.path("odd.jpg");
    ASSERT_TRUE(quadrants(3000, 1000).save(QString::fromStdString(odd), "JPG", 90));
    auto texture = engine::loadTextureCached(odd, 11);
    ASSERT_TRUE(texture);
    EXPECT_EQ(texture->width, 1875);
    EXPECT_EQ(texture->height, 625);

    // 16000 wide at 1024: 1/8 still leaves 2000, the rest is an exact
    // resize to 1024 x round(125 * 1024 / 2000) = 64.
    const std::string strip = dir.path("strip.jpg");
    ASSERT_TRUE(quadrants(16000, 1000).save(QString::fromStdString(strip), "JPG", 90));
    texture = engine::loadTextureCached(strip, 10);
    ASSERT_TRUE(texture);
    EXPECT_EQ(texture->width, 1024);
    EXPECT_EQ(texture->height, 64);
    float rgb[3];
    ASSERT_TRUE(engine::sampleTexture(*texture, 0.9f, 0.1f, rgb));
    expectRgb(rgb, 1, 1, 0, 0.06f);

    // Other formats go through the same reduction.
    const std::string png = dir.path("p.png");
    ASSERT_TRUE(quadrants(64, 32).save(QString::fromStdString(png), "PNG"));
    texture = engine::loadTextureCached(png, 4);
    ASSERT_TRUE(texture);
    EXPECT_EQ(texture->width, 16);
    EXPECT_EQ(texture->height, 8);
    ASSERT_TRUE(engine::sampleTexture(*texture, 0.9f, 0.9f, rgb));
    expectRgb(rgb, 0, 1, 0, 0.01f);
}

TEST_F(TextureImageTest, CacheIsKeyedByPathAndLimit) {
    const std::string png = dir.path("c.png");
    ASSERT_TRUE(quadrants(8, 8).save(QString::fromStdString(png), "PNG"));
    auto a = engine::loadTextureCached(png, 3);
    auto b = engine::loadTextureCached(png, 3);
    auto c = engine::loadTextureCached(png, 2);
    ASSERT_TRUE(a && c);
    EXPECT_EQ(a.get(), b.get());
    EXPECT_NE(a.get(), c.get());
    EXPECT_EQ(c->width, 4);
    engine::clearTextureCache();
    auto d = engine::loadTextureCached(png, 3);
    ASSERT_TRUE(d);
    EXPECT_NE(d.get(), a.get());

    EXPECT_FALSE(engine::loadTextureCached(dir.path("missing.jpg"), 11));
    testsupport::writeTextFile(dir.path("junk.jpg"), "not an image");
    EXPECT_FALSE(engine::loadTextureCached(dir.path("junk.jpg"), 11));
}

TEST(TextureSampleTest, NearestTexelWithBottomOriginAndWrap) {
    // 2 x 2: top row (10, 20), bottom row (30, 40) in the red channel.
    TextureImage image;
    image.width = 2;
    image.height = 2;
    image.rgba = {10, 0, 0, 255, 20, 0, 0, 255, 30, 0, 0, 255, 40, 0, 0, 255};
    float rgb[3];
    auto red = [&](float u, float v) {
        EXPECT_TRUE(engine::sampleTexture(image, u, v, rgb));
        return std::lround(rgb[0] * 255);
    };
    EXPECT_EQ(red(0.1f, 0.1f), 30);   // bottom-left
    EXPECT_EQ(red(0.9f, 0.1f), 40);   // bottom-right
    EXPECT_EQ(red(0.1f, 0.9f), 10);   // top-left
    EXPECT_EQ(red(0.6f, 0.6f), 20);   // top-right
    EXPECT_EQ(red(1.1f, 0.1f), 30);   // wraps to 0.1
    EXPECT_EQ(red(-0.1f, -0.1f), 20); // wraps to 0.9, 0.9
    EXPECT_EQ(red(1.0f, 0.0f), 30);   // 1 wraps to 0
    EXPECT_FALSE(engine::sampleTexture(image, NAN, 0.5f, rgb));
    TextureImage empty;
    EXPECT_FALSE(engine::sampleTexture(empty, 0.5f, 0.5f, rgb));
}

}  // namespace
