#pragma once

#include <objc/objc.h>

#include <climits>

// Foundation's marker for a component that was not asked for or not set.
inline constexpr long NSDateComponentUndefined = LONG_MAX;

// The fields of a calendar date, each possibly undefined. Values may be out
// of range (hour 25, minute -70): calendars are lenient and roll them over.
class NSDateComponents final : public NSObject {
    OBJC_CLASS(NSDateComponents)
public:
    NSDateComponents() = default;
    static RefPtr<NSDateComponents> create() { return make<NSDateComponents>(); }

    long era() const { return m_era; }
    void setEra(long value) { m_era = value; }
    long year() const { return m_year; }
    void setYear(long value) { m_year = value; }
    long month() const { return m_month; }
    void setMonth(long value) { m_month = value; }
    long day() const { return m_day; }
    void setDay(long value) { m_day = value; }
    long hour() const { return m_hour; }
    void setHour(long value) { m_hour = value; }
    long minute() const { return m_minute; }
    void setMinute(long value) { m_minute = value; }
    long second() const { return m_second; }
    void setSecond(long value) { m_second = value; }
    // 1 is Sunday, 7 Saturday, whatever the locale's first day of the week.
    long weekday() const { return m_weekday; }
    void setWeekday(long value) { m_weekday = value; }

private:
    long m_era { NSDateComponentUndefined };
    long m_year { NSDateComponentUndefined };
    long m_month { NSDateComponentUndefined };
    long m_day { NSDateComponentUndefined };
    long m_hour { NSDateComponentUndefined };
    long m_minute { NSDateComponentUndefined };
    long m_second { NSDateComponentUndefined };
    long m_weekday { NSDateComponentUndefined };
};
