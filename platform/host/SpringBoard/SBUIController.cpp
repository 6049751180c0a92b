#include "SBUIController.h"

#include "../HostShared.h"
#include "../HostWorld.h"

#include <algorithm>
#include <cmath>

OBJC_IMPLEMENT_CLASS(SBUIController, NSObject)
{
    c.classMethod<&SBUIController::sharedInstance>("sharedInstance");
    c.method<&SBUIController::clickedMenuButton>("clickedMenuButton");
    c.method<&SBUIController::batteryCapacity>("batteryCapacity");
    c.method<&SBUIController::isOnAC>("isOnAC");
}

RefPtr<SBUIController> SBUIController::sharedInstance()
{
    static auto* slot = new RefPtr<SBUIController>();
    return host::sharedInstanceIn(*slot);
}

bool SBUIController::clickedMenuButton()
{
    HostWorld::shared().noteMenuPressHandledByHost();
    if (m_menuButtonAction)
        m_menuButtonAction();
    return true;
}

void SBUIController::setBatteryLevel(double level)
{
    if (std::isnan(level))
        return;
    m_batteryLevel = std::clamp(level, 0.0, 1.0);
}
