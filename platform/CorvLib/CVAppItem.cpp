#include "CVAppItem.h"

#include <UIKit/UIImageView.h>

OBJC_IMPLEMENT_CLASS(CVAppItem, NSObject)
{
    c.allocatable();
    c.method<&CVAppItem::initFromIdentifier>("initFromIdentifier:loadSnapshot:");
    c.method<&CVAppItem::bundleIdentifier>("bundleIdentifier");
    c.method<&CVAppItem::displayName>("displayName");
    c.method<&CVAppItem::iconImage>("iconImage");
    c.method<&CVAppItem::iconImageView>("iconImageView");
    c.method<&CVAppItem::snapshotImage>("snapshotImage");
}

// The icon format of the home screen's 60-point icons.
static constexpr long long homeScreenIconFormat = 2;

RefPtr<CVAppItem> CVAppItem::initFromIdentifier(const std::string& bundleIdentifier, bool)
{
    StrongId controller = objc::send<StrongId>(objc::objc_getClass("SBApplicationController"), OBJC_SEL("sharedInstance"));
    m_application = objc::send<StrongId>(controller, OBJC_SEL("applicationWithBundleIdentifier:"), bundleIdentifier);
    if (!m_application)
        return nullptr;
    m_bundleIdentifier = objc::send<std::string>(m_application, OBJC_SEL("bundleIdentifier"));
    m_displayName = objc::send<std::string>(m_application, OBJC_SEL("displayName"));
    return RefPtr<CVAppItem>(this);
}

UIImage* CVAppItem::iconImage() const
{
    if (!m_iconLoaded) {
        m_iconLoaded = true;
        StrongId icon = objc::send<StrongId>(objc::objc_getClass("SBApplicationIcon"), OBJC_SEL("alloc"));
        icon = objc::send<StrongId>(icon, OBJC_SEL("initWithApplication:"), m_application.get());
        m_iconImage = objc::send<RefPtr<UIImage>>(icon, OBJC_SEL("getIconImage:"), homeScreenIconFormat);
    }
    return m_iconImage.get();
}

UIImageView* CVAppItem::iconImageView() const
{
    if (!m_iconImageView) {
        m_iconImageView = UIImageView::create(CGRectMake(0, 0, 60, 60));
        m_iconImageView->setImage(iconImage());
    }
    return m_iconImageView.get();
}
