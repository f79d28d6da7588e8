// The byte images of the measurement files against records laid out by hand
// from the format's offset table: a measure of 224 bytes, and a billboard
// entry of 224 bytes followed by its picture.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "measure/MeasureRecords.h"

namespace {

using Bytes = std::vector<unsigned char>;

void put32(Bytes& b, std::size_t at, std::uint32_t v) {
    for (int i = 0; i < 4; ++i) b[at + i] = static_cast<unsigned char>(v >> (8 * i));
}
void put64(Bytes& b, std::size_t at, std::uint64_t v) {
    for (int i = 0; i < 8; ++i) b[at + i] = static_cast<unsigned char>(v >> (8 * i));
}
void putFloat(Bytes& b, std::size_t at, float v) {
    std::uint32_t bits;
    std::memcpy(&bits, &v, 4);
    put32(b, at, bits);
}
void putDouble(Bytes& b, std::size_t at, double v) {
    std::uint64_t bits;
    std::memcpy(&bits, &v, 8);
    put64(b, at, bits);
}
void putText(Bytes& b, std::size_t at, const char* text) { std::memcpy(&b[at], text, std::strlen(text)); }

// The measure of the offset table: "POL_3600-2", visible, no observer, an
// obstruction, width 4, blue, from (100.5, 200.25, 30) to (110.5, 200.25, 31).
Bytes handMadeMeasure() {
    Bytes b(224, 0);
    putText(b, 0, "POL_3600-2");
    put32(b, 80, 1);
    put32(b, 84, 0);
    put32(b, 88, 1);
    put32(b, 92, 0);
    putFloat(b, 96, 4.0f);
    putFloat(b, 100, 0.0f);
    putFloat(b, 104, 0.0f);
    putFloat(b, 108, 1.0f);
    const double v1[3] = {100.5, 200.25, 30}, v2[3] = {110.5, 200.25, 31}, ob[3] = {105, 200.25, 30.5};
    for (int i = 0; i < 3; ++i) {
        putDouble(b, 112 + 8 * i, v1[i]);
        putDouble(b, 136 + 8 * i, v2[i]);
        putDouble(b, 160 + 8 * i, 0);
        putDouble(b, 184 + 8 * i, ob[i]);
    }
    putDouble(b, 208, 10.04987562112089);
    putDouble(b, 216, 5.0249378);
    return b;
}

MEASURE_DATA measureOfTable() {
    MEASURE_DATA m{};
    std::strcpy(m.id, "POL_3600-2");
    m.visible_Flag = 1;
    m.obstruction_Flag = 1;
    m.lineWidth = 4;
    m.rgb_Line_Array[2] = 1;
    const double v1[3] = {100.5, 200.25, 30}, v2[3] = {110.5, 200.25, 31}, ob[3] = {105, 200.25, 30.5};
    for (int i = 0; i < 3; ++i) {
        m.vertex1[i] = v1[i];
        m.vertex2[i] = v2[i];
        m.obstruction[i] = ob[i];
    }
    m.distance = 10.04987562112089;
    m.obstruction_Distance = 5.0249378;
    return m;
}

// A 3 x 2 billboard "A|FLAG1700000000000" with alpha: 24 bytes of picture.
Bytes handMadeBillboard() {
    Bytes b(224, 0);
    putText(b, 0, "A|FLAG1700000000000");
    const std::int32_t ints[10] = {24, 3, 2, 1, 2, 1, 1, 1, 0, 0};
    for (int i = 0; i < 10; ++i) put32(b, 80 + 4 * i, static_cast<std::uint32_t>(ints[i]));
    putFloat(b, 120, 1.0f);
    putFloat(b, 124, 0.5f);
    putFloat(b, 128, 0.0f);
    putFloat(b, 132, 4.0f);
    putDouble(b, 136, 2.0);
    const double position[3] = {178480, 663480, 44}, pivot[3] = {178480, 663479, 44}, rotation[3] = {0, 35, 0};
    for (int i = 0; i < 3; ++i) {
        putDouble(b, 144 + 8 * i, position[i]);
        putDouble(b, 168 + 8 * i, pivot[i]);
        putDouble(b, 192 + 8 * i, rotation[i]);
    }
    return b;
}

}  // namespace

TEST(MeasureRecords, AMeasureIsWrittenAtTheOffsetsOfItsTable) {
    const MeasureRecordBytes bytes = EncodeMeasureRecord(measureOfTable());
    EXPECT_EQ(Bytes(bytes.begin(), bytes.end()), handMadeMeasure());
}

