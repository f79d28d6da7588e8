// Reader of Wavefront OBJ models with their MTL materials and textures.
// Coordinates are parsed as double so that map coordinates stay exact, and
// the file is parsed by all cores at once.
#pragma once

#include <string>
#include <vector>

#include "Layer.h"

namespace engine {

// Appends the file's layers, one per group (a group drawn with several
// materials gives one layer per material). Returns false and logs a line
// naming the file and the fault; `layers` is then left as it was.
bool ReadObjFile(const std::string& path, std::vector<Layer>& layers);

// For tests: `opened` runs once the file is open and its size known, before
// its text is read (a test cuts the file short there). Stays until put back.
struct ObjReadHooks {
    void (*opened)(const std::string& path) = nullptr;
};
ObjReadHooks& objReadHooks();

}  // namespace engine
