#include "SBApplicationController.h"

#include "../HostShared.h"
#include "../HostWorld.h"

OBJC_IMPLEMENT_CLASS(SBApplicationController, NSObject)
{
    c.classMethod<&SBApplicationController::sharedInstance>("sharedInstance");
    c.method<&SBApplicationController::applicationWithBundleIdentifier>("applicationWithBundleIdentifier:");
}

RefPtr<SBApplicationController> SBApplicationController::sharedInstance()
{
    static auto* slot = new RefPtr<SBApplicationController>();
    return host::sharedInstanceIn(*slot);
}

RefPtr<SBApplication> SBApplicationController::applicationWithBundleIdentifier(const std::string& bundleIdentifier) const
{
    auto* app = HostWorld::shared().appWithIdentifier(bundleIdentifier);
    if (!app)
        return nullptr;
    return make<SBApplication>(app->bundleIdentifier, app->name);
}
