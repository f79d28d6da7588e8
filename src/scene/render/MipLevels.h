// The next smaller level of a texture's mipmap chain, made on the CPU:
// a software rasteriser builds mipmaps of a large texture far slower than
// a plain box filter does.
#pragma once

#include <cstdint>
#include <vector>

namespace render {

struct RgbaLevel {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgba;  // 4 bytes a texel, rows from the top
};

// Half the size, rounded down but at least 1 texel each way; each texel is
// the rounded mean of the 2 x 2 block above it. The last row or column of an
// odd size is left out, and a size of 1 takes its one row or column twice.
RgbaLevel halveRgba(const std::uint8_t* rgba, int width, int height);

}  // namespace render
