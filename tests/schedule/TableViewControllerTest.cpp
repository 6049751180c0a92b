// The table controller's reload pipeline against the host's calendar store
// and bulletin board: which sections it makes, in which order, the next
// item, the limits and the blacklist, and overlapping pipelines.

#include "schedule/KVEventItem.h"
#include "schedule/KVTableViewController.h"
#include "settings/KVSettings.h"

#include <CorvLib/CVPreferenceManager.h>
#include <Foundation/NSArray.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSDateFormatter.h>
#include <Foundation/NSLocale.h>
#include <Foundation/NSRunLoop.h>
#include <Foundation/NSString.h>
#include <Foundation/NSTimeZone.h>
#include <Foundation/VirtualClock.h>
#include <UIKit/UIColor.h>
#include <UIKit/UITableView.h>
#include <host/SimulatedHost.h>

#include "support/FixedPreferences.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>

namespace {

class TableData : public testing::Test {
protected:
    void SetUp() override
    {
        NSLocale::setCurrentLocaleIdentifier("en_US");
        NSTimeZone::setDefaultTimeZoneName("UTC");
        m_host = std::make_unique<SimulatedHost>();
        VirtualClock::shared().setWallNow(NSDateFormatter::dateFromLocalISO8601String("2026-11-21T09:00:00")->timeIntervalSinceReferenceDate());
        m_preferences = make<FixedPreferences>();
        KVSettings::sharedInstance()->setPrefs(m_preferences);
    }
    void TearDown() override { m_host.reset(); }

    void set(const std::string& key, const std::string& value) { m_preferences->values[key] = value; }
    static double now() { return NSDate::date()->timeIntervalSinceReferenceDate(); }
    static HostWorld& world() { return HostWorld::shared(); }
    static void event(const std::string& title, double start, double end, std::string calendar = "Calendar")
    {
        world().addEvent({ title, now() + start, now() + end, std::move(calendar), std::nullopt, std::nullopt });
    }
    static void reminder(const std::string& title, double due)
    {
        HostWorld::Reminder reminder;
        reminder.title = title;
        reminder.due = now() + due;
        world().addReminder(reminder);
    }
    static void notification(const std::string& app, const std::string& title)
    {
        HostWorld::Notification notification;
        notification.app = app;
        notification.title = title;
        notification.date = now();
        world().deliverNotification(notification);
    }

    RefPtr<KVTableViewController> reloaded()
    {
        auto controller = make<KVTableViewController>();
        controller->reloadTableViewData();
        NSRunLoop::mainRunLoop()->runPending();
        return controller;
    }

    // The titles of the items under a section key.
    static std::vector<std::string> titles(KVTableViewController& controller, const std::string& key)
    {
        std::vector<std::string> result;
        auto items = objc::castRef<NSArray>(controller.eventData()->objectForKey(key));
        if (!items)
            return result;
        for (auto& item : items->objects())
            result.push_back(static_cast<KVEventItem*>(item.get())->titleString());
        return result;
    }

