// Writes the seeds of the binary measurement files through the product's own
// record encoders, so they follow the format wherever it goes.
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "measure/MeasureRecords.h"

namespace {

void write(const std::string& path, const std::vector<unsigned char>& bytes) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()),
                                                static_cast<std::streamsize>(bytes.size()));
}

MEASURE_DATA segment(const char* id, double x1, double y1, double x2, double y2) {
    MEASURE_DATA m{};
    std::strncpy(m.id, id, sizeof m.id - 1);
    m.visible_Flag = 1;
    m.lineWidth = 2;
    m.rgb_Line_Array[0] = 1;
    const double v1[3] = {x1, y1, 50}, v2[3] = {x2, y2, 52};
    std::memcpy(m.vertex1, v1, sizeof v1);
    std::memcpy(m.vertex2, v2, sizeof v2);
    std::memcpy(m.observer, v1, sizeof v1);
    std::memcpy(m.obstruction, v2, sizeof v2);
    m.distance = 10;
    return m;
}

void append(std::vector<unsigned char>& out, const MEASURE_DATA& m) {
    const MeasureRecordBytes bytes = EncodeMeasureRecord(m);
    out.insert(out.end(), bytes.begin(), bytes.end());
}

}  // namespace

// argv[1]: the folder that gets measure_file/ and billboard_file/.
int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    const std::string root = std::string(argv[1]) + "/";
    // The measure target takes a first byte choosing ".MES" (even) or ".POL" (odd).
    std::vector<unsigned char> mes{0};
    append(mes, segment("M_1", 178500, 663500, 178510, 663500));
    append(mes, segment("M_2", 178500, 663500, 178500, 663520));
    write(root + "measure_file/two_measures", mes);
    std::vector<unsigned char> pol{1};
    append(pol, segment("POL_20240101_120000-1", 0, 0, 10, 0));
    append(pol, segment("POL_20240101_120000-2", 10, 0, 10, 10));
    append(pol, segment("POL_20240101_120000-3", 10, 10, 0, 0));
    write(root + "measure_file/triangle_polygon", pol);

    BILLBOARD_DATA b{};
    std::strncpy(b.id, "ICON_1", sizeof b.id - 1);
    b.imageWidth = 2;
    b.imageHeight = 2;
    b.alphaFlag = 1;
    b.imageSize = static_cast<int>(BillboardRowBytes(b.imageWidth, b.alphaFlag) * b.imageHeight);
    b.visibleFlag = 1;
    b.height = 3;
    b.position[0] = 178500;
    b.position[1] = 663500;
    b.position[2] = 50;
    const BillboardRecordBytes record = EncodeBillboardRecord(b);
    std::vector<unsigned char> blb(record.begin(), record.end());
    for (int i = 0; i < b.imageSize; ++i) blb.push_back(static_cast<unsigned char>(i * 16));
    b.alphaFlag = 0;
    std::strncpy(b.id, "ICON_2", sizeof b.id - 1);
    b.imageSize = static_cast<int>(BillboardRowBytes(b.imageWidth, b.alphaFlag) * b.imageHeight);
    const BillboardRecordBytes second = EncodeBillboardRecord(b);
    blb.insert(blb.end(), second.begin(), second.end());
    for (int i = 0; i < b.imageSize; ++i) blb.push_back(static_cast<unsigned char>(255 - i));
    write(root + "billboard_file/two_billboards", blb);
    return 0;
}
