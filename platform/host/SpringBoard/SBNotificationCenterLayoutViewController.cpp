#include "SBNotificationCenterLayoutViewController.h"

#include "../HostWorld.h"

#include <Foundation/NSDateFormatter.h>
#include <UIKit/UIFont.h>
#include <UIKit/UILabel.h>
#include <UIKit/UIScreen.h>

#include <algorithm>
#include <cmath>

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

namespace {

constexpr double segmentedControlTop = 27;
constexpr double segmentedControlHeight = 27;

// The "Today" and "Notifications" switch at the top, as iOS 9's segmented
// control draws it on the dark sheet: a white outline, the chosen segment
// filled white with dark text, the other one white text on the blur.
RefPtr<UIView> makeSegmentedControl(double screenWidth)
{
    double width = std::min(std::round(screenWidth * 0.66), 260.0);
    auto control = UIView::create(CGRectMake(std::round((screenWidth - width) / 2), segmentedControlTop, width, segmentedControlHeight));
    control->setName("_segmentedControl");
    control->setAutoresizingMask(UIViewAutoresizingFlexibleLeftMargin | UIViewAutoresizingFlexibleRightMargin);
    control->setClipsToBounds(true);
    control->layer().setCornerRadius(4);
    control->layer().setBorderWidth(1);
    control->layer().setBorderColor(UIColor::whiteColor());
    double half = width / 2;
    for (int index = 0; index < 2; ++index) {
        bool selected = index == 0;
        auto segment = UILabel::create(CGRectMake(index * half, 0, half, segmentedControlHeight));
        segment->setName(selected ? "_todaySegment" : "_notificationsSegment");
        segment->setText(selected ? "Today" : "Notifications");
        segment->setFont(UIFont::systemFontOfSize(13));
        segment->setTextAlignment(NSTextAlignmentCenter);
        segment->setTextColor(selected ? UIColor::colorWithWhite(0.15, 1) : UIColor::whiteColor());
        segment->setBackgroundColor(selected ? UIColor::whiteColor() : UIColor::clearColor());
        control->addSubview(segment.get());
    }
    return control;
}

} // namespace

void SBNotificationCenterLayoutViewController::loadContentViewControllers()
{
    UIView* content = view();
    double width = content->bounds().size.width;
    content->addSubview(makeSegmentedControl(width).get());

    m_dateLabel = UILabel::create(CGRectMake(16, 72, width - 32, 72));
    m_dateLabel->setName("_todayDateLabel");
    m_dateLabel->setFont(UIFont::fontWithName("HelveticaNeue-Light", 26));
    m_dateLabel->setTextColor(UIColor::whiteColor());
    m_dateLabel->setNumberOfLines(2);
    m_dateLabel->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
    content->addSubview(m_dateLabel.get());

    m_emptyLabel = UILabel::create(CGRectMake(16, 156, width - 32, 24));
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
