// Replacements for the lock screen: the panel goes into the lock screen's
// scroll view, one screen-width to the right, and the host's own lock screen
// elements (slide to unlock, grabbers, notification list, camera, charging
// view, timer view, media controls, time and date) stay out of its way.

#include "HookGroup.h"
#include "HookMessages.h"
#include "HostHooks.h"

#include "_KVContainerView/KVView.h"
#include "launcher/KVAppLauncherView.h"
#include "schedule/KVTableViewController.h"
#include "settings/KVSettings.h"

#include <Foundation/IntegerConversion.h>
#include <UIKit/UIScreen.h>
#include <UIKit/UIView.h>

using objc::IMP;
using objc::SEL;
using namespace hookMessages;

namespace {

// Active when the extension is on and placed on the lock screen.
bool lockScreenActive()
{
    return enabled() && location() == KVPanelLocation::LockScreen;
}

IMP s_defaultLockScreenDimInterval;
double defaultLockScreenDimInterval(NSObject* self, SEL cmd)
{
    if (lockScreenActive()) {
        double duration = objc::send<double>(settings(), OBJC_SEL("idleTimerDuration"));
        // Truncated as the phone converts: NaN gives 0 and so the host's
        // interval; infinities and huge values saturate and are returned.
        if (truncatedToInteger<long long>(duration) != 0)
            return duration;
    }
    return objc::callOriginal<double>(s_defaultLockScreenDimInterval, self, cmd);
}

IMP s_lockScreenViewInitWithFrame;
StrongId lockScreenViewInitWithFrame(NSObject* self, SEL cmd, CGRect frame)
{
    StrongId view = objc::callOriginal<StrongId>(s_lockScreenViewInitWithFrame, self, cmd, frame);
    reloadSettings();
    if (lockScreenActive()) {
        KVView* shared = panel();
        objc::send(shared, OBJC_SEL("updateForecastLabels"));
        objc::send(objc::send<NSObject*>(shared, OBJC_SEL("appLauncherView")), OBJC_SEL("update"));
    }
    return view;
}

IMP s_lockScreenViewLayoutSubviews;
void lockScreenViewLayoutSubviews(NSObject* self, SEL cmd)
{
    if (KVView* shared = lockScreenActive() ? panel() : nullptr) {
        if (objc::send<bool>(objc::send<NSObject*>(shared, OBJC_SEL("tableViewController")), OBJC_SEL("hasLoadedDataAtLeastOnce")))
            objc::send(shared, OBJC_SEL("update"));
        if (!shared->superview()) {
            StrongId scrollView = objc::object_getIvar(self, "_foregroundScrollView");
            objc::send(scrollView, OBJC_SEL("setFrame:"), UIScreen::mainScreen()->bounds());
            if (auto* container = objc::cast<UIView>(scrollView))
                container->addSubview(shared);
        }
        objc::send(objc::object_getIvar(self, "_pluginView"), OBJC_SEL("setHidden:"), true);
        objc::send(objc::object_getIvar(self, "_bottomLeftGrabberView"), OBJC_SEL("setHidden:"), true);
        if (!shouldShowStatusBar()) {
            StrongId manager = objc::send<StrongId>(objc::objc_getClass("SBAppStatusBarManager"), OBJC_SEL("sharedInstance"));
            objc::send(manager, OBJC_SEL("setStatusBarAlpha:"), 0.0);
        }
    }
    objc::callOriginal(s_lockScreenViewLayoutSubviews, self, cmd);
}

IMP s_layoutSlideToUnlockView;
void layoutSlideToUnlockView(NSObject* self, SEL cmd)
{
    if (!lockScreenActive())
        return objc::callOriginal(s_layoutSlideToUnlockView, self, cmd);
    objc::send(objc::object_getIvar(self, "_slideToUnlockView"), OBJC_SEL("setHidden:"), true);
}

IMP s_layoutGrabberView;
void layoutGrabberView(NSObject* self, SEL cmd, NSObject* grabber, bool atTop)
{
    if (lockScreenActive())
        objc::send(grabber, OBJC_SEL("setHidden:"), true);
    objc::callOriginal(s_layoutGrabberView, self, cmd, grabber, atTop);
}

IMP s_layoutNotificationView;
void layoutNotificationView(NSObject* self, SEL cmd)
{
    if (!lockScreenActive())
        return objc::callOriginal(s_layoutNotificationView, self, cmd);
    objc::send(objc::object_getIvar(self, "_notificationView"), OBJC_SEL("setHidden:"), true);
}

IMP s_coordinatedPresentingControllerIdentifier;
long long coordinatedPresentingControllerIdentifier(NSObject* self, SEL cmd)
{
    if (!lockScreenActive())
        return objc::callOriginal<long long>(s_coordinatedPresentingControllerIdentifier, self, cmd);
    return -1;
}

IMP s_layoutTimeLabel;
void layoutTimeLabel(NSObject* self, SEL cmd)
{
    if (!lockScreenActive())
        return objc::callOriginal(s_layoutTimeLabel, self, cmd);
    objc::send(objc::object_getIvar(self, "_legibilityTimeLabel"), OBJC_SEL("setHidden:"), true);
    objc::send(objc::object_getIvar(self, "_legibilityDateLabel"), OBJC_SEL("setHidden:"), true);
}

IMP s_handleDisplayTurnedOff;
void handleDisplayTurnedOff(NSObject* self, SEL cmd)
{
    // Whatever the placement: a dark screen closes every overlay.
    if (enabled())
        closeOverlays(panel(), false);
    objc::callOriginal(s_handleDisplayTurnedOff, self, cmd);
}

// Replacements that only swallow the host's call while active.
template<IMP* Original>
void suppressed(NSObject* self, SEL cmd)
{
    if (!lockScreenActive())
        objc::callOriginal(*Original, self, cmd);
}
template<IMP* Original>
void suppressedWithFlag(NSObject* self, SEL cmd, bool flag)
{
    if (!lockScreenActive())
        objc::callOriginal(*Original, self, cmd, flag);
}

IMP s_addCameraGrabberIfNecessary;
IMP s_activateCameraAnimated;
IMP s_createCameraControllerIfNecessary;
IMP s_addBatteryChargingViewAndShowBattery;
IMP s_addTimerView;
IMP s_addTimerViewIfNecessary;

bool hidesStatusBar() { return lockScreenActive() && !shouldShowStatusBar(); }

IMP s_statusBarStyle;
long long statusBarStyle(NSObject* self, SEL cmd)
{
    return hidesStatusBar() ? 0 : objc::callOriginal<long long>(s_statusBarStyle, self, cmd);
}

IMP s_effectiveVisibleStatusBarAlpha;
double effectiveVisibleStatusBarAlpha(NSObject* self, SEL cmd)
{
    return hidesStatusBar() ? 0.0 : objc::callOriginal<double>(s_effectiveVisibleStatusBarAlpha, self, cmd);
}

IMP s_showsSpringBoardStatusBar;
bool showsSpringBoardStatusBar(NSObject* self, SEL cmd)
{
    return hidesStatusBar() ? false : objc::callOriginal<bool>(s_showsSpringBoardStatusBar, self, cmd);
}

IMP s_setMediaControlsVisible;
void setMediaControlsVisible(NSObject* self, SEL cmd, bool visible)
{
    objc::callOriginal(s_setMediaControlsVisible, self, cmd, lockScreenActive() ? false : visible);
}

} // namespace

