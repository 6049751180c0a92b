// Replacements for the notification centre: the panel takes over its content.

#include "HookGroup.h"
#include "HookMessages.h"
#include "HostHooks.h"

#include "_KVContainerView/KVView.h"
#include "launcher/KVAppLauncherView.h"
#include "settings/KVSettings.h"

using objc::IMP;
using objc::SEL;

using namespace hookMessages;

namespace {

bool notificationCenterActive()
{
    return enabled() && location() == KVPanelLocation::NotificationCenter;
}

IMP s_loadContentViewControllers;
void loadContentViewControllers(NSObject* self, SEL cmd)
{
    objc::callOriginal(s_loadContentViewControllers, self, cmd);
    reloadSettings();
    if (!notificationCenterActive())
        return;
    KVView* shared = panel();
    auto* view = objc::cast<UIView>(objc::send<NSObject*>(self, OBJC_SEL("view")));
    if (!view)
        return;
    for (auto& subview : view->subviews()) {
        if (subview.get() != shared)
            subview->setHidden(true);
    }
    if (shared && !shared->superview())
        view->addSubview(shared);
}

IMP s_viewWillAppear;
void viewWillAppear(NSObject* self, SEL cmd, bool animated)
{
    reloadSettings();
    if (notificationCenterActive()) {
        KVView* shared = panel();
        objc::send(shared, OBJC_SEL("setHidden:"), false);
        updatePanelAndLauncher(shared);
    }
    objc::callOriginal(s_viewWillAppear, self, cmd, animated);
}

IMP s_loadStatusBar;
void loadStatusBar(NSObject* self, SEL cmd)
{
    if (notificationCenterActive() && !shouldShowStatusBar())
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
