#include "MipLevels.h"

#include <algorithm>
#include <cstddef>

namespace render {

RgbaLevel halveRgba(const std::uint8_t* rgba, int width, int height) {
    RgbaLevel out;
    out.width = std::max(1, width / 2);
    out.height = std::max(1, height / 2);
    out.rgba.resize(std::size_t(out.width) * std::size_t(out.height) * 4);
    const std::size_t rowBytes = std::size_t(width) * 4;
    // Row pairs are summed first: a plain loop the compiler turns into vector code.
    std::vector<std::uint16_t> sums(rowBytes);
    const std::size_t step = width > 1 ? 4 : 0;
    for (int y = 0; y < out.height; ++y) {
        const std::uint8_t* top = rgba + std::size_t(std::min(2 * y, height - 1)) * rowBytes;
        const std::uint8_t* bottom = rgba + std::size_t(std::min(2 * y + 1, height - 1)) * rowBytes;
        for (std::size_t i = 0; i < rowBytes; ++i) sums[i] = std::uint16_t(top[i] + bottom[i]);
        std::uint8_t* target = out.rgba.data() + std::size_t(y) * std::size_t(out.width) * 4;
        for (std::size_t x = 0; x < std::size_t(out.width); ++x) {
            const std::uint16_t* left = sums.data() + x * 8;
            for (std::size_t c = 0; c < 4; ++c) target[x * 4 + c] = std::uint8_t((left[c] + left[c + step] + 2) >> 2);
        }
    }
    return out;
}

}  // namespace render
