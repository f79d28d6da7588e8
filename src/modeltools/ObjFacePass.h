// The pass that crop and clean share: a new OBJ made of the input's lines
// with some faces left out. Vertices, texture coordinates and material
// lines are copied as they stand, so the output uses the same material file
// and pictures; only X, Y, Z of the vertices are held, as floats about the
// model's centre.
#pragma once

#include <QString>
#include <functional>
#include <string>
#include <vector>

#include "ObjPieces.h"

// Vertex k (0-based) at xyz[3k..3k+2], in the model's local frame.
struct LocalVertices {
    std::vector<float> xyz;
    long long count = 0;  // read so far: a face sees only the vertices above it
};

struct FacePassResult {
    bool written = false;     // the output stands complete
    bool cancelled = false;   // the operator stopped it: no output
    long long faces = 0;      // faces seen
    long long dropped = 0;
    QString error;            // why nothing was written
};

// drop(face, vertices) decides each triangle; other lines, polygons of more
// corners among them, are copied as they stand. The status line shows
// "Processing record %d of %d  %.1f%%  %s    " every statusEvery lines (0: never).
FacePassResult RunObjFacePass(const std::string& input, const std::string& output, const double center[3],
                              int statusEvery,
                              const std::function<bool(const ObjFace&, const LocalVertices&)>& drop);

// Copies the model's ".PRJ" (any case) to output's name with ".PRJ", when there is one.
void CopyModelPrj(const std::string& model, const std::string& output);
