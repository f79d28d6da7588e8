#include "TextureImage.h"

#include <turbojpeg.h>

#include <QImage>
#include <QString>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <map>
#include <mutex>
#include <utility>

namespace engine {

namespace {

using Key = std::pair<std::string, int>;

std::mutex& cacheMutex() {
    static std::mutex m;
    return m;
}

std::map<Key, std::shared_ptr<const TextureImage>>& cache() {
    static std::map<Key, std::shared_ptr<const TextureImage>> c;
    return c;
}

bool readFile(const std::string& path, std::vector<unsigned char>& bytes) {
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    if (!in) return false;
    const std::streamoff size = in.tellg();
    if (size <= 0) return false;
    bytes.resize(std::size_t(size));
    in.seekg(0);
    return bool(in.read(reinterpret_cast<char*>(bytes.data()), size));
}

bool isJpeg(const std::vector<unsigned char>& bytes) {
    return bytes.size() > 3 && bytes[0] == 0xFF && bytes[1] == 0xD8 && bytes[2] == 0xFF;
}

// Exact reduction of an RGBA8888 image so its longest edge is at most limit.
std::shared_ptr<TextureImage> finish(QImage image, int limit) {
    if (image.isNull()) return nullptr;
    if (image.format() != QImage::Format_RGBA8888) image = image.convertToFormat(QImage::Format_RGBA8888);
    const int longest = std::max(image.width(), image.height());
    if (longest > limit) {
        const double s = double(limit) / double(longest);
        const int w = std::max(1, int(std::lround(image.width() * s)));
        const int h = std::max(1, int(std::lround(image.height() * s)));
        image = image.scaled(w, h, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        if (image.format() != QImage::Format_RGBA8888) image = image.convertToFormat(QImage::Format_RGBA8888);
    }
    if (image.isNull()) return nullptr;
    auto texture = std::make_shared<TextureImage>();
    texture->width = image.width();
    texture->height = image.height();
    const std::size_t rowBytes = std::size_t(texture->width) * 4;
    texture->rgba.resize(rowBytes * std::size_t(texture->height));
    for (int y = 0; y < texture->height; ++y)
        std::memcpy(texture->rgba.data() + rowBytes * std::size_t(y), image.constScanLine(y), rowBytes);
    return texture;
}

// Decodes with the JPEG decoder's own down-scaling: the largest supported
// factor that brings the longest edge within limit (the smallest factor when
// none does). The rest of the reduction is left to finish().
std::shared_ptr<TextureImage> decodeJpeg(const std::vector<unsigned char>& bytes, int limit) {
    tjhandle handle = tjInitDecompress();
    if (!handle) return nullptr;
    std::shared_ptr<TextureImage> result;
    int width = 0, height = 0, subsampling = 0, colorspace = 0;
    if (tjDecompressHeader3(handle, bytes.data(), static_cast<unsigned long>(bytes.size()), &width, &height,
                            &subsampling, &colorspace) == 0 &&
        width > 0 && height > 0) {
        int count = 0;
        const tjscalingfactor* factors = tjGetScalingFactors(&count);
        int bestW = width, bestH = height;
        bool fits = false;
        int smallestW = width, smallestH = height;
        for (int i = 0; factors && i < count; ++i) {
            const tjscalingfactor f = factors[i];
            if (f.num <= 0 || f.num > f.denom) continue;  // no enlarging
            const int w = TJSCALED(width, f);
            const int h = TJSCALED(height, f);
            if (std::max(w, h) < std::max(smallestW, smallestH)) {
                smallestW = w;
                smallestH = h;
            }
            if (std::max(w, h) <= limit && (!fits || std::max(w, h) > std::max(bestW, bestH))) {
                bestW = w;
                bestH = h;
                fits = true;
            }
        }
        if (!fits) {
            bestW = smallestW;
            bestH = smallestH;
        }
        QImage decoded(bestW, bestH, QImage::Format_RGBA8888);
        if (!decoded.isNull()) {
            const int rc = tjDecompress2(handle, bytes.data(), static_cast<unsigned long>(bytes.size()),
                                         decoded.bits(), bestW, int(decoded.bytesPerLine()), bestH, TJPF_RGBA, 0);
            // A warning (a truncated file, say) still leaves a usable picture.
            if (rc == 0 || tjGetErrorCode(handle) == TJERR_WARNING) result = finish(std::move(decoded), limit);
        }
    }
    tjDestroy(handle);
    return result;
}

std::shared_ptr<TextureImage> decode(const std::string& path, int limit) {
    std::vector<unsigned char> bytes;
    if (!readFile(path, bytes)) return nullptr;
    if (isJpeg(bytes)) {
        if (auto texture = decodeJpeg(bytes, limit)) return texture;
        // Colour spaces the decoder can't turn into RGBA (CMYK) go through QImage.
    }
    QImage image;
    if (!image.loadFromData(bytes.data(), int(std::min<std::size_t>(bytes.size(), 0x7fffffff)))) return nullptr;
    return finish(std::move(image), limit);
}

}  // namespace

std::shared_ptr<const TextureImage> loadTextureCached(const std::string& path, int maxExponent) {
    if (path.empty()) return nullptr;
    const int exponent = std::clamp(maxExponent, 0, 30);
    const Key key{path, exponent};
    {
        std::lock_guard<std::mutex> lock(cacheMutex());
        auto it = cache().find(key);
        if (it != cache().end()) return it->second;
    }
    // Decoded outside the lock so other textures load meanwhile; a racing
    // load of the same key keeps the first result stored.
    std::shared_ptr<const TextureImage> texture = decode(path, 1 << exponent);
    if (!texture) return nullptr;
    std::lock_guard<std::mutex> lock(cacheMutex());
    auto inserted = cache().emplace(key, texture);
    return inserted.first->second;
}

void clearTextureCache() {
    std::lock_guard<std::mutex> lock(cacheMutex());
    cache().clear();
}

bool sampleTexture(const TextureImage& image, float u, float v, float rgb[3]) {
    if (image.width <= 0 || image.height <= 0 ||
        image.rgba.size() < std::size_t(image.width) * std::size_t(image.height) * 4)
        return false;
    if (!std::isfinite(u) || !std::isfinite(v)) return false;
    const double wu = double(u) - std::floor(double(u));
    const double wv = double(v) - std::floor(double(v));
    const int column = std::min(image.width - 1, int(wu * image.width));
    const int rowFromBottom = std::min(image.height - 1, int(wv * image.height));
    const int row = image.height - 1 - rowFromBottom;
    const std::size_t offset = (std::size_t(row) * std::size_t(image.width) + std::size_t(column)) * 4;
    const std::uint8_t* texel = image.rgba.data() + offset;
    for (int i = 0; i < 3; ++i) rgb[i] = float(texel[i]) / 255.0f;
    return true;
}

}  // namespace engine
