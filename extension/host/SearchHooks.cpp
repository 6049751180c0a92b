// Replacements for the search page: with the panel placed there, it takes the
// page over when the page is presented from the panel's edge.

#include "HookGroup.h"
#include "HookMessages.h"
#include "HostHooks.h"

#include "_KVContainerView/KVView.h"
#include "launcher/KVAppLauncherView.h"
#include "settings/KVSettings.h"

// The edge the host's search page last said it presents from (1 top, 8 right).
extern "C" __attribute__((visibility("default"))) int spotlightEdge = 0;

using objc::IMP;
using objc::SEL;
using namespace hookMessages;

namespace {

// The search view controller and navigation controller created last.
StrongId s_searchViewController;
StrongId s_navigationController;

bool searchActive()
{
    int placement = location();
    return enabled() && (placement == KVPanelLocation::SearchPageRight || placement == KVPanelLocation::SearchPageTop);
}

// Whether the page is being presented from the edge the panel is placed on.
bool ownsSearchPage()
{
    int edge = location() == KVPanelLocation::SearchPageRight ? 8 : 1;
    return edge == spotlightEdge;
}

void setStatusBarAlpha(double alpha)
{
    StrongId manager = objc::send<StrongId>(objc::objc_getClass("SBAppStatusBarManager"), OBJC_SEL("sharedInstance"));
    objc::send(manager, OBJC_SEL("setStatusBarAlpha:"), alpha);
}

void setSearchInterfaceHidden(bool hidden)
{
    objc::send(objc::send<NSObject*>(s_searchViewController, OBJC_SEL("view")), OBJC_SEL("setHidden:"), hidden);
    objc::send(objc::send<NSObject*>(s_navigationController, OBJC_SEL("navigationBar")), OBJC_SEL("setHidden:"), hidden);
}

IMP s_searchInit;
StrongId searchInit(NSObject* self, SEL cmd)
{
    StrongId controller = objc::callOriginal<StrongId>(s_searchInit, self, cmd);
    reloadSettings();
    if (KVView* shared = searchActive() ? panel() : nullptr) {
        updatePanelAndLauncher(shared);
        if (auto* view = objc::cast<UIView>(objc::send<NSObject*>(controller, OBJC_SEL("view"))))
            view->addSubview(shared);
    }
    return controller;
}

IMP s_didFinishPresenting;
void didFinishPresenting(NSObject* self, SEL cmd, bool presented)
{
    reloadSettings();
    if (!searchActive())
        return objc::callOriginal(s_didFinishPresenting, self, cmd, presented);
    if (!ownsSearchPage())
        return objc::callOriginal(s_didFinishPresenting, self, cmd, presented);
    if (!shouldShowStatusBar())
        setStatusBarAlpha(presented ? 0.0 : 1.0);
    updatePanelAndLauncher(panel());
}

IMP s_updatePresentationProgress;
void updatePresentationProgress(NSObject* self, SEL cmd, double progress)
{
    // Every slide-in starts with fresh settings.
    if (progress < static_cast<double>(0.1f))
        reloadSettings();
    if (!searchActive())
        return objc::callOriginal(s_updatePresentationProgress, self, cmd, progress);
    KVView* shared = panel();
    if (ownsSearchPage()) {
        if (!shouldShowStatusBar())
            setStatusBarAlpha(0.0);
        setSearchInterfaceHidden(true);
        objc::send(shared, OBJC_SEL("setHidden:"), false);
        return;
    }
    setSearchInterfaceHidden(false);
    objc::send(shared, OBJC_SEL("setHidden:"), true);
    objc::callOriginal(s_updatePresentationProgress, self, cmd, progress);
}

IMP s_spuiInit;
StrongId spuiInit(NSObject* self, SEL cmd)
{
    s_searchViewController = objc::callOriginal<StrongId>(s_spuiInit, self, cmd);
    return s_searchViewController;
}

IMP s_presentsFromEdge;
long long presentsFromEdge(NSObject* self, SEL cmd)
{
    long long edge = objc::callOriginal<long long>(s_presentsFromEdge, self, cmd);
    spotlightEdge = static_cast<int>(edge);
    return edge;
}

IMP s_initWithRootViewController;
StrongId initWithRootViewController(NSObject* self, SEL cmd, NSObject* root)
{
    s_navigationController = objc::callOriginal<StrongId>(s_initWithRootViewController, self, cmd, root);
    return s_navigationController;
}

} // namespace

void installSearchHooks()
{
    installHookGroup(firstInitialiserUnit, searchGroupLine,
        {
            { "SBSearchViewController",
                {
                    hook("init", &searchInit, &s_searchInit),
                    hook("didFinishPresenting:", &didFinishPresenting, &s_didFinishPresenting),
                    hook("updatePresentationProgress:", &updatePresentationProgress, &s_updatePresentationProgress),
                } },
            { "SPUISearchViewController",
                {
                    hook("init", &spuiInit, &s_spuiInit),
                    hook("presentsFromEdge", &presentsFromEdge, &s_presentsFromEdge),
                } },
            { "SPUINavigationController", { hook("initWithRootViewController:", &initWithRootViewController, &s_initWithRootViewController) } },
        });
}
