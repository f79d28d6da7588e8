#pragma once
// Writes a Mesh as Wavefront OBJ with its one-material MTL.

#include "Mesh.h"

#include <string>

namespace sitegen {

struct ObjMaterial {
    std::string mtlFileName;  // written next to the OBJ
    std::string materialName;
    std::string textureFileName;
};

// Throws std::runtime_error when a file cannot be written.
void writeObj(const std::string& objPath, const Mesh& mesh, const ObjMaterial& material, const std::string& headerComment);
void writeMtl(const std::string& mtlPath, const ObjMaterial& material, const std::string& headerComment);

} // namespace sitegen
