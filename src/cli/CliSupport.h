// Helpers the CLI commands share: strict number parsing, usage errors and
// opening a model the way the viewer does.
#pragma once

#include <string>

#include "app/model/ModelOpening.h"

// Parses a whole word as a number; false on anything else.
bool ParseCliNumber(const std::string& word, double& value);

// Prints "error: <message>" and the usage line to stderr; returns CLI_BAD_ARGUMENTS.
int CliUsageError(const std::string& message, const char* usage);

// Starts the engine (log lines to stderr) and opens the model; on failure
// prints why and returns false.
bool OpenModelForCli(const std::string& path, OpenedModel& opened);
