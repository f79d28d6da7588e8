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

void PrintToLogFile(std::FILE* file, const char* format, va_list args) {
    if (!file) return;
    std::vfprintf(file, format, args);
    std::fflush(file);
}

void PrintRunLog(const char* format, ...) {
    va_list args;
    va_start(args, format);
    PrintToLogFile(runLog().fp_prt, format, args);
    va_end(args);
}
