#include <world/CalendarImporter.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>

using sim::CalendarImport;
using sim::CalendarImporter;

namespace {

// Seconds since the reference date of a UTC time written "2026-11-24T17:30".
double utc(const char* text)
{
    std::tm tm {};
    strptime(text, "%Y-%m-%dT%H:%M", &tm);
    return static_cast<double>(timegm(&tm)) - 978307200;
}

CalendarImporter::Options optionsIn(const char* zone)
{
    CalendarImporter::Options options;
    options.windowStart = utc("2026-11-21T09:41") - 366 * 86400.0;
    options.windowEnd = utc("2026-11-21T09:41") + 732 * 86400.0;
    options.localTimeZone = zone;
    return options;
}

CalendarImport importFixture(const char* name, const CalendarImporter::Options& options)
{
    return CalendarImporter::importFile(std::string(KV_CALENDAR_DIRECTORY) + "/" + name, options);
}

std::vector<double> startsOf(const CalendarImport& imported, const std::string& title)
{
    std::vector<double> starts;
    for (auto& event : imported.events) {
        if (event.title == title)
            starts.push_back(event.start);
    }
    std::sort(starts.begin(), starts.end());
    return starts;
}

bool has(const std::vector<double>& starts, double start) { return std::find(starts.begin(), starts.end(), start) != starts.end(); }

std::string allWarnings(const CalendarImport& imported)
{
    std::string text;
    for (auto& warning : imported.warnings)
        text += warning + "\n";
    return text;
}

} // namespace

// A Google Calendar export: its own VTIMEZONE, a weekly rule with an EXDATE
// and a moved instance, a yearly all-day birthday, folded and escaped text.
TEST(CalendarImporter, GoogleExportExpandsRecurrencesInItsOwnZone)
{
    CalendarImport imported = importFixture("family-google.ics", optionsIn("UTC"));
    ASSERT_FALSE(imported.error) << *imported.error;
    EXPECT_EQ(allWarnings(imported), "");
    ASSERT_EQ(imported.calendars.size(), 1u);
    EXPECT_EQ(imported.calendars[0].title, "Family");
    EXPECT_EQ(imported.calendars[0].color, CalendarImporter::colorForName("Family"));

    auto practice = startsOf(imported, "Football practice");
    EXPECT_TRUE(has(practice, utc("2026-09-01T15:30"))) << "summer time, +2";
    EXPECT_TRUE(has(practice, utc("2026-11-17T16:30"))) << "winter time, +1";
    EXPECT_FALSE(has(practice, utc("2026-11-24T16:30"))) << "moved by its RECURRENCE-ID";
    EXPECT_FALSE(has(practice, utc("2026-12-01T16:30"))) << "EXDATE";
    EXPECT_TRUE(has(practice, utc("2026-12-08T16:30")));
    EXPECT_TRUE(has(practice, utc("2027-06-01T15:30")));
    EXPECT_LT(practice.back(), utc("2028-11-22T09:41")) << "no occurrence past the window";
    EXPECT_EQ(startsOf(imported, "Football practice (late)"), std::vector<double> { utc("2026-11-24T17:30") });

    auto found = std::find_if(imported.events.begin(), imported.events.end(), [](auto& e) { return e.title == "Football practice"; });
    ASSERT_NE(found, imported.events.end());
    EXPECT_EQ(found->end - found->start, 5400);
    EXPECT_EQ(found->calendar, "Family");
    EXPECT_EQ(found->location, "Sporthalle Nord, Berlin");
    EXPECT_NE(found->notes.value_or("").find("the small hall while"), std::string::npos);

    // All-day: local midnight to midnight, a year apart, only inside the window.
    EXPECT_EQ(startsOf(imported, "Mia's birthday"), (std::vector<double> { utc("2025-11-25T00:00"), utc("2026-11-25T00:00"), utc("2027-11-25T00:00") }));
    CalendarImport inBerlin = importFixture("family-google.ics", optionsIn("Europe/Berlin"));
    EXPECT_TRUE(has(startsOf(inBerlin, "Mia's birthday"), utc("2026-11-24T23:00")));
    EXPECT_EQ(startsOf(inBerlin, "Lunch with Grandma"), std::vector<double> { utc("2026-11-23T12:00") }) << "UTC stays UTC";
}

