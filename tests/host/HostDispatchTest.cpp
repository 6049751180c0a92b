// The host's own flow reaches its hookable methods through the runtime, so a
// replacement installed by name sees every call.

#include "HostTestSupport.h"

#include <host/FrontBoard/FBRootWindow.h>
#include <host/SpringBoard/SBLockScreenView.h>
#include <host/SpringBoard/SBLockScreenViewController.h>

using objc::IMP;
using objc::SEL;

namespace {

HookSwitch slideToUnlock, grabberTop, grabberBottom, notificationList, timeLabel, lockScreenInit, rootWindowInit, dimInterval,
    showsStatusBar, mediaControls;
IMP originalSlideToUnlock, originalGrabber, originalNotificationList, originalTimeLabel, originalLockScreenInit, originalRootWindowInit,
    originalDimInterval, originalShowsStatusBar, originalMediaControls;
StrongId capturedRootWindow;
std::vector<StrongId> builtLockScreenViews;

// Hides the slide-to-unlock view instead of laying it out, as an extension would.
void hideSlideToUnlock(NSObject* self, SEL cmd)
{
    if (!slideToUnlock.active)
        return objc::callOriginal(originalSlideToUnlock, self, cmd);
    ++slideToUnlock.calls;
    objc::send(objc::object_getIvar(self, "_slideToUnlockView"), OBJC_SEL("setHidden:"), true);
}

void countGrabber(NSObject* self, SEL cmd, NSObject* grabber, bool atTop)
{
    ++(atTop ? grabberTop : grabberBottom).calls;
    objc::callOriginal(originalGrabber, self, cmd, grabber, atTop);
}

void countNotificationList(NSObject* self, SEL cmd)
{
    ++notificationList.calls;
    objc::callOriginal(originalNotificationList, self, cmd);
}

void countTimeLabel(NSObject* self, SEL cmd)
{
    ++timeLabel.calls;
    objc::callOriginal(originalTimeLabel, self, cmd);
}

StrongId recordLockScreenView(NSObject* self, SEL cmd, CGRect frame)
{
    StrongId view = objc::callOriginal<StrongId>(originalLockScreenInit, self, cmd, frame);
    if (lockScreenInit.active)
        builtLockScreenViews.push_back(view);
    return view;
}

StrongId captureRootWindow(NSObject* self, SEL cmd, NSObject* display)
{
    StrongId window = objc::callOriginal<StrongId>(originalRootWindowInit, self, cmd, display);
    if (rootWindowInit.active)
        capturedRootWindow = window;
    return window;
}

double longerDimInterval(NSObject* self, SEL cmd)
{
    return dimInterval.active ? 30.5 : objc::callOriginal<double>(originalDimInterval, self, cmd);
}

bool hideStatusBar(NSObject* self, SEL cmd) { return showsStatusBar.active ? false : objc::callOriginal<bool>(originalShowsStatusBar, self, cmd); }

void keepMediaControlsAway(NSObject* self, SEL cmd, bool visible)
{
    objc::callOriginal(originalMediaControls, self, cmd, mediaControls.active ? false : visible);
}

void installHooksOnce()
{
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    auto* lockScreenView = objc::objc_getClass("SBLockScreenView");
    auto* controller = objc::objc_getClass("SBLockScreenViewController");
    MSHookMessageEx(lockScreenView, objc::sel_registerName("_layoutSlideToUnlockView"), &hideSlideToUnlock, &originalSlideToUnlock);
    MSHookMessageEx(lockScreenView, objc::sel_registerName("_layoutGrabberView:atTop:"), &countGrabber, &originalGrabber);
    MSHookMessageEx(lockScreenView, objc::sel_registerName("_layoutNotificationView"), &countNotificationList, &originalNotificationList);
    MSHookMessageEx(lockScreenView, objc::sel_registerName("initWithFrame:"), &recordLockScreenView, &originalLockScreenInit);
    MSHookMessageEx(objc::objc_getClass("SBFLockScreenDateView"), objc::sel_registerName("_layoutTimeLabel"), &countTimeLabel, &originalTimeLabel);
    MSHookMessageEx(objc::objc_getClass("FBRootWindow"), objc::sel_registerName("initWithDisplay:"), &captureRootWindow, &originalRootWindowInit);
    MSHookMessageEx(objc::objc_getClass("SBBacklightController"), objc::sel_registerName("defaultLockScreenDimInterval"), &longerDimInterval, &originalDimInterval);
    MSHookMessageEx(controller, objc::sel_registerName("showsSpringBoardStatusBar"), &hideStatusBar, &originalShowsStatusBar);
    MSHookMessageEx(controller, objc::sel_registerName("_setMediaControlsVisible:"), &keepMediaControlsAway, &originalMediaControls);
}

class HostDispatch : public HostTest {
protected:
    void SetUp() override
    {
        installHooksOnce();
        for (auto* hook : { &slideToUnlock, &grabberTop, &grabberBottom, &notificationList, &timeLabel, &lockScreenInit, &rootWindowInit, &dimInterval,
                 &showsStatusBar, &mediaControls })
            hook->reset();
        builtLockScreenViews.clear();
        capturedRootWindow = nullptr;
        HostTest::SetUp();
    }
    void TearDown() override
    {
        HostTest::TearDown();
        builtLockScreenViews.clear();
        capturedRootWindow = nullptr;
    }
    bool bootsHost() const override { return false; }
    SBLockScreenView* lockScreenView() { return host().lockScreenViewController()->lockScreenView(); }
};

} // namespace

