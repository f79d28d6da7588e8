// What one Assimp read produces, and the read itself in this process. The
// isolated reader runs it in a child process and carries the outcome back.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "Layer.h"

namespace engine {

// What one read produced: its layers, or why it failed, and its log lines.
struct ReadOutcome {
    bool ok = false;
    std::vector<std::string> log;
    std::vector<Layer> layers;

    template <typename... Args>
    void note(const char* format, Args... args) {
        char line[2048];
        std::snprintf(line, sizeof line, format, args...);
        log.emplace_back(line);
    }
};

// Reads `path` through Assimp into `outcome` (layers named, placed and
// coloured as AssimpAdapter.h describes). Never throws: an exception
// becomes a failed outcome with its log line.
void readModelInProcess(const std::string& path, ReadOutcome& outcome);

}  // namespace engine
