#pragma once

#include "NSDate.h"
#include "NSDateComponents.h"
#include "NSLocale.h"
#include "NSTimeZone.h"

#include <objc/objc.h>

// Foundation's unit flags, with Apple's values (the iOS 7 names too).
enum NSCalendarUnit : unsigned long {
    NSCalendarUnitEra = 1UL << 1,
    NSCalendarUnitYear = 1UL << 2,
    NSCalendarUnitMonth = 1UL << 3,
    NSCalendarUnitDay = 1UL << 4,
    NSCalendarUnitHour = 1UL << 5,
    NSCalendarUnitMinute = 1UL << 6,
    NSCalendarUnitSecond = 1UL << 7,
    NSCalendarUnitWeekday = 1UL << 9,
    NSEraCalendarUnit = NSCalendarUnitEra,
    NSYearCalendarUnit = NSCalendarUnitYear,
    NSMonthCalendarUnit = NSCalendarUnitMonth,
    NSDayCalendarUnit = NSCalendarUnitDay,
    NSHourCalendarUnit = NSCalendarUnitHour,
    NSMinuteCalendarUnit = NSCalendarUnitMinute,
    NSSecondCalendarUnit = NSCalendarUnitSecond,
    NSWeekdayCalendarUnit = NSCalendarUnitWeekday,
};

enum NSCalendarOptions : unsigned long {
    NSCalendarWrapComponents = 1UL << 0,
};

// The Gregorian calendar in a time zone, backed by ICU. Arithmetic is
// calendar arithmetic: adding a day across a change to or from summer time
// keeps the wall-clock time (23 or 25 hours pass), adding hours adds elapsed
// time, and out-of-range values roll over into the next larger unit.
// Operations answer null when the result falls outside ICU's range.
class NSCalendar final : public NSObject {
    OBJC_CLASS(NSCalendar)
public:
    NSCalendar() = default;
    NSCalendar(RefPtr<NSTimeZone> zone, RefPtr<NSLocale> locale)
        : m_timeZone(std::move(zone))
        , m_locale(std::move(locale))
    {
    }
    // The calendar of the device's current time zone and locale, as they are now.
    static RefPtr<NSCalendar> currentCalendar();

    RefPtr<NSTimeZone> timeZone() const { return m_timeZone; }
    void setTimeZone(NSTimeZone* zone)
    {
        if (zone)
            m_timeZone = zone;
    }

    RefPtr<NSDateComponents> components(unsigned long units, const NSDate*) const;
    long component(NSCalendarUnit, const NSDate*) const;
    // The difference between two dates in the given units, largest first.
    RefPtr<NSDateComponents> components(unsigned long units, const NSDate* from, const NSDate* to, unsigned long options) const;
    RefPtr<NSDate> dateFromComponents(const NSDateComponents*) const;
    RefPtr<NSDate> dateByAddingComponents(const NSDateComponents*, const NSDate*, unsigned long options) const;
    RefPtr<NSDate> dateByAddingUnit(NSCalendarUnit, long value, const NSDate*, unsigned long options) const;
    RefPtr<NSDate> startOfDayForDate(const NSDate*) const;
    bool isDateInSameDay(const NSDate*, const NSDate*) const;

private:
    RefPtr<NSTimeZone> m_timeZone { NSTimeZone::defaultTimeZone() };
    RefPtr<NSLocale> m_locale { NSLocale::currentLocale() };
};
