#include "KVMelodraView.h"

#include "_KVContainerView/KVView.h"
#include "launcher/KVAppLauncherView.h"
#include "settings/KVSettings.h"

#include <algorithm>

OBJC_IMPLEMENT_CLASS(KVMelodraView, UIView)
{
    c.method<&KVMelodraView::changeFrame>("changeFrame:");
    c.method<&KVMelodraView::update>("update");
}

KVMelodraView::KVMelodraView()
{
    m_settings = KVSettings::sharedInstance();
}

void KVMelodraView::changeFrame(CGRect panelBounds)
{
    double p = panelBounds.size.width;
    double q = panelBounds.size.height;
    KVView* panel = KVView::currentPanel();
    UIView* launcher = panel ? panel->appLauncherView() : nullptr;
    double y;
    if (launcher && !launcher->isHidden())
        y = launcher->frame().origin.y - 40 - 10;
    else if (m_settings->location() == KVPanelLocation::NotificationCenter)
        y = q - 40 - 0.05 * std::max(q, p);
    else
        y = q - 40 - 10;
    setFrame(CGRectMake(20, y, p - 40, 40));
}

void KVMelodraView::update() { }
