#include "ModelFileNames.h"

#include <cctype>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace engine {

std::string lowerCase(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

std::string fileNameOf(const std::string& path) {
    const auto slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string baseNameOf(const std::string& path) {
    const std::string name = fileNameOf(path);
    const auto dot = name.find_last_of('.');
    return (dot == std::string::npos || dot == 0) ? name : name.substr(0, dot);
}

std::string textureReference(const std::string& texturePath, const std::string& outputPath) {
    if (texturePath.empty()) return "";
    std::error_code ec;
    const fs::path image = fs::weakly_canonical(fs::absolute(texturePath, ec), ec);
    fs::path folder = fs::absolute(outputPath, ec).parent_path();
    folder = fs::weakly_canonical(folder, ec);
    const fs::path relative = image.lexically_relative(folder);
    if (!relative.empty() && *relative.begin() != ".." && relative.is_relative()) return relative.generic_string();
    return image.generic_string();
}

}  // namespace engine
