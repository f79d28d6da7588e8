#include "support/CliRunner.h"

#include <sys/wait.h>

#include <cstdio>

namespace testsupport {

CliResult runCli(const std::string& arguments, const ScratchDir& dir, const std::string& environment) {
    const std::string errPath = dir.path("stderr.txt");
    const std::string command =
        (environment.empty() ? "" : environment + " ") + ZV_CLI_PATH + " " + arguments + " 2>" + errPath;
    CliResult result;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return result;
    char buffer[4096];
    std::size_t n;
    while ((n = fread(buffer, 1, sizeof buffer, pipe)) > 0) result.out.append(buffer, n);
    const int status = pclose(pipe);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.err = readTextFile(errPath);
    return result;
}

}  // namespace testsupport