TEST(CalendarImporter, AppleExportKeepsItsColourCountAndReminders)
{
    CalendarImport imported = importFixture("Work.ics", optionsIn("Europe/Berlin"));
    ASSERT_FALSE(imported.error) << *imported.error;
    ASSERT_EQ(imported.calendars.size(), 1u);
    EXPECT_EQ(imported.calendars[0].title, "Work");
    EXPECT_EQ(imported.calendars[0].color, "#ff9500");
    auto standUps = startsOf(imported, "Stand-up");
    ASSERT_EQ(standUps.size(), 5u) << "COUNT=5";
    EXPECT_EQ(standUps.front(), utc("2026-11-23T14:15"));
    EXPECT_EQ(standUps.back(), utc("2026-11-27T14:15"));

    ASSERT_EQ(imported.reminders.size(), 2u);
    EXPECT_EQ(imported.reminders[0].title, "Send the quarterly report");
    EXPECT_EQ(imported.reminders[0].due, utc("2026-11-25T22:00"));
    EXPECT_FALSE(imported.reminders[0].completed);
    EXPECT_EQ(imported.reminders[0].calendar, "Work");
    EXPECT_TRUE(imported.reminders[1].completed);
    EXPECT_EQ(imported.reminders[1].due, utc("2026-11-19T23:00")) << "a due date is local midnight";
}

// Outlook names its zones the Windows way and defines them in the file; it
// gives no calendar name, so the file's name is used, or the one asked for.
TEST(CalendarImporter, OutlookZonesAndCalendarNames)
{
    CalendarImport imported = importFixture("outlook-export.ics", optionsIn("UTC"));
    ASSERT_FALSE(imported.error) << *imported.error;
    EXPECT_EQ(allWarnings(imported), "");
    EXPECT_EQ(startsOf(imported, "Roadmap review"), std::vector<double> { utc("2026-11-26T13:30") });
    ASSERT_EQ(imported.calendars.size(), 1u);
    EXPECT_EQ(imported.calendars[0].title, "outlook-export");

    auto options = optionsIn("UTC");
    options.calendar = "Imported";
    CalendarImport into = importFixture("Work.ics", options);
    ASSERT_EQ(into.calendars.size(), 1u);
    EXPECT_EQ(into.calendars[0].title, "Imported");
    EXPECT_EQ(into.calendars[0].color, "#ff9500");
    for (auto& event : into.events)
        EXPECT_EQ(event.calendar, "Imported");
    EXPECT_EQ(into.reminders[0].calendar, "Imported");
    EXPECT_EQ(importFixture("outlook-export.ics", options).calendars[0].color, std::nullopt) << "keeps the calendar's own colour";
}

// Thunderbird writes floating times (the reader's own zone), RDATE lists and
// to-dos finished with COMPLETED but no STATUS.
TEST(CalendarImporter, ThunderbirdFloatingTimesAndExtraDates)
{
    CalendarImport imported = importFixture("thunderbird.ics", optionsIn("Europe/Berlin"));
    ASSERT_FALSE(imported.error) << *imported.error;
    EXPECT_EQ(startsOf(imported, "Dentist"), (std::vector<double> { utc("2026-11-23T14:00"), utc("2026-11-27T09:00"), utc("2026-12-11T09:00") }));
    ASSERT_EQ(imported.reminders.size(), 2u);
    EXPECT_EQ(imported.reminders[0].due, utc("2026-11-27T23:00"));
    EXPECT_FALSE(imported.reminders[0].completed);
    EXPECT_EQ(imported.reminders[1].due, std::nullopt);
    EXPECT_TRUE(imported.reminders[1].completed);
}

TEST(CalendarImporter, BrokenLinesAreSkippedWithTheirLine)
{
    CalendarImport imported = importFixture("broken.ics", optionsIn("UTC"));
    ASSERT_FALSE(imported.error) << *imported.error;
    std::string warnings = allWarnings(imported);
    std::string file = std::string(KV_CALENDAR_DIRECTORY) + "/broken.ics";
    EXPECT_NE(warnings.find(file + ":9: Got a data line"), std::string::npos) << warnings;
    EXPECT_NE(warnings.find(file + ":11: event \"No start at all\" has no start (DTSTART); skipped"), std::string::npos) << warnings;
    EXPECT_NE(warnings.find(file + ":17: Can't parse as DATE-TIME"), std::string::npos) << warnings;
    EXPECT_NE(warnings.find(file + ":23: Can't parse as RECUR"), std::string::npos) << warnings;
    EXPECT_EQ(startsOf(imported, "Still imported"), std::vector<double> { utc("2026-11-23T10:00") });
    EXPECT_EQ(startsOf(imported, "Bad rule"), std::vector<double> { utc("2026-11-25T10:00") }) << "kept without its rule";
}

