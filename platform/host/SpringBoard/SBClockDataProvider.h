#pragma once

#include <Foundation/NSDate.h>
#include <UIKit/UILocalNotification.h>

// The lock screen's knowledge of the next alarms: the next one due today and
// the first one due tomorrow, each a scheduled notification (or nothing).
// They come from the world's next alarm and from the clock app's saved,
// active alarms, whichever is sooner.
class SBClockDataProvider final : public NSObject {
    OBJC_CLASS(SBClockDataProvider)
public:
    static RefPtr<SBClockDataProvider> sharedInstance();

    UILocalNotification* nextAlarmForToday() const { return m_nextAlarmForToday.get(); }
    UILocalNotification* firstAlarmForTomorrow() const { return m_firstAlarmForTomorrow.get(); }

    // The world's next scheduled alarm (null for none).
    void setScheduledAlarm(RefPtr<NSDate> fireDate);
    // Works the two alarms out again (after a save, as the day goes by).
    void refresh();

    // Instance variables that clients read by name through the runtime.
    RefPtr<UILocalNotification> m_nextAlarmForToday;
    RefPtr<UILocalNotification> m_firstAlarmForTomorrow;

private:
    RefPtr<NSDate> m_scheduledAlarm;
};
