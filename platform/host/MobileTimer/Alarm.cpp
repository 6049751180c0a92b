#include "Alarm.h"

#include "../HostCalendar.h"

OBJC_IMPLEMENT_CLASS(Alarm, NSObject)
{
    c.method<&Alarm::initWithDefaultValues>("initWithDefaultValues");
    c.method<&Alarm::initWithNotification>("initWithNotification:");
    c.method<&Alarm::nextFireDate>("nextFireDate");
    c.method<&Alarm::hour>("hour");
    c.method<&Alarm::setHour>("setHour:");
    c.method<&Alarm::minute>("minute");
    c.method<&Alarm::setMinute>("setMinute:");
    c.method<&Alarm::title>("title");
    c.method<&Alarm::setTitle>("setTitle:");
    c.method<&Alarm::allowsSnooze>("allowsSnooze");
    c.method<&Alarm::setAllowsSnooze>("setAllowsSnooze:");
    c.allocatable();
}

StrongId Alarm::initWithDefaultValues()
{
    m_hour = 0;
    m_minute = 0;
    m_title.clear();
    m_allowsSnooze = true;
    m_notificationFireDate = nullptr;
    return StrongId(this);
}

StrongId Alarm::initWithNotification(NSObject* notification)
{
    initWithDefaultValues();
    m_notificationFireDate = objc::castRef<NSDate>(objc::send<StrongId>(notification, OBJC_SEL("fireDate")));
    if (!m_notificationFireDate)
        return nullptr;
    long hour = 0;
    long minute = 0;
    host::localHourAndMinute(m_notificationFireDate.get(), hour, minute);
    m_hour = hour;
    m_minute = minute;
    return StrongId(this);
}

RefPtr<NSDate> Alarm::nextFireDate() const
{
    if (m_notificationFireDate)
        return m_notificationFireDate;
    return host::nextLocalOccurrence(static_cast<long>(m_hour), static_cast<long>(m_minute));
}
