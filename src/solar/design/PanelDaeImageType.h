// The true kind of an image file, told by its first bytes and not by its name:
// panel textures travel under names whose extension may lie.
#pragma once

#include <QString>

// ".jpg", ".png", ".bmp", ".gif", ".tif" or ".webp"; ".unknown" for other
// contents, ".error" for a missing file or one under 12 bytes.
QString GetCorrectFileExtensionFromImageFile(const QString& fileName);
