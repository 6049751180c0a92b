#include "CVAppItemsProvider.h"

#include "CVAppItem.h"

#include <Foundation/NSArray.h>
#include <Foundation/NSString.h>

OBJC_IMPLEMENT_CLASS(CVAppItemsProvider, NSObject)
{
    c.classMethod<&CVAppItemsProvider::appItemsFromSwitcherWithSnapshots>("appItemsFromSwitcherWithSnapshots:");
}

std::vector<RefPtr<CVAppItem>> CVAppItemsProvider::switcherAppItems(bool loadSnapshots)
{
    StrongId model = objc::send<StrongId>(objc::objc_getClass("SBAppSwitcherModel"), OBJC_SEL("sharedInstance"));
    auto identifiers = objc::send<RefPtr<NSArray>>(model, OBJC_SEL("snapshotOfFlattenedArrayOfAppIdentifiers"));
    std::vector<RefPtr<CVAppItem>> items;
    if (!identifiers)
        return items;
    for (auto& identifier : identifiers->objects()) {
        auto* string = objc::cast<NSString>(identifier);
        if (!string)
            continue;
        if (auto item = CVAppItem::alloc()->initFromIdentifier(string->string(), loadSnapshots))
            items.push_back(std::move(item));
    }
    return items;
}

StrongId CVAppItemsProvider::appItemsFromSwitcherWithSnapshots(bool loadSnapshots)
{
    auto array = NSArray::create();
    for (auto& item : switcherAppItems(loadSnapshots))
        array->addObject(item);
    return array;
}
