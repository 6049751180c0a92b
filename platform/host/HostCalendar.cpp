#include "HostCalendar.h"

#include <Foundation/NSCalendar.h>
#include <Foundation/NSLocale.h>

#include <unicode/dtptngen.h>

#include <map>
#include <memory>

namespace host {

RefPtr<NSDate> localDateAt(long dayOffset, long hour, long minute)
{
    auto calendar = NSCalendar::currentCalendar();
    auto today = calendar->components(NSCalendarUnitYear | NSCalendarUnitMonth | NSCalendarUnitDay, NSDate::date().get());
    if (!today)
        return nullptr;
    today->setDay(today->day() + dayOffset);
    today->setHour(hour);
    today->setMinute(minute);
    today->setSecond(0);
    return calendar->dateFromComponents(today.get());
}

RefPtr<NSDate> nextLocalOccurrence(long hour, long minute)
{
    auto date = localDateAt(0, hour, minute);
    if (date && date->timeIntervalSinceNow() <= 0)
        date = localDateAt(1, hour, minute);
    return date;
}

long localDaysFromToday(const NSDate* date)
{
    if (!date)
        return 0;
    auto calendar = NSCalendar::currentCalendar();
    auto startOfToday = calendar->startOfDayForDate(NSDate::date().get());
    auto startOfDay = calendar->startOfDayForDate(date);
    if (!startOfToday || !startOfDay)
        return 0;
    auto difference = calendar->components(NSCalendarUnitDay, startOfToday.get(), startOfDay.get(), 0);
    return difference ? difference->day() : 0;
}

void localHourAndMinute(const NSDate* date, long& hour, long& minute)
{
    auto calendar = NSCalendar::currentCalendar();
    hour = date ? calendar->component(NSCalendarUnitHour, date) : 0;
    minute = date ? calendar->component(NSCalendarUnitMinute, date) : 0;
}

// The locale's own pattern for a skeleton, from ICU's pattern generator (one
// generator per locale: they are costly to build).
static std::string bestPattern(const char* skeleton)
{
    static auto* generators = new std::map<std::string, std::unique_ptr<icu::DateTimePatternGenerator>>();
    std::string identifier = NSLocale::currentLocaleIdentifier();
    auto& generator = (*generators)[identifier];
    UErrorCode status = U_ZERO_ERROR;
    if (!generator) {
        generator.reset(icu::DateTimePatternGenerator::createInstance(icu::Locale::createFromName(identifier.c_str()), status));
        if (U_FAILURE(status))
            generator.reset();
    }
    if (!generator)
        return {};
    status = U_ZERO_ERROR;
    auto pattern = generator->getBestPattern(icu::UnicodeString::fromUTF8(skeleton), status);
    if (U_FAILURE(status))
        return {};
    std::string out;
    pattern.toUTF8String(out);
    return out;
}

static bool localeUsesTwelveHourClock()
{
    std::string pattern = bestPattern("j");
    return pattern.find('h') != std::string::npos || pattern.find('K') != std::string::npos;
}

std::string lockScreenTimePattern() { return localeUsesTwelveHourClock() ? "h:mm" : "HH:mm"; }

std::string lockScreenDatePattern()
{
    std::string pattern = bestPattern("EEEEMMMMd");
    return pattern.empty() ? "EEEE, MMMM d" : pattern;
}

// A literal space before the day period: the locale data's narrow no-break
// space would not match what the phone showed.
std::string statusBarTimePattern() { return localeUsesTwelveHourClock() ? "h:mm a" : "HH:mm"; }

} // namespace host
