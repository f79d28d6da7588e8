// Smaller textures for a packed model ("With small JPG"): a picture wider
// than 4096 becomes a 4096 x 4096 JPEG in the temporary folder. Its aspect
// is not kept; the texture coordinates are relative, so the mesh does not
// notice. The original picture is never touched.
#pragma once

#include <QString>
#include <vector>

constexpr int PACK_TEXTURE_SIZE = 4096;
constexpr int PACK_JPEG_QUALITY = 70;

// Resamples an interleaved 8-bit RGB picture to dstWidth x dstHeight, each
// axis on its own: an axis that shrinks averages the source pixels each
// target pixel covers (partly covered ones by their share), an axis that
// grows or stays interpolates linearly between pixel centres.
std::vector<unsigned char> StretchRgb(const unsigned char* rgb, int width, int height, int dstWidth, int dstHeight);

// The picture to pack in place of `picture`: a JPEG wider than
// PACK_TEXTURE_SIZE is written as a PACK_TEXTURE_SIZE square JPEG of quality
// PACK_JPEG_QUALITY into ORVO_T under the same file name, and that copy is
// returned; anything else (narrower, not a JPEG, unreadable) is returned as it is.
QString ReducePictureForPacking(const QString& picture);
