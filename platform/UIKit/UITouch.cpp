#include "UITouch.h"

#include "UIWindow.h"

OBJC_IMPLEMENT_CLASS(UITouch, NSObject)
{
    c.method<&UITouch::tapCount>("tapCount");
    c.method<&UITouch::locationInView>("locationInView:");
}

UITouch::UITouch(CGPoint screenLocation, UIView* view, double timestamp, int tapCount)
    : m_location(screenLocation)
    , m_previousLocation(screenLocation)
    , m_timestamp(timestamp)
    , m_view(view)
    , m_tapCount(tapCount)
{
}

UIWindow* UITouch::window() const { return m_view ? m_view->window() : nullptr; }

CGPoint UITouch::locationInView(const UIView* view) const { return view ? view->convertPointFromView(m_location, nullptr) : m_location; }

CGPoint UITouch::previousLocationInView(const UIView* view) const
{
    return view ? view->convertPointFromView(m_previousLocation, nullptr) : m_previousLocation;
}

void UITouch::update(CGPoint screenLocation, UITouchPhase phase, double timestamp)
{
    m_previousLocation = m_location;
    m_location = screenLocation;
    m_phase = phase;
    m_timestamp = timestamp;
}
