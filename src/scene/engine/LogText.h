// Text bound for the engine log, which takes one line per message.
#pragma once

#include <functional>
#include <string>

namespace engine {

// `text` on one line: line breaks and tabs become single spaces, trailing
// spaces go; "unknown error" when nothing is left (Assimp's messages may
// span lines or be empty).
std::string oneLine(const std::string& text);

// Runs `work` and returns its answer. An exception from it becomes one log
// line, "cannot <verb> <path>: <what it says>", and false.
bool runOrLog(const char* verb, const std::string& path, const std::function<bool()>& work);

}  // namespace engine
