#include <Foundation/NSCalendar.h>
#include <Foundation/NSDateFormatter.h>

#include <gtest/gtest.h>

namespace {

// Resets the device's region settings around each test.
class DeviceSettings : public ::testing::Test {
protected:
    void SetUp() override { reset(); }
    void TearDown() override { reset(); }
    static void reset()
    {
        NSLocale::setCurrentLocaleIdentifier("en_US");
        NSTimeZone::setDefaultTimeZoneName("UTC");
    }
};

using NSDateFormatterTest = DeviceSettings;
using NSCalendarTest = DeviceSettings;
using NSTimeZoneTest = DeviceSettings;

// Saturday 7 March 2026, 13:05:07 UTC.
RefPtr<NSDate> saturdayAfternoon() { return NSDate::dateWithTimeIntervalSince1970(1772888707); }

std::string formatted(const std::string& pattern, const NSDate* date, const char* locale = nullptr, const char* zone = nullptr)
{
    auto formatter = NSDateFormatter::create();
    formatter->setDateFormat(pattern);
    if (locale)
        formatter->setLocale(NSLocale::localeWithLocaleIdentifier(locale).get());
    if (zone)
        formatter->setTimeZone(NSTimeZone::timeZoneWithName(zone).get());
    return formatter->stringFromDate(date);
}

RefPtr<NSDate> local(const char* text)
{
    auto date = NSDateFormatter::dateFromLocalISO8601String(text);
    EXPECT_TRUE(date) << text;
    return date;
}

double hoursBetween(const NSDate* a, const NSDate* b) { return (b->timeIntervalSinceReferenceDate() - a->timeIntervalSinceReferenceDate()) / 3600; }

} // namespace

TEST_F(NSDateFormatterTest, FormatsTheClockPatternsInEachLocale)
{
    auto date = saturdayAfternoon();
    struct Row {
        const char* pattern;
        const char* enUS;
        const char* enGB;
        const char* jaJP;
    };
    const Row rows[] = {
        { "EEEE, ", "Saturday, ", "Saturday, ", "土曜日, " },
        { "MMMM ", "March ", "March ", "3月 " },
        { "dd", "07", "07", "07" },
        { "hh", "01", "01", "01" },
        { "HH", "13", "13", "13" },
        { ":mm", ":05", ":05", ":05" },
        { ":mm:ss", ":05:07", ":05:07", ":05:07" },
        { "hh:mm a", "01:05 PM", "01:05 pm", "01:05 午後" },
        { "HH:mm", "13:05", "13:05", "13:05" },
    };
    for (const auto& row : rows) {
        EXPECT_EQ(formatted(row.pattern, date.get(), "en_US"), row.enUS) << row.pattern;
        EXPECT_EQ(formatted(row.pattern, date.get(), "en_GB"), row.enGB) << row.pattern;
        EXPECT_EQ(formatted(row.pattern, date.get(), "ja_JP"), row.jaJP) << row.pattern;
    }
}

TEST_F(NSDateFormatterTest, UsesTheDeviceSettingsAtTheMomentItFormats)
{
    auto date = saturdayAfternoon();
    auto formatter = NSDateFormatter::create();
    formatter->setDateFormat("EEEE HH:mm");
    EXPECT_EQ(formatter->stringFromDate(date.get()), "Saturday 13:05");
    ASSERT_TRUE(NSTimeZone::setDefaultTimeZoneName("Europe/Berlin"));
    EXPECT_EQ(formatter->stringFromDate(date.get()), "Saturday 14:05");
    ASSERT_TRUE(NSTimeZone::setDefaultTimeZoneName("America/New_York"));
    EXPECT_EQ(formatter->stringFromDate(date.get()), "Saturday 08:05");
    ASSERT_TRUE(NSLocale::setCurrentLocaleIdentifier("ja_JP"));
    EXPECT_EQ(formatter->stringFromDate(date.get()), "土曜日 08:05");
}

TEST_F(NSDateFormatterTest, SharesOneICUFormatterPerPatternLocaleAndZone)
{
    NSDateFormatter::clearFormatterCache();
    auto date = saturdayAfternoon();
    auto berlin = NSDateFormatter::create();
    berlin->setDateFormat("HH:mm");
    berlin->setTimeZone(NSTimeZone::timeZoneWithName("Europe/Berlin").get());
    auto utc = NSDateFormatter::create();
    utc->setDateFormat("HH:mm");
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(berlin->stringFromDate(date.get()), "14:05");
        EXPECT_EQ(utc->stringFromDate(date.get()), "13:05");
    }
    EXPECT_EQ(NSDateFormatter::cachedFormatterCount(), 2u);
    berlin->setDateFormat("hh");
    EXPECT_EQ(utc->stringFromDate(date.get()), "13:05");
    EXPECT_EQ(berlin->stringFromDate(date.get()), "02");
}

