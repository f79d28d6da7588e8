// Helpers shared by the test programs: scratch folders, small files, a
// recorder for the engine's log lines, and checks on three-component values.
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
// A ".prj" holding the WKT of an EPSG coordinate system.
void writePrjOfEpsg(const std::string& path, int epsg);

// Resets the engine, starts it and records its log lines until destroyed.
class EngineFixtureGuard {
public:
    EngineFixtureGuard();
    ~EngineFixtureGuard();
    static const std::vector<std::string>& logLines();
    static bool logContains(const std::string& fragment);
};

// EXPECT_NEAR on each component of a point or vector, and of a colour.
void expectVec(const double* actual, double x, double y, double z, double tol = 1e-9);
void expectRgb(const float* rgb, float r, float g, float b, float tol = 1e-6f);

}  // namespace testsupport
