#include "SBNotificationCenterLayoutViewController.h"

#include "../HostWorld.h"

#include <Foundation/NSDateFormatter.h>
#include <UIKit/UIFont.h>
#include <UIKit/UILabel.h>
#include <UIKit/UIScreen.h>

OBJC_IMPLEMENT_CLASS(SBNotificationCenterLayoutViewController, UIViewController)
{
    c.method<&SBNotificationCenterLayoutViewController::loadContentViewControllers>("_loadContentViewControllers");
    c.method<&SBNotificationCenterLayoutViewController::viewWillAppear>("viewWillAppear:");
}

void SBNotificationCenterLayoutViewController::loadView()
{
    auto view = UIView::create(UIScreen::mainScreen()->bounds());
    view->setName("_contentView");
    view->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    setView(view.get());
    objc::send(this, OBJC_SEL("_loadContentViewControllers"));
}

void SBNotificationCenterLayoutViewController::loadContentViewControllers()
{
    UIView* content = view();
    double width = content->bounds().size.width;
    m_dateLabel = UILabel::create(CGRectMake(16, 56, width - 32, 72));
    m_dateLabel->setName("_todayDateLabel");
    m_dateLabel->setFont(UIFont::fontWithName("HelveticaNeue-Light", 26));
    m_dateLabel->setTextColor(UIColor::whiteColor());
    m_dateLabel->setNumberOfLines(2);
    m_dateLabel->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
    content->addSubview(m_dateLabel.get());

    m_emptyLabel = UILabel::create(CGRectMake(16, 140, width - 32, 24));
    m_emptyLabel->setName("_notificationsLabel");
    m_emptyLabel->setFont(UIFont::fontWithName("HelveticaNeue-Light", 17));
    m_emptyLabel->setTextColor(UIColor::colorWithWhite(1, 0.6));
    m_emptyLabel->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
    content->addSubview(m_emptyLabel.get());
}

void SBNotificationCenterLayoutViewController::viewWillAppear(bool animated)
{
    UIViewController::viewWillAppear(animated);
    auto formatter = NSDateFormatter::create();
    formatter->setDateFormat("EEEE,\nMMMM d");
    if (m_dateLabel)
        m_dateLabel->setText(formatter->stringFromDate(NSDate::date().get()));
    size_t count = HostWorld::shared().notifications().size();
    if (m_emptyLabel)
        m_emptyLabel->setText(count ? std::to_string(count) + (count == 1 ? " Notification" : " Notifications") : "No Notifications");
}
