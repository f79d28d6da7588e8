// Reader of OBJ material libraries: the diffuse colour and image of each material.
#pragma once

#include <string>
#include <unordered_map>

namespace engine {

struct ObjMaterial {
    float diffuse[3] = {0.8f, 0.8f, 0.8f};
    std::string texturePath;  // resolved, "" when none or not found
};

// Adds the materials of one library named in the OBJ (relative to its
// folder, any case). A missing library or image is logged; reading goes on.
void ReadMtlLibrary(const std::string& modelFolder, const std::string& library,
                    std::unordered_map<std::string, ObjMaterial>& materials);

}  // namespace engine
