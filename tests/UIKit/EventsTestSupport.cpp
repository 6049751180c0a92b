#include "EventsTestSupport.h"

OBJC_IMPLEMENT_CLASS(ActionLog, NSObject)
{
    c.method<&ActionLog::single>("single:");
    c.method<&ActionLog::twice>("twice:");
    c.method<&ActionLog::press>("press:");
    c.method<&ActionLog::swipe>("swipe:");
    c.method<&ActionLog::button>("button:");
    c.method<&ActionLog::changed>("changed:");
    c.method<&ActionLog::bare>("bare");
}

void ActionLog::note(const std::string& name, NSObject* sender)
{
    std::string entry = name;
    if (auto* recognizer = objc::cast<UIGestureRecognizer>(sender)) {
        static const char* states[] = { "possible", "began", "changed", "ended", "cancelled", "failed" };
        entry += std::string(":") + states[recognizer->state()];
    }
    entries.push_back(entry);
    senders.push_back(sender);
}

void EventsTest::SetUp()
{
    UIApplication::sharedApplication()->setStatusBarOrientation(UIInterfaceOrientationPortrait);
    window = UIWindow::create(UIScreen::mainScreen()->bounds());
    window->makeKeyAndVisible();
}

void EventsTest::TearDown()
{
    app().cancelTouches();
    // Whatever a test left waiting on the clock runs out before the next.
    advance(10);
    window->setHidden(true);
    window = nullptr;
}

CGPoint EventsTest::centre(UIView* view)
{
    CGRect frame = view->screenFrame();
    return { CGRectGetMidX(frame), CGRectGetMidY(frame) };
}
