#include "SBFLockScreenDateView.h"

#include "../HostCalendar.h"

#include <Foundation/NSDateFormatter.h>
#include <UIKit/UIFont.h>
#include <UIKit/UILabel.h>

OBJC_IMPLEMENT_CLASS(SBFLockScreenDateView, UIView)
{
    c.method<&SBFLockScreenDateView::initWithFrame>("initWithFrame:");
    c.method<&SBFLockScreenDateView::layoutSubviews>("layoutSubviews");
    c.method<&SBFLockScreenDateView::layoutTimeLabel>("_layoutTimeLabel");
    c.method<&SBFLockScreenDateView::layoutDateLabel>("_layoutDateLabel");
    c.ivar<&SBFLockScreenDateView::m_legibilityTimeLabel>("_legibilityTimeLabel");
    c.ivar<&SBFLockScreenDateView::m_legibilityDateLabel>("_legibilityDateLabel");
    c.allocatable();
}

static constexpr double timeLabelHeight = 96;
static constexpr double dateLabelHeight = 26;

StrongId SBFLockScreenDateView::initWithFrame(CGRect frame)
{
    UIView::initWithFrame(frame);
    setName("_dateView");
    setUserInteractionEnabled(false);

    m_legibilityTimeLabel = make<UILabel>();
    m_legibilityTimeLabel->setName("_legibilityTimeLabel");
    m_legibilityTimeLabel->setFont(UIFont::fontWithName("HelveticaNeue-UltraLight", frame.size.width < 350 ? 70 : 80));
    m_legibilityTimeLabel->setTextColor(UIColor::whiteColor());
    m_legibilityTimeLabel->setTextAlignment(NSTextAlignmentCenter);
    addSubview(m_legibilityTimeLabel.get());

    m_legibilityDateLabel = make<UILabel>();
    m_legibilityDateLabel->setName("_legibilityDateLabel");
    m_legibilityDateLabel->setFont(UIFont::fontWithName("HelveticaNeue-Light", 19));
    m_legibilityDateLabel->setTextColor(UIColor::whiteColor());
    m_legibilityDateLabel->setTextAlignment(NSTextAlignmentCenter);
    addSubview(m_legibilityDateLabel.get());

    setDate(NSDate::date().get());
    return StrongId(this);
}

void SBFLockScreenDateView::layoutSubviews()
{
    objc::send(this, OBJC_SEL("_layoutTimeLabel"));
    objc::send(this, OBJC_SEL("_layoutDateLabel"));
}

void SBFLockScreenDateView::layoutTimeLabel()
{
    m_legibilityTimeLabel->setFrame(CGRectMake(0, 0, bounds().size.width, timeLabelHeight));
}

void SBFLockScreenDateView::layoutDateLabel()
{
    m_legibilityDateLabel->setFrame(CGRectMake(0, timeLabelHeight, bounds().size.width, dateLabelHeight));
}

void SBFLockScreenDateView::setDate(const NSDate* date)
{
    auto formatter = NSDateFormatter::create();
    formatter->setDateFormat(host::lockScreenTimePattern());
    m_legibilityTimeLabel->setText(formatter->stringFromDate(date));
    formatter->setDateFormat(host::lockScreenDatePattern());
    m_legibilityDateLabel->setText(formatter->stringFromDate(date));
}
