#include "MeasureRecords.h"

#include <cstring>

namespace {

// Little-endian whatever the machine: the files are exchanged between machines.
class RecordWriter {
public:
    explicit RecordWriter(unsigned char* out) : out_(out) {}
    void bytes(const void* data, std::size_t n) {
        std::memcpy(out_ + at_, data, n);
        at_ += n;
    }
    void u32(std::uint32_t v) {
        for (int i = 0; i < 4; ++i) out_[at_++] = static_cast<unsigned char>(v >> (8 * i));
    }
    void u64(std::uint64_t v) {
        for (int i = 0; i < 8; ++i) out_[at_++] = static_cast<unsigned char>(v >> (8 * i));
    }
    void i32(std::int32_t v) { u32(static_cast<std::uint32_t>(v)); }
    void f32(float v) {
        std::uint32_t bits;
        std::memcpy(&bits, &v, 4);
        u32(bits);
    }
    void f64(double v) {
        std::uint64_t bits;
        std::memcpy(&bits, &v, 8);
        u64(bits);
    }
    void f32x3(const float* v) {
        for (int i = 0; i < 3; ++i) f32(v[i]);
    }
    void f64x3(const double* v) {
        for (int i = 0; i < 3; ++i) f64(v[i]);
    }
    std::size_t at() const { return at_; }

private:
    unsigned char* out_;
    std::size_t at_ = 0;
};

class RecordReader {
public:
    explicit RecordReader(const unsigned char* in) : in_(in) {}
    void bytes(void* data, std::size_t n) {
        std::memcpy(data, in_ + at_, n);
        at_ += n;
    }
    std::uint32_t u32() {
        std::uint32_t v = 0;
        for (int i = 0; i < 4; ++i) v |= std::uint32_t(in_[at_++]) << (8 * i);
        return v;
    }
    std::uint64_t u64() {
        std::uint64_t v = 0;
        for (int i = 0; i < 8; ++i) v |= std::uint64_t(in_[at_++]) << (8 * i);
        return v;
    }
    std::int32_t i32() { return static_cast<std::int32_t>(u32()); }
    float f32() {
        const std::uint32_t bits = u32();
        float v;
        std::memcpy(&v, &bits, 4);
        return v;
    }
    double f64() {
        const std::uint64_t bits = u64();
        double v;
        std::memcpy(&v, &bits, 8);
        return v;
    }
    void f32x3(float* v) {
        for (int i = 0; i < 3; ++i) v[i] = f32();
    }
    void f64x3(double* v) {
        for (int i = 0; i < 3; ++i) v[i] = f64();
    }
    void skip(std::size_t n) { at_ += n; }

private:
    const unsigned char* in_;
    std::size_t at_ = 0;
};

void readId(RecordReader& in, char (&id)[AT3D_NAME_SIZE]) {
    in.bytes(id, AT3D_NAME_SIZE);
    id[AT3D_NAME_SIZE - 1] = '\0';
}

// The bytes after the terminator are written as zeros, so equal records give equal files.
void writeId(RecordWriter& out, const char (&id)[AT3D_NAME_SIZE]) {
    char clean[AT3D_NAME_SIZE] = {};
    std::size_t length = strnlen(id, AT3D_NAME_SIZE - 1);
    std::memcpy(clean, id, length);
    out.bytes(clean, AT3D_NAME_SIZE);
}

}  // namespace

MeasureRecordBytes EncodeMeasureRecord(const MEASURE_DATA& item) {
    MeasureRecordBytes bytes{};
    RecordWriter out(bytes.data());
    writeId(out, item.id);
    out.i32(item.visible_Flag);
    out.i32(item.observer_Flag);
    out.i32(item.obstruction_Flag);
    out.i32(item.spareFlag);
    out.f32(item.lineWidth);
    out.f32x3(item.rgb_Line_Array);
    out.f64x3(item.vertex1);
    out.f64x3(item.vertex2);
    out.f64x3(item.observer);
    out.f64x3(item.obstruction);
    out.f64(item.distance);
    out.f64(item.obstruction_Distance);
    return bytes;
}

MEASURE_DATA DecodeMeasureRecord(const unsigned char* bytes) {
    MEASURE_DATA item{};
    RecordReader in(bytes);
    readId(in, item.id);
    item.visible_Flag = in.i32();
    item.observer_Flag = in.i32();
    item.obstruction_Flag = in.i32();
    item.spareFlag = in.i32();
    item.lineWidth = in.f32();
    in.f32x3(item.rgb_Line_Array);
    in.f64x3(item.vertex1);
    in.f64x3(item.vertex2);
    in.f64x3(item.observer);
    in.f64x3(item.obstruction);
    item.distance = in.f64();
    item.obstruction_Distance = in.f64();
    return item;
}

BillboardRecordBytes EncodeBillboardRecord(const BILLBOARD_DATA& data) {
    BillboardRecordBytes bytes{};
    RecordWriter out(bytes.data());
    writeId(out, data.id);
    for (std::int32_t v : {data.imageSize, data.imageWidth, data.imageHeight, data.alphaFlag, data.pivotTypeFlag,
                           data.staticFlag, data.visibleFlag, data.oglReplaceFlag, data.typeFlag, data.spareFlag})
        out.i32(v);
    out.f32x3(data.rgb_Line_Array);
    out.f32(data.lineWidth);
    out.f64(data.height);
    out.f64x3(data.position);
    out.f64x3(data.pivot);
    out.f64x3(data.rotationStatic);
    out.u64(0);
    return bytes;
}

BILLBOARD_DATA DecodeBillboardRecord(const unsigned char* bytes) {
    BILLBOARD_DATA data{};
    RecordReader in(bytes);
    readId(in, data.id);
    for (std::int32_t* v : {&data.imageSize, &data.imageWidth, &data.imageHeight, &data.alphaFlag,
                            &data.pivotTypeFlag, &data.staticFlag, &data.visibleFlag, &data.oglReplaceFlag,
                            &data.typeFlag, &data.spareFlag})
        *v = in.i32();
    in.f32x3(data.rgb_Line_Array);
    data.lineWidth = in.f32();
    data.height = in.f64();
    in.f64x3(data.position);
    in.f64x3(data.pivot);
    in.f64x3(data.rotationStatic);
    in.skip(8);
    data.imagePtr = nullptr;
    return data;
}

bool BillboardImageSizeConsistent(const BILLBOARD_DATA& data) {
    if (data.imageWidth <= 0 || data.imageHeight <= 0) return data.imageSize == 0;
    // Either side alone beyond the byte limit can't make a picture within it.
    if (data.imageWidth > MAX_BILLBOARD_IMAGE_BYTES || data.imageHeight > MAX_BILLBOARD_IMAGE_BYTES) return false;
    const long long bytes = BillboardRowBytes(data.imageWidth, data.alphaFlag) * data.imageHeight;
    return bytes == data.imageSize && bytes <= MAX_BILLBOARD_IMAGE_BYTES;
}
