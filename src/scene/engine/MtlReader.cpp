#include "MtlReader.h"

#include <cstdio>
#include <fstream>
#include <sstream>

#include "../FileNameCase.h"
#include "EngineState.h"

namespace engine {

namespace {

std::string trimmed(const std::string& s) {
    const auto b = s.find_first_not_of(" \t\r");
    if (b == std::string::npos) return "";
    const auto e = s.find_last_not_of(" \t\r");
    return s.substr(b, e - b + 1);
}

// The image of a map_Kd line: options such as "-s 1 1 1" come first, the
// file name last; a name without options may hold blanks.
std::string imageOfMapLine(const std::string& rest) {
    if (rest.empty() || rest[0] != '-') return rest;
    const auto lastBlank = rest.find_last_of(" \t");
    return lastBlank == std::string::npos ? rest : rest.substr(lastBlank + 1);
}

}  // namespace

void ReadMtlLibrary(const std::string& modelFolder, const std::string& library,
                    std::unordered_map<std::string, ObjMaterial>& materials) {
    const std::string path = ResolveReferencedFile(modelFolder, library);
    std::ifstream in(path, std::ios::binary);
    if (path.empty() || !in) {
        engineLog("OBJ read: material library not found: %s", library.c_str());
        return;
    }
    std::string line;
    ObjMaterial* current = nullptr;
    while (std::getline(in, line)) {
        const std::string text = trimmed(line);
        if (text.empty() || text[0] == '#') continue;
        const auto blank = text.find_first_of(" \t");
        const std::string key = text.substr(0, blank);
        const std::string rest = blank == std::string::npos ? "" : trimmed(text.substr(blank));
        if (key == "newmtl") {
            current = &materials[rest];
        } else if (!current) {
            continue;
        } else if (key == "Kd") {
            std::istringstream values(rest);
            float r, g, b;
            if (values >> r >> g >> b) {
                current->diffuse[0] = r;
                current->diffuse[1] = g;
                current->diffuse[2] = b;
            }
        } else if (key == "map_Kd") {
            const std::string image = imageOfMapLine(rest);
            current->texturePath = ResolveReferencedFile(modelFolder, image);
            if (current->texturePath.empty()) engineLog("OBJ read: texture not found: %s", image.c_str());
        }
    }
}

}  // namespace engine
