#pragma once

#include <cstdint>

// CoreFoundation's log levels (the syslog ones).
enum : int32_t {
    kCFLogLevelEmergency = 0,
    kCFLogLevelAlert = 1,
    kCFLogLevelCritical = 2,
    kCFLogLevelError = 3,
    kCFLogLevelWarning = 4,
    kCFLogLevelNotice = 5,
    kCFLogLevelInfo = 6,
    kCFLogLevelDebug = 7,
};

// Formats a line as NSString's formatting does (%@ prints an object's
// description) and hands it to the host's log, the runtime's log sink, so
// that the host collects one log whoever writes to it. The level is not part
// of the line.
void CFLog(int32_t level, const char* format, ...);
