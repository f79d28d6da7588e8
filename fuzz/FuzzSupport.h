// What the reader fuzz targets share: one private scratch folder per
// process, and the fuzz input put in a file there for readers that take a path.
#pragma once

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace zvfuzz {

// The process works inside the folder and HOME points at it, so any path a
// reader derives from its input, and every side file it writes, stays there.
// Kept for the whole run (never freed), so the clean-up at exit still has it.
inline const std::string& scratch() {
    static const std::string* const root = [] {
        char pattern[] = "/tmp/zv-fuzz-XXXXXX";
        const char* made = mkdtemp(pattern);
        if (!made || chdir(made) != 0) std::abort();
        setenv("HOME", made, 1);
        std::atexit([] {
            std::error_code ec;
            std::filesystem::remove_all(scratch(), ec);
        });
        return new std::string(std::string(made) + "/");
    }();
    return *root;
}

inline std::string scratchPath(const std::string& name) { return scratch() + name; }

// Writes the bytes to name inside the scratch folder and returns its path.
inline std::string writeFile(const std::string& name, const std::uint8_t* data, std::size_t size) {
    const std::string path = scratchPath(name);
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    return path;
}

inline std::string writeFile(const std::string& name, const std::string& text) {
    return writeFile(name, reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
}

}  // namespace zvfuzz
