#include "CVNotificationSection.h"

#include "CVAppItem.h"
#include "CVNotificationsProvider.h"

#include <Foundation/NSArray.h>
#include <UIKit/UIImageView.h>

OBJC_IMPLEMENT_CLASS(CVNotificationSection, NSObject)
{
    c.method<&CVNotificationSection::sectionID>("sectionID");
    c.method<&CVNotificationSection::rows>("rows");
    c.method<&CVNotificationSection::sectionApp>("sectionApp");
    c.method<&CVNotificationSection::sectionIcon>("sectionIcon");
    c.method<&CVNotificationSection::sectionAppIconImageViewWithSize>("sectionAppIconImageViewWithSize:");
    c.method<&CVNotificationSection::removeActualNotificationSection>("removeActualNotificationSection");
}

CVNotificationSection::CVNotificationSection(std::string sectionID, RefPtr<CVAppItem> sectionApp, RefPtr<NSArray> rows)
    : m_sectionID(std::move(sectionID))
    , m_sectionApp(std::move(sectionApp))
    , m_rows(rows ? std::move(rows) : NSArray::create())
{
}

RefPtr<UIImage> CVNotificationSection::sectionIcon() const { return m_sectionApp ? m_sectionApp->iconImage() : nullptr; }

RefPtr<UIImageView> CVNotificationSection::sectionAppIconImageViewWithSize(double size) const
{
    auto view = UIImageView::create(CGRectMake(0, 0, size, size));
    view->setImage(sectionIcon());
    return view;
}

long CVNotificationSection::removeActualNotificationSection()
{
    return objc::send<long>(CVNotificationsProvider::bulletinBoard(), OBJC_SEL("removeBulletinsInSectionID:"), m_sectionID);
}
