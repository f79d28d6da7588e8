#include "LayerNamePool.h"

#include "../engine_interface.h"

namespace engine {
namespace {

constexpr std::size_t kMaxNameBytes = AT3D_NAME_SIZE - 1;

// Cuts a string to at most `limit` bytes without splitting a UTF-8 sequence.
std::string cutName(const std::string& s, std::size_t limit) {
    if (s.size() <= limit) return s;
    std::size_t end = limit;
    while (end > 0 && (static_cast<unsigned char>(s[end]) & 0xC0) == 0x80) --end;
    return s.substr(0, end);
}

}  // namespace

std::string NamePool::take(const std::string& wanted) {
    std::string name = cutName(wanted, kMaxNameBytes);
    for (int n = 2; used_.count(name); ++n) {
        const std::string suffix = "_" + std::to_string(n);
        name = cutName(wanted, kMaxNameBytes - suffix.size()) + suffix;
    }
    used_.insert(name);
    return name;
}

}  // namespace engine
