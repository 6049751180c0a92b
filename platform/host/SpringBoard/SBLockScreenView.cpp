#include "SBLockScreenView.h"

#include "SBFLockScreenDateView.h"
#include "SBGlyphs.h"

#include <UIKit/UIFont.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>
#include <UIKit/UIScreen.h>
#include <UIKit/UIScrollView.h>

#include <algorithm>

OBJC_IMPLEMENT_CLASS(SBLockScreenView, UIView)
{
    c.method<&SBLockScreenView::initWithFrame>("initWithFrame:");
    c.method<&SBLockScreenView::layoutSubviews>("layoutSubviews");
    c.method<&SBLockScreenView::layoutSlideToUnlockView>("_layoutSlideToUnlockView");
    c.method<&SBLockScreenView::layoutGrabberView>("_layoutGrabberView:atTop:");
    c.method<&SBLockScreenView::layoutNotificationView>("_layoutNotificationView");
    c.method<&SBLockScreenView::coordinatedPresentingControllerIdentifier>("coordinatedPresentingControllerIdentifier");
    c.ivar<&SBLockScreenView::m_foregroundScrollView>("_foregroundScrollView");
    c.ivar<&SBLockScreenView::m_dateView>("_dateView");
    c.ivar<&SBLockScreenView::m_slideToUnlockView>("_slideToUnlockView");
    c.ivar<&SBLockScreenView::m_notificationView>("_notificationView");
    c.ivar<&SBLockScreenView::m_pluginView>("_pluginView");
    c.ivar<&SBLockScreenView::m_bottomLeftGrabberView>("_bottomLeftGrabberView");
    c.ivar<&SBLockScreenView::m_topGrabberView>("_topGrabberView");
    c.ivar<&SBLockScreenView::m_bottomGrabberView>("_bottomGrabberView");
    c.ivar<&SBLockScreenView::m_cameraGrabberView>("_cameraGrabberView");
    c.ivar<&SBLockScreenView::m_chargingView>("_chargingView");
    c.ivar<&SBLockScreenView::m_timerView>("_timerView");
    c.ivar<&SBLockScreenView::m_mediaControlsView>("_mediaControlsView");
    c.allocatable();
}

namespace {

// Where the main page's pieces sit, from the top of the screen.
constexpr double dateViewTop = 24;
constexpr double infoLineTop = dateViewTop + 130;
constexpr double infoLineHeight = 22;
constexpr double pluginHeight = 96;
constexpr double slideToUnlockHeight = 30;
constexpr double grabberWidth = 36;
constexpr double grabberHeight = 5;
constexpr double notificationIconSize = 20;
// The media controls and the notification rows line up at this margin.
constexpr double sideInset = 8;

RefPtr<UIView> makeView(const char* name)
{
    auto view = make<UIView>();
    view->setName(name);
    return view;
}

RefPtr<UILabel> makeLabel(const char* name, const char* fontName, double size)
{
    auto label = make<UILabel>();
    label->setName(name);
    label->setFont(UIFont::fontWithName(fontName, size));
    label->setTextColor(UIColor::whiteColor());
    label->setTextAlignment(NSTextAlignmentCenter);
    return label;
}

RefPtr<UIView> makeGrabber(const char* name)
{
    auto grabber = makeView(name);
    grabber->setBackgroundColor(UIColor::colorWithWhite(1, 0.5));
    grabber->layer().setCornerRadius(grabberHeight / 2);
    return grabber;
}

} // namespace

StrongId SBLockScreenView::initWithFrame(CGRect frame)
{
    UIView::initWithFrame(frame);
    m_scale = UIScreen::mainScreen()->scale();

    m_foregroundScrollView = make<UIScrollView>();
    m_foregroundScrollView->setName("_foregroundScrollView");
    m_foregroundScrollView->setPagingEnabled(true);
    m_foregroundScrollView->setShowsHorizontalScrollIndicator(false);
    addSubview(m_foregroundScrollView.get());

    m_dateView = objc::castRef<SBFLockScreenDateView>(
        objc::send<StrongId>(objc::alloc(SBFLockScreenDateView::classObject()), OBJC_SEL("initWithFrame:"), mainPageRect(dateViewTop, SBFLockScreenDateView::preferredHeight())));
    if (m_dateView)
        m_foregroundScrollView->addSubview(m_dateView.get());

    m_notificationView = makeView("_notificationView");
    m_notificationView->setClipsToBounds(true);
    m_foregroundScrollView->addSubview(m_notificationView.get());

    m_pluginView = makeView("_pluginView");
    m_foregroundScrollView->addSubview(m_pluginView.get());

    m_slideToUnlockView = makeView("_slideToUnlockView");
    auto chevron = make<UIImageView>(SBGlyphs::unlockChevron(m_scale));
    chevron->setName("chevron");
    m_slideToUnlockView->addSubview(chevron.get());
    auto slideLabel = makeLabel("label", "HelveticaNeue-Light", 25);
    slideLabel->setText("slide to unlock");
    slideLabel->setTextColor(UIColor::colorWithWhite(1, 0.9));
    m_slideToUnlockView->addSubview(slideLabel.get());
    m_foregroundScrollView->addSubview(m_slideToUnlockView.get());

    m_topGrabberView = makeGrabber("_topGrabberView");
    addSubview(m_topGrabberView.get());
    m_bottomGrabberView = makeGrabber("_bottomGrabberView");
    addSubview(m_bottomGrabberView.get());
    // Handoff's app suggestion would show here; the host has none to offer.
    m_bottomLeftGrabberView = make<UIImageView>();
    m_bottomLeftGrabberView->setName("_bottomLeftGrabberView");
    addSubview(m_bottomLeftGrabberView.get());

    setNeedsLayout();
    return StrongId(this);
}

