#pragma once

#include "EKCalendar.h"

#include <Foundation/NSString.h>
#include <objc/objc.h>

#include <optional>
#include <string>

// What events and reminders share: a title, notes and a location (each null
// when the item has none) and the calendar it belongs to (null for none).
class EKCalendarItem : public NSObject {
    OBJC_CLASS(EKCalendarItem)
public:
    RefPtr<NSString> title() const { return text(m_title); }
    void setTitle(std::optional<std::string> title) { m_title = std::move(title); }
    RefPtr<NSString> notes() const { return text(m_notes); }
    void setNotes(std::optional<std::string> notes) { m_notes = std::move(notes); }
    RefPtr<NSString> location() const { return text(m_location); }
    void setLocation(std::optional<std::string> location) { m_location = std::move(location); }
    RefPtr<EKCalendar> calendar() const { return m_calendar; }
    void setCalendar(RefPtr<EKCalendar> calendar) { m_calendar = std::move(calendar); }

private:
    static RefPtr<NSString> text(const std::optional<std::string>& value) { return value ? NSString::create(*value) : nullptr; }

    std::optional<std::string> m_title;
    std::optional<std::string> m_notes;
    std::optional<std::string> m_location;
    RefPtr<EKCalendar> m_calendar;
};
