#include "UIApplication.h"

#include "UIGestureEnvironment.h"
#include "UIPickerView.h"
#include "UISlider.h"
#include "UITapGestureRecognizer.h"
#include "UIWindow.h"

#include <Foundation/NSRunLoop.h>
#include <Foundation/VirtualClock.h>

#include <cmath>

OBJC_IMPLEMENT_CLASS(UIApplication, NSObject)
{
    c.classMethod<&UIApplication::sharedApplication>("sharedApplication");
    c.method<&UIApplication::statusBarOrientation>("statusBarOrientation");
    c.method<&UIApplication::keyWindow>("keyWindow");
    c.allocatable();
}

// As at the end of each turn of UIKit's run loop, the views that asked for
// layout are laid out after every event the run loop fires.
[[maybe_unused]] static const bool layoutObserverInstalled = [] {
    NSRunLoop::mainRunLoop()->addAfterEventObserver([] { UIView::layoutPendingViews(); });
    return true;
}();

static RefPtr<UIApplication>& sharedApplicationSlot()
{
    static auto* application = new RefPtr<UIApplication>(make<UIApplication>());
    return *application;
}

UIApplication* UIApplication::sharedApplication() { return sharedApplicationSlot().get(); }

void UIApplication::setSharedApplication(RefPtr<UIApplication> application)
{
    if (!application)
        return;
    application->m_statusBarOrientation = sharedApplication()->m_statusBarOrientation;
    sharedApplicationSlot() = std::move(application);
}

void UIApplication::setStatusBarOrientation(int orientation)
{
    if (orientation >= UIInterfaceOrientationPortrait && orientation <= UIInterfaceOrientationLandscapeLeft)
        m_statusBarOrientation = orientation;
}

UIWindow* UIApplication::keyWindow() const { return UIWindow::keyWindow(); }

std::vector<UIWindow*> UIApplication::windows() const { return UIWindow::allWindows(); }

UIView* UIApplication::hitTest(CGPoint point) const
{
    auto windows = UIWindow::visibleWindows();
    for (auto it = windows.rbegin(); it != windows.rend(); ++it) {
        UIWindow* window = *it;
        CGRect frame = window->frame();
        CGRect bounds = window->bounds();
        CGPoint local { point.x - frame.origin.x + bounds.origin.x, point.y - frame.origin.y + bounds.origin.y };
        if (UIView* hit = window->hitTest(local))
            return hit;
    }
    return nullptr;
}

bool UIApplication::sendTouch(CGPoint point, UITouchPhase phase)
{
    auto& environment = UIGestureEnvironment::shared();
    double now = VirtualClock::shared().monotonic();
    if (phase == UITouchPhaseBegan) {
        if (m_touch)
            sendTouch(m_touch->screenLocation(), UITouchPhaseCancelled);
        UIView* view = hitTest(point);
        bool repeat = m_lastTouchEnd >= 0 && now - m_lastTouchEnd <= UITapGestureRecognizer::maximumTapInterval
            && std::hypot(point.x - m_lastTouchLocation.x, point.y - m_lastTouchLocation.y) <= UITapGestureRecognizer::allowableMovement;
        m_touch = make<UITouch>(point, view, now, repeat ? m_lastTapCount + 1 : 1);
        RefPtr<UITouch> touch = m_touch;
        environment.touchBegan(*touch, view);
        UIView::layoutPendingViews();
        return view != nullptr;
    }
    if (!m_touch)
        return false;
    RefPtr<UITouch> touch = m_touch;
    touch->update(point, phase, now);
    switch (phase) {
    case UITouchPhaseMoved:
    case UITouchPhaseStationary:
        environment.touchMoved(*touch);
        break;
    case UITouchPhaseEnded:
        m_touch = nullptr;
        m_lastTouchEnd = now;
        m_lastTouchLocation = point;
        m_lastTapCount = touch->tapCount();
        environment.touchEnded(*touch);
        break;
    default:
        m_touch = nullptr;
        environment.touchCancelled(*touch);
        break;
    }
    UIView::layoutPendingViews();
    return touch->view() != nullptr;
}

bool UIApplication::moveFinger(CGPoint from, CGPoint to)
{
    // Small steps, so that every recogniser sees the movement grow as a
    // finger's would (a pan begins before a tap gives up, and so on).
    constexpr double step = 5;
    double length = std::hypot(to.x - from.x, to.y - from.y);
    int steps = std::max(1, static_cast<int>(std::ceil(length / step)));
    for (int i = 1; i <= steps; ++i) {
        double t = static_cast<double>(i) / steps;
        sendTouch({ from.x + (to.x - from.x) * t, from.y + (to.y - from.y) * t }, UITouchPhaseMoved);
    }
    return sendTouch(to, UITouchPhaseEnded);
}

bool UIApplication::tapAt(CGPoint point)
{
    bool hit = sendTouch(point, UITouchPhaseBegan);
    sendTouch(point, UITouchPhaseEnded);
    return hit;
}

bool UIApplication::doubleTapAt(CGPoint point)
{
    bool hit = tapAt(point);
    tapAt(point);
    return hit;
}

bool UIApplication::longPressAt(CGPoint point, double duration)
{
    bool hit = sendTouch(point, UITouchPhaseBegan);
    NSRunLoop::mainRunLoop()->advance(duration);
    sendTouch(point, UITouchPhaseEnded);
    return hit;
}

bool UIApplication::swipeAt(CGPoint point, UISwipeGestureRecognizerDirection direction, double distance)
{
    double dx = direction == UISwipeGestureRecognizerDirectionRight ? distance : direction == UISwipeGestureRecognizerDirectionLeft ? -distance : 0;
    double dy = direction == UISwipeGestureRecognizerDirectionDown ? distance : direction == UISwipeGestureRecognizerDirectionUp ? -distance : 0;
    return dragAt(point, dx, dy);
}

bool UIApplication::dragAt(CGPoint point, double dx, double dy)
{
    bool hit = sendTouch(point, UITouchPhaseBegan);
    moveFinger(point, { point.x + dx, point.y + dy });
    return hit;
}

template<typename T>
static T* enclosing(UIView* view)
{
    for (; view; view = view->superview()) {
        if (auto* found = dynamic_cast<T*>(view))
            return found;
    }
    return nullptr;
}

bool UIApplication::slideAt(CGPoint point, float value)
{
    auto* slider = enclosing<UISlider>(hitTest(point));
    if (!slider || !slider->isEnabled())
        return false;
    RefPtr<UISlider> protect(slider);
    // The finger takes the thumb where it is and moves it.
    CGPoint thumb = slider->convertPointToView(slider->thumbCenter(), nullptr);
    if (enclosing<UISlider>(hitTest(thumb)) != slider)
        return false;
    CGPoint target = slider->convertPointToView(slider->thumbCenterForValue(value), nullptr);
    sendTouch(thumb, UITouchPhaseBegan);
    moveFinger(thumb, target);
    return true;
}

bool UIApplication::pickAt(CGPoint point, long component, long row)
{
    auto* picker = enclosing<UIPickerView>(hitTest(point));
    return picker && RefPtr<UIPickerView>(picker)->pickRow(row, component);
}

void UIApplication::cancelTouches()
{
    if (m_touch)
        sendTouch(m_touch->screenLocation(), UITouchPhaseCancelled);
    UIGestureEnvironment::shared().cancelAll();
    m_lastTouchEnd = -1;
}
