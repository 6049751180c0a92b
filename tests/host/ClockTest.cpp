// MobileTimer's alarms and countdown timer, and the lock screen's next alarms.

#include "HostTestSupport.h"

#include <host/MobileTimer/Alarm.h>
#include <host/MobileTimer/TimerManager.h>
#include <host/SpringBoard/SBClockDataProvider.h>
#include <host/SpringBoard/SBLockScreenViewController.h>

#include <Foundation/NSDate.h>

namespace {

class Clock : public HostTest {
protected:
    static StrongId sharedTimerManager() { return objc::send<StrongId>(objc::objc_getClass("TimerManager"), OBJC_SEL("sharedManager")); }
    static double wallNow() { return VirtualClock::shared().wallNow(); }
    static StrongId nextAlarm(const char* ivar)
    {
        StrongId provider = objc::send<StrongId>(objc::objc_getClass("SBClockDataProvider"), OBJC_SEL("sharedInstance"));
        return objc::object_getIvar(provider, ivar);
    }
    // The hour and minute of an alarm made from a notification, as a client would.
    static std::pair<long long, long long> alarmTime(const StrongId& notification)
    {
        StrongId alarm = objc::send<StrongId>(objc::alloc(objc::objc_getClass("Alarm")), OBJC_SEL("initWithNotification:"), notification.get());
        return { objc::send<long long>(alarm, OBJC_SEL("hour")), objc::send<long long>(alarm, OBJC_SEL("minute")) };
    }
};

} // namespace

TEST_F(Clock, TimerCountsInSecondsSinceTheReferenceDateAndPausesKeepTheRemainder)
{
    StrongId manager = sharedTimerManager();
    EXPECT_EQ(objc::send<long long>(manager, OBJC_SEL("state")), TimerManager::Stopped);

    // Clients compute the fire value from 2001-based seconds.
    double fire = NSDate::date()->timeIntervalSinceReferenceDate() + 300;
    objc::send(manager, OBJC_SEL("scheduleAt:withSound:"), fire, objc::send<std::string>(manager, OBJC_SEL("defaultSound")));
    EXPECT_EQ(objc::send<long long>(manager, OBJC_SEL("state")), TimerManager::Running);
    EXPECT_DOUBLE_EQ(objc::send<double>(manager, OBJC_SEL("fireTime")), fire);

    advance(100);
    objc::send(manager, OBJC_SEL("pause"));
    EXPECT_EQ(objc::send<long long>(manager, OBJC_SEL("state")), TimerManager::Paused);
    advance(1000);
    objc::send(manager, OBJC_SEL("resume"));
    EXPECT_EQ(objc::send<long long>(manager, OBJC_SEL("state")), TimerManager::Running);
    EXPECT_DOUBLE_EQ(objc::send<double>(manager, OBJC_SEL("fireTime")), wallNow() + 200);

    // It rings when the rest has run out, and stops.
    advance(199);
    EXPECT_EQ(objc::send<long long>(manager, OBJC_SEL("state")), TimerManager::Running);
    advance(1);
    EXPECT_EQ(objc::send<long long>(manager, OBJC_SEL("state")), TimerManager::Stopped);

    objc::send(manager, OBJC_SEL("resume"));
    objc::send(manager, OBJC_SEL("cancel"));
    auto timer = dump()["timer"];
    EXPECT_EQ(timer["state"], 1);
    EXPECT_EQ(timer["commands"], nlohmann::json({ "schedule", "pause", "resume", "resume", "cancel" }));
}

TEST_F(Clock, WorldTimerChangesAreNotCommandsAndShowOnTheLockScreen)
{
    host().setTimerRunning(90);
    auto* lockScreen = host().lockScreenViewController()->lockScreenView();
    ASSERT_TRUE(lockScreen->m_timerView);
    EXPECT_EQ(lockScreen->m_timerView->text(), "Timer 01:30");
    advance(31);
    EXPECT_EQ(lockScreen->m_timerView->text(), "Timer 00:59");

    host().setTimerPaused(3725);
    EXPECT_EQ(lockScreen->m_timerView->text(), "Timer Paused 1:02:05");
    advance(10);
    EXPECT_DOUBLE_EQ(TimerManager::sharedManager()->remainingTime(), 3725);

    host().setTimerStopped();
    EXPECT_FALSE(lockScreen->m_timerView);
    EXPECT_TRUE(dump()["timer"]["commands"].empty());
}

