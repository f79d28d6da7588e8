// "Crop the model": a new OBJ keeping the faces that a polygon digitised in
// the scene encloses, beside the model, with the outline as a ".LIN" list.
#pragma once

#include <QString>
#include <string>
#include <vector>

// Faces reaching further than this in X or Y (map units) never stay: they
// are the stretched triangles of a mesh's margin.
constexpr double MAXFACELENGTH = 10.0;

struct CropResult {
    std::string output;  // "" when nothing was written
    long long kept = 0;
    long long faces = 0;
};

// The output of a crop named name: "_" name "_Cropped.obj" on the last model
// read, that without its folder and after a "_" on the model.
std::string CroppedModelName(const std::string& model, const std::string& lastPath, const QString& name);

// The pass itself. polygonX/Y: the outline in the local frame, first point
// repeated at the end; empty for a crop to the margin. center: the model's
// centre as read (OriginalobjectCenter).
CropResult CropObjFile(const std::string& input, const std::string& output, const std::vector<double>& polygonX,
                       const std::vector<double>& polygonY, const double center[3]);

// The menu item: the name asked, the outline from the measure list (or the
// margin after the question), the pass, the ".LIN" and ".PRJ" beside the
// output and the closing message.
CropResult CropTheModelFromFile();
