#include "SBConferenceManager.h"

#include "../HostShared.h"

OBJC_IMPLEMENT_CLASS(SBConferenceManager, NSObject)
{
    c.classMethod<&SBConferenceManager::sharedInstance>("sharedInstance");
    c.method<&SBConferenceManager::activeFaceTimeCallExists>("activeFaceTimeCallExists");
    c.method<&SBConferenceManager::faceTimeInvitationExists>("faceTimeInvitationExists");
}

RefPtr<SBConferenceManager> SBConferenceManager::sharedInstance()
{
    static auto* slot = new RefPtr<SBConferenceManager>();
    return host::sharedInstanceIn(*slot);
}
