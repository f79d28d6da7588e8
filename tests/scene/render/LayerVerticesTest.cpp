// What a layer sends to the card: floats in the drawing frame relative to
// an origin taken in double, exact to the millimetre at map magnitudes.
#include <gtest/gtest.h>

#include <cmath>

#include "scene/render/LayerVertices.h"
#include "support/SceneBuilders.h"

namespace {

// The engine point a drawn vertex stands for: origin + the inverse of
// (x, y, z) -> (x, z, -y).
void enginePoint(const render::LayerVertices& data, std::size_t vertex, double out[3]) {
    const float* v = &data.vertices[vertex * std::size_t(data.floatsPerVertex)];
    out[0] = data.origin[0] + double(v[0]);
    out[1] = data.origin[1] - double(v[2]);
    out[2] = data.origin[2] + double(v[1]);
}

TEST(LayerVertices, MapCoordinatesComeBackToTheMillimetre) {
    engine::Layer layer;
    layer.name = "city";
    // A float holds 3612000.456 as 3612000.5; relative to the layer's centre it stays exact.
    layer.positions = {3612000.456, 663000.123, 812.345, 3612412.789, 663317.001, 790.010,
                       3611875.004, 662950.999, 805.505};
    layer.triangles = {0, 1, 2};
    const render::LayerVertices data = render::buildLayerVertices(layer);
    ASSERT_EQ(data.floatsPerVertex, 3);
    ASSERT_EQ(data.vertices.size(), 9u);
    // The origin is the centre of the bounds, worked out by hand.
    EXPECT_DOUBLE_EQ(data.origin[0], (3611875.004 + 3612412.789) / 2);
    EXPECT_DOUBLE_EQ(data.origin[1], (662950.999 + 663317.001) / 2);
    EXPECT_DOUBLE_EQ(data.origin[2], (790.010 + 812.345) / 2);
    for (std::size_t v = 0; v < 3; ++v) {
        double back[3];
        enginePoint(data, v, back);
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(back[i], layer.positions[v * 3 + std::size_t(i)], 1e-3);
    }
    EXPECT_TRUE(data.hasBounds);
    EXPECT_DOUBLE_EQ(data.minMax[0], 3611875.004);
    EXPECT_DOUBLE_EQ(data.minMax[5], 812.345);
}

TEST(LayerVertices, DrawingAxesAreEastUpSouth) {
    engine::Layer layer = testsupport::makeRectangle("r", 0, 0, 2, 4, 6);  // centre (1, 2, 6)
    const render::LayerVertices data = render::buildLayerVertices(layer);
    ASSERT_TRUE(data.textured);
    ASSERT_EQ(data.floatsPerVertex, 5);
    // Corner 2 is (2, 4, 6): 1 m east, 2 m north, level with the centre -> (1, 0, -2), UV (1, 1).
    const float* v = &data.vertices[2 * 5];
    EXPECT_FLOAT_EQ(v[0], 1.0f);
    EXPECT_FLOAT_EQ(v[1], 0.0f);
    EXPECT_FLOAT_EQ(v[2], -2.0f);
    EXPECT_FLOAT_EQ(v[3], 1.0f);
    EXPECT_FLOAT_EQ(v[4], 1.0f);
}

TEST(LayerVertices, LinesShareTheOriginAndBadIndicesAreFound) {
    engine::Layer layer;
    layer.name = "lines";
    layer.positions = {10, 0, 0, 12, 0, 0, 10, 2, 0};
    layer.triangles = {0, 1, 3};  // 3 is past the last vertex
    layer.lineVertices = {8, 0, 10, 14, 2, 0};
    layer.lineSegments = {0, 1};
    layer.texCoords = {0, 0, 1, 0};  // too few for three vertices: drawn without texture
    const render::LayerVertices data = render::buildLayerVertices(layer);
    EXPECT_FALSE(data.textured);
    EXPECT_FALSE(data.trianglesValid);
    EXPECT_TRUE(data.linesValid);
    EXPECT_DOUBLE_EQ(data.origin[0], 11);  // bounds over both: x 8..14
    EXPECT_DOUBLE_EQ(data.origin[2], 5);   // z 0..10
    ASSERT_EQ(data.lineVertices.size(), 6u);
    EXPECT_FLOAT_EQ(data.lineVertices[0], -3.0f);
    EXPECT_FLOAT_EQ(data.lineVertices[1], 5.0f);
    EXPECT_FLOAT_EQ(data.lineVertices[2], 1.0f);  // 1 m south of the centre line y = 1

    layer.lineSegments = {0, 2};
    EXPECT_FALSE(render::buildLayerVertices(layer).linesValid);
    EXPECT_TRUE(render::indicesInRange({0, 1, 2}, 3));
    EXPECT_FALSE(render::indicesInRange({0, 1, 2}, 2));
}

}  // namespace
