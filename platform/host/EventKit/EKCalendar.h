#pragma once

#include <UIKit/UIColor.h>
#include <objc/objc.h>

#include <string>

// A calendar of the calendar store: a title and a colour. The colour is
// answered as `CGColor` (this platform's colours stand for CGColorRef too);
// it is null for a calendar that has none.
class EKCalendar final : public NSObject {
    OBJC_CLASS(EKCalendar)
public:
    EKCalendar() = default;
    EKCalendar(std::string title, RefPtr<UIColor> color)
        : m_title(std::move(title))
        , m_color(std::move(color))
    {
    }

    const std::string& title() const { return m_title; }
    RefPtr<UIColor> CGColor() const { return m_color; }

private:
    std::string m_title;
    RefPtr<UIColor> m_color;
};
