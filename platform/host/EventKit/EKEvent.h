#pragma once

#include "EKCalendarItem.h"

#include <Foundation/NSDate.h>

// A calendar event: it starts and ends.
class EKEvent final : public EKCalendarItem {
    OBJC_CLASS(EKEvent)
public:
    RefPtr<NSDate> startDate() const { return m_startDate; }
    void setStartDate(RefPtr<NSDate> date) { m_startDate = std::move(date); }
    RefPtr<NSDate> endDate() const { return m_endDate; }
    void setEndDate(RefPtr<NSDate> date) { m_endDate = std::move(date); }

private:
    RefPtr<NSDate> m_startDate;
    RefPtr<NSDate> m_endDate;
};