TEST_F(NSDateFormatterTest, ParsesOnlyWholeMatches)
{
    auto formatter = NSDateFormatter::create();
    formatter->setDateFormat("yyyy-MM-dd HH:mm");
    auto date = formatter->dateFromString("2026-03-07 13:05");
    ASSERT_TRUE(date);
    EXPECT_DOUBLE_EQ(date->timeIntervalSince1970(), 1772888700);
    EXPECT_FALSE(formatter->dateFromString("2026-03-07 13:05 and more"));
    EXPECT_FALSE(formatter->dateFromString("yesterday"));
    EXPECT_FALSE(formatter->dateFromString(""));
    EXPECT_EQ(formatter->stringFromDate(nullptr), "");
}

TEST_F(NSDateFormatterTest, ReadsLocalTimesAndWritesThemWithTheirOffset)
{
    EXPECT_EQ(NSDateFormatter::ISO8601StringFromDate(local("2026-11-21T09:05:06").get()), "2026-11-21T09:05:06+00:00");
    ASSERT_TRUE(NSTimeZone::setDefaultTimeZoneName("Europe/Berlin"));
    auto winter = local("2026-11-21T09:05:00");
    EXPECT_DOUBLE_EQ(winter->timeIntervalSince1970(), 1795248300);
    EXPECT_EQ(NSDateFormatter::ISO8601StringFromDate(winter.get()), "2026-11-21T09:05:00+01:00");
    EXPECT_EQ(NSDateFormatter::ISO8601StringFromDate(local("2026-07-01T00:00").get()), "2026-07-01T00:00:00+02:00");

    for (const char* bad : { "2026-13-01T00:00:00", "2026-02-29T10:00:00", "2026-11-21 09:05:00", "2026-11-21T24:00:00",
             "2026-11-21T09:05:00Z", "2026-11-21T9:05:00", "", "soon" })
        EXPECT_FALSE(NSDateFormatter::dateFromLocalISO8601String(bad)) << bad;
    EXPECT_TRUE(NSDateFormatter::dateFromLocalISO8601String("2028-02-29T10:00:00"));
}

TEST_F(NSTimeZoneTest, RejectsUnknownZonesAndKeepsTheDefault)
{
    ASSERT_TRUE(NSTimeZone::setDefaultTimeZoneName("Asia/Tokyo"));
    EXPECT_FALSE(NSTimeZone::setDefaultTimeZoneName("Mars/Olympus_Mons"));
    EXPECT_FALSE(NSTimeZone::setDefaultTimeZoneName(""));
    EXPECT_FALSE(NSTimeZone::setDefaultTimeZoneName("Etc/Unknown"));
    EXPECT_EQ(NSTimeZone::defaultTimeZone()->name(), "Asia/Tokyo");
    EXPECT_FALSE(NSTimeZone::timeZoneWithName("Mars/Olympus_Mons"));
    EXPECT_EQ(NSTimeZone::defaultTimeZone()->secondsFromGMTForDate(saturdayAfternoon().get()), 9 * 3600);

    auto berlin = NSTimeZone::timeZoneWithName("Europe/Berlin");
    EXPECT_FALSE(berlin->isDaylightSavingTimeForDate(saturdayAfternoon().get()));
    EXPECT_TRUE(berlin->isDaylightSavingTimeForDate(NSDate::dateWithTimeIntervalSince1970(1782900000).get()));
    EXPECT_EQ(NSTimeZone::timeZoneForSecondsFromGMT(-5 * 3600 - 1800)->secondsFromGMT(), -5 * 3600 - 1800);

    EXPECT_FALSE(NSLocale::setCurrentLocaleIdentifier("xx_YY"));
    EXPECT_FALSE(NSLocale::setCurrentLocaleIdentifier(""));
    EXPECT_EQ(NSLocale::currentLocaleIdentifier(), "en_US");
    EXPECT_TRUE(NSLocale::setCurrentLocaleIdentifier("en-GB"));
    EXPECT_EQ(NSLocale::currentLocale()->localeIdentifier(), "en_GB");
}

TEST_F(NSCalendarTest, SplitsDatesIntoComponentsInItsZone)
{
    ASSERT_TRUE(NSTimeZone::setDefaultTimeZoneName("Pacific/Auckland"));
    auto parts = NSCalendar::currentCalendar()->components(
        NSCalendarUnitYear | NSCalendarUnitMonth | NSCalendarUnitDay | NSCalendarUnitHour | NSCalendarUnitWeekday, saturdayAfternoon().get());
    ASSERT_TRUE(parts);
    // 13:05 UTC on Saturday is 02:05 on Sunday in Auckland (UTC+13 in March).
    EXPECT_EQ(parts->year(), 2026);
    EXPECT_EQ(parts->month(), 3);
    EXPECT_EQ(parts->day(), 8);
    EXPECT_EQ(parts->hour(), 2);
    EXPECT_EQ(parts->weekday(), 1);
    EXPECT_EQ(parts->minute(), NSDateComponentUndefined);
    EXPECT_EQ(NSCalendar::currentCalendar()->component(NSCalendarUnitMinute, saturdayAfternoon().get()), 5);
}

