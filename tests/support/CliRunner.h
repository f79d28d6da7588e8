// Runs zorvex64-cli as a user would, capturing its output and exit code.
#pragma once

#include <string>

#include "support/TestSupport.h"

namespace testsupport {

struct CliResult {
    int exitCode = -1;
    std::string out;
    std::string err;
};

// Runs the CLI with the arguments (shell words) and, before them, any
// environment assignments ("HOME=/x"). Standard error goes through a file in dir.
CliResult runCli(const std::string& arguments, const ScratchDir& dir, const std::string& environment = "");

}  // namespace testsupport
