#include "FBSSystemService.h"

#include "../HostShared.h"
#include "../HostWorld.h"

#include <Foundation/NSDictionary.h>
#include <Foundation/NSNumber.h>

OBJC_IMPLEMENT_CLASS(FBSSystemService, NSObject)
{
    c.classMethod<&FBSSystemService::sharedService>("sharedService");
    c.method<&FBSSystemService::openApplication>("openApplication:options:");
    c.method<&FBSSystemService::openURL>("openURL:options:");
}

RefPtr<FBSSystemService> FBSSystemService::sharedService()
{
    static auto* slot = new RefPtr<FBSSystemService>();
    return host::sharedInstanceIn(*slot);
}

static bool promptsToUnlock(NSObject* options)
{
    auto* dictionary = dynamic_cast<NSDictionary*>(options);
    if (!dictionary)
        return false;
    return objc::send<bool>(dictionary->objectForKey(FBSSystemService::promptUnlockDeviceOption), OBJC_SEL("boolValue"));
}

bool FBSSystemService::openApplication(const std::string& bundleIdentifier, NSObject* options)
{
    if (!HostWorld::shared().appWithIdentifier(bundleIdentifier))
        return false;
    HostWorld::shared().recordLaunch({ bundleIdentifier, std::nullopt, promptsToUnlock(options) });
    return true;
}

bool FBSSystemService::openURL(const std::string& url, NSObject* options)
{
    if (url.empty())
        return false;
    HostWorld::shared().recordLaunch({ std::nullopt, url, promptsToUnlock(options) });
    return true;
}
