#include "SBAppSwitcherModel.h"

#include "../HostShared.h"
#include "../HostWorld.h"

#include <Foundation/NSArray.h>
#include <Foundation/NSString.h>

OBJC_IMPLEMENT_CLASS(SBAppSwitcherModel, NSObject)
{
    c.classMethod<&SBAppSwitcherModel::sharedInstance>("sharedInstance");
    c.method<&SBAppSwitcherModel::snapshotOfFlattenedArrayOfAppIdentifiers>("snapshotOfFlattenedArrayOfAppIdentifiers");
}

RefPtr<SBAppSwitcherModel> SBAppSwitcherModel::sharedInstance()
{
    static auto* slot = new RefPtr<SBAppSwitcherModel>();
    return host::sharedInstanceIn(*slot);
}

StrongId SBAppSwitcherModel::snapshotOfFlattenedArrayOfAppIdentifiers() const
{
    auto identifiers = NSArray::create();
    for (auto& identifier : HostWorld::shared().switcherApps())
        identifiers->addObject(NSString::create(identifier));
    return identifiers;
}
