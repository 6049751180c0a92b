#include "NSDate.h"

#include "VirtualClock.h"

#include <cstdio>
#include <ctime>

OBJC_IMPLEMENT_CLASS(NSDate, NSObject)
{
    c.classMethod<&NSDate::date>("date");
    c.method<&NSDate::timeIntervalSinceReferenceDate>("timeIntervalSinceReferenceDate");
    c.method<&NSDate::timeIntervalSince1970>("timeIntervalSince1970");
    c.method<&NSDate::timeIntervalSinceNow>("timeIntervalSinceNow");
}

RefPtr<NSDate> NSDate::date() { return make<NSDate>(VirtualClock::shared().wallNow()); }

RefPtr<NSDate> NSDate::dateWithTimeIntervalSince1970(double seconds)
{
    return make<NSDate>(seconds - VirtualClock::referenceDateSince1970);
}

RefPtr<NSDate> NSDate::dateWithTimeIntervalSinceNow(double seconds) { return make<NSDate>(VirtualClock::shared().wallNow() + seconds); }

double NSDate::timeIntervalSince1970() const { return m_time + VirtualClock::referenceDateSince1970; }

double NSDate::timeIntervalSinceNow() const { return m_time - VirtualClock::shared().wallNow(); }

std::string NSDate::description() const
{
    std::time_t seconds = static_cast<std::time_t>(timeIntervalSince1970());
    std::tm tm {};
    gmtime_r(&seconds, &tm);
    char buffer[64];
    std::strftime(buffer, sizeof buffer, "%Y-%m-%d %H:%M:%S +0000", &tm);
    return buffer;
}
