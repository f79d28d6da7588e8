// Finding files whatever the case of their names. Models come from Windows
// machines, where "x.PRJ", "Offset.txt" and "x.prj" are the same file.
#pragma once

#include <string>

// The existing path that matches `path` when each component is compared
// without case ("\" counts as "/"); an exact match wins. "" when none.
std::string FindFileNoCase(const std::string& path);

// A path named inside a model file (a texture, a material library),
// resolved against the model's folder: absolute paths as they are, relative
// ones below the folder, "\" accepted, case ignored. "" when no file exists.
std::string ResolveReferencedFile(const std::string& modelFolder, const std::string& reference);

// The folder of a path, ending in "/" ("" for a bare name).
std::string FolderOf(const std::string& path);
