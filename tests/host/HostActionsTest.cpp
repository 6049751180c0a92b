// What the user does to the host: the home button, the display, alerts,
// locking, the notification centre and search.

#include "HostTestSupport.h"

#include <host/SpringBoard/SBBacklightController.h>
#include <host/SpringBoard/SBLockScreenViewController.h>

#include <UIKit/UIApplication.h>
#include <UIKit/UIScreen.h>
#include <UIKit/UIWindow.h>

using objc::IMP;
using objc::SEL;

namespace {

HookSwitch lockScreenPress, homeScreenPress, displayOff, bulletinAppeared, presentsFromEdge;
IMP originalNoteMenuButtonDown, originalClickedMenuButton, originalDisplayOff, originalBulletinAppeared, originalPresentsFromEdge,
    originalProgress, originalFinished;
// What the search page was told, in order: "edge 8", "progress 0.5", "finished 1".
std::vector<std::string> searchCalls;

// While active, the press is taken before the host sees it.
void swallowLockScreenPress(NSObject* self, SEL cmd)
{
    ++lockScreenPress.calls;
    if (!lockScreenPress.active)
        objc::callOriginal(originalNoteMenuButtonDown, self, cmd);
}

bool countHomeScreenPress(NSObject* self, SEL cmd)
{
    ++homeScreenPress.calls;
    return objc::callOriginal<bool>(originalClickedMenuButton, self, cmd);
}

void countDisplayOff(NSObject* self, SEL cmd)
{
    ++displayOff.calls;
    objc::callOriginal(originalDisplayOff, self, cmd);
}

void countBulletinAppeared(NSObject* self, SEL cmd, bool animated)
{
    ++bulletinAppeared.calls;
    objc::callOriginal(originalBulletinAppeared, self, cmd, animated);
}

long long recordEdge(NSObject* self, SEL cmd)
{
    long long edge = objc::callOriginal<long long>(originalPresentsFromEdge, self, cmd);
    searchCalls.push_back("edge " + std::to_string(edge));
    return edge;
}

void recordProgress(NSObject* self, SEL cmd, double progress)
{
    searchCalls.push_back("progress " + std::to_string(progress).substr(0, 4));
    objc::callOriginal(originalProgress, self, cmd, progress);
}

void recordFinished(NSObject* self, SEL cmd, bool presented)
{
    searchCalls.push_back(std::string("finished ") + (presented ? "1" : "0"));
    objc::callOriginal(originalFinished, self, cmd, presented);
}

// What the notification centre's layout controller was told, in order.
std::vector<std::string> notificationCenterCalls;
IMP originalLoadContent, originalLayoutWillAppear;

void recordLoadContent(NSObject* self, SEL cmd)
{
    notificationCenterCalls.push_back("load");
    objc::callOriginal(originalLoadContent, self, cmd);
}

void recordLayoutWillAppear(NSObject* self, SEL cmd, bool animated)
{
    notificationCenterCalls.push_back("appear");
    objc::callOriginal(originalLayoutWillAppear, self, cmd, animated);
}

void installHooksOnce()
{
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    MSHookMessageEx(objc::objc_getClass("SBLockScreenManager"), objc::sel_registerName("noteMenuButtonDown"), &swallowLockScreenPress, &originalNoteMenuButtonDown);
    MSHookMessageEx(objc::objc_getClass("SBUIController"), objc::sel_registerName("clickedMenuButton"), &countHomeScreenPress, &originalClickedMenuButton);
    MSHookMessageEx(objc::objc_getClass("SBLockScreenViewController"), objc::sel_registerName("_handleDisplayTurnedOff"), &countDisplayOff, &originalDisplayOff);
    MSHookMessageEx(objc::objc_getClass("SBLockScreenFullscreenBulletinViewController"), objc::sel_registerName("viewDidAppear:"), &countBulletinAppeared,
        &originalBulletinAppeared);
    MSHookMessageEx(objc::objc_getClass("SPUISearchViewController"), objc::sel_registerName("presentsFromEdge"), &recordEdge, &originalPresentsFromEdge);
    MSHookMessageEx(objc::objc_getClass("SBSearchViewController"), objc::sel_registerName("updatePresentationProgress:"), &recordProgress, &originalProgress);
    MSHookMessageEx(objc::objc_getClass("SBSearchViewController"), objc::sel_registerName("didFinishPresenting:"), &recordFinished, &originalFinished);
    objc::Class* layout = objc::objc_getClass("SBNotificationCenterLayoutViewController");
    MSHookMessageEx(layout, objc::sel_registerName("_loadContentViewControllers"), &recordLoadContent, &originalLoadContent);
    MSHookMessageEx(layout, objc::sel_registerName("viewWillAppear:"), &recordLayoutWillAppear, &originalLayoutWillAppear);
}

class HostActions : public HostTest {
protected:
    void SetUp() override
    {
        installHooksOnce();
        for (auto* hook : { &lockScreenPress, &homeScreenPress, &displayOff, &bulletinAppeared, &presentsFromEdge })
            hook->reset();
        searchCalls.clear();
        notificationCenterCalls.clear();
        HostTest::SetUp();
    }
};

} // namespace

