// Helpers shared by the test programs: scratch folders, small files, and a
// recorder for the engine's log lines.
#pragma once

#include <string>
#include <vector>

namespace testsupport {

// A fresh folder under the system temp folder, removed when it goes out of scope.
class ScratchDir {
public:
    ScratchDir();
    ~ScratchDir();
    ScratchDir(const ScratchDir&) = delete;
    ScratchDir& operator=(const ScratchDir&) = delete;
    // Path of a file inside the folder.
    std::string path(const std::string& name) const;
    const std::string& root() const { return root_; }

private:
    std::string root_;
};

void writeTextFile(const std::string& path, const std::string& text);
std::string readTextFile(const std::string& path);

// Resets the engine, starts it and records its log lines until destroyed.
class EngineFixtureGuard {
public:
    EngineFixtureGuard();
    ~EngineFixtureGuard();
    static const std::vector<std::string>& logLines();
    static bool logContains(const std::string& fragment);
};

}  // namespace testsupport
