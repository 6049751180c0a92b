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
    RefPtr<NSString> title() const { return m_title; }
    void setTitle(const std::optional<std::string>& title) { m_title = text(title); }
    RefPtr<NSString> notes() const { return m_notes; }
    void setNotes(const std::optional<std::string>& notes) { m_notes = text(notes); }
    RefPtr<NSString> location() const { return m_location; }
    void setLocation(const std::optional<std::string>& location) { m_location = text(location); }
    RefPtr<EKCalendar> calendar() const { return m_calendar; }
    void setCalendar(RefPtr<EKCalendar> calendar) { m_calendar = std::move(calendar); }

private:
    // The texts are made once: a store answers the same items to every fetch.
    static RefPtr<NSString> text(const std::optional<std::string>& value) { return value ? NSString::create(*value) : nullptr; }

    RefPtr<NSString> m_title;
    RefPtr<NSString> m_notes;
    RefPtr<NSString> m_location;
    RefPtr<EKCalendar> m_calendar;
};
