#include "SunGlobalLog.h"

#include <cstdarg>

#include "RunLog.h"

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
    va_list args;
    va_start(args, format);
    PrintToLogFile(sunGlobalLog().SunGlobalLogfile, format, args);
    va_end(args);
}
