#include "NSCalendar.h"

#include "ICUSupport.h"

#include <unicode/gregocal.h>

#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <string>

OBJC_IMPLEMENT_CLASS(NSDateComponents, NSObject)
{
    c.method<&NSDateComponents::year>("year");
    c.method<&NSDateComponents::month>("month");
    c.method<&NSDateComponents::day>("day");
    c.method<&NSDateComponents::hour>("hour");
    c.method<&NSDateComponents::minute>("minute");
    c.method<&NSDateComponents::second>("second");
    c.method<&NSDateComponents::weekday>("weekday");
    c.allocatable();
}

OBJC_IMPLEMENT_CLASS(NSCalendar, NSObject)
{
    c.classMethod<&NSCalendar::currentCalendar>("currentCalendar");
    c.method<static_cast<RefPtr<NSDateComponents> (NSCalendar::*)(unsigned long, const NSDate*) const>(&NSCalendar::components)>("components:fromDate:");
    c.method<&NSCalendar::dateFromComponents>("dateFromComponents:");
    c.method<&NSCalendar::dateByAddingComponents>("dateByAddingComponents:toDate:options:");
}

namespace {

struct Field {
    NSCalendarUnit unit;
    UCalendarDateFields icuField;
    long (NSDateComponents::*get)() const;
    void (NSDateComponents::*set)(long);
    int offset; // added to ICU's value: months count from 0 there
};

// Largest unit first: the order in which components are added and differences taken.
const Field fields[] = {
    { NSCalendarUnitEra, UCAL_ERA, &NSDateComponents::era, &NSDateComponents::setEra, 0 },
    { NSCalendarUnitYear, UCAL_YEAR, &NSDateComponents::year, &NSDateComponents::setYear, 0 },
    { NSCalendarUnitMonth, UCAL_MONTH, &NSDateComponents::month, &NSDateComponents::setMonth, 1 },
    { NSCalendarUnitDay, UCAL_DATE, &NSDateComponents::day, &NSDateComponents::setDay, 0 },
    { NSCalendarUnitHour, UCAL_HOUR_OF_DAY, &NSDateComponents::hour, &NSDateComponents::setHour, 0 },
    { NSCalendarUnitMinute, UCAL_MINUTE, &NSDateComponents::minute, &NSDateComponents::setMinute, 0 },
    { NSCalendarUnitSecond, UCAL_SECOND, &NSDateComponents::second, &NSDateComponents::setSecond, 0 },
    { NSCalendarUnitWeekday, UCAL_DAY_OF_WEEK, &NSDateComponents::weekday, &NSDateComponents::setWeekday, 0 },
};

int32_t clampToInt32(long value)
{
    if (value > std::numeric_limits<int32_t>::max())
        return std::numeric_limits<int32_t>::max();
    if (value < std::numeric_limits<int32_t>::min())
        return std::numeric_limits<int32_t>::min();
    return static_cast<int32_t>(value);
}

// An ICU calendar set to a date, or null when ICU cannot represent it.
// Making an ICU calendar loads its zone and locale data, which costs far more
// than the arithmetic asked of it; one is made per zone and locale and cloned
// for each use. Zones and locales in use are few: the table is emptied if it
// ever grows past a handful.
std::unique_ptr<icu::Calendar> freshCalendar(const NSTimeZone& zone, const NSLocale& locale)
{
    static std::mutex lock;
    static std::map<std::pair<std::string, std::string>, std::unique_ptr<icu::Calendar>> prototypes;
    std::lock_guard guard(lock);
    auto key = std::make_pair(zone.name(), locale.localeIdentifier());
    auto found = prototypes.find(key);
    if (found == prototypes.end()) {
        UErrorCode status = U_ZERO_ERROR;
        auto calendar = std::make_unique<icu::GregorianCalendar>(FoundationICU::timeZone(key.first), FoundationICU::locale(key.second), status);
        if (U_FAILURE(status))
            return nullptr;
        if (prototypes.size() >= 16)
            prototypes.clear();
        found = prototypes.emplace(std::move(key), std::move(calendar)).first;
    }
    return std::unique_ptr<icu::Calendar>(found->second->clone());
}

std::unique_ptr<icu::Calendar> calendarAt(const NSTimeZone& zone, const NSLocale& locale, const NSDate* date)
{
    UErrorCode status = U_ZERO_ERROR;
    auto calendar = freshCalendar(zone, locale);
    if (!calendar)
        return nullptr;
    if (date) {
        double when = date->timeIntervalSinceReferenceDate();
        if (!std::isfinite(when))
            return nullptr;
        calendar->setTime(FoundationICU::toUDate(when), status);
        if (U_FAILURE(status))
            return nullptr;
    }
    return calendar;
}

RefPtr<NSDate> dateOf(icu::Calendar& calendar, double subMillisecond = 0)
{
    UErrorCode status = U_ZERO_ERROR;
    UDate time = calendar.getTime(status);
    if (U_FAILURE(status))
        return nullptr;
    return make<NSDate>(FoundationICU::fromUDate(time + subMillisecond));
}

} // namespace

