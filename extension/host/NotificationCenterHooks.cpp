// Replacements for the notification centre: the panel takes over its content.

#include "HookGroup.h"
#include "HostHooks.h"

#include "_KVContainerView/KVView.h"
#include "launcher/KVAppLauncherView.h"
#include "settings/KVSettings.h"

using objc::IMP;
using objc::SEL;

namespace {

bool notificationCenterActive()
{
    KVSettings* settings = KVSettings::sharedInstance();
    return settings->enabled() && settings->location() == KVPanelLocation::NotificationCenter;
}

IMP s_loadContentViewControllers;
void loadContentViewControllers(NSObject* self, SEL cmd)
{
    objc::callOriginal(s_loadContentViewControllers, self, cmd);
    KVSettings::sharedInstance()->reload();
    if (!notificationCenterActive())
        return;
    KVView* panel = KVView::sharedInstance();
    auto* view = objc::cast<UIView>(objc::send<NSObject*>(self, OBJC_SEL("view")));
    if (!view)
        return;
    for (auto& subview : view->subviews()) {
        if (subview.get() != panel)
            subview->setHidden(true);
    }
    if (!panel->superview())
        view->addSubview(panel);
}

IMP s_viewWillAppear;
void viewWillAppear(NSObject* self, SEL cmd, bool animated)
{
    KVSettings::sharedInstance()->reload();
    if (notificationCenterActive()) {
        KVView* panel = KVView::sharedInstance();
        panel->setHidden(false);
        panel->update();
        panel->appLauncherView()->update();
    }
    objc::callOriginal(s_viewWillAppear, self, cmd, animated);
}

IMP s_loadStatusBar;
void loadStatusBar(NSObject* self, SEL cmd)
{
    if (notificationCenterActive() && !KVSettings::sharedInstance()->shouldShowStatusBar())
        return;
    objc::callOriginal(s_loadStatusBar, self, cmd);
}

} // namespace

void installNotificationCenterHooks()
{
    installHookGroup(firstInitialiserUnit, notificationCenterGroupLine,
        {
            { "SBNotificationCenterLayoutViewController",
                {
                    hook("_loadContentViewControllers", &loadContentViewControllers, &s_loadContentViewControllers),
                    hook("viewWillAppear:", &viewWillAppear, &s_viewWillAppear),
                } },
            { "SBNotificationCenterViewController", { hook("_loadStatusBar", &loadStatusBar, &s_loadStatusBar) } },
        });
}
