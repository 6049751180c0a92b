#include "SBBacklightController.h"

#include "SBLockScreenManager.h"
#include "SBLockScreenViewController.h"

#include "../HostShared.h"

#include <Foundation/NSRunLoop.h>

#include <cmath>

OBJC_IMPLEMENT_CLASS(SBBacklightController, NSObject)
{
    c.classMethod<&SBBacklightController::sharedInstance>("sharedInstance");
    c.method<&SBBacklightController::defaultLockScreenDimInterval>("defaultLockScreenDimInterval");
    c.method<&SBBacklightController::screenIsOn>("screenIsOn");
    c.method<&SBBacklightController::screenIsOff>("screenIsOff");
    c.method<&SBBacklightController::resetLockScreenIdleTimer>("resetLockScreenIdleTimer");
}

SBBacklightController::~SBBacklightController() { cancelIdleTimer(); }

RefPtr<SBBacklightController> SBBacklightController::sharedInstance()
{
    static auto* slot = new RefPtr<SBBacklightController>();
    return host::sharedInstanceIn(*slot);
}

void SBBacklightController::resetLockScreenIdleTimer()
{
    ++m_idleTimerResets;
    restartIdleTimer();
}

void SBBacklightController::turnOnScreen()
{
    m_screenOn = true;
    restartIdleTimer();
}

void SBBacklightController::turnOffScreen()
{
    if (!m_screenOn)
        return;
    m_screenOn = false;
    cancelIdleTimer();
    // A display turned off locks the device, as the power button does.
    auto manager = SBLockScreenManager::sharedInstance();
    if (!manager->isUILocked())
        manager->lockUI();
    RefPtr<SBLockScreenViewController> controller = manager->lockScreenViewController();
    objc::send(controller, OBJC_SEL("_handleDisplayTurnedOff"));
}

void SBBacklightController::restartIdleTimer()
{
    cancelIdleTimer();
    if (!m_screenOn || !SBLockScreenManager::sharedInstance()->isUILocked())
        return;
    double interval = objc::send<double>(this, OBJC_SEL("defaultLockScreenDimInterval"));
    if (std::isnan(interval))
        interval = defaultLockScreenDimInterval();
    m_idleTimerToken = NSRunLoop::mainRunLoop()->scheduleAfter(interval, [this] {
        m_idleTimerToken = 0;
        turnOffScreen();
    });
}

void SBBacklightController::cancelIdleTimer()
{
    if (m_idleTimerToken)
        NSRunLoop::mainRunLoop()->cancel(m_idleTimerToken);
    m_idleTimerToken = 0;
}
