// The command line: the first argument is the model to open, and up to
// GLOBAL_ARGS_MAX arguments are kept for the Parts that read them.
#pragma once

#include <string>
#include <vector>

// The command line as one text, the way the shell received it: the program
// in quotes, then each argument after one blank.
std::string RawCommandLine(const std::vector<std::string>& argv);

// Fills GlobalARGVforDebug, GlobalArgs and NGlobalARGS of startupState()
// from argv (argv[0] being the program). A model path with blanks that came
// unquoted, and so in pieces, is put together again from rawCommandLine when
// the whole rest ends in ".obj" (any case); no other extension is repaired.
void CaptureCommandLine(const std::vector<std::string>& argv, const std::string& rawCommandLine);
