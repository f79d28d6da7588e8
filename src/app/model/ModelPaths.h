// Names derived from a model's path.
#pragma once

#include <QString>
#include <string>

// The path with its extension replaced (or added when it has none).
std::string WithExtension(const std::string& path, const std::string& extension);
// The path without its extension.
std::string WithoutExtension(const std::string& path);
QString WithoutExtension(const QString& path);
// The file name without folder and extension.
std::string BaseNameOf(const std::string& path);
// The existing file or folder folder + name in any case, else folder + name.
std::string SideFile(const std::string& folder, const std::string& name);
