#include "ModelPaths.h"

#include "scene/FileNameCase.h"

namespace {

std::size_t extensionDot(const std::string& path) {
    const auto slash = path.find_last_of('/');
    const auto dot = path.find_last_of('.');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return std::string::npos;
    return dot;
}

}  // namespace

std::string WithExtension(const std::string& path, const std::string& extension) {
    return WithoutExtension(path) + extension;
}

std::string WithoutExtension(const std::string& path) {
    const auto dot = extensionDot(path);
    return dot == std::string::npos ? path : path.substr(0, dot);
}

QString WithoutExtension(const QString& path) { return QString::fromStdString(WithoutExtension(path.toStdString())); }

std::string BaseNameOf(const std::string& path) {
    const std::string stem = WithoutExtension(path);
    const auto slash = stem.find_last_of('/');
    return slash == std::string::npos ? stem : stem.substr(slash + 1);
}

std::string SideFile(const std::string& folder, const std::string& name) {
    const std::string existing = FindFileNoCase(folder + name);
    return existing.empty() ? folder + name : existing;
}
