// zorvex64-cli: one command per long job, on the same logic as the menus.
// Results go to stdout in a stable form, messages to stderr. Exit codes:
// 0 success, 1 a handled failure, 2 bad arguments.
#pragma once

#include <string>
#include <vector>

constexpr int CLI_OK = 0;
constexpr int CLI_FAILED = 1;
constexpr int CLI_BAD_ARGUMENTS = 2;

int RunCli(int argc, char** argv);

// The commands, each given the words after its name.
int CliInfo(const std::vector<std::string>& args);
int CliRay(const std::vector<std::string>& args);
int CliGround(const std::vector<std::string>& args);
