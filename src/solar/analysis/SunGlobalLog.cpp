#include "SunGlobalLog.h"

#include <cstdarg>

SunGlobalLog& sunGlobalLog() {
    static SunGlobalLog log;
    return log;
}

void resetSunGlobalLog() {
    SunGlobalLog& log = sunGlobalLog();
    if (log.SunGlobalLogfile && log.SunGlobalLogfile != stderr && log.SunGlobalLogfile != stdout)
        std::fclose(log.SunGlobalLogfile);
    log.SunGlobalLogfile = nullptr;
    log.SunGlobalLogfileName.clear();
}

void PrintSunLog(const char* format, ...) {
    std::FILE* file = sunGlobalLog().SunGlobalLogfile;
    if (!file) return;
    va_list args;
    va_start(args, format);
    std::vfprintf(file, format, args);
    va_end(args);
    std::fflush(file);
}
