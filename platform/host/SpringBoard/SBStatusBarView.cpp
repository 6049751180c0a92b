#include "SBStatusBarView.h"

#include "SBGlyphs.h"

#include <Foundation/NSString.h>
#include <UIKit/UIFont.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>

#include <cmath>

OBJC_IMPLEMENT_CLASS(SBStatusBarView, UIView) { }

static RefPtr<UILabel> statusBarLabel(const char* name, NSTextAlignment alignment, const char* font = nullptr)
{
    auto label = make<UILabel>();
    label->setName(name);
    label->setFont(font ? UIFont::fontWithName(font, 12) : UIFont::systemFontOfSize(12));
    label->setTextAlignment(alignment);
    return label;
}

// The glyphs take the content's colour, as template images.
static RefPtr<UIImage> asTemplate(const RefPtr<UIImage>& image)
{
    return image ? image->imageWithRenderingMode(UIImageRenderingModeAlwaysTemplate) : nullptr;
}

SBStatusBarView::SBStatusBarView(CGRect frame, double scale)
    : UIView(frame)
    , m_scale(scale)
{
    setName("_statusBar");
    setUserInteractionEnabled(false);
    m_signalView = make<UIImageView>(asTemplate(SBGlyphs::signalDots(5, scale)));
    m_signalView->setName("_signalStrengthView");
    addSubview(m_signalView.get());
    m_carrierLabel = statusBarLabel("_serviceLabel", NSTextAlignmentLeft);
    m_carrierLabel->setText("Carrier");
    addSubview(m_carrierLabel.get());
    m_lockView = make<UIImageView>(asTemplate(SBGlyphs::padlock(scale)));
    m_lockView->setName("_lockView");
    addSubview(m_lockView.get());
    m_timeLabel = statusBarLabel("_timeLabel", NSTextAlignmentCenter, "HelveticaNeue-Medium");
    addSubview(m_timeLabel.get());
    m_batteryPercentLabel = statusBarLabel("_batteryPercentLabel", NSTextAlignmentRight);
    addSubview(m_batteryPercentLabel.get());
    m_batteryView = make<UIImageView>();
    m_batteryView->setName("_batteryView");
    addSubview(m_batteryView.get());
}

void SBStatusBarView::setContent(const Content& content)
{
    bool batteryChanged = !m_hasContent || content.batteryLevel != m_content.batteryLevel || content.charging != m_content.charging;
    m_content = content;
    m_hasContent = true;
    auto color = content.style == 0 ? UIColor::blackColor() : UIColor::whiteColor();
    for (auto* label : { m_carrierLabel.get(), m_timeLabel.get(), m_batteryPercentLabel.get() })
        label->setTextColor(color);
    for (auto* image : { m_signalView.get(), m_lockView.get(), m_batteryView.get() })
        image->setTintColor(color);
    m_lockView->setHidden(!content.locked);
    m_timeLabel->setHidden(content.locked);
    m_timeLabel->setText(content.time);
    int percent = static_cast<int>(std::lround(content.batteryLevel * 100));
    m_batteryPercentLabel->setText(NSString::format("%d%%", percent));
    if (batteryChanged)
        m_batteryView->setImage(asTemplate(SBGlyphs::battery(content.batteryLevel, content.charging, m_scale)));
    setNeedsLayout();
}

void SBStatusBarView::layoutSubviews()
{
    double width = bounds().size.width;
    m_signalView->setFrame(CGRectMake(6, 6.5, 34, 7));
    m_carrierLabel->setFrame(CGRectMake(44, 0, 80, height));
    m_lockView->setFrame(CGRectMake((width - 10) / 2, 3.5, 10, 13));
    m_timeLabel->setFrame(CGRectMake((width - 100) / 2, 0, 100, height));
    m_batteryView->setFrame(CGRectMake(width - 31, 4.5, 25, 11));
    m_batteryPercentLabel->setFrame(CGRectMake(width - 31 - 4 - 50, 0, 50, height));
}
