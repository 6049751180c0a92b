#include "SBClockDataProvider.h"

#include "../HostCalendar.h"
#include "../HostShared.h"
#include "../MobileTimer/AlarmManager.h"

#include <UIKit/UILocalNotification.h>

OBJC_IMPLEMENT_CLASS(SBClockDataProvider, NSObject)
{
    c.classMethod<&SBClockDataProvider::sharedInstance>("sharedInstance");
    c.ivar<&SBClockDataProvider::m_nextAlarmForToday>("_nextAlarmForToday");
    c.ivar<&SBClockDataProvider::m_firstAlarmForTomorrow>("_firstAlarmForTomorrow");
}

RefPtr<SBClockDataProvider> SBClockDataProvider::sharedInstance()
{
    static auto* slot = new RefPtr<SBClockDataProvider>();
    return host::sharedInstanceIn(*slot);
}

void SBClockDataProvider::setScheduledAlarm(RefPtr<NSDate> fireDate)
{
    m_scheduledAlarm = std::move(fireDate);
    refresh();
}

void SBClockDataProvider::refresh()
{
    RefPtr<NSDate> today;
    RefPtr<NSDate> tomorrow;
    auto consider = [&](RefPtr<NSDate> date) {
        if (!date)
            return;
        long days = host::localDaysFromToday(date.get());
        RefPtr<NSDate>* slot = days == 0 ? &today : days == 1 ? &tomorrow : nullptr;
        if (slot && (!*slot || date->timeIntervalSinceReferenceDate() < (*slot)->timeIntervalSinceReferenceDate()))
            *slot = date;
    };
    consider(m_scheduledAlarm);
    for (auto& entry : AlarmManager::sharedManager()->savedAlarms()) {
        if (!entry.active)
            continue;
        auto next = entry.alarm->nextFireDate();
        consider(next);
        // An alarm still to ring today rings again tomorrow.
        if (next && host::localDaysFromToday(next.get()) == 0)
            consider(host::localDateAt(1, static_cast<long>(entry.alarm->hour()), static_cast<long>(entry.alarm->minute())));
    }
    m_nextAlarmForToday = today ? UILocalNotification::create(today) : nullptr;
    m_firstAlarmForTomorrow = tomorrow ? UILocalNotification::create(tomorrow) : nullptr;
}
