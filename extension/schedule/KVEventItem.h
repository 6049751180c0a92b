#pragma once

#include <Foundation/NSDate.h>
#include <Foundation/NSString.h>
#include <UIKit/UIColor.h>
#include <objc/objc.h>

// A snapshot of one calendar event or reminder, as the schedule table and
// the event overlay see it. Built once from the calendar store's item and
// never refreshed: a reload throws the items away and builds new ones.
//
// `type` is "event" or "reminder" (null for an item of any other class) and
// doubles as the key of the section's collapse state and colour.
class KVEventItem final : public NSObject {
    OBJC_CLASS(KVEventItem)
public:
    KVEventItem() = default;
    static RefPtr<KVEventItem> alloc() { return make<KVEventItem>(); }
    // Reads the item's fields; answers self.
    RefPtr<KVEventItem> initFromCalendarItem(NSObject* calendarItem);

    bool isNow() const { return m_isNow; }
    void setIsNow(bool isNow) { m_isNow = isNow; }
    StrongId calendarItem() const { return m_calendarItem; }
    void setCalendarItem(StrongId item) { m_calendarItem = std::move(item); }
    RefPtr<NSString> type() const { return m_type; }
    void setType(RefPtr<NSString> type) { m_type = std::move(type); }
    RefPtr<NSString> title() const { return m_title; }
    void setTitle(RefPtr<NSString> title) { m_title = std::move(title); }
    RefPtr<NSDate> date() const { return m_date; }
    void setDate(RefPtr<NSDate> date) { m_date = std::move(date); }
    RefPtr<NSDate> endDate() const { return m_endDate; }
    void setEndDate(RefPtr<NSDate> date) { m_endDate = std::move(date); }
    RefPtr<UIColor> color() const { return m_color; }
    void setColor(RefPtr<UIColor> color) { m_color = std::move(color); }
    RefPtr<NSString> notes() const { return m_notes; }
    void setNotes(RefPtr<NSString> notes) { m_notes = std::move(notes); }
    RefPtr<NSString> location() const { return m_location; }
    void setLocation(RefPtr<NSString> location) { m_location = std::move(location); }

    // The type as a plain string ("" when unset), for keys and comparisons.
    std::string typeString() const { return m_type ? m_type->string() : std::string(); }
    std::string titleString() const { return m_title ? m_title->string() : std::string(); }

private:
    bool m_isNow { false };
    StrongId m_calendarItem;
    RefPtr<NSString> m_type;
    RefPtr<NSString> m_title;
    RefPtr<NSDate> m_date;
    RefPtr<NSDate> m_endDate;
    RefPtr<UIColor> m_color;
    RefPtr<NSString> m_notes;
    RefPtr<NSString> m_location;
};
