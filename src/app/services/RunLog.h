// The run log `fp_prt`: printf-style diagnostic lines. It may be closed, so
// every print goes through PrintRunLog, which tests the handle first.
#pragma once

#include <cstdarg>
#include <cstdio>

struct RunLog {
    std::FILE* fp_prt = nullptr;
};

RunLog& runLog();
// Closes an open log and forgets it.
void resetRunLog();
void PrintRunLog(const char* format, ...) __attribute__((format(printf, 1, 2)));
// Prints to a log file that may be closed (null), flushing at once so that
// the log survives a crash.
void PrintToLogFile(std::FILE* file, const char* format, va_list args);
