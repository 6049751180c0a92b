#pragma once

#include <host/HostWorld.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace sim {

// What one iCalendar file adds to the calendar store: its calendars, its
// events (recurring ones expanded over a window) and its to-dos as
// reminders. Parsing is libical's; this class maps its components onto the
// host's records and says, with the file's line, what it had to skip.
struct CalendarImport {
    // With `calendar=`, the one calendar's colour is absent unless the file
    // gives one: the store keeps the colour the calendar has, if any.
    std::vector<HostWorld::Calendar> calendars;
    std::vector<HostWorld::CalendarEvent> events;
    std::vector<HostWorld::Reminder> reminders;
    // "FILE:LINE: what was skipped or guessed", for the scenario's warnings.
    std::vector<std::string> warnings;
    // Set when the file cannot be imported at all (missing, not iCalendar).
    std::optional<std::string> error;
};

class CalendarImporter {
public:
    struct Options {
        // Everything goes into this calendar instead of the file's own.
        std::optional<std::string> calendar;
        // Occurrences of recurring events are made in [windowStart, windowEnd)
        // (seconds since the reference date).
        double windowStart { 0 };
        double windowEnd { 0 };
        // The zone of times without one (floating times, all-day dates).
        std::string localTimeZone { "UTC" };
    };

    // Files bigger than this are refused (a year of a busy calendar is well under 1 MB).
    static constexpr size_t maximumFileSize = 16 * 1024 * 1024;
    // Occurrences one recurring event may make, and events one file may add.
    static constexpr size_t maximumOccurrences = 5000;
    static constexpr size_t maximumEvents = 50000;
    // Warnings listed one by one before they are only counted.
    static constexpr size_t maximumWarnings = 20;

    // `displayName` names the file in messages (default: the path).
    static CalendarImport importFile(const std::filesystem::path&, const Options&, std::string displayName = {});
    // `displayName` names the file in messages and, without X-WR-CALNAME, the calendar.
    static CalendarImport importText(std::string_view text, const std::string& displayName, const std::string& calendarName, const Options&);

    // A calendar's colour when the file gives none: one of the Calendar
    // app's colours, picked by the name so that it stays the same.
    static std::string colorForName(std::string_view name);
};

}