TEST_F(HostActions, HomeGoesToTheLockScreenManagerOnlyWhileTheLockScreenShows)
{
    host().pressHome();
    EXPECT_EQ(lockScreenPress.calls, 1);
    EXPECT_EQ(homeScreenPress.calls, 0);
    EXPECT_EQ(dump()["menuPressesHandledByHost"], 1);

    // The notification centre covers the lock screen: the home screen's
    // controller takes the press, and the host puts the centre away.
    host().showNotificationCenter();
    host().pressHome();
    EXPECT_EQ(homeScreenPress.calls, 1);
    EXPECT_FALSE(host().isNotificationCenterVisible());
    EXPECT_EQ(dump()["menuPressesHandledByHost"], 2);

    host().unlock();
    host().pressHome();
    EXPECT_EQ(lockScreenPress.calls, 1);
    EXPECT_EQ(homeScreenPress.calls, 2);
    EXPECT_EQ(dump()["menuPressesHandledByHost"], 3);
}

TEST_F(HostActions, APressTakenByAReplacementIsNotCountedForTheHost)
{
    lockScreenPress.active = true;
    host().pressHome();
    EXPECT_EQ(lockScreenPress.calls, 1);
    EXPECT_EQ(dump()["menuPressesHandledByHost"], 0);
}

TEST_F(HostActions, DisplayOffTellsTheLockScreenAndHomeWakesIt)
{
    host().unlock();
    host().setDisplayOn(false);
    EXPECT_EQ(displayOff.calls, 1);
    auto state = dump();
    EXPECT_EQ(state["screenOn"], false);
    EXPECT_EQ(state["locked"], true);

    host().pressHome();
    EXPECT_EQ(lockScreenPress.calls, 1);
    EXPECT_EQ(dump()["screenOn"], true);
    host().setDisplayOn(false);
    host().setDisplayOn(false);
    EXPECT_EQ(displayOff.calls, 2);
}

TEST_F(HostActions, IdleTimerDimsTheLockScreenUnlessReset)
{
    advance(7);
    auto backlight = SBBacklightController::sharedInstance();
    objc::send(backlight, OBJC_SEL("resetLockScreenIdleTimer"));
    advance(7);
    EXPECT_EQ(dump()["screenOn"], true);
    advance(1.5);
    auto state = dump();
    EXPECT_EQ(state["screenOn"], false);
    EXPECT_EQ(state["idleTimerResets"], 1);

    // Unlocked, the lock screen's timer does not run.
    host().unlock();
    advance(60);
    EXPECT_EQ(dump()["screenOn"], true);
}

TEST_F(HostActions, FullscreenAlertAppearsAndGoesThroughItsDismissAction)
{
    host().showFullscreenAlert();
    EXPECT_EQ(bulletinAppeared.calls, 1);
    EXPECT_EQ(dump()["fullscreenAlert"], true);
    // A second alert while one shows is not stacked.
    host().showFullscreenAlert();
    EXPECT_EQ(bulletinAppeared.calls, 1);
    host().dismissFullscreenAlert();
    EXPECT_EQ(dump()["fullscreenAlert"], false);
    host().dismissFullscreenAlert();
}

TEST_F(HostActions, LockingBuildsTheLockScreenViewAgain)
{
    auto* controller = host().lockScreenViewController();
    RefPtr<SBLockScreenView> first = controller->lockScreenView();
    host().unlock();
    EXPECT_TRUE(controller->view()->isHidden());
    EXPECT_EQ(dump()["locked"], false);
    host().lock();
    EXPECT_FALSE(controller->view()->isHidden());
    EXPECT_NE(controller->lockScreenView(), first.get());
    EXPECT_FALSE(first->superview());
}

TEST_F(HostActions, RotationSwapsTheScreenAndLaysTheLockScreenOut)
{
    EXPECT_FALSE(host().rotate(7));
    ASSERT_TRUE(host().rotate(UIInterfaceOrientationLandscapeLeft));
    EXPECT_EQ(dump()["orientation"], "landscape");
    EXPECT_EQ(objc::send<long long>(UIApplication::sharedApplication(), OBJC_SEL("_getSpringBoardOrientation")), 4);
    auto* scrollView = host().lockScreenViewController()->lockScreenView()->foregroundScrollView();
    EXPECT_EQ(scrollView->frame(), CGRectMake(0, 0, 667, 375));
    EXPECT_EQ(scrollView->contentSize(), CGSizeMake(1334, 375));
    EXPECT_EQ(scrollView->contentOffset(), CGPointMake(667, 0));
}

TEST_F(HostActions, SearchAsksItsEdgeBeforeMovingThePage)
{
    EXPECT_FALSE(host().showSearch(4));
    ASSERT_TRUE(host().showSearch(1));
    std::vector<std::string> expected { "edge 1", "progress 0.00", "progress 0.25", "progress 0.50", "progress 0.75", "progress 1.00", "finished 1" };
    EXPECT_EQ(searchCalls, expected);
    EXPECT_TRUE(host().isSearchVisible());

    searchCalls.clear();
    host().hideSearch();
    expected = { "progress 1.00", "progress 0.75", "progress 0.50", "progress 0.25", "progress 0.00", "finished 0" };
    EXPECT_EQ(searchCalls, expected);
    EXPECT_FALSE(host().isSearchVisible());
}

TEST_F(HostActions, NotificationCenterLoadsItsContentOnceAndAppearsEachTime)
{
    host().showNotificationCenter();
    EXPECT_TRUE(host().isNotificationCenterVisible());
    // SpringBoard's status bar makes way for the centre's own.
    EXPECT_EQ(host().statusBarWindow()->alpha(), 0);
    EXPECT_EQ(dump()["statusBarAlpha"], 1.0);
    host().hideNotificationCenter();
    EXPECT_FALSE(host().isNotificationCenterVisible());
    EXPECT_EQ(host().statusBarWindow()->alpha(), 1);
    host().showNotificationCenter();
    std::vector<std::string> expected { "load", "appear", "appear" };
    EXPECT_EQ(notificationCenterCalls, expected);
}
