#include "BBServer.h"

#include "../HostShared.h"
#include "../HostWorld.h"
#include "BBAction.h"
#include "BBBulletin.h"

#include <Foundation/NSArray.h>
#include <Foundation/NSString.h>

#include <algorithm>

OBJC_IMPLEMENT_CLASS(BBServer, NSObject)
{
    c.classMethod<&BBServer::sharedInstance>("sharedInstance");
    c.method<&BBServer::allSectionIDs>("allSectionIDs");
    c.method<&BBServer::bulletinsForSectionID>("bulletinsForSectionID:");
    c.method<&BBServer::groupsBulletinsByApp>("groupsBulletinsByApp");
    c.method<&BBServer::removeBulletinID>("removeBulletinID:");
    c.method<&BBServer::removeBulletinsInSectionID>("removeBulletinsInSectionID:");
    c.method<&BBServer::performActionAtIndexForBulletinID>("performActionAtIndex:forBulletinID:");
}

RefPtr<BBServer> BBServer::sharedInstance()
{
    static auto* slot = new RefPtr<BBServer>();
    return host::sharedInstanceIn(*slot);
}

static std::string bulletinIDFor(const HostWorld::Notification& notification) { return std::to_string(notification.identifier); }

static const HostWorld::Notification* notificationWithBulletinID(const std::string& bulletinID)
{
    for (auto& notification : HostWorld::shared().notifications()) {
        if (bulletinIDFor(notification) == bulletinID)
            return &notification;
    }
    return nullptr;
}

static RefPtr<BBBulletin> makeBulletin(const HostWorld::Notification& notification)
{
    auto bulletin = make<BBBulletin>(notification.app, notification.title, notification.message);
    bulletin->setBulletinID(bulletinIDFor(notification));
    bulletin->setSubtitle(notification.subtitle);
    bulletin->setDate(NSDate::dateWithTimeIntervalSinceReferenceDate(notification.date));
    bulletin->setDefaultAction(make<BBAction>("default", notification.url));
    std::vector<RefPtr<BBAction>> actions;
    for (int index = 0; index < notification.actionCount; ++index)
        actions.push_back(make<BBAction>("action" + std::to_string(index), std::nullopt));
    bulletin->setSupplementaryActions(std::move(actions));
    bulletin->setHasAttachment(notification.hasImage);
    return bulletin;
}

const std::vector<BBServer::Section>& BBServer::sections() const
{
    const HostWorld& world = HostWorld::shared();
    if (m_sectionsRevision == world.notificationsRevision())
        return m_sections;
    std::unordered_map<std::string, StrongId> earlier;
    for (auto& section : m_sections) {
        for (auto& bulletin : section.bulletins)
            earlier.emplace(objc::send<std::string>(bulletin, OBJC_SEL("bulletinID")), bulletin);
    }
    m_sections.clear();
    m_sectionIndex.clear();
    for (auto& notification : world.notifications()) {
        auto [found, added] = m_sectionIndex.emplace(notification.app, m_sections.size());
        if (added)
            m_sections.push_back({ notification.app, {} });
        auto kept = earlier.find(bulletinIDFor(notification));
        m_sections[found->second].bulletins.push_back(kept != earlier.end() ? kept->second : StrongId(makeBulletin(notification)));
    }
    m_sectionsRevision = world.notificationsRevision();
    return m_sections;
}

StrongId BBServer::allSectionIDs() const
{
    std::vector<StrongId> identifiers;
    identifiers.reserve(sections().size());
    for (auto& section : sections())
        identifiers.push_back(NSString::create(section.identifier));
    return NSArray::create(std::move(identifiers));
}


StrongId BBServer::bulletinsForSectionID(const std::string& sectionID) const
{
    sections();
    auto found = m_sectionIndex.find(sectionID);
    if (found == m_sectionIndex.end())
        return NSArray::create();
    return NSArray::create(m_sections[found->second].bulletins);
}

bool BBServer::groupsBulletinsByApp() const { return HostWorld::shared().notificationsGrouped(); }

bool BBServer::removeBulletinID(const std::string& bulletinID)
{
    auto* notification = notificationWithBulletinID(bulletinID);
    return notification && HostWorld::shared().removeNotificationWithIdentifier(notification->identifier);
}

long BBServer::removeBulletinsInSectionID(const std::string& sectionID)
{
    std::vector<uint64_t> identifiers;
    for (auto& notification : HostWorld::shared().notifications()) {
        if (notification.app == sectionID)
            identifiers.push_back(notification.identifier);
    }
    for (uint64_t identifier : identifiers)
        HostWorld::shared().removeNotificationWithIdentifier(identifier);
    return static_cast<long>(identifiers.size());
}

bool BBServer::performActionAtIndexForBulletinID(long index, const std::string& bulletinID)
{
    auto* notification = notificationWithBulletinID(bulletinID);
    if (!notification || index < 0 || index >= notification->actionCount)
        return false;
    HostWorld::shared().recordAction({ notification->app, notification->title, static_cast<int>(index) });
    return HostWorld::shared().removeNotificationWithIdentifier(notification->identifier);
}
