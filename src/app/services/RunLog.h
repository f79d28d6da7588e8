// The run log `fp_prt`: printf-style diagnostic lines. It may be closed, so
// every print goes through PrintRunLog, which tests the handle first.
#pragma once

#include <cstdio>

struct RunLog {
    std::FILE* fp_prt = nullptr;
};

RunLog& runLog();
// Closes an open log and forgets it.
void resetRunLog();
void PrintRunLog(const char* format, ...) __attribute__((format(printf, 1, 2)));
