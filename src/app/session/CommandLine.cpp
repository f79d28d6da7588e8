#include "CommandLine.h"

#include <QString>

#include "StartupState.h"

std::string RawCommandLine(const std::vector<std::string>& argv) {
    if (argv.empty()) return "";
    std::string raw = "\"" + argv[0] + "\"";
    for (std::size_t i = 1; i < argv.size(); ++i) raw += " " + argv[i];
    return raw;
}

void CaptureCommandLine(const std::vector<std::string>& argv, const std::string& rawCommandLine) {
    StartupState& state = startupState();
    state.GlobalARGVforDebug.clear();
    state.NGlobalARGS = 0;
    for (std::size_t i = 1; i < argv.size(); ++i) {
        if (i == 1) state.GlobalARGVforDebug = argv[i];
        if (state.NGlobalARGS < GLOBAL_ARGS_MAX) state.GlobalArgs[state.NGlobalARGS++] = argv[i];
    }
    if (state.GlobalARGVforDebug.empty() || argv.empty()) return;
    // The quoted program and the blank after it go; what is left is the
    // argument text as typed.
    const std::size_t skip = argv[0].size() + 2;
    if (rawCommandLine.size() <= skip) return;
    const QString rest = QString::fromStdString(rawCommandLine.substr(skip)).trimmed();
    if (rest.endsWith(".obj", Qt::CaseInsensitive))
        state.GlobalARGVforDebug = rest.toStdString();
}
