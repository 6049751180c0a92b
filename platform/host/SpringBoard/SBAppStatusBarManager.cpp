#include "SBAppStatusBarManager.h"

#include "../HostShared.h"

OBJC_IMPLEMENT_CLASS(SBAppStatusBarManager, NSObject)
{
    c.classMethod<&SBAppStatusBarManager::sharedInstance>("sharedInstance");
    c.method<&SBAppStatusBarManager::statusBarAlpha>("statusBarAlpha");
    c.method<&SBAppStatusBarManager::setStatusBarAlpha>("setStatusBarAlpha:");
}

RefPtr<SBAppStatusBarManager> SBAppStatusBarManager::sharedInstance()
{
    static auto* slot = new RefPtr<SBAppStatusBarManager>();
    return host::sharedInstanceIn(*slot);
}

void SBAppStatusBarManager::setStatusBarAlpha(double alpha)
{
    m_alpha = alpha;
    if (m_didChange)
        m_didChange();
}
