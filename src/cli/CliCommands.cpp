#include "CliCommands.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

std::vector<CliCommand>& commands() {
    static std::vector<CliCommand> registered;
    return registered;
}

void printUsage(std::FILE* out) {
    std::vector<CliCommand> sorted = commands();
    std::sort(sorted.begin(), sorted.end(),
              [](const CliCommand& a, const CliCommand& b) { return std::strcmp(a.name, b.name) < 0; });
    std::fputs("zorvex64-cli <command> [arguments]\ncommands:\n", out);
    for (const CliCommand& c : sorted) std::fprintf(out, "  %s %s\n", c.name, c.usage);
}

}  // namespace

bool RegisterCliCommand(const CliCommand& command) {
    commands().push_back(command);
    return true;
}

int RunCli(int argc, char** argv) {
    if (argc < 2 || std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0) {
        printUsage(argc < 2 ? stderr : stdout);
        return argc < 2 ? CLI_BAD_ARGUMENTS : CLI_OK;
    }
    const std::vector<std::string> args(argv + 2, argv + argc);
    for (const CliCommand& command : commands())
        if (std::strcmp(argv[1], command.name) == 0) return command.run(args);
    std::fprintf(stderr, "error: unknown command: %s\n", argv[1]);
    printUsage(stderr);
    return CLI_BAD_ARGUMENTS;
}
