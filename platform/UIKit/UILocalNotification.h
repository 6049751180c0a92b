#pragma once

#include <Foundation/NSDate.h>
#include <objc/objc.h>

#include <string>

// A notification scheduled for a moment (the host keeps its next alarms as
// such). Only what the host's clients read is modelled.
class UILocalNotification final : public NSObject {
    OBJC_CLASS(UILocalNotification)
public:
    UILocalNotification() = default;
    static RefPtr<UILocalNotification> create(RefPtr<NSDate> fireDate, std::string alertBody = {})
    {
        auto notification = make<UILocalNotification>();
        notification->m_fireDate = std::move(fireDate);
        notification->m_alertBody = std::move(alertBody);
        return notification;
    }

    RefPtr<NSDate> fireDate() const { return m_fireDate; }
    void setFireDate(RefPtr<NSDate> date) { m_fireDate = std::move(date); }
    const std::string& alertBody() const { return m_alertBody; }
    void setAlertBody(const std::string& body) { m_alertBody = body; }

private:
    RefPtr<NSDate> m_fireDate;
    std::string m_alertBody;
};
