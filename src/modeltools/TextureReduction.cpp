#include "TextureReduction.h"

#include <turbojpeg.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>
#include <cmath>

#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"

namespace {

// The source pixels one target pixel draws on, with their weights (summing to 1).
struct Taps {
    int first = 0;
    std::vector<float> weights;
};

std::vector<Taps> axisTaps(int src, int dst) {
    std::vector<Taps> taps(static_cast<std::size_t>(dst));
    const double scale = double(src) / double(dst);
    for (int o = 0; o < dst; ++o) {
        Taps& t = taps[std::size_t(o)];
        if (src > dst) {
            const double from = o * scale, to = (o + 1) * scale;
            t.first = int(std::floor(from));
            const int last = std::min(src - 1, int(std::ceil(to)) - 1);
            for (int i = t.first; i <= last; ++i) {
                const double cover = std::min<double>(to, i + 1) - std::max<double>(from, i);
                t.weights.push_back(float(cover / scale));
            }
        } else {
            const double centre = std::clamp((o + 0.5) * scale - 0.5, 0.0, double(src - 1));
            t.first = int(std::floor(centre));
            const double f = centre - t.first;
            t.weights.push_back(float(1.0 - f));
            if (t.first + 1 < src) t.weights.push_back(float(f));
        }
    }
    return taps;
}

unsigned char toByte(float v) { return static_cast<unsigned char>(std::clamp(std::lround(v), 0L, 255L)); }

// One axis: `count` lines of `length` pixels, `pixelStep` and `lineStep` in bytes.
void resampleAxis(const unsigned char* in, unsigned char* out, int count, const std::vector<Taps>& taps,
                  std::size_t inPixelStep, std::size_t inLineStep, std::size_t outPixelStep, std::size_t outLineStep) {
    for (int line = 0; line < count; ++line) {
        const unsigned char* src = in + std::size_t(line) * inLineStep;
        unsigned char* dst = out + std::size_t(line) * outLineStep;
        for (std::size_t o = 0; o < taps.size(); ++o) {
            float r = 0, g = 0, b = 0;
            const unsigned char* p = src + std::size_t(taps[o].first) * inPixelStep;
            for (float w : taps[o].weights) {
                r += w * p[0];
                g += w * p[1];
                b += w * p[2];
                p += inPixelStep;
            }
            unsigned char* q = dst + o * outPixelStep;
            q[0] = toByte(r);
            q[1] = toByte(g);
            q[2] = toByte(b);
        }
    }
}

// The decoder's own down-scaling is fast and averages well: take the
// smallest scaled size that is still no smaller than the target on either
// axis (an axis already below the target is not shrunk at all).
void decodeSize(int width, int height, int& scaledWidth, int& scaledHeight) {
    scaledWidth = width;
    scaledHeight = height;
    const int needHeight = std::min(height, PACK_TEXTURE_SIZE);
    int count = 0;
    const tjscalingfactor* factors = tjGetScalingFactors(&count);
    for (int i = 0; factors && i < count; ++i) {
        if (factors[i].num > factors[i].denom) continue;
        const int w = TJSCALED(width, factors[i]);
        const int h = TJSCALED(height, factors[i]);
        if (w >= PACK_TEXTURE_SIZE && h >= needHeight && w < scaledWidth) {
            scaledWidth = w;
            scaledHeight = h;
        }
    }
}

struct TjHandle {
    tjhandle h;
    explicit TjHandle(tjhandle handle) : h(handle) {}
    ~TjHandle() {
        if (h) tjDestroy(h);
    }
};

}  // namespace

std::vector<unsigned char> StretchRgb(const unsigned char* rgb, int width, int height, int dstWidth, int dstHeight) {
    if (!rgb || width <= 0 || height <= 0 || dstWidth <= 0 || dstHeight <= 0) return {};
    // Across first, then down: the intermediate keeps the source's rows.
    std::vector<unsigned char> across(std::size_t(dstWidth) * std::size_t(height) * 3);
    resampleAxis(rgb, across.data(), height, axisTaps(width, dstWidth), 3, std::size_t(width) * 3, 3,
                 std::size_t(dstWidth) * 3);
    std::vector<unsigned char> result(std::size_t(dstWidth) * std::size_t(dstHeight) * 3);
    resampleAxis(across.data(), result.data(), dstWidth, axisTaps(height, dstHeight), std::size_t(dstWidth) * 3, 3,
                 std::size_t(dstWidth) * 3, 3);
    return result;
}

QString ReducePictureForPacking(const QString& picture) {
    QFile file(picture);
    if (!file.open(QIODevice::ReadOnly)) return picture;
    const QByteArray bytes = file.readAll();
    if (bytes.isEmpty()) return picture;
    std::vector<unsigned char> jpeg(bytes.begin(), bytes.end());
    TjHandle decoder(tjInitDecompress());
    int width = 0, height = 0, subsampling = 0, colorspace = 0;
    if (!decoder.h || tjDecompressHeader3(decoder.h, jpeg.data(), static_cast<unsigned long>(jpeg.size()), &width,
                                          &height, &subsampling, &colorspace) != 0)
        return picture;  // not a JPEG: packed as it stands
    if (width <= PACK_TEXTURE_SIZE) return picture;

    const QString folder = QString::fromStdString(sessionPaths().ORVO_T);
    const QString target = folder + QFileInfo(picture).fileName();
    if (folder.isEmpty() || !QDir().mkpath(folder) ||
        QFileInfo(target).canonicalFilePath() == QFileInfo(picture).canonicalFilePath()) {
        PrintRunLog("ReducePicture: no temporary folder apart from %s\n", picture.toUtf8().constData());
        return picture;
    }

    int scaledWidth = 0, scaledHeight = 0;
    decodeSize(width, height, scaledWidth, scaledHeight);
    std::vector<unsigned char> rgb(std::size_t(scaledWidth) * std::size_t(scaledHeight) * 3);
    if (tjDecompress2(decoder.h, jpeg.data(), static_cast<unsigned long>(jpeg.size()), rgb.data(), scaledWidth, 0,
                      scaledHeight, TJPF_RGB, 0) != 0) {
        PrintRunLog("ReducePicture: %s not decoded: %s\n", picture.toUtf8().constData(), tjGetErrorStr2(decoder.h));
        return picture;
    }
    jpeg = {};
    if (scaledWidth != PACK_TEXTURE_SIZE || scaledHeight != PACK_TEXTURE_SIZE)
        rgb = StretchRgb(rgb.data(), scaledWidth, scaledHeight, PACK_TEXTURE_SIZE, PACK_TEXTURE_SIZE);

    TjHandle encoder(tjInitCompress());
    unsigned char* encoded = nullptr;
    unsigned long encodedSize = 0;
    if (!encoder.h || tjCompress2(encoder.h, rgb.data(), PACK_TEXTURE_SIZE, 0, PACK_TEXTURE_SIZE, TJPF_RGB, &encoded,
                                  &encodedSize, TJSAMP_420, PACK_JPEG_QUALITY, 0) != 0) {
        PrintRunLog("ReducePicture: %s not encoded\n", picture.toUtf8().constData());
        tjFree(encoded);
        return picture;
    }
    QSaveFile out(target);
    const bool saved = out.open(QIODevice::WriteOnly) &&
                       out.write(reinterpret_cast<const char*>(encoded), qint64(encodedSize)) == qint64(encodedSize) &&
                       out.commit();
    tjFree(encoded);
    if (!saved) {
        PrintRunLog("ReducePicture: can not write %s\n", target.toUtf8().constData());
        return picture;
    }
    return target;
}
