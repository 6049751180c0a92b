#pragma once

#include <objc/objc.h>

// The app switcher's list: the recently used apps, most recent first.
class SBAppSwitcherModel final : public NSObject {
    OBJC_CLASS(SBAppSwitcherModel)
public:
    static RefPtr<SBAppSwitcherModel> sharedInstance();

    // An NSArray of the apps' bundle identifiers (NSString), in the
    // switcher's order.
    StrongId snapshotOfFlattenedArrayOfAppIdentifiers() const;
};
