#pragma once

#include <objc/objc.h>

#include <vector>

class CVAppItem;

// The maker library's lists of apps.
class CVAppItemsProvider final : public NSObject {
    OBJC_CLASS(CVAppItemsProvider)
public:
    // `appItemsFromSwitcherWithSnapshots:`: the app switcher's apps in its
    // order, as an NSArray of CVAppItem; apps the host no longer knows are
    // left out.
    static StrongId appItemsFromSwitcherWithSnapshots(bool loadSnapshots);
    static std::vector<RefPtr<CVAppItem>> switcherAppItems(bool loadSnapshots);
};
