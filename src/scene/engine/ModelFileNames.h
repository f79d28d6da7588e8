// File-name helpers shared by the model readers and writers.
#pragma once

#include <string>

namespace engine {

// ASCII lower case; other bytes pass unchanged.
std::string lowerCase(std::string s);

// The part after the last "/" or "\" (the whole path when there is none).
std::string fileNameOf(const std::string& path);

// fileNameOf without its extension; a leading dot is part of the name.
std::string baseNameOf(const std::string& path);

// The name a written file at `outputPath` uses for a texture: relative to
// the output file's folder when the image lies inside it, else absolute.
// "" for no texture.
std::string textureReference(const std::string& texturePath, const std::string& outputPath);

}  // namespace engine