TEST(MeasureRecords, TheBytesAfterAnIdsTerminatorAreZeros) {
    MEASURE_DATA m = measureOfTable();
    // What an earlier, longer id left in the buffer must not reach the file.
    std::memset(m.id, 'x', sizeof m.id);
    std::strcpy(m.id, "M1");
    const MeasureRecordBytes bytes = EncodeMeasureRecord(m);
    EXPECT_EQ(bytes[0], 'M');
    EXPECT_EQ(bytes[1], '1');
    for (int i = 2; i < 80; ++i) EXPECT_EQ(bytes[std::size_t(i)], 0) << "byte " << i;
}

TEST(MeasureRecords, AMeasureIsReadFromTheBytesOfItsTable) {
    const Bytes bytes = handMadeMeasure();
    const MEASURE_DATA m = DecodeMeasureRecord(bytes.data());
    EXPECT_STREQ(m.id, "POL_3600-2");
    EXPECT_EQ(m.visible_Flag, 1);
    EXPECT_EQ(m.observer_Flag, 0);
    EXPECT_EQ(m.obstruction_Flag, 1);
    EXPECT_FLOAT_EQ(m.lineWidth, 4);
    EXPECT_FLOAT_EQ(m.rgb_Line_Array[2], 1);
    EXPECT_DOUBLE_EQ(m.vertex1[0], 100.5);
    EXPECT_DOUBLE_EQ(m.vertex2[2], 31);
    EXPECT_DOUBLE_EQ(m.obstruction[0], 105);
    EXPECT_DOUBLE_EQ(m.distance, 10.04987562112089);
    EXPECT_DOUBLE_EQ(m.obstruction_Distance, 5.0249378);
}

TEST(MeasureRecords, AnIdFillingAllEightyBytesIsCutToSeventyNine) {
    Bytes bytes = handMadeMeasure();
    std::memset(bytes.data(), 'Q', 80);
    const MEASURE_DATA m = DecodeMeasureRecord(bytes.data());
    EXPECT_EQ(std::strlen(m.id), 79u);
}

TEST(MeasureRecords, ABillboardIsWrittenAtTheOffsetsOfItsTableWithoutItsPointer) {
    BILLBOARD_DATA d{};
    std::strcpy(d.id, "A|FLAG1700000000000");
    d.imageSize = 24;
    d.imageWidth = 3;
    d.imageHeight = 2;
    d.alphaFlag = 1;
    d.pivotTypeFlag = 2;
    d.staticFlag = d.visibleFlag = d.oglReplaceFlag = 1;
    d.rgb_Line_Array[0] = 1;
    d.rgb_Line_Array[1] = 0.5f;
    d.lineWidth = 4;
    d.height = 2;
    const double position[3] = {178480, 663480, 44}, pivot[3] = {178480, 663479, 44};
    for (int i = 0; i < 3; ++i) {
        d.position[i] = position[i];
        d.pivot[i] = pivot[i];
    }
    d.rotationStatic[1] = 35;
    UInt8 pixels[24] = {};
    d.imagePtr = pixels;
    const BillboardRecordBytes bytes = EncodeBillboardRecord(d);
    EXPECT_EQ(Bytes(bytes.begin(), bytes.end()), handMadeBillboard());

    const BILLBOARD_DATA back = DecodeBillboardRecord(bytes.data());
    EXPECT_STREQ(back.id, "A|FLAG1700000000000");
    EXPECT_EQ(back.imageSize, 24);
    EXPECT_EQ(back.pivotTypeFlag, 2);
    EXPECT_EQ(back.imagePtr, nullptr);
    EXPECT_DOUBLE_EQ(back.rotationStatic[1], 35);
    EXPECT_DOUBLE_EQ(back.pivot[1], 663479);
}

TEST(MeasureRecords, APictureSizeMustAgreeWithItsRows) {
    BILLBOARD_DATA d{};
    d.imageWidth = 5;
    d.imageHeight = 2;
    d.alphaFlag = 1;
    d.imageSize = 40;
    EXPECT_TRUE(BillboardImageSizeConsistent(d));
    // Without alpha a row of 5 pixels is 15 bytes padded to 16.
    d.alphaFlag = 0;
    EXPECT_FALSE(BillboardImageSizeConsistent(d));
    d.imageSize = 32;
    EXPECT_TRUE(BillboardImageSizeConsistent(d));
    // Sizes that would overflow or exceed the limit are refused.
    d.imageWidth = 0x7FFFFFFF;
    d.imageHeight = 0x7FFFFFFF;
    EXPECT_FALSE(BillboardImageSizeConsistent(d));
    d.imageWidth = 0;
    d.imageHeight = 0;
    d.imageSize = 0;
    EXPECT_TRUE(BillboardImageSizeConsistent(d));
    d.imageSize = 5;
    EXPECT_FALSE(BillboardImageSizeConsistent(d));
}
