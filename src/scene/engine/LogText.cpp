#include "LogText.h"

#include <exception>

#include "EngineState.h"

namespace engine {

std::string oneLine(const std::string& text) {
    std::string out;
    for (char c : text) {
        const bool space = c == '\n' || c == '\r' || c == '\t';
        if (space) {
            if (!out.empty() && out.back() != ' ') out += ' ';
        } else {
            out += c;
        }
    }
    while (!out.empty() && out.back() == ' ') out.pop_back();
    return out.empty() ? std::string("unknown error") : out;
}

bool runOrLog(const char* verb, const std::string& path, const std::function<bool()>& work) {
    try {
        return work();
    } catch (const std::exception& e) {
        engineLog("cannot %s %s: %s", verb, path.c_str(), oneLine(e.what()).c_str());
    } catch (...) {
        engineLog("cannot %s %s: unexpected error", verb, path.c_str());
    }
    return false;
}

}  // namespace engine
