#include "FileNameCase.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace {

bool equalNoCase(const std::string& a, const std::string& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
           });
}

std::string withSlashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

}  // namespace

std::string FindFileNoCase(const std::string& rawPath) {
    const std::string path = withSlashes(rawPath);
    if (path.empty()) return "";
    std::error_code ec;
    if (fs::exists(path, ec)) return path;

    fs::path p(path);
    fs::path current = p.is_absolute() ? p.root_path() : fs::path(".");
    bool first = true;
    for (const auto& part : p.relative_path()) {
        const std::string name = part.string();
        if (name.empty() || name == ".") continue;
        fs::path exact = current / part;
        if (name == ".." || fs::exists(exact, ec)) {
            current = exact;
        } else {
            bool found = false;
            for (const auto& entry : fs::directory_iterator(current, ec)) {
                if (equalNoCase(entry.path().filename().string(), name)) {
                    current = entry.path();
                    found = true;
                    break;
                }
            }
            if (!found) return "";
        }
        first = false;
    }
    if (first) return "";
    std::string result = current.string();
    if (!p.is_absolute() && result.rfind("./", 0) == 0) result = result.substr(2);
    return result;
}

std::string ResolveReferencedFile(const std::string& modelFolder, const std::string& reference) {
    std::string ref = withSlashes(reference);
    while (!ref.empty() && (ref.back() == ' ' || ref.back() == '\r' || ref.back() == '\t')) ref.pop_back();
    while (ref.rfind("./", 0) == 0) ref = ref.substr(2);
    if (ref.empty()) return "";
    if (fs::path(ref).is_absolute()) return FindFileNoCase(ref);
    std::string folder = withSlashes(modelFolder);
    if (!folder.empty() && folder.back() != '/') folder += '/';
    std::string found = FindFileNoCase(folder + ref);
    if (found.empty()) {
        // Exporters often keep only the name while the image lies beside the model.
        const auto slash = ref.find_last_of('/');
        if (slash != std::string::npos) found = FindFileNoCase(folder + ref.substr(slash + 1));
    }
    return found;
}

std::string FolderOf(const std::string& rawPath) {
    const std::string path = withSlashes(rawPath);
    const auto slash = path.find_last_of('/');
    return slash == std::string::npos ? "" : path.substr(0, slash + 1);
}
