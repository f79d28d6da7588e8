// Reading and writing the model formats that go through Assimp: COLLADA
// (.dae), 3DS, STL, DXF and COB. DXF is written by hand (this Assimp build
// has no DXF exporter); everything else is read and written by Assimp.
#pragma once

#include <string>
#include <vector>

#include "Layer.h"

namespace engine {

// Reads a DAE, 3DS, STL, DXF or COB file through Assimp and appends one layer
// per mesh to `layers`. The file's own axes and units are kept: no up-axis
// turn, no unit scaling, no flipping; node transforms are applied (in double)
// so that every vertex stands where the file places it.
//
// Layer names: for COLLADA "<file base name>_<geometry id>" with every "/"
// of the id turned into "_"; for the other formats the mesh's own name, or
// "<file base name>_<mesh index>" when it has none (Assimp's 3DS meshes are
// only numbered: no name). Names are unique within one read ("_2", "_3"
// appended) and at most 79 bytes long. A mesh placed by several nodes gives
// one layer per placement.
//
// Triangles go to positions/triangles (with the first UV channel and the
// normals when the file has them), line primitives to lineVertices/
// lineSegments, points are dropped. The diffuse colour and the diffuse
// texture (resolved beside the model, "\" and any case accepted) go into the
// layer; a texture file that cannot be found is logged and the layer loads
// untextured.
//
// Returns false and logs one line naming the file and the reason when the
// file cannot be read; `layers` is then left as it was. Never throws. Assimp
// itself runs in a forked child process (the layers come back through a
// pipe), so that a damaged file Assimp would crash on costs a log line only;
// a child still reading after the time limit below is killed, and the read
// fails with a log line as well.
bool ReadModelWithAssimp(const std::string& path, std::vector<Layer>& layers);

// The time limit of one read: a minute, and two seconds more for each
// megabyte of the file, many times what a sound file of that size takes.
inline constexpr double kAssimpReadBaseSeconds = 60;
inline constexpr double kAssimpReadSecondsPerMegabyte = 2;

// For tests of the isolated read: a time limit that replaces the one above
// (0 keeps it), and work the child does before it reads (a test makes it
// hang there). Both stay for every later read until put back.
struct AssimpReadHooks {
    double timeLimitSeconds = 0;
    void (*inChild)() = nullptr;
};
AssimpReadHooks& assimpReadHooks();

// Writes the layers whose outputFlag is set as DAE, 3DS, STL or DXF
// (writeType AT3D_WRITE_DAE, AT3D_WRITE_3DS, AT3D_WRITE_STL, AT3D_WRITE_DXF).
// One mesh and one node per layer, both named after the layer, with a
// material carrying the diffuse colour and the texture (named relative to
// the output folder when the image lies inside it, else absolute).
// Layers with line geometry only are written to DXF and skipped elsewhere.
// `producedBy` goes into the COLLADA authoring_tool, the STL solid name and
// a DXF comment. The file is written to a temporary file beside the target
// and renamed over it only when complete. Returns false and logs one line on
// failure (nothing to write, unknown type, export or I/O error). Never throws.
bool WriteModelWithAssimp(const std::string& path, int writeType, const std::vector<Layer>& layers,
                          const std::string& producedBy);

}  // namespace engine
