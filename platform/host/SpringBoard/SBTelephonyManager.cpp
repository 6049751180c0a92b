#include "SBTelephonyManager.h"

#include "../HostShared.h"

OBJC_IMPLEMENT_CLASS(SBTelephonyManager, NSObject)
{
    c.classMethod<&SBTelephonyManager::sharedTelephonyManager>("sharedTelephonyManager");
    c.method<&SBTelephonyManager::inCall>("inCall");
    c.method<&SBTelephonyManager::incomingCallExists>("incomingCallExists");
}

RefPtr<SBTelephonyManager> SBTelephonyManager::sharedTelephonyManager()
{
    static auto* slot = new RefPtr<SBTelephonyManager>();
    return host::sharedInstanceIn(*slot);
}
