#include "support/TestSupport.h"

#include <cpl_conv.h>
#include <gtest/gtest.h>
#include <ogr_spatialref.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"

namespace fs = std::filesystem;

namespace testsupport {

namespace {

template <typename Number>
void expectNear3(const Number* actual, Number x, Number y, Number z, Number tol) {
    EXPECT_NEAR(actual[0], x, tol);
    EXPECT_NEAR(actual[1], y, tol);
    EXPECT_NEAR(actual[2], z, tol);
}

}  // namespace

void expectVec(const double* actual, double x, double y, double z, double tol) { expectNear3(actual, x, y, z, tol); }

void expectRgb(const float* rgb, float r, float g, float b, float tol) { expectNear3(rgb, r, g, b, tol); }

ScratchDir::ScratchDir() {
    std::random_device rd;
    fs::path base = fs::temp_directory_path() / ("zv-test-" + std::to_string(rd()) + "-" + std::to_string(rd()));
    fs::create_directories(base);
    root_ = base.string() + "/";
}

ScratchDir::~ScratchDir() {
    std::error_code ec;
    fs::remove_all(root_, ec);
}

std::string ScratchDir::path(const std::string& name) const { return root_ + name; }

void writeTextFile(const std::string& path, const std::string& text) {
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream out(path, std::ios::binary);
    out << text;
}

std::string readTextFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

namespace {
std::vector<std::string>& recordedLines() {
    static std::vector<std::string> lines;
    return lines;
}
void recordLine(const char* line) { recordedLines().emplace_back(line); }
}  // namespace

EngineFixtureGuard::EngineFixtureGuard() {
    engine::resetEngineState();
    recordedLines().clear();
    At3d_Set_Log_Function(recordLine);
    At3d_Start();
}

EngineFixtureGuard::~EngineFixtureGuard() {
    At3d_Stop();
    At3d_Set_Log_Function(nullptr);
    engine::resetEngineState();
}

const std::vector<std::string>& EngineFixtureGuard::logLines() { return recordedLines(); }

bool EngineFixtureGuard::logContains(const std::string& fragment) {
    for (const auto& line : recordedLines())
        if (line.find(fragment) != std::string::npos) return true;
    return false;
}

}  // namespace testsupport

void testsupport::writePrjOfEpsg(const std::string& path, int epsg) {
    OGRSpatialReference srs;
    srs.importFromEPSG(epsg);
    char* wkt = nullptr;
    srs.exportToWkt(&wkt);
    writeTextFile(path, wkt);
    CPLFree(wkt);
}