// How far above the bottom "slide to unlock" sits: less in landscape, where
// the screen is short.
double SBLockScreenView::slideToUnlockInset() const { return std::min(96.0, bounds().size.height * 0.15); }

CGRect SBLockScreenView::mainPageRect(double y, double height) const
{
    double width = bounds().size.width;
    return CGRectMake(width, y, width, height);
}

void SBLockScreenView::layoutSubviews()
{
    CGRect bounds = this->bounds();
    double width = bounds.size.width;
    double height = bounds.size.height;

    m_foregroundScrollView->setFrame(bounds);
    m_foregroundScrollView->setContentSize(CGSizeMake(width * 2, height));
    if (width != m_laidOutWidth) {
        m_foregroundScrollView->setContentOffset(CGPointMake(width, 0));
        m_laidOutWidth = width;
    }

    if (m_dateView)
        m_dateView->setFrame(mainPageRect(dateViewTop, SBFLockScreenDateView::preferredHeight()));
    double infoTop = infoLineTop;
    for (auto* line : { m_timerView.get(), m_chargingView.get() }) {
        if (!line)
            continue;
        line->setFrame(mainPageRect(infoTop, infoLineHeight));
        infoTop += infoLineHeight;
    }
    m_pluginView->setFrame(CGRectInset(mainPageRect(infoTop + 8, pluginHeight), sideInset, 0));
    if (m_mediaControlsView) {
        m_mediaControlsView->setFrame(m_pluginView->bounds());
        // Title, artist, then the transport controls, centred.
        auto& parts = m_mediaControlsView->subviews();
        double innerWidth = std::max(0.0, m_pluginView->bounds().size.width - 16);
        parts[0]->setFrame(CGRectMake(8, 10, innerWidth, 20));
        parts[1]->setFrame(CGRectMake(8, 32, innerWidth, 20));
        parts[2]->setFrame(CGRectMake((innerWidth + 16 - 150) / 2, 62, 150, 22));
    }

    objc::send(this, OBJC_SEL("_layoutSlideToUnlockView"));
    objc::send(this, OBJC_SEL("_layoutGrabberView:atTop:"), static_cast<UIView*>(m_topGrabberView.get()), true);
    objc::send(this, OBJC_SEL("_layoutGrabberView:atTop:"), static_cast<UIView*>(m_bottomGrabberView.get()), false);
    objc::send(this, OBJC_SEL("_layoutNotificationView"));

    m_bottomLeftGrabberView->setFrame(CGRectMake(12, height - 38, 26, 26));
    if (m_cameraGrabberView)
        m_cameraGrabberView->setFrame(CGRectMake(width - 40, height - 34, 26, 20));
}

void SBLockScreenView::layoutSlideToUnlockView()
{
    double width = bounds().size.width;
    m_slideToUnlockView->setFrame(mainPageRect(bounds().size.height - slideToUnlockInset(), slideToUnlockHeight));
    auto& parts = m_slideToUnlockView->subviews();
    if (parts.size() < 2)
        return;
    // The chevron sits just before the centred text.
    double textWidth = 170;
    parts[0]->setFrame(CGRectMake((width - textWidth) / 2 - 18, (slideToUnlockHeight - 16) / 2, 10, 16));
    parts[1]->setFrame(CGRectMake((width - textWidth) / 2, 0, textWidth, slideToUnlockHeight));
}

void SBLockScreenView::layoutGrabberView(UIView* grabber, bool atTop)
{
    if (!grabber)
        return;
    CGRect bounds = this->bounds();
    double y = atTop ? 24 : bounds.size.height - 12;
    grabber->setFrame(CGRectMake((bounds.size.width - grabberWidth) / 2, y, grabberWidth, grabberHeight));
}

