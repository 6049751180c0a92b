#pragma once

#include <Foundation/NSDate.h>
#include <objc/objc.h>

#include <string>

// MobileTimer's alarm: a time of day with a title and a snooze switch. An
// alarm made from a scheduled notification (`initWithNotification:`) fires
// when that notification does; any other fires at the next occurrence of its
// hour and minute.
class Alarm final : public NSObject {
    OBJC_CLASS(Alarm)
public:
    Alarm() = default;

    StrongId initWithDefaultValues();
    StrongId initWithNotification(NSObject* notification);

    RefPtr<NSDate> nextFireDate() const;
    long long hour() const { return m_hour; }
    void setHour(long long hour) { m_hour = hour; }
    long long minute() const { return m_minute; }
    void setMinute(long long minute) { m_minute = minute; }
    const std::string& title() const { return m_title; }
    void setTitle(const std::string& title) { m_title = title; }
    bool allowsSnooze() const { return m_allowsSnooze; }
    void setAllowsSnooze(bool allows) { m_allowsSnooze = allows; }

private:
    long long m_hour { 0 };
    long long m_minute { 0 };
    std::string m_title;
    bool m_allowsSnooze { true };
    RefPtr<NSDate> m_notificationFireDate;
};
