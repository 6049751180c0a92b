#include "KVTableViewController.h"

#include "KVMelodra/KVMelodraView.h"
#include "_KVContainerView/KVView.h"
#include "launcher/KVAppLauncherView.h"
#include "settings/KVSettings.h"

#include <UIKit/UIScrollView.h>

#include <algorithm>

OBJC_IMPLEMENT_CLASS(KVTableViewController, NSObject)
{
    c.method<&KVTableViewController::tableView>("tableView");
    c.method<&KVTableViewController::changeFrame>("changeFrame:");
    c.method<&KVTableViewController::refreshTableViewLayout>("refreshTableViewLayout");
    c.method<&KVTableViewController::reloadTableViewData>("reloadTableViewData");
    c.method<&KVTableViewController::forceReloadTableViewData>("forceReloadTableViewData");
    c.method<&KVTableViewController::hasLoadedDataAtLeastOnce>("hasLoadedDataAtLeastOnce");
}

KVTableViewController::KVTableViewController()
{
    m_settings = KVSettings::sharedInstance();
    m_tableView = make<UIScrollView>();
    m_tableView->setName("tableView");
    m_tableView->setBackgroundColor(UIColor::clearColor());
}

void KVTableViewController::changeFrame(CGRect panelBounds)
{
    KVView* panel = KVView::currentPanel();
    if (!panel)
        return;
    double w = panelBounds.size.width;
    double h = panelBounds.size.height;
    // The clock label is read by name, as the host-facing code does.
    auto* clockLabel = objc::cast<UIView>(objc::object_getIvar(panel, "_timeDateLabel"));
    CGRect clock = clockLabel ? clockLabel->frame() : CGRectZero;
    double top = std::trunc(clock.origin.y + 1.5 * clock.size.height);
    double height = std::trunc(h - top - 10);
    UIView* music = panel->melodraView();
    UIView* launcher = panel->appLauncherView();
    bool musicHidden = !music || music->isHidden();
    if (m_settings->lanceraEnabled()) {
        double bottom = musicHidden ? h - launcher->frame().origin.y + 5 : h - music->frame().origin.y + 10;
        height = std::trunc(height - bottom);
    } else if (musicHidden) {
        if (m_settings->location() == KVPanelLocation::NotificationCenter)
            height = std::trunc(height - 0.05 * std::max(w, h));
    } else {
        height = std::trunc(height - (h - music->frame().origin.y + 10));
    }
    m_tableView->setFrame(CGRectMake(20, top, w - 40, height));
}

void KVTableViewController::refreshTableViewLayout() { m_tableView->setNeedsLayout(); }

void KVTableViewController::reloadTableViewData() { m_hasLoadedDataAtLeastOnce = true; }

void KVTableViewController::forceReloadTableViewData() { reloadTableViewData(); }
