#pragma once

#include "EKCalendarItem.h"

#include <Foundation/NSDate.h>

// A reminder: due at a moment (null for none), done or not.
class EKReminder final : public EKCalendarItem {
    OBJC_CLASS(EKReminder)
public:
    RefPtr<NSDate> dueDate() const { return m_dueDate; }
    void setDueDate(RefPtr<NSDate> date) { m_dueDate = std::move(date); }
    bool isCompleted() const { return m_completed; }
    void setCompleted(bool completed) { m_completed = completed; }

private:
    RefPtr<NSDate> m_dueDate;
    bool m_completed { false };
};
