#include "NSProcessInfo.h"

#include "CFLog.h"
#include "NSString.h"
#include "VirtualClock.h"

#include <cstdarg>

OBJC_IMPLEMENT_CLASS(NSProcessInfo, NSObject)
{
    c.classMethod<&NSProcessInfo::processInfo>("processInfo");
    c.method<&NSProcessInfo::isLowPowerModeEnabled>("isLowPowerModeEnabled");
    c.method<&NSProcessInfo::systemUptime>("systemUptime");
}

NSProcessInfo* NSProcessInfo::processInfo()
{
    static auto* info = new NSProcessInfo();
    return info;
}

double NSProcessInfo::systemUptime() const { return VirtualClock::shared().monotonic(); }

void CFLog(int32_t, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    std::string line = NSString::vformat(format, args);
    va_end(args);
    objc::Runtime::shared().log(line);
}