TEST_F(HostDispatch, LockScreenLayoutSendsEachPartThroughTheRuntime)
{
    slideToUnlock.active = true;
    host().boot();
    EXPECT_GE(slideToUnlock.calls, 1);
    EXPECT_GE(grabberTop.calls, 1);
    EXPECT_GE(grabberBottom.calls, 1);
    EXPECT_GE(notificationList.calls, 1);
    EXPECT_GE(timeLabel.calls, 1);
    // The replacement's effect holds: the host's layout never shows it again.
    EXPECT_TRUE(lockScreenView()->m_slideToUnlockView->isHidden());
    int before = notificationList.calls;
    lockScreenView()->setNeedsLayout();
    UIView::layoutPendingViews();
    EXPECT_EQ(notificationList.calls, before + 1);
}

TEST_F(HostDispatch, EveryLockScreenViewIsBuiltThroughInitWithFrame)
{
    lockScreenInit.active = true;
    host().boot();
    ASSERT_EQ(builtLockScreenViews.size(), 1u);
    EXPECT_EQ(builtLockScreenViews[0].get(), lockScreenView());
    host().unlock();
    host().lock();
    ASSERT_EQ(builtLockScreenViews.size(), 2u);
    EXPECT_EQ(builtLockScreenViews[1].get(), lockScreenView());
    EXPECT_NE(builtLockScreenViews[0], builtLockScreenViews[1]);
}

TEST_F(HostDispatch, RootWindowIsMadeWithInitWithDisplay)
{
    rootWindowInit.active = true;
    host().boot();
    EXPECT_EQ(capturedRootWindow.get(), host().rootWindow());
    EXPECT_EQ(host().rootWindow()->frame(), CGRectMake(0, 0, 375, 667));
}

TEST_F(HostDispatch, DimIntervalIsAskedThroughTheRuntime)
{
    host().boot();
    EXPECT_EQ(dump()["dimInterval"], 8.0);
    advance(8.5);
    EXPECT_EQ(dump()["screenOn"], false);

    dimInterval.active = true;
    host().setDisplayOn(true);
    EXPECT_EQ(dump()["dimInterval"], 30.5);
    advance(30);
    EXPECT_EQ(dump()["screenOn"], true);
    advance(1);
    EXPECT_EQ(dump()["screenOn"], false);
}

TEST_F(HostDispatch, StatusBarFollowsTheLockScreenControllersAnswers)
{
    host().boot();
    EXPECT_EQ(dump()["statusBarAlpha"], 1.0);
    showsStatusBar.active = true;
    host().lock();
    EXPECT_EQ(dump()["statusBarAlpha"], 0.0);
    // Away from the lock screen the controller has no say.
    host().unlock();
    EXPECT_EQ(dump()["statusBarAlpha"], 1.0);
}

TEST_F(HostDispatch, MediaControlsAreAddedThroughTheRuntime)
{
    host().boot();
    SBMediaController::NowPlaying song;
    song.song = "Song";
    song.artist = "Artist";
    host().setNowPlaying(song, true);
    EXPECT_TRUE(lockScreenView()->m_mediaControlsView);

    mediaControls.active = true;
    host().setNowPlaying(song, false);
    EXPECT_FALSE(lockScreenView()->m_mediaControlsView);
}
