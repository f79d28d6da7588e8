// The byte images of the measurement files: a measure or polygon segment
// (".MES", ".POL", ".LIN") and a billboard entry (".BLB") are each one
// record of 224 bytes, little-endian, with no header and no count. A
// billboard's record is followed at once by imageSize bytes of pixels.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "scene/engine_interface.h"

constexpr std::size_t MEASURE_RECORD_SIZE = 224;
constexpr std::size_t BILLBOARD_RECORD_SIZE = 224;
// A picture bigger than this in a file is taken for a damaged entry.
constexpr std::int32_t MAX_BILLBOARD_IMAGE_BYTES = 64 * 1024 * 1024;

using MeasureRecordBytes = std::array<unsigned char, MEASURE_RECORD_SIZE>;
using BillboardRecordBytes = std::array<unsigned char, BILLBOARD_RECORD_SIZE>;

MeasureRecordBytes EncodeMeasureRecord(const MEASURE_DATA& item);
// The id always ends up terminated, even when the file's 80 bytes hold none.
MEASURE_DATA DecodeMeasureRecord(const unsigned char* bytes);

// The picture pointer's 8 bytes are written as zeros: an address means nothing in a file.
BillboardRecordBytes EncodeBillboardRecord(const BILLBOARD_DATA& data);
// imagePtr stays null; the caller reads the imageSize bytes that follow.
BILLBOARD_DATA DecodeBillboardRecord(const unsigned char* bytes);

// Whether a record's picture size agrees with its width, height and alpha
// flag and stays within MAX_BILLBOARD_IMAGE_BYTES.
bool BillboardImageSizeConsistent(const BILLBOARD_DATA& data);
