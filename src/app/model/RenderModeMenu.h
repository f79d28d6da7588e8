// The view menu's drawing switches: the model's texture in colour, grey or
// sepia, textures on or off, the measure list's depth test, back-face
// culling and high accuracy.
#pragma once

#include <string>

// Quality of the grey and sepia copies of the texture.
constexpr int RENDER_MODE_JPEG_QUALITY = 70;
// The help label's colour while high accuracy drawing is on.
constexpr int HIGH_ACCURACY_COLOR = 0xf0caa6;

// Writes the converted copy of source unless it exists; false when the
// source can't be read or the copy can't be written.
bool MakeGrayTexture(const std::string& source, const std::string& target);
bool MakeSepiaTexture(const std::string& source, const std::string& target);

void Normal1Click();
void Gray1Click();
void Sepia1Click();
void Usetexture1Click();
void DepthFlagBtnClick();
void BackfaceCullingBtnClick();
void Highaccuracy1Click();
