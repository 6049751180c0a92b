// The panel's own load-time initialiser: the home button and the
// full-screen alerts, on every system version.

#include "KVView.h"

#include "host/HookGroup.h"
#include "host/HookMessages.h"
#include "settings/KVSettings.h"

using objc::IMP;
using objc::SEL;

namespace {

constexpr const char* panelUnit = "_KVContainerView/KVView";
constexpr int panelGroupLine = 843;

// The lock screen view built last.
StrongId s_lockScreenView;

bool closeOverlays(bool byHomeButton)
{
    return hookMessages::closeOverlays(KVView::currentPanel(), byHomeButton);
}

IMP s_initWithFrame;
StrongId lockScreenViewInitWithFrame(NSObject* self, SEL cmd, CGRect frame)
{
    s_lockScreenView = objc::callOriginal<StrongId>(s_initWithFrame, self, cmd, frame);
    return s_lockScreenView;
}

IMP s_noteMenuButtonDown;
void noteMenuButtonDown(NSObject* self, SEL cmd)
{
    // On the lock screen the press is taken before the host sees it.
    if (hookMessages::enabled() && hookMessages::location() == KVPanelLocation::LockScreen && closeOverlays(true))
        return;
    objc::callOriginal(s_noteMenuButtonDown, self, cmd);
}

IMP s_clickedMenuButton;
bool clickedMenuButton(NSObject* self, SEL cmd)
{
    // Elsewhere the host acts first; the press then counts as handled by
    // turning the host's YES into NO.
    bool handled = objc::callOriginal<bool>(s_clickedMenuButton, self, cmd);
    if (handled && hookMessages::enabled() && hookMessages::location() != KVPanelLocation::LockScreen && closeOverlays(true))
        return false;
    return handled;
}

IMP s_addFullscreenBulletinView;
void addFullscreenBulletinViewWithItem(NSObject* self, SEL cmd, NSObject* item)
{
    closeOverlays(false);
    KVView::setFullscreenAlertShowing(true);
    objc::callOriginal(s_addFullscreenBulletinView, self, cmd, item);
}

IMP s_presentFullscreenBulletinAlert;
void presentFullscreenBulletinAlertWithItem(NSObject* self, SEL cmd, NSObject* item)
{
    closeOverlays(false);
    KVView::setFullscreenAlertShowing(true);
    objc::callOriginal(s_presentFullscreenBulletinAlert, self, cmd, item);
}

IMP s_bulletinViewDidAppear;
void bulletinViewDidAppear(NSObject* self, SEL cmd, bool animated)
{
    closeOverlays(false);
    KVView::setFullscreenAlertShowing(true);
    objc::callOriginal(s_bulletinViewDidAppear, self, cmd, animated);
}

IMP s_performDismissAction;
void performDismissAction(NSObject* self, SEL cmd)
{
    // The only way the flag clears: an alert that goes away otherwise keeps
    // the panel hidden until the next one is dismissed through here.
    KVView::setFullscreenAlertShowing(false);
    objc::callOriginal(s_performDismissAction, self, cmd);
}

// Runs after the first initialiser, so its initWithFrame: wraps that one's.
__attribute__((constructor(202))) void kavelinPanelInitialise()
{
    installHookGroup(panelUnit, panelGroupLine,
        {
            { "SBLockScreenView", { hook("initWithFrame:", &lockScreenViewInitWithFrame, &s_initWithFrame) } },
            { "SBLockScreenManager", { hook("noteMenuButtonDown", &noteMenuButtonDown, &s_noteMenuButtonDown) } },
            { "SBUIController", { hook("clickedMenuButton", &clickedMenuButton, &s_clickedMenuButton) } },
            { "SBLockScreenViewController",
                {
                    hook("_addFullscreenBulletinViewWithItem:", &addFullscreenBulletinViewWithItem, &s_addFullscreenBulletinView),
                    hook("presentFullscreenBulletinAlertWithItem:", &presentFullscreenBulletinAlertWithItem, &s_presentFullscreenBulletinAlert),
                } },
            { "SBLockScreenFullscreenBulletinViewController",
                {
                    hook("viewDidAppear:", &bulletinViewDidAppear, &s_bulletinViewDidAppear),
                    hook("performDismissAction", &performDismissAction, &s_performDismissAction),
                } },
        });
}

} // namespace
