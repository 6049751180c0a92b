// The texts of the schedule table: times of rows and headers, the time until
// the next item, the calendar blacklist and the notification row text.

#include "schedule/KVScheduleTexts.h"

#include <Foundation/NSDate.h>
#include <Foundation/NSDateFormatter.h>
#include <Foundation/NSLocale.h>
#include <Foundation/NSTimeZone.h>
#include <Foundation/VirtualClock.h>

#include <gtest/gtest.h>

namespace {

using namespace KVScheduleTexts;

class ScheduleTexts : public testing::Test {
protected:
    void SetUp() override
    {
        NSLocale::setCurrentLocaleIdentifier("en_US");
        NSTimeZone::setDefaultTimeZoneName("UTC");
        setNow("2026-11-21T09:00:00");
    }
    static void setNow(const char* local) { VirtualClock::shared().setWallNow(at(local)->timeIntervalSinceReferenceDate()); }
    static RefPtr<NSDate> at(const char* local) { return NSDateFormatter::dateFromLocalISO8601String(local); }
};

TEST_F(ScheduleTexts, TimeLabelShowsTodaysTimeLowerCasedWithoutLeadingZero)
{
    EXPECT_EQ(timeLabelText(at("2026-11-21T09:05:00").get(), false), "9:05 am");
    EXPECT_EQ(timeLabelText(at("2026-11-21T21:40:00").get(), false), "9:40 pm");
    EXPECT_EQ(timeLabelText(at("2026-11-21T10:15:00").get(), false), "10:15 am");
    EXPECT_EQ(timeLabelText(at("2026-11-21T09:05:00").get(), true), "09:05");
}

TEST_F(ScheduleTexts, TodaysTimesAreLowerCasedInTheDevicesLanguageNotOnlyASCII)
{
    // Turkish writes the morning "ÖÖ"; Greek "π.μ.". "MMM d" keeps its case.
    NSLocale::setCurrentLocaleIdentifier("tr_TR");
    EXPECT_EQ(timeLabelText(at("2026-11-21T09:05:00").get(), false), "9:05 öö");
    EXPECT_EQ(dayAndTimeText(at("2026-11-21T21:05:00").get(), false), "Kas 21 at 9:05 ös");
    NSLocale::setCurrentLocaleIdentifier("el_GR");
    EXPECT_EQ(timeLabelText(at("2026-11-21T09:05:00").get(), false), "9:05 π.μ.");
}

TEST_F(ScheduleTexts, TimeLabelShowsMonthAndDayForAnotherDay)
{
    EXPECT_EQ(timeLabelText(at("2026-11-22T09:05:00").get(), false), "Nov 22");
    EXPECT_EQ(timeLabelText(at("2026-11-20T23:59:00").get(), true), "Nov 20");
    EXPECT_EQ(timeLabelText(nullptr, false), "");
}

TEST_F(ScheduleTexts, TimeUntilUsesOneUnitWithItsSingularExactlyForOne)
{
    auto now = NSDate::date();
    EXPECT_EQ(timeUntilText(0, now.get()), "now");
    EXPECT_EQ(timeUntilText(59, now.get()), "now");
    EXPECT_EQ(timeUntilText(90, now.get()), "in 1 minute");
    EXPECT_EQ(timeUntilText(120, now.get()), "in 2 minutes");
    EXPECT_EQ(timeUntilText(59 * 60, now.get()), "in 59 minutes");
    EXPECT_EQ(timeUntilText(3600, now.get()), "in 1 hour");
    EXPECT_EQ(timeUntilText(3600 + 59 * 60, now.get()), "in 1 hour");
    EXPECT_EQ(timeUntilText(7200, now.get()), "in 2 hours");
}

TEST_F(ScheduleTexts, TimeUntilAnItemOnAnotherDayShowsItsDay)
{
    setNow("2026-11-21T22:30:00");
    auto now = NSDate::date();
    EXPECT_EQ(timeUntilText(3600, now.get()), "in 1 hour");
    EXPECT_EQ(timeUntilText(2 * 3600, now.get()), "Nov 22");
    EXPECT_EQ(timeUntilText(26 * 3600, now.get()), "Nov 23");
}

TEST_F(ScheduleTexts, BlacklistIsTrimmedLowerCasedAndKeepsEmptyPieces)
{
    EXPECT_EQ(calendarBlacklist("Work , HOME"), (std::vector<std::string> { "work", "home" }));
    EXPECT_EQ(calendarBlacklist(""), (std::vector<std::string> { "" }));
    EXPECT_EQ(calendarBlacklist("a,,\tb\t"), (std::vector<std::string> { "a", "", "b" }));
    EXPECT_EQ(normalizedCalendarTitle("Home "), "home");
    EXPECT_EQ(normalizedCalendarTitle(" \t "), "");
    // Accented and Cyrillic titles match however the setting is written.
    EXPECT_EQ(normalizedCalendarTitle(" ÉCOLE"), "école");
    EXPECT_EQ(calendarBlacklist("École,РАБОТА"), (std::vector<std::string> { "école", "работа" }));
}

TEST_F(ScheduleTexts, NotificationRowTextJoinsTitleImageAndMessage)
{
    EXPECT_EQ(notificationRowText("Mail", false, std::nullopt), "Mail - no message");
    EXPECT_EQ(notificationRowText("Mail", true, "Hi"), "Mail - *has image* Hi");
    EXPECT_EQ(notificationRowText(std::nullopt, true, "Hi"), "*has image* Hi");
    // Only a missing title leaves out the separator.
    EXPECT_EQ(notificationRowText("", false, "Hi"), " - Hi");
}

TEST_F(ScheduleTexts, DayAndTimeDropsTheLeadingZeroIn12HourFormOrWhenAsked)
{
    auto date = at("2026-11-21T09:05:00");
    EXPECT_EQ(dayAndTimeText(date.get(), false), "Nov 21 at 9:05 am");
    EXPECT_EQ(dayAndTimeText(date.get(), true), "Nov 21 at 09:05");
    EXPECT_EQ(dayAndTimeText(date.get(), true, true), "Nov 21 at 9:05");
}

TEST_F(ScheduleTexts, NothingScheduledNamesTheRange)
{
    EXPECT_EQ(nothingScheduledText(2), "You have nothing scheduled for today or tomorrow");
    EXPECT_EQ(nothingScheduledText(1), "You have nothing scheduled for today");
    EXPECT_EQ(nothingScheduledText(0), "Nothing scheduled");
    EXPECT_EQ(nothingScheduledText(7), "You have nothing scheduled for the next 7 days");
    EXPECT_EQ(nothingScheduledText(-3), "You have nothing scheduled for the next -3 days");
}

} // namespace
