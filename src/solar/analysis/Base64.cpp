#include <QFile>
#include <exception>
#include <vector>

#include "ReportHtml.h"
#include "app/services/SunGlobalLog.h"

namespace {

constexpr qint64 LARGEST_EMBEDDED_IMAGE = 5000000;  // mail clients drop bigger pages
constexpr int PROGRESS_STEP = 300000;               // input bytes between progress lines
const char ALPHABET[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace

std::string Base64Encode(const unsigned char* data, int length) {
    std::string out;
    out.reserve(static_cast<std::size_t>((length + 2) / 3) * 4);
    int i = 0;
    for (; i + 2 < length; i += 3) {
        const unsigned value = (data[i] << 16) | (data[i + 1] << 8) | data[i + 2];
        out += ALPHABET[(value >> 18) & 63];
        out += ALPHABET[(value >> 12) & 63];
        out += ALPHABET[(value >> 6) & 63];
        out += ALPHABET[value & 63];
        if ((i + 3) % PROGRESS_STEP == 0) PrintSunLog("Base64 progress: %d/%d bytes processed\n", i + 3, length);
    }
    if (i < length) {
        const bool two = i + 1 < length;
        const unsigned value = (data[i] << 16) | (two ? data[i + 1] << 8 : 0);
        out += ALPHABET[(value >> 18) & 63];
        out += ALPHABET[(value >> 12) & 63];
        out += two ? ALPHABET[(value >> 6) & 63] : '=';
        out += '=';
    }
    PrintSunLog("Base64 encoding complete: %d input bytes -> %d output chars\n", length, static_cast<int>(out.size()));
    return out;
}

std::string ConvertImageToBase64(const std::string& imagePath) {
    QFile image(QString::fromStdString(imagePath));
    if (!image.exists()) {
        PrintSunLog("Image file not found: %s\n", imagePath.c_str());
        return "";
    }
    if (!image.open(QIODevice::ReadOnly)) return "";
    const qint64 size = image.size();
    if (size > LARGEST_EMBEDDED_IMAGE) {
        PrintSunLog("ERROR: Image too large for email embedding (%d bytes)\n", static_cast<int>(size));
        return "";
    }
    try {
        std::vector<unsigned char> bytes(static_cast<std::size_t>(size));
        const qint64 read = image.read(reinterpret_cast<char*>(bytes.data()), size);
        if (read != size) {
            PrintSunLog("ERROR: Only read %d of %d bytes\n", static_cast<int>(read < 0 ? 0 : read),
                        static_cast<int>(size));
            return "";
        }
        return Base64Encode(bytes.data(), static_cast<int>(size));
    } catch (const std::exception& error) {
        PrintSunLog("Base64 conversion error: %s\n", error.what());
        return "";
    }
}
