// zv-citygen OUT.obj [--triangles N] [--texture SIZE] [--seed S]
// Writes a large synthetic city OBJ (and OUT.mtl + OUT.jpg with --texture).

#include "gen/CityGenerator.h"

#include <QCoreApplication>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>

namespace {

int usage()
{
    std::fprintf(stderr, "usage: zv-citygen OUT.obj [--triangles N] [--texture SIZE] [--seed S]\n");
    return 2;
}

bool parseNumber(const char* text, unsigned long long& value)
{
    char* end = nullptr;
    value = std::strtoull(text, &end, 10);
    return end != text && *end == '\0' && text[0] != '-';
}

double secondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv); // lets Qt find its JPEG plugin
    std::string objPath;
    benchgen::CityOptions options;
    unsigned long long textureSize = 0;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        unsigned long long value = 0;
        if (arg == "--triangles" || arg == "--texture" || arg == "--seed") {
            if (i + 1 >= argc || !parseNumber(argv[i + 1], value))
                return usage();
            ++i;
            if (arg == "--triangles")
                options.targetTriangles = std::size_t(value);
            else if (arg == "--texture")
                textureSize = value;
            else
                options.seed = unsigned(value);
        } else if (!arg.empty() && arg[0] != '-' && objPath.empty()) {
            objPath = arg;
        } else {
            return usage();
        }
    }
    if (objPath.empty() || textureSize > 32768)
        return usage();

    try {
        std::string textureName;
        const auto start = std::chrono::steady_clock::now();
        if (textureSize > 0) {
            std::filesystem::path texturePath(objPath);
            texturePath.replace_extension(".jpg");
            textureName = texturePath.filename().string();
            if (!benchgen::writeTextureJpeg(texturePath.string(), int(textureSize), options.seed)) {
                std::fprintf(stderr, "zv-citygen: cannot write %s\n", texturePath.string().c_str());
                return 1;
            }
            std::printf("texture   %s (%llu x %llu) in %.2f s\n", texturePath.string().c_str(), textureSize,
                        textureSize, secondsSince(start));
        }
        const auto objStart = std::chrono::steady_clock::now();
        const benchgen::CityInfo info = benchgen::writeCityObj(objPath, options, textureName);
        const double objSeconds = secondsSince(objStart);
        std::printf("obj       %s (%.1f MB) in %.2f s\n", objPath.c_str(),
                    double(std::filesystem::file_size(objPath)) / 1e6, objSeconds);
        std::printf("vertices  %zu\ntexcoords %zu\ntriangles %zu (target %zu)\nroof points %zu\n", info.vertices,
                    info.texCoords, info.triangles, options.targetTriangles, info.roofPoints.size());
        std::printf("bounds    x %.3f..%.3f  y %.3f..%.3f  z %.3f..%.3f\n", info.minMax[0], info.minMax[3],
                    info.minMax[1], info.minMax[4], info.minMax[2], info.minMax[5]);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "zv-citygen: %s\n", e.what());
        return 1;
    }
    return 0;
}
