#include "CVNotificationsProvider.h"

#include "CVAppItem.h"
#include "CVNotificationRow.h"
#include "CVNotificationSection.h"

#include <Foundation/NSArray.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSString.h>

#include <unordered_map>

OBJC_IMPLEMENT_CLASS(CVNotificationsProvider, NSObject)
{
    c.classMethod<&CVNotificationsProvider::currentNotificationsCatalogue>("currentNotificationsCatalogue");
    c.method<&CVNotificationsProvider::sections>("sections");
}

StrongId CVNotificationsProvider::bulletinBoard() { return objc::send<StrongId>(objc::objc_getClass("BBServer"), OBJC_SEL("sharedInstance")); }

// The rows of the last catalogue, by bulletin. The board answers the same
// bulletin objects until its notifications change, and a delivered bulletin
// never changes, so the row made for one stays true and the next catalogue
// takes it again instead of copying the bulletin's texts anew for every
// notification at every reload. The row holds its bulletin, so no key can be
// a freed and reused address. Each catalogue marks the rows it lists and
// drops the others, so bulletins gone from the board leave the map then.
struct KeptRow {
    RefPtr<CVNotificationRow> row;
    uint64_t catalogue { 0 };
};
using RowsByBulletin = std::unordered_map<const NSObject*, KeptRow>;

static RowsByBulletin& keptRows()
{
    static auto* rows = new RowsByBulletin();
    return *rows;
}

static RefPtr<CVNotificationRow> rowFor(const StrongId& bulletin, const RefPtr<CVAppItem>& app, uint64_t catalogue)
{
    auto [kept, added] = keptRows().try_emplace(bulletin.get());
    if (added)
        kept->second.row = make<CVNotificationRow>(bulletin, app);
    // The app item is made for every catalogue: a kept row takes this one's.
    kept->second.row->setApp(app);
    kept->second.catalogue = catalogue;
    return kept->second.row;
}

static void dropRowsNotIn(uint64_t catalogue)
{
    std::erase_if(keptRows(), [catalogue](const auto& entry) { return entry.second.catalogue != catalogue; });
}

RefPtr<CVNotificationsProvider> CVNotificationsProvider::currentNotificationsCatalogue()
{
    StrongId server = bulletinBoard();
    if (!server)
        return nullptr;
    bool grouped = objc::send<bool>(server, OBJC_SEL("groupsBulletinsByApp"));
    auto sectionIDs = objc::castRef<NSArray>(objc::send<StrongId>(server, OBJC_SEL("allSectionIDs")));
    auto sections = NSArray::create();
    static uint64_t lastCatalogue = 0;
    uint64_t catalogue = ++lastCatalogue;
    if (!sectionIDs) {
        dropRowsNotIn(catalogue);
        return make<CVNotificationsProvider>(sections);
    }
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
                    rows->addObject(rowFor(bulletin, app, catalogue));
            }
        }
        sections->addObject(make<CVNotificationSection>(sectionID->string(), grouped ? app : nullptr, rows));
    }
    dropRowsNotIn(catalogue);
    return make<CVNotificationsProvider>(sections);
}