void SBLockScreenView::layoutNotificationView()
{
    double top = CGRectGetMaxY(m_pluginView->frame()) + 4;
    if (!m_mediaControlsView)
        top = CGRectGetMinY(m_pluginView->frame());
    double bottom = bounds().size.height - slideToUnlockInset() - 8;
    m_notificationView->setFrame(mainPageRect(top, std::max(0.0, bottom - top)));
    double height = m_notificationView->bounds().size.height;
    double y = 0;
    for (auto& row : m_notificationView->subviews()) {
        row->setFrame(CGRectMake(sideInset, y, bounds().size.width - 2 * sideInset, 48));
        // The text, then the icon in front of it, as iOS 9 lists bulletins.
        auto& parts = row->subviews();
        bool hasIcon = parts.size() > 1;
        if (!parts.empty())
            parts[0]->setFrame(CGRectMake(hasIcon ? 40 : 10, 2, std::max(0.0, row->bounds().size.width - (hasIcon ? 50 : 20)), 44));
        if (hasIcon)
            parts[1]->setFrame(CGRectMake(10, 14, notificationIconSize, notificationIconSize));
        // Only whole rows show: on a short screen a row cut in half by
        // "slide to unlock" would read as a drawing fault.
        row->setHidden(y + 48 > height);
        y += 52;
    }
}

void SBLockScreenView::scrollToMainPage() { m_foregroundScrollView->setContentOffset(CGPointMake(bounds().size.width, 0)); }

void SBLockScreenView::addCameraGrabber()
{
    if (m_cameraGrabberView)
        return;
    m_cameraGrabberView = make<UIImageView>(SBGlyphs::camera(m_scale));
    m_cameraGrabberView->setName("_cameraGrabberView");
    addSubview(m_cameraGrabberView.get());
    setNeedsLayout();
}

// Shows a one-line label under the date, or takes it away for null text.
static void updateInfoLine(UIView* parent, RefPtr<UILabel>& line, const char* name, const std::string* text)
{
    if (!text) {
        if (line)
            line->removeFromSuperview();
        line = nullptr;
        return;
    }
    if (!line) {
        line = makeLabel(name, "HelveticaNeue-Light", 17);
        parent->addSubview(line.get());
    }
    line->setText(*text);
}

void SBLockScreenView::setChargingText(const std::string* text)
{
    updateInfoLine(m_foregroundScrollView.get(), m_chargingView, "_chargingView", text);
    setNeedsLayout();
}

void SBLockScreenView::setTimerText(const std::string* text)
{
    updateInfoLine(m_foregroundScrollView.get(), m_timerView, "_timerView", text);
    setNeedsLayout();
}

void SBLockScreenView::setMediaControls(const std::string* title, const std::string* artist, bool playing)
{
    if (!title) {
        if (m_mediaControlsView)
            m_mediaControlsView->removeFromSuperview();
        m_mediaControlsView = nullptr;
        setNeedsLayout();
        return;
    }
    if (!m_mediaControlsView) {
        m_mediaControlsView = makeView("_mediaControlsView");
        m_mediaControlsView->setBackgroundColor(UIColor::colorWithWhite(0, 0.25));
        m_mediaControlsView->layer().setCornerRadius(10);
        m_mediaControlsView->addSubview(makeLabel("_titleLabel", "HelveticaNeue-Medium", 16).get());
        m_mediaControlsView->addSubview(makeLabel("_artistLabel", "HelveticaNeue-Light", 14).get());
        auto transport = make<UIImageView>();
        transport->setName("_transportView");
        m_mediaControlsView->addSubview(transport.get());
        m_pluginView->addSubview(m_mediaControlsView.get());
    }
    auto& parts = m_mediaControlsView->subviews();
    objc::cast<UILabel>(parts[0].get())->setText(*title);
    objc::cast<UILabel>(parts[1].get())->setText(artist ? *artist : std::string());
    objc::cast<UIImageView>(parts[2].get())->setImage(SBGlyphs::transportControls(playing, m_scale));
    setNeedsLayout();
}

void SBLockScreenView::setNotificationRows(const std::vector<NotificationRow>& rows)
{
    while (!m_notificationView->subviews().empty())
        m_notificationView->subviews().back()->removeFromSuperview();
    for (auto& [text, icon] : rows) {
        auto row = makeView("row");
        row->setBackgroundColor(UIColor::colorWithWhite(0, 0.2));
        row->layer().setCornerRadius(6);
        auto label = makeLabel("label", "HelveticaNeue-Light", 15);
        label->setTextAlignment(NSTextAlignmentLeft);
        label->setNumberOfLines(2);
        label->setText(text);
        label->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
        row->addSubview(label.get());
        if (icon) {
            auto iconView = make<UIImageView>(icon);
            iconView->setName("_iconView");
            row->addSubview(iconView.get());
        }
        m_notificationView->addSubview(row.get());
    }
    setNeedsLayout();
}