void installLockScreenHooks()
{
    installHookGroup(firstInitialiserUnit, lockScreenGroupLine,
        {
            { "SBBacklightController", { hook("defaultLockScreenDimInterval", &defaultLockScreenDimInterval, &s_defaultLockScreenDimInterval) } },
            { "SBLockScreenView",
                {
                    hook("initWithFrame:", &lockScreenViewInitWithFrame, &s_lockScreenViewInitWithFrame),
                    hook("layoutSubviews", &lockScreenViewLayoutSubviews, &s_lockScreenViewLayoutSubviews),
                    hook("_layoutSlideToUnlockView", &layoutSlideToUnlockView, &s_layoutSlideToUnlockView),
                    hook("_layoutGrabberView:atTop:", &layoutGrabberView, &s_layoutGrabberView),
                    hook("_layoutNotificationView", &layoutNotificationView, &s_layoutNotificationView),
                    hook("coordinatedPresentingControllerIdentifier", &coordinatedPresentingControllerIdentifier, &s_coordinatedPresentingControllerIdentifier),
                } },
            { "SBFLockScreenDateView", { hook("_layoutTimeLabel", &layoutTimeLabel, &s_layoutTimeLabel) } },
            { "SBLockScreenViewController",
                {
                    hook("_handleDisplayTurnedOff", &handleDisplayTurnedOff, &s_handleDisplayTurnedOff),
                    hook("_addCameraGrabberIfNecessary", &suppressed<&s_addCameraGrabberIfNecessary>, &s_addCameraGrabberIfNecessary),
                    hook("activateCameraAnimated:", &suppressedWithFlag<&s_activateCameraAnimated>, &s_activateCameraAnimated),
                    hook("_createCameraControllerIfNecessary", &suppressed<&s_createCameraControllerIfNecessary>, &s_createCameraControllerIfNecessary),
                    hook("statusBarStyle", &statusBarStyle, &s_statusBarStyle),
                    hook("_effectiveVisibleStatusBarAlpha", &effectiveVisibleStatusBarAlpha, &s_effectiveVisibleStatusBarAlpha),
                    hook("showsSpringBoardStatusBar", &showsSpringBoardStatusBar, &s_showsSpringBoardStatusBar),
                    hook("_addBatteryChargingViewAndShowBattery:", &suppressedWithFlag<&s_addBatteryChargingViewAndShowBattery>, &s_addBatteryChargingViewAndShowBattery),
                    hook("_addTimerView", &suppressed<&s_addTimerView>, &s_addTimerView),
                    hook("_addTimerViewIfNecessary", &suppressed<&s_addTimerViewIfNecessary>, &s_addTimerViewIfNecessary),
                    hook("_setMediaControlsVisible:", &setMediaControlsVisible, &s_setMediaControlsVisible),
                } },
        });
}
