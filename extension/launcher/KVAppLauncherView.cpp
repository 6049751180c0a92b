#include "KVAppLauncherView.h"

#include "settings/KVSettings.h"

#include <algorithm>

OBJC_IMPLEMENT_CLASS(KVAppLauncherView, UIView)
{
    c.method<&KVAppLauncherView::changeFrame>("changeFrame:");
    c.method<&KVAppLauncherView::update>("update");
}

KVAppLauncherView::KVAppLauncherView()
{
    m_settings = KVSettings::sharedInstance();
}

void KVAppLauncherView::changeFrame(CGRect panelFrame)
{
    double p = panelFrame.size.width;
    double q = panelFrame.size.height;
    double h = std::max(0.071 * q, 40.0);
    double y;
    if (m_settings->location() == KVPanelLocation::NotificationCenter)
        y = q - h - std::max(q, p) * (m_settings->shouldShowStatusBar() ? 0.075 : 0.05);
    else
        y = q - h - 10;
    setFrame(CGRectMake(0, y, p, h));
}

void KVAppLauncherView::update() { }
