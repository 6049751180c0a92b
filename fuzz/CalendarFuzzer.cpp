// Feeds arbitrary bytes to the iCalendar importer (libical underneath): it
// must never crash, hang or leak, and what it makes must keep its promises.
#include <world/CalendarImporter.h>

#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t length)
{
    sim::CalendarImporter::Options options;
    options.windowStart = 800000000; // 2026-05-09
    options.windowEnd = options.windowStart + 3 * 366 * 86400.0;
    options.localTimeZone = "Europe/Berlin";
    std::string_view text(reinterpret_cast<const char*>(bytes), length);
    sim::CalendarImport imported = sim::CalendarImporter::importText(text, "fuzz.ics", "fuzz", options);
    if (imported.error && (!imported.events.empty() || !imported.reminders.empty()))
        std::abort(); // a refused file adds nothing
    if (imported.events.size() > sim::CalendarImporter::maximumEvents || imported.warnings.size() > sim::CalendarImporter::maximumWarnings + 1)
        std::abort();
    for (const auto& event : imported.events) {
        // Every occurrence overlaps the window and ends no earlier than it starts.
        if (event.end < event.start || event.end < options.windowStart || event.start >= options.windowEnd)
            std::abort();
    }
    for (const auto& calendar : imported.calendars) {
        if (calendar.title.empty() || (calendar.color && calendar.color->size() != 7))
            std::abort();
    }
    return 0;
}
