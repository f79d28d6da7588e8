// Texture images reduced to the engine's size limit, decoded once per
// (path, limit) and shared.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace engine {

// RGBA, 4 bytes per texel, rows from the top of the image down.
struct TextureImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgba;
};

// The image at path with its longest edge reduced to at most 2^maxExponent
// (aspect kept). JPEG files are decoded already scaled down, so a huge
// photo never needs its full size in memory. Null when the file can't be
// read. Thread-safe; results are cached by (path, maxExponent).
std::shared_ptr<const TextureImage> loadTextureCached(const std::string& path, int maxExponent);

// Forgets every cached image.
void clearTextureCache();

// Nearest texel at (u, v): both wrapped to [0,1), v = 0 at the bottom row
// (OBJ convention). rgb in 0..1. False for an empty image or non-finite u, v.
bool sampleTexture(const TextureImage& image, float u, float v, float rgb[3]);

}  // namespace engine