RefPtr<NSCalendar> NSCalendar::currentCalendar() { return make<NSCalendar>(); }

RefPtr<NSDateComponents> NSCalendar::components(unsigned long units, const NSDate* date) const
{
    auto calendar = calendarAt(*m_timeZone, *m_locale, date);
    if (!date || !calendar)
        return nullptr;
    auto result = NSDateComponents::create();
    for (const Field& field : fields) {
        if (!(units & field.unit))
            continue;
        UErrorCode status = U_ZERO_ERROR;
        int32_t value = calendar->get(field.icuField, status);
        if (U_FAILURE(status))
            return nullptr;
        (result.get()->*field.set)(value + field.offset);
    }
    return result;
}

long NSCalendar::component(NSCalendarUnit unit, const NSDate* date) const
{
    auto parts = components(unit, date);
    if (!parts)
        return NSDateComponentUndefined;
    for (const Field& field : fields) {
        if (field.unit == unit)
            return (parts.get()->*field.get)();
    }
    return NSDateComponentUndefined;
}

RefPtr<NSDateComponents> NSCalendar::components(unsigned long units, const NSDate* from, const NSDate* to, unsigned long) const
{
    auto calendar = calendarAt(*m_timeZone, *m_locale, from);
    if (!from || !to || !calendar || !std::isfinite(to->timeIntervalSinceReferenceDate()))
        return nullptr;
    UDate target = FoundationICU::toUDate(to->timeIntervalSinceReferenceDate());
    auto result = NSDateComponents::create();
    for (const Field& field : fields) {
        if (!(units & field.unit) || field.unit == NSCalendarUnitWeekday || field.unit == NSCalendarUnitEra)
            continue;
        UErrorCode status = U_ZERO_ERROR;
        // fieldDifference moves the calendar on, so each smaller unit counts
        // only what the larger ones left over.
        int32_t difference = calendar->fieldDifference(target, field.icuField, status);
        if (U_FAILURE(status))
            return nullptr;
        (result.get()->*field.set)(difference);
    }
    return result;
}

RefPtr<NSDate> NSCalendar::dateFromComponents(const NSDateComponents* components) const
{
    auto calendar = calendarAt(*m_timeZone, *m_locale, nullptr);
    if (!components || !calendar)
        return nullptr;
    calendar->clear();
    // ICU's cleared calendar starts in 1970; Foundation's starts in year 1.
    calendar->set(UCAL_YEAR, 1);
    for (const Field& field : fields) {
        long value = (components->*field.get)();
        if (value == NSDateComponentUndefined || field.unit == NSCalendarUnitWeekday)
            continue;
        calendar->set(field.icuField, clampToInt32(value - field.offset));
    }
    return dateOf(*calendar);
}

RefPtr<NSDate> NSCalendar::dateByAddingComponents(const NSDateComponents* components, const NSDate* date, unsigned long options) const
{
    auto calendar = calendarAt(*m_timeZone, *m_locale, date);
    if (!components || !date || !calendar)
        return nullptr;
    UDate start = FoundationICU::toUDate(date->timeIntervalSinceReferenceDate());
    for (const Field& field : fields) {
        long value = (components->*field.get)();
        if (value == NSDateComponentUndefined || value == 0 || field.unit == NSCalendarUnitWeekday || field.unit == NSCalendarUnitEra)
            continue;
        UErrorCode status = U_ZERO_ERROR;
        if (options & NSCalendarWrapComponents)
            calendar->roll(field.icuField, clampToInt32(value), status);
        else
            calendar->add(field.icuField, clampToInt32(value), status);
        if (U_FAILURE(status))
            return nullptr;
    }
    // ICU keeps whole milliseconds; carry the rest so that adding nothing
    // gives the same date back.
    return dateOf(*calendar, start - std::floor(start));
}

RefPtr<NSDate> NSCalendar::dateByAddingUnit(NSCalendarUnit unit, long value, const NSDate* date, unsigned long options) const
{
    auto components = NSDateComponents::create();
    for (const Field& field : fields) {
        if (field.unit == unit)
            (components.get()->*field.set)(value);
    }
    return dateByAddingComponents(components.get(), date, options);
}

RefPtr<NSDate> NSCalendar::startOfDayForDate(const NSDate* date) const
{
    auto calendar = calendarAt(*m_timeZone, *m_locale, date);
    if (!date || !calendar)
        return nullptr;
    calendar->set(UCAL_HOUR_OF_DAY, 0);
    calendar->set(UCAL_MINUTE, 0);
    calendar->set(UCAL_SECOND, 0);
    calendar->set(UCAL_MILLISECOND, 0);
    return dateOf(*calendar);
}

bool NSCalendar::isDateInSameDay(const NSDate* a, const NSDate* b) const
{
    auto first = startOfDayForDate(a);
    auto second = startOfDayForDate(b);
    return first && second && first->timeIntervalSinceReferenceDate() == second->timeIntervalSinceReferenceDate();
}
