#include "CliCommands.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr const char* USAGE =
    "zorvex64-cli <command> [arguments]\n"
    "commands:\n"
    "  info MODEL\n"
    "  ray MODEL X1 Y1 Z1 X2 Y2 Z2 [--skip D] [--first]\n"
    "  ground MODEL X Y\n";

struct Command {
    const char* name;
    int (*run)(const std::vector<std::string>&);
};

constexpr Command COMMANDS[] = {
    {"info", CliInfo},
    {"ray", CliRay},
    {"ground", CliGround},
};

}  // namespace

int RunCli(int argc, char** argv) {
    if (argc < 2 || std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0) {
        std::fputs(USAGE, argc < 2 ? stderr : stdout);
        return argc < 2 ? CLI_BAD_ARGUMENTS : CLI_OK;
    }
    const std::vector<std::string> args(argv + 2, argv + argc);
    for (const Command& command : COMMANDS)
        if (std::strcmp(argv[1], command.name) == 0) return command.run(args);
    std::fprintf(stderr, "error: unknown command: %s\n%s", argv[1], USAGE);
    return CLI_BAD_ARGUMENTS;
}
