// The world commands that read files from this computer: calendar-import
// and music's artwork=FILE.png.
#include "Simulator.h"

#include "world/CalendarImporter.h"

#include <Foundation/NSTimeZone.h>
#include <Foundation/VirtualClock.h>
#include <UIKit/UIImage.h>
#include <host/HostWorld.h>

#include <algorithm>
#include <iostream>

namespace sim {

// Occurrences of recurring events are made from a year before the clock's
// time at the import to two years after it: the panel asks for the next
// "calveraDaysFromNow" days, and a scenario may move the clock a long way.
static constexpr double importWindowBefore = 366 * 86400.0;
static constexpr double importWindowAfter = 2 * 366 * 86400.0;

std::filesystem::path Simulator::hostPathFor(const Command& command, const std::string& written)
{
    std::filesystem::path path = written;
    if (path.is_relative())
        path = std::filesystem::path(command.file).parent_path() / path;
    return path;
}

bool Simulator::importCalendar(const Command& command)
{
    const auto& import = command.as<CalendarImportCommand>();
    CalendarImporter::Options options;
    options.calendar = import.calendar;
    double now = VirtualClock::shared().wallNow();
    options.windowStart = now - importWindowBefore;
    options.windowEnd = now + importWindowAfter;
    options.localTimeZone = NSTimeZone::defaultTimeZone()->name();
    CalendarImport imported = CalendarImporter::importFile(hostPathFor(command, import.hostPath), options, import.hostPath);
    if (imported.error)
        return fail(command, ExitCannotPlay, *imported.error);
    for (const std::string& warning : imported.warnings) {
        if (!warn(command, warning))
            return false;
    }
    HostWorld& world = HostWorld::shared();
    for (HostWorld::Calendar& calendar : imported.calendars) {
        // Into a calendar that exists, without a colour of the file's: it keeps its own.
        const auto& known = world.calendars();
        bool exists = std::any_of(known.begin(), known.end(), [&](const HostWorld::Calendar& c) { return c.title == calendar.title; });
        if (!calendar.color && exists)
            continue;
        if (!calendar.color)
            calendar.color = CalendarImporter::colorForName(calendar.title);
        world.defineCalendar(std::move(calendar));
    }
    for (HostWorld::CalendarEvent& event : imported.events)
        world.addEvent(std::move(event));
    for (HostWorld::Reminder& reminder : imported.reminders)
        world.addReminder(std::move(reminder));
    return true;
}

std::optional<std::string> Simulator::artworkFile(const Command& command, const std::string& written)
{
    auto path = hostPathFor(command, written);
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        fail(command, ExitCannotPlay, "cannot read the artwork " + written + ": no such file (looked for " + path.string() + ")");
        return std::nullopt;
    }
    auto absolute = std::filesystem::absolute(path, error).string();
    if (!UIImage::imageWithContentsOfFile(absolute)) {
        fail(command, ExitCannotPlay, "the artwork " + written + " is not a PNG picture");
        return std::nullopt;
    }
    return absolute;
}

}
