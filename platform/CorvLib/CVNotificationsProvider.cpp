#include "CVNotificationsProvider.h"

#include "CVAppItem.h"
#include "CVNotificationRow.h"
#include "CVNotificationSection.h"

#include <Foundation/NSArray.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSString.h>

OBJC_IMPLEMENT_CLASS(CVNotificationsProvider, NSObject)
{
    c.classMethod<&CVNotificationsProvider::currentNotificationsCatalogue>("currentNotificationsCatalogue");
    c.method<&CVNotificationsProvider::sections>("sections");
}

StrongId CVNotificationsProvider::bulletinBoard() { return objc::send<StrongId>(objc::objc_getClass("BBServer"), OBJC_SEL("sharedInstance")); }

RefPtr<CVNotificationsProvider> CVNotificationsProvider::currentNotificationsCatalogue()
{
    StrongId server = bulletinBoard();
    if (!server)
        return nullptr;
    bool grouped = objc::send<bool>(server, OBJC_SEL("groupsBulletinsByApp"));
    auto sectionIDs = objc::castRef<NSArray>(objc::send<StrongId>(server, OBJC_SEL("allSectionIDs")));
    auto sections = NSArray::create();
    if (!sectionIDs)
        return make<CVNotificationsProvider>(sections);
    for (auto& identifier : sectionIDs->objects()) {
        auto* sectionID = dynamic_cast<NSString*>(identifier.get());
        if (!sectionID)
            continue;
        RefPtr<CVAppItem> app = CVAppItem::alloc()->initFromIdentifier(sectionID->string(), false);
        auto bulletins = objc::castRef<NSArray>(objc::send<StrongId>(server, OBJC_SEL("bulletinsForSectionID:"), sectionID->string()));
        auto rows = NSArray::create();
        if (bulletins) {
            rows->mutableObjects().reserve(bulletins->count());
            for (auto& bulletin : bulletins->objects()) {
                if (bulletin)
                    rows->addObject(make<CVNotificationRow>(bulletin, app));
            }
        }
        sections->addObject(make<CVNotificationSection>(sectionID->string(), grouped ? app : nullptr, rows));
    }
    return make<CVNotificationsProvider>(sections);
}
