#include "CVNotificationRow.h"

#include "CVAppItem.h"
#include "CVNotificationsProvider.h"

#include <Foundation/NSArray.h>
#include <Foundation/NSDate.h>
#include <UIKit/UIImage.h>

OBJC_IMPLEMENT_CLASS(CVNotificationRow, NSObject)
{
    c.method<&CVNotificationRow::sectionID>("sectionID");
    c.method<&CVNotificationRow::bulletin>("bulletin");
    c.method<&CVNotificationRow::app>("app");
    c.method<&CVNotificationRow::icon>("icon");
    c.method<&CVNotificationRow::title>("title");
    c.method<&CVNotificationRow::subtitle>("subtitle");
    c.method<&CVNotificationRow::message>("message");
    c.method<&CVNotificationRow::date>("date");
    c.method<&CVNotificationRow::attachmentImage>("attachmentImage");
    c.method<&CVNotificationRow::notificationActions>("notificationActions");
    c.method<&CVNotificationRow::invokeNotificationActionWithIndex>("invokeNotificationActionWithIndex:");
    c.method<&CVNotificationRow::removeActualNotification>("removeActualNotification");
}

CVNotificationRow::CVNotificationRow(StrongId bulletin, RefPtr<CVAppItem> app)
    : m_bulletin(std::move(bulletin))
    , m_app(std::move(app))
{
    m_sectionID = objc::send<std::string>(m_bulletin, OBJC_SEL("sectionID"));
    m_bulletinID = objc::send<std::string>(m_bulletin, OBJC_SEL("bulletinID"));
    m_title = objc::send<RefPtr<NSString>>(m_bulletin, OBJC_SEL("title"));
    m_subtitle = objc::send<RefPtr<NSString>>(m_bulletin, OBJC_SEL("subtitle"));
    m_message = objc::send<RefPtr<NSString>>(m_bulletin, OBJC_SEL("message"));
    m_date = objc::send<RefPtr<NSDate>>(m_bulletin, OBJC_SEL("date"));
    m_actions = objc::castRef<NSArray>(objc::send<StrongId>(m_bulletin, OBJC_SEL("supplementaryActions")));
    if (!m_actions)
        m_actions = NSArray::create();
}

RefPtr<UIImage> CVNotificationRow::icon() const { return m_app ? m_app->iconImage() : nullptr; }

RefPtr<UIImage> CVNotificationRow::attachmentImage() const
{
    // Drawn by the host on first request; most rows never ask.
    return objc::send<RefPtr<UIImage>>(m_bulletin, OBJC_SEL("attachmentImage"));
}

bool CVNotificationRow::invokeNotificationActionWithIndex(long index)
{
    return objc::send<bool>(CVNotificationsProvider::bulletinBoard(), OBJC_SEL("performActionAtIndex:forBulletinID:"), index, m_bulletinID);
}

bool CVNotificationRow::removeActualNotification()
{
    return objc::send<bool>(CVNotificationsProvider::bulletinBoard(), OBJC_SEL("removeBulletinID:"), m_bulletinID);
}
