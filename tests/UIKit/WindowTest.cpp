#include "EventsTestSupport.h"

#include <Foundation/VirtualClock.h>
#include <UIKit/UIDevice.h>

using Windows = EventsTest;

namespace {

class CountingView : public UIView {
    OBJC_CLASS(CountingView)
public:
    using UIView::UIView;
    void layoutSubviews() override { ++layouts; }
    int layouts { 0 };
};

std::vector<UIWindow*> onScreenExcept(UIWindow* ignored)
{
    auto windows = UIWindow::visibleWindows();
    std::erase(windows, ignored);
    return windows;
}

} // namespace

OBJC_IMPLEMENT_CLASS(CountingView, UIView) { }

TEST_F(Windows, WindowsStartHiddenAndStackByLevelThenByShowing)
{
    auto a = UIWindow::create(CGRectMake(0, 0, 10, 10));
    auto b = UIWindow::create(CGRectMake(0, 0, 10, 10));
    auto alert = UIWindow::create(CGRectMake(0, 0, 10, 10));
    alert->setWindowLevel(UIWindowLevelAlert);
    EXPECT_TRUE(a->isHidden());
    EXPECT_TRUE(onScreenExcept(window.get()).empty());

    alert->setHidden(false);
    b->setHidden(false);
    a->makeKeyAndVisible();
    EXPECT_EQ(onScreenExcept(window.get()), (std::vector<UIWindow*> { b.get(), a.get(), alert.get() }));
    EXPECT_TRUE(a->isKeyWindow());
    b->makeKeyAndVisible();
    EXPECT_EQ(onScreenExcept(window.get()), (std::vector<UIWindow*> { a.get(), b.get(), alert.get() }));

    auto* freed = b.get();
    b = nullptr;
    auto all = UIWindow::allWindows();
    EXPECT_EQ(std::count(all.begin(), all.end(), freed), 0);
    EXPECT_EQ(UIWindow::keyWindow(), nullptr);
}

TEST_F(Windows, ViewsAreLaidOutAfterEveryRunLoopEventAndTouch)
{
    auto view = addView<CountingView>(CGRectMake(0, 0, 100, 100));
    UIView::layoutPendingViews();
    int before = view->layouts;
    NSRunLoop::mainRunLoop()->scheduleAfter(1, [&] { view->setFrame(CGRectMake(0, 0, 50, 50)); });
    advance(0.5);
    EXPECT_EQ(view->layouts, before);
    advance(0.6);
    EXPECT_EQ(view->layouts, before + 1);

    view->setNeedsLayout();
    app().tapAt({ 10, 10 });
    EXPECT_EQ(view->layouts, before + 2);
}

TEST_F(Windows, ScreenBoundsFollowTheInterfaceOrientation)
{
    auto* screen = UIScreen::mainScreen();
    screen->setDeviceShape({ 414, 736 }, 3);
    EXPECT_EQ(screen->bounds(), CGRectMake(0, 0, 414, 736));
    EXPECT_EQ(screen->nativeBounds(), CGRectMake(0, 0, 1242, 2208));
    app().setStatusBarOrientation(UIInterfaceOrientationLandscapeLeft);
    EXPECT_EQ(screen->bounds(), CGRectMake(0, 0, 736, 414));
    app().setStatusBarOrientation(UIInterfaceOrientationPortraitUpsideDown);
    EXPECT_EQ(screen->bounds(), CGRectMake(0, 0, 414, 736));
    app().setStatusBarOrientation(17);
    EXPECT_EQ(app().statusBarOrientation(), UIInterfaceOrientationPortraitUpsideDown);
    screen->setDeviceShape({ 0, 10 }, 2);
    EXPECT_EQ(screen->scale(), 3);
    screen->setDeviceShape({ 375, 667 }, 2);

    // The host's own application object keeps the orientation.
    app().setStatusBarOrientation(UIInterfaceOrientationLandscapeRight);
    RefPtr<UIApplication> original = UIApplication::sharedApplication();
    UIApplication::setSharedApplication(make<UIApplication>());
    EXPECT_EQ(app().statusBarOrientation(), UIInterfaceOrientationLandscapeRight);
    UIApplication::setSharedApplication(original);

    EXPECT_EQ(objc::send<std::string>(objc::send<NSObject*>(UIDevice::classObject(), "currentDevice"), "systemVersion"), "9.3.3");
}

TEST_F(Windows, AnimationsApplyAtOnceAndCompleteOnTheClock)
{
    auto view = addView(CGRectMake(0, 0, 100, 100));
    std::vector<bool> completions;
    UIView::animateWithDuration(
        0.4, [&] { view->setAlpha(0); view->setFrame(CGRectMake(100, 0, 100, 100)); }, [&](bool finished) { completions.push_back(finished); });
    EXPECT_EQ(view->alpha(), 0);
    EXPECT_EQ(view->presentationAlpha(), 1);
    advance(0.1);
    EXPECT_NEAR(view->presentationAlpha(), 0.75, 1e-9);
    EXPECT_NEAR(view->presentationFrame().origin.x, 25, 1e-9);
    advance(0.29);
    EXPECT_TRUE(completions.empty());
    advance(0.02);
    EXPECT_EQ(completions, std::vector<bool> { true });
    EXPECT_EQ(view->presentationAlpha(), 0);

    // A delay holds the in-flight values back, then the duration runs.
    UIView::animateWithDuration(0.2, 0.5, 0, [&] { view->setAlpha(1); }, [&](bool finished) { completions.push_back(finished); });
    advance(0.3);
    EXPECT_EQ(view->presentationAlpha(), 0);
    advance(0.3);
    EXPECT_NEAR(view->presentationAlpha(), 0.5, 1e-6);
    advance(0.11);
    EXPECT_EQ(completions.size(), 2u);

    // Nothing to animate: the completion still waits for the run loop.
    UIView::animateWithDuration(0, nullptr, [&](bool finished) { completions.push_back(finished); });
    EXPECT_EQ(completions.size(), 2u);
    NSRunLoop::mainRunLoop()->runPending();
    EXPECT_EQ(completions.size(), 3u);
}