TEST(CalendarImporter, WhatIsNotACalendarIsRefusedWithItsLine)
{
    auto options = optionsIn("UTC");
    CalendarImport html = importFixture("not-a-calendar.ics", options);
    ASSERT_TRUE(html.error);
    EXPECT_NE(html.error->find("not-a-calendar.ics:1: not an iCalendar file"), std::string::npos) << *html.error;
    CalendarImport missing = importFixture("missing.ics", options);
    ASSERT_TRUE(missing.error);
    EXPECT_NE(missing.error->find("cannot read"), std::string::npos);
    CalendarImport blank = CalendarImporter::importText("\n\n  \n", "blank.ics", "blank", options);
    EXPECT_EQ(blank.error, "blank.ics: not an iCalendar file (it must begin with BEGIN:VCALENDAR)");

    // A good start and then anything at all: read as far as it goes, never a crash.
    std::string garbage = "BEGIN:VCALENDAR\r\n";
    for (int i = 0; i < 256; ++i)
        garbage += static_cast<char>((i * 73 + 11) % 255 + 1);
    garbage += "\r\nBEGIN:VEVENT\r\nDTSTART:20261123T100000Z\r\nSUMMARY:\xff\xfe\r\nEND:VEVENT\r\nBEGIN:VTODO\r\nEND:VCALENDAR\r\n";
    CalendarImport read = CalendarImporter::importText(garbage, "garbage.ics", "garbage", options);
    EXPECT_FALSE(read.error);
    ASSERT_EQ(read.events.size(), 1u);
    EXPECT_EQ(read.events[0].title, "\xEF\xBF\xBD\xEF\xBF\xBD") << "invalid UTF-8 is replaced";

    // A component of no known kind outside the calendar (a mangled BEGIN line).
    CalendarImport stray = CalendarImporter::importText("BEGIN:VCALENDAR\nEND:VCALENDAR\nBEGIN:\xff\xff\nEND:\xff\xff\n", "stray.ics", "stray", options);
    EXPECT_NE(allWarnings(stray).find("stray.ics:3: a component outside any VCALENDAR (skipped)"), std::string::npos) << allWarnings(stray);

    // A download cut short: what was read is kept, and the cut is a warning.
    CalendarImport cut = CalendarImporter::importText("BEGIN:VCALENDAR\nBEGIN:VEVENT\nDTSTART:20261123T100000Z\nSUMMARY:Cut sh", "cut.ics", "cut", options);
    EXPECT_FALSE(cut.error);
    EXPECT_EQ(startsOf(cut, "Cut sh"), std::vector<double> { utc("2026-11-23T10:00") });
    EXPECT_NE(allWarnings(cut).find("cut.ics:2: Missing END tag"), std::string::npos) << allWarnings(cut);
}

// A rule that never ends is followed to the window's end, and one that
// makes too many occurrences stops at the limit, with a warning.
TEST(CalendarImporter, EndlessRulesStopAtTheWindowAndTheLimit)
{
    auto options = optionsIn("UTC");
    auto calendar = [](const std::string& rule) {
        return "BEGIN:VCALENDAR\nBEGIN:VEVENT\nUID:x\nDTSTART:20000101T000000Z\nDURATION:PT5M\nRRULE:" + rule + "\nSUMMARY:Tick\nEND:VEVENT\nEND:VCALENDAR\n";
    };
    CalendarImport daily = CalendarImporter::importText(calendar("FREQ=DAILY"), "daily.ics", "daily", options);
    EXPECT_EQ(daily.events.size(), 1098u) << "a year back and two ahead, from a start long before";
    EXPECT_EQ(allWarnings(daily), "");

    CalendarImport minutely = CalendarImporter::importText(calendar("FREQ=MINUTELY"), "busy.ics", "busy", options);
    EXPECT_EQ(minutely.events.size(), CalendarImporter::maximumOccurrences);
    EXPECT_NE(allWarnings(minutely).find("busy.ics:2: event \"Tick\" repeats more than 5000 times"), std::string::npos) << allWarnings(minutely);

    // Every second of February only: libical would walk months of seconds to
    // find one (and, for a rule that matches nothing, centuries of hours).
    CalendarImport rare = CalendarImporter::importText(calendar("FREQ=SECONDLY;BYMONTH=2"), "rare.ics", "rare", options);
    EXPECT_EQ(rare.events.size(), 0u) << "its start lies before the window";
    EXPECT_NE(allWarnings(rare).find("rare.ics:2: event \"Tick\" repeats every hour, minute or second on chosen days; the rule is left out"), std::string::npos);
}
