#include "RunLog.h"

#include <cstdarg>

RunLog& runLog() {
    static RunLog log;
    return log;
}

void resetRunLog() {
    RunLog& log = runLog();
    if (log.fp_prt) std::fclose(log.fp_prt);
    log.fp_prt = nullptr;
}

void PrintRunLog(const char* format, ...) {
    std::FILE* file = runLog().fp_prt;
    if (!file) return;
    va_list args;
    va_start(args, format);
    std::vfprintf(file, format, args);
    va_end(args);
    std::fflush(file);
}
