// Layer names unique within one read or write, and short enough for the
// engine's name fields.
#pragma once

#include <set>
#include <string>

namespace engine {

// Hands out names unique within one pool, "_2", "_3" ... appended on
// clashes, each at most AT3D_NAME_SIZE - 1 bytes (cut without splitting a
// UTF-8 sequence).
class NamePool {
public:
    std::string take(const std::string& wanted);

private:
    std::set<std::string> used_;
};

}  // namespace engine
