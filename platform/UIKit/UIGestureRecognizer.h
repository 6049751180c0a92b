#pragma once

#include <objc/objc.h>

#include <string>

class UIView;

// The base of the gesture recognisers. (Its states, the concrete recognisers
// and touch delivery are completed in this library's gesture files.)
class UIGestureRecognizer : public NSObject {
    OBJC_CLASS(UIGestureRecognizer)
public:
    UIView* view() const { return m_view; }
    void setView(UIView* view) { m_view = view; }
    // The word a dump uses for this kind: "tap", "doubletap", "longpress", "swipe-up", ...
    virtual std::string kindName() const { return "gesture"; }

private:
    UIView* m_view { nullptr };
};
