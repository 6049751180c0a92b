#include "SBLockScreenManager.h"

#include "SBBacklightController.h"
#include "SBLockScreenViewController.h"

#include "../HostShared.h"
#include "../HostWorld.h"

OBJC_IMPLEMENT_CLASS(SBLockScreenManager, NSObject)
{
    c.classMethod<&SBLockScreenManager::sharedInstance>("sharedInstance");
    c.method<&SBLockScreenManager::isUILocked>("isUILocked");
    c.method<&SBLockScreenManager::noteMenuButtonDown>("noteMenuButtonDown");
    c.method<&SBLockScreenManager::lockScreenViewController>("lockScreenViewController");
}

RefPtr<SBLockScreenManager> SBLockScreenManager::sharedInstance()
{
    static auto* slot = new RefPtr<SBLockScreenManager>();
    return host::sharedInstanceIn(*slot);
}

void SBLockScreenManager::setLockScreenViewController(RefPtr<SBLockScreenViewController> controller)
{
    m_lockScreenViewController = std::move(controller);
}

void SBLockScreenManager::noteMenuButtonDown()
{
    HostWorld::shared().noteMenuPressHandledByHost();
    // The press wakes a dark display; on a lit lock screen it counts as
    // activity and starts the idle timer again.
    auto backlight = SBBacklightController::sharedInstance();
    if (backlight->screenIsOff())
        backlight->turnOnScreen();
    else
        backlight->restartIdleTimer();
}

void SBLockScreenManager::lockUI()
{
    m_locked = true;
    if (m_lockScreenViewController)
        m_lockScreenViewController->prepareForLock();
    SBBacklightController::sharedInstance()->restartIdleTimer();
}

void SBLockScreenManager::unlockUI()
{
    m_locked = false;
    if (m_lockScreenViewController)
        m_lockScreenViewController->prepareForUnlock();
    SBBacklightController::sharedInstance()->restartIdleTimer();
}
