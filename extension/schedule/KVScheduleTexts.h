#pragma once

#include <optional>
#include <string>
#include <vector>

class NSDate;

// The texts of the schedule table and its overlays, kept apart from the
// views so that they can be checked on their own. Dates are shown in the
// device's current time zone and locale.
namespace KVScheduleTexts {

// The time of a header or row: "HH:mm" (24-hour) or "h:mm a", lower-cased,
// for a date today ("9:05 am"); "MMM d" for any other day ("Nov 22").
std::string timeLabelText(const NSDate*, bool militaryTime);

// "now", "in 5 minutes", "in 1 hour", or "MMM d" when the next item is not
// today, from the whole seconds until it (see KVTableViewController).
std::string timeUntilText(int seconds, const NSDate* now);

// The "calendarBlacklist" setting as a list: split on commas, each piece
// trimmed of spaces and tabs and lower-cased, empty pieces kept.
std::vector<std::string> calendarBlacklist(const std::string& setting);
// A calendar title made comparable with the list's entries.
std::string normalizedCalendarTitle(const std::string&);

// "Nov 21 at 9:05 am": the day and the time of a date, as the overlays show
// it. The time's leading zero goes in 12-hour form, or always when asked.
std::string dayAndTimeText(const NSDate*, bool militaryTime, bool alwaysDropLeadingZero = false);

// A notification row: "Title - *has image* message" with "no message" for
// a missing message; a missing title leaves out "Title - ".
std::string notificationRowText(const std::optional<std::string>& title, bool hasImage, const std::optional<std::string>& message);

// The schedule header when nothing is scheduled in the coming days.
std::string nothingScheduledText(int daysFromNow);

} // namespace KVScheduleTexts
