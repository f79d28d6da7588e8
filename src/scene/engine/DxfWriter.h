// The hand-written DXF (this Assimp build has no DXF exporter): R12 text
// with a LAYER table, 3DFACE and LINE entities.
#pragma once

#include <string>
#include <vector>

#include "Layer.h"

namespace engine {

// The whole DXF text for `chosen` (each layer's triangles as 3DFACEs, its
// line segments as LINEs, on a DXF layer named after it). A non-empty
// `producedBy` goes into a leading comment.
std::string buildDxf(const std::vector<const Layer*>& chosen, const std::string& producedBy);

}  // namespace engine