TEST_F(NSCalendarTest, AddsCalendarDaysAcrossSummerTimeChanges)
{
    ASSERT_TRUE(NSTimeZone::setDefaultTimeZoneName("Europe/Berlin"));
    auto calendar = NSCalendar::currentCalendar();
    auto oneDay = NSDateComponents::create();
    oneDay->setDay(1);

    auto beforeSpring = local("2026-03-28T12:00:00");
    auto afterSpring = calendar->dateByAddingComponents(oneDay.get(), beforeSpring.get(), 0);
    EXPECT_DOUBLE_EQ(hoursBetween(beforeSpring.get(), afterSpring.get()), 23);
    EXPECT_EQ(NSDateFormatter::ISO8601StringFromDate(afterSpring.get()), "2026-03-29T12:00:00+02:00");

    auto beforeAutumn = local("2026-10-24T12:00:00");
    auto afterAutumn = calendar->dateByAddingComponents(oneDay.get(), beforeAutumn.get(), 0);
    EXPECT_DOUBLE_EQ(hoursBetween(beforeAutumn.get(), afterAutumn.get()), 25);

    auto day = calendar->dateByAddingUnit(NSCalendarUnitHour, 24, beforeSpring.get(), 0);
    EXPECT_EQ(NSDateFormatter::ISO8601StringFromDate(day.get()), "2026-03-29T13:00:00+02:00");
    EXPECT_EQ(NSDateFormatter::ISO8601StringFromDate(calendar->startOfDayForDate(afterSpring.get()).get()), "2026-03-29T00:00:00+01:00");
    EXPECT_TRUE(calendar->isDateInSameDay(afterSpring.get(), calendar->startOfDayForDate(afterSpring.get()).get()));
}

TEST_F(NSCalendarTest, AddsHugeHourOffsetsAsElapsedTime)
{
    ASSERT_TRUE(NSTimeZone::setDefaultTimeZoneName("Europe/Berlin"));
    auto calendar = NSCalendar::currentCalendar();
    auto start = NSDate::dateWithTimeIntervalSinceReferenceDate(800000000.25);
    auto offset = NSDateComponents::create();
    offset->setHour(-271752);
    auto earlier = calendar->dateByAddingComponents(offset.get(), start.get(), 0);
    ASSERT_TRUE(earlier);
    EXPECT_DOUBLE_EQ(start->timeIntervalSinceReferenceDate() - earlier->timeIntervalSinceReferenceDate(), 271752.0 * 3600);
    EXPECT_DOUBLE_EQ(calendar->dateByAddingComponents(NSDateComponents::create().get(), start.get(), 0)->timeIntervalSinceReferenceDate(), 800000000.25);
}

TEST_F(NSCalendarTest, RollsOutOfRangeComponentsOver)
{
    auto calendar = NSCalendar::currentCalendar();
    auto parts = NSDateComponents::create();
    parts->setYear(2026);
    parts->setMonth(13);
    parts->setDay(31);
    parts->setHour(25);
    parts->setMinute(70);
    parts->setSecond(-1);
    EXPECT_EQ(NSDateFormatter::ISO8601StringFromDate(calendar->dateFromComponents(parts.get()).get()), "2027-02-01T02:09:59+00:00");

    parts->setMonth(0);
    parts->setDay(1);
    parts->setHour(0);
    parts->setMinute(0);
    parts->setSecond(0);
    EXPECT_EQ(NSDateFormatter::ISO8601StringFromDate(calendar->dateFromComponents(parts.get()).get()), "2025-12-01T00:00:00+00:00");
}

TEST_F(NSCalendarTest, MeasuresDifferencesLargestUnitFirst)
{
    auto calendar = NSCalendar::currentCalendar();
    auto parts = calendar->components(NSCalendarUnitMonth | NSCalendarUnitDay | NSCalendarUnitHour, local("2026-01-31T10:00:00").get(),
        local("2026-03-02T12:30:00").get(), 0);
    ASSERT_TRUE(parts);
    EXPECT_EQ(parts->month(), 1);
    EXPECT_EQ(parts->day(), 2);
    EXPECT_EQ(parts->hour(), 2);
    EXPECT_EQ(parts->year(), NSDateComponentUndefined);
}
