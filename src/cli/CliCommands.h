// zorvex64-cli: one command per long job, on the same logic as the menus.
// Results go to stdout in a stable form, messages to stderr. Exit codes:
// 0 success, 1 a handled failure, 2 bad arguments.
//
// Each command file registers its commands with ZV_CLI_COMMAND, so adding a
// command touches no shared table.
#pragma once

#include <string>
#include <vector>

constexpr int CLI_OK = 0;
constexpr int CLI_FAILED = 1;
constexpr int CLI_BAD_ARGUMENTS = 2;

using CliRunFunction = int (*)(const std::vector<std::string>& args);

struct CliCommand {
    const char* name;
    const char* usage;  // the arguments after the name
    CliRunFunction run;
};

bool RegisterCliCommand(const CliCommand& command);

#define ZV_CLI_COMMAND(NAME, USAGE, FUNCTION) \
    [[maybe_unused]] static const bool registered_##FUNCTION = RegisterCliCommand({NAME, USAGE, FUNCTION})

int RunCli(int argc, char** argv);