TEST_F(Clock, NextAlarmsFeedTheClockDataProvidersInstanceVariables)
{
    EXPECT_FALSE(nextAlarm("_nextAlarmForToday"));
    EXPECT_FALSE(nextAlarm("_firstAlarmForTomorrow"));

    ASSERT_TRUE(host().setNextAlarm(SimulatedHost::AlarmDay::Today, 18, 30));
    StrongId today = nextAlarm("_nextAlarmForToday");
    ASSERT_TRUE(today);
    EXPECT_EQ(alarmTime(today), std::make_pair(18LL, 30LL));
    auto fireDate = objc::send<RefPtr<NSDate>>(today, OBJC_SEL("fireDate"));
    EXPECT_DOUBLE_EQ(fireDate->timeIntervalSinceNow(), (18 * 60 + 30 - (9 * 60 + 5)) * 60.0);

    ASSERT_TRUE(host().setNextAlarm(SimulatedHost::AlarmDay::Tomorrow, 6, 0));
    EXPECT_FALSE(nextAlarm("_nextAlarmForToday"));
    EXPECT_EQ(alarmTime(nextAlarm("_firstAlarmForTomorrow")), std::make_pair(6LL, 0LL));

    EXPECT_FALSE(host().setNextAlarm(SimulatedHost::AlarmDay::Today, 24, 0));
    host().clearNextAlarm();
    EXPECT_FALSE(nextAlarm("_firstAlarmForTomorrow"));
}

TEST_F(Clock, SavedAlarmsAreDumpedAndBecomeTheNextAlarm)
{
    StrongId manager = objc::send<StrongId>(objc::objc_getClass("AlarmManager"), OBJC_SEL("sharedManager"));
    StrongId alarm = objc::send<StrongId>(objc::alloc(objc::objc_getClass("Alarm")), OBJC_SEL("initWithDefaultValues"));
    objc::send(alarm, OBJC_SEL("setAllowsSnooze:"), true);
    objc::send(alarm, OBJC_SEL("setHour:"), 7LL);
    objc::send(alarm, OBJC_SEL("setMinute:"), 45LL);
    objc::send(alarm, OBJC_SEL("setTitle:"), "");
    objc::send(manager, OBJC_SEL("loadAlarms"));
    objc::send(manager, OBJC_SEL("addAlarm:active:"), alarm.get(), true);
    // Nothing is saved until saveAlarms.
    EXPECT_TRUE(dump()["alarms"].empty());
    objc::send(manager, OBJC_SEL("saveAlarms"));

    nlohmann::json expected = { { { "hour", 7 }, { "minute", 45 }, { "title", "" }, { "allowsSnooze", true }, { "active", true } } };
    EXPECT_EQ(dump()["alarms"], expected);
    // 07:45 has passed today: the alarm is tomorrow's first.
    EXPECT_FALSE(nextAlarm("_nextAlarmForToday"));
    EXPECT_EQ(alarmTime(nextAlarm("_firstAlarmForTomorrow")), std::make_pair(7LL, 45LL));
    EXPECT_DOUBLE_EQ(objc::send<RefPtr<NSDate>>(alarm, OBJC_SEL("nextFireDate"))->timeIntervalSinceNow(), (24 * 60 - 80) * 60.0);
}

TEST_F(Clock, LockScreenShowsTheTimeAndFollowsTheMinute)
{
    auto* dateView = host().lockScreenViewController()->lockScreenView()->dateView();
    EXPECT_EQ(dateView->m_legibilityTimeLabel->text(), "9:05");
    EXPECT_EQ(dateView->m_legibilityDateLabel->text(), "Saturday, November 21");
    advance(60);
    EXPECT_EQ(dateView->m_legibilityTimeLabel->text(), "9:06");
    // A change of the clock shows at once.
    setClock("2026-11-22T23:59:30");
    host().clockDidChange();
    EXPECT_EQ(dateView->m_legibilityTimeLabel->text(), "11:59");
    EXPECT_EQ(dateView->m_legibilityDateLabel->text(), "Sunday, November 22");
    advance(30);
    EXPECT_EQ(dateView->m_legibilityTimeLabel->text(), "12:00");
}