    std::unique_ptr<SimulatedHost> m_host;
    RefPtr<FixedPreferences> m_preferences;
};

TEST_F(TableData, RemindersOnlyMakeOneSectionAndTheNextItem)
{
    reminder("Later", 7200);
    reminder("Sooner", 600);
    auto controller = reloaded();
    EXPECT_TRUE(controller->hasLoadedDataAtLeastOnce());
    EXPECT_FALSE(controller->isCurrentlyReloadingData());
    EXPECT_EQ(titles(*controller, "1"), (std::vector<std::string> { "Sooner", "Later" }));
    EXPECT_EQ(controller->eventData()->count(), 1u);
    EXPECT_EQ(controller->nextEventType()->string(), "reminder");
    EXPECT_EQ(controller->secondsUntilNextEvent(), 600);
    EXPECT_EQ(controller->timeUntilNextEvent(), "in 10 minutes");
}

TEST_F(TableData, TheSoonerKindComesFirstAndATieKeepsRemindersFirst)
{
    event("Meeting", 300, 900);
    reminder("Milk", 1200);
    auto controller = reloaded();
    EXPECT_EQ(titles(*controller, "1"), (std::vector<std::string> { "Meeting" }));
    EXPECT_EQ(titles(*controller, "2"), (std::vector<std::string> { "Milk" }));
    EXPECT_EQ(controller->nextEventType()->string(), "event");
    EXPECT_EQ(controller->secondsUntilNextEvent(), 300);

    world().addReminder({ "Tie", now() + 300.5, std::nullopt, false, std::nullopt });
    controller = reloaded();
    EXPECT_EQ(titles(*controller, "1"), (std::vector<std::string> { "Tie", "Milk" }));
    EXPECT_EQ(controller->nextEventType()->string(), "reminder");
}

TEST_F(TableData, EventsUnderWayAreNowAndDoNotCountAsNext)
{
    event("Standup", -600, 600);
    event("Review", 3600, 7200);
    reminder("Milk", 1800);
    auto controller = reloaded();
    auto events = objc::castRef<NSArray>(controller->eventData()->objectForKey("2"));
    ASSERT_TRUE(events);
    EXPECT_TRUE(static_cast<KVEventItem*>(events->objectAtIndex(0).get())->isNow());
    EXPECT_FALSE(static_cast<KVEventItem*>(events->objectAtIndex(1).get())->isNow());
    EXPECT_EQ(controller->nextEventType()->string(), "reminder");
}

TEST_F(TableData, EventsAllUnderWayComeFirstAtOnce)
{
    event("Standup", -600, 600);
    reminder("Milk", 60);
    auto controller = reloaded();
    EXPECT_EQ(titles(*controller, "1"), (std::vector<std::string> { "Standup" }));
    EXPECT_EQ(controller->secondsUntilNextEvent(), 0);
    EXPECT_EQ(controller->timeUntilNextEvent(), "now");
}

TEST_F(TableData, EndedAndBlacklistedEventsAreDroppedBeforeTheLimit)
{
    world().defineCalendar({ "Work", "#ff0000" });
    set("calendarBlacklist", "Work , HOME");
    set("calveraMaxEvents", "2");
    event("Ends now", -600, 0);
    event("Work thing", 60, 120, "work");
    event("Home thing", 60, 120, "Home ");
    // A second event of a hidden calendar (matched once per reload) is hidden too.
    event("More work", 70, 130, "work");
    event("First", 100, 200);
    event("Second", 200, 300);
    event("Third", 300, 400);
    auto controller = reloaded();
    EXPECT_EQ(titles(*controller, "1"), (std::vector<std::string> { "First", "Second" }));
}

TEST_F(TableData, TheDefaultBlacklistHidesCalendarsWithBlankTitles)
{
    world().defineCalendar({ "  ", std::nullopt });
    event("Blank calendar", 60, 120, "  ");
    event("No calendar", 60, 120, "");
    world().addEvent({ "Without any", now() + 60, now() + 120, std::nullopt, std::nullopt, std::nullopt });
    auto controller = reloaded();
    EXPECT_EQ(titles(*controller, "1"), (std::vector<std::string> { "Without any" }));
}

TEST_F(TableData, AReminderLimitOfZeroLeavesNoSection)
{
    set("calveraMaxReminders", "0");
    reminder("Milk", 60);
    event("Meeting", 300, 900);
    auto controller = reloaded();
    EXPECT_EQ(titles(*controller, "1"), (std::vector<std::string> { "Meeting" }));
    EXPECT_EQ(controller->eventData()->count(), 1u);
    EXPECT_EQ(controller->sectionForNotificationsHeader(), 2);
}

TEST_F(TableData, NotificationSectionsAreKeyedFromOneWithTheirRows)
{
    notification("com.apple.MobileSMS", "Anna");
    notification("com.apple.mobilemail", "Rita");
    notification("com.apple.MobileSMS", "Anna again");
    auto controller = reloaded();
    EXPECT_TRUE(controller->hasAnyNotifications());
    EXPECT_EQ(controller->notificationCount(), 3);
    EXPECT_EQ(objc::castRef<NSArray>(controller->notificationData()->objectForKey("1"))->count(), 2u);
    EXPECT_EQ(objc::castRef<NSArray>(controller->notificationData()->objectForKey("2"))->count(), 1u);
    EXPECT_EQ(controller->notificationSectionsData()->count(), 2u);
}

// The calendar store and the notification catalogue keep the items they
// made until their store changes: each reload still sees every change made
// since the one before, and what did not change is the same.
TEST_F(TableData, EachReloadSeesTheStoresAsTheyAreNow)
{
    event("Meeting", 300, 900);
    notification("com.apple.MobileSMS", "Anna");
    notification("com.apple.MobileSMS", "Ben");
    auto controller = reloaded();
    auto rows = [&] { return objc::castRef<NSArray>(controller->notificationData()->objectForKey("1")); };
    auto firstEvent = [&](const char* key) { return static_cast<KVEventItem*>(objc::castRef<NSArray>(controller->eventData()->objectForKey(key))->objectAtIndex(0).get())->calendarItem(); };
    StrongId firstAnna = rows()->objectAtIndex(0);
    StrongId meeting = firstEvent("1");
    controller->forceReloadTableViewData();
    NSRunLoop::mainRunLoop()->runPending();
    EXPECT_EQ(firstEvent("1"), meeting);

    event("Lunch", 600, 1200);
    reminder("Milk", 60);
    notification("com.apple.MobileSMS", "Cleo");
    world().removeNotificationWithIdentifier(world().notifications()[1].identifier);
    controller->forceReloadTableViewData();
    NSRunLoop::mainRunLoop()->runPending();
    EXPECT_EQ(titles(*controller, "1"), (std::vector<std::string> { "Milk" }));
    EXPECT_EQ(titles(*controller, "2"), (std::vector<std::string> { "Meeting", "Lunch" }));
    ASSERT_EQ(rows()->count(), 2u);
    EXPECT_EQ(rows()->objectAtIndex(0), firstAnna);
    EXPECT_EQ(objc::send<RefPtr<NSString>>(rows()->objectAtIndex(1), "title")->string(), "Cleo");

    // A calendar given a new colour gives its events a new colour.
    world().defineCalendar({ "Calendar", "#ff0000" });
    controller->forceReloadTableViewData();
    NSRunLoop::mainRunLoop()->runPending();
    StrongId recoloured = firstEvent("2");
    auto colour = objc::castRef<UIColor>(objc::send<StrongId>(objc::send<StrongId>(recoloured, "calendar"), "CGColor"));
    ASSERT_TRUE(colour);
    EXPECT_EQ(colour->red(), 1.0);
    EXPECT_EQ(colour->green(), 0.0);
}

TEST_F(TableData, AReloadInFlightIsDroppedAndAForcedOneOverlapsIt)
{
    reminder("Milk", 60);
    auto controller = make<KVTableViewController>();
    controller->reloadTableViewData();
    EXPECT_TRUE(controller->isCurrentlyReloadingData());
    auto firstData = controller->eventData();
    controller->reloadTableViewData();
    EXPECT_EQ(controller->eventData(), firstData);

    controller->forceReloadTableViewData();
    EXPECT_NE(controller->eventData(), firstData);
    NSRunLoop::mainRunLoop()->runPending();
    // Both pipelines wrote into the newer dictionaries, each under its own
    // counter: the same key, the last one winning.
    EXPECT_FALSE(controller->isCurrentlyReloadingData());
    EXPECT_EQ(titles(*controller, "1"), (std::vector<std::string> { "Milk" }));
    EXPECT_TRUE(firstData->entries().empty());
}

TEST_F(TableData, SectionNumbersFollowTheSettings)
{
    notification("com.apple.MobileSMS", "Anna");
    auto controller = reloaded();
    UITableView* table = controller->tableView();
    EXPECT_EQ(controller->sectionForEventsHeader(), 0);
    EXPECT_EQ(controller->sectionForNotificationsHeader(), 1);
    EXPECT_EQ(controller->sectionForNotificationsFooter(), KVTableViewController::missingSection);
    EXPECT_EQ(controller->numberOfSectionsInTableView(table), 3);

    set("dismissAllNotificationsButtonEnabled", "YES");
    EXPECT_EQ(controller->numberOfSectionsInTableView(table), 4);
    EXPECT_EQ(controller->sectionForNotificationsFooter(), 3);
    EXPECT_EQ(controller->numberOfRowsInSection(table, 3), 0);

    set("nothingScheduledLabelEnabled", "NO");
    EXPECT_EQ(controller->sectionForEventsHeader(), KVTableViewController::missingSection);
    EXPECT_EQ(controller->sectionForNotificationsHeader(), 0);

    set("notaraEnabled", "NO");
    EXPECT_EQ(controller->sectionForNotificationsHeader(), KVTableViewController::missingSection);
    EXPECT_EQ(controller->numberOfSectionsInTableView(table), 0);
}

TEST_F(TableData, RowsOutOfDateWithTheDataGiveBlankCells)
{
    notification("com.apple.MobileSMS", "Anna");
    auto controller = reloaded();
    auto stale = NSIndexPath::indexPathForRowInSection(5, 2);
    auto cell = controller->cellForRowAtIndexPath(controller->tableView(), stale.get());
    ASSERT_TRUE(cell);
    EXPECT_EQ(cell->className(), std::string("UITableViewCell"));
    auto gone = NSIndexPath::indexPathForRowInSection(0, 40);
    EXPECT_EQ(controller->cellForRowAtIndexPath(controller->tableView(), gone.get())->className(), std::string("UITableViewCell"));
}

} // namespace
