// Writer of OBJ models with their MTL library, in double precision.
#pragma once

#include <string>
#include <vector>

#include "Layer.h"

namespace engine {

// Writes the layers whose output flag is on to `path` and a library named
// like it with ".mtl", each through a temporary file renamed into place.
// Returns false and logs when a file cannot be written; nothing is left half-written.
bool WriteObjFile(const std::string& path, const std::vector<Layer>& layers, const std::string& producedBy);

}  // namespace engine
