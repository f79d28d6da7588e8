// The solar log `SunGlobalLogfile` of the open model: every line of the sun,
// shading and energy work goes there. It may be closed, so every print goes
// through PrintSunLog, which tests the handle first.
#pragma once

#include <cstdio>
#include <string>

struct SunGlobalLog {
    std::FILE* SunGlobalLogfile = nullptr;
    std::string SunGlobalLogfileName;
};

SunGlobalLog& sunGlobalLog();
// Closes an open log (never the standard streams) and forgets it.
void resetSunGlobalLog();
void PrintSunLog(const char* format, ...) __attribute__((format(printf, 1, 2)));
