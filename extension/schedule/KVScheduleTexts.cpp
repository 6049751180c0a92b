#include "KVScheduleTexts.h"

#include <Foundation/NSCalendar.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSDateFormatter.h>
#include <Foundation/NSString.h>

namespace KVScheduleTexts {

static std::string format(const NSDate* date, const char* pattern)
{
    // Formatters share their ICU formatter per pattern; making one is cheap.
    auto formatter = NSDateFormatter::create();
    formatter->setDateFormat(pattern);
    return formatter->stringFromDate(date);
}

// Unicode-aware, as the texts are in the device's language ("9:05 öö").
static std::string lowercased(const std::string& text) { return NSString::lowercaseString(text); }

static std::string withoutLeadingZero(std::string text)
{
    if (!text.empty() && text[0] == '0')
        text.erase(0, 1);
    return text;
}

std::string timeLabelText(const NSDate* date, bool militaryTime)
{
    if (!date)
        return {};
    auto now = NSDate::date();
    if (!NSCalendar::currentCalendar()->isDateInSameDay(date, now.get()))
        return format(date, "MMM d");
    std::string time = format(date, militaryTime ? "HH:mm" : "hh:mm a");
    if (!militaryTime)
        time = withoutLeadingZero(std::move(time));
    return lowercased(time);
}

std::string timeUntilText(int seconds, const NSDate* now)
{
    int hours = seconds / 3600;
    int rest = seconds - hours * 3600;
    int minutes = rest / 60;

    // The next item's time less its leftover seconds, through the calendar
    // (hour 25 or minute 70 roll over into the next day or hour).
    auto calendar = NSCalendar::currentCalendar();
    unsigned long units = NSCalendarUnitYear | NSCalendarUnitMonth | NSCalendarUnitDay | NSCalendarUnitHour | NSCalendarUnitMinute | NSCalendarUnitSecond;
    auto components = calendar->components(units, now);
    if (components) {
        components->setHour(components->hour() + hours);
        components->setMinute(components->minute() + minutes);
        auto next = calendar->dateFromComponents(components.get());
        if (next && !calendar->isDateInSameDay(next.get(), now))
            return format(next.get(), "MMM d");
    }
    if (seconds < 3600) {
        if (rest < 60)
            return "now";
        return NSString::format("in %d %s", minutes, rest >= 60 && rest <= 119 ? "minute" : "minutes");
    }
    return NSString::format("in %d %s", hours, seconds >= 3600 && seconds <= 7199 ? "hour" : "hours");
}

std::string normalizedCalendarTitle(const std::string& title)
{
    size_t first = title.find_first_not_of(" \t");
    if (first == std::string::npos)
        return {};
    size_t last = title.find_last_not_of(" \t");
    return lowercased(title.substr(first, last - first + 1));
}

std::vector<std::string> calendarBlacklist(const std::string& setting)
{
    std::vector<std::string> list;
    size_t start = 0;
    while (true) {
        size_t comma = setting.find(',', start);
        list.push_back(normalizedCalendarTitle(setting.substr(start, comma == std::string::npos ? std::string::npos : comma - start)));
        if (comma == std::string::npos)
            break;
        start = comma + 1;
    }
    return list;
}

std::string dayAndTimeText(const NSDate* date, bool militaryTime, bool alwaysDropLeadingZero)
{
    if (!date)
        return {};
    std::string time = lowercased(format(date, militaryTime ? "HH:mm" : "hh:mm a"));
    if (!militaryTime || alwaysDropLeadingZero)
        time = withoutLeadingZero(std::move(time));
    return format(date, "MMM d") + " at " + time;
}

std::string notificationRowText(const std::optional<std::string>& title, bool hasImage, const std::optional<std::string>& message)
{
    std::string text;
    if (title)
        text += *title + " - ";
    if (hasImage)
        text += "*has image* ";
    text += message ? *message : "no message";
    return text;
}

std::string nothingScheduledText(int daysFromNow)
{
    switch (daysFromNow) {
    case 2:
        return "You have nothing scheduled for today or tomorrow";
    case 1:
        return "You have nothing scheduled for today";
    case 0:
        return "Nothing scheduled";
    default:
        return NSString::format("You have nothing scheduled for the next %d days", daysFromNow);
    }
}

} // namespace KVScheduleTexts
