#include "KVWeatherDisplayView.h"

#include "KVWeatherDisplayDayView.h"
#include "KVWeatherDisplayHourlyView.h"
#include "KVWeatherHighLowText.h"
#include "KVWeatherLayout.h"
#include "overlays/KVOverlaySupport.h"
#include "settings/KVSettings.h"

#include <CorvLib/CVDayForecast.h>
#include <CorvLib/CVHourlyForecast.h>
#include <CorvLib/CVWeatherProvider.h>
#include <Foundation/NSArray.h>
#include <UIKit/UIBlurEffect.h>
#include <UIKit/UIFont.h>
#include <UIKit/UILabel.h>
#include <UIKit/UIScrollView.h>
#include <UIKit/UIVisualEffectView.h>

OBJC_IMPLEMENT_CLASS(KVWeatherDisplayView, CVContainerView)
{
    c.classMethod<&KVWeatherDisplayView::sharedInstance>("sharedInstance");
    c.method<&KVWeatherDisplayView::updateFrame>("updateFrame");
    c.method<&KVWeatherDisplayView::updateUsingCelciusScale>("updateUsingCelciusScale:");
}

// The container of the rebuilt content covers the whole overlay; a touch
// that lands on none of its subviews falls through to the overlay, so that
// a tap on the background still closes it.
class KVWeatherContainerView final : public UIView {
    OBJC_CLASS(KVWeatherContainerView)
public:
    UIView* hitTest(CGPoint point) override
    {
        UIView* hit = UIView::hitTest(point);
        return hit == this ? nullptr : hit;
    }
};

OBJC_IMPLEMENT_CLASS(KVWeatherContainerView, UIView) { }

KVWeatherDisplayView* KVWeatherDisplayView::sharedInstance() { return sharedOverlayInstance<KVWeatherDisplayView>(); }

KVWeatherDisplayView::KVWeatherDisplayView()
{
    setName("KVWeatherDisplayView");
    setHidden(true);
    _settings = KVSettings::sharedInstance();
    _themeColor = _settings->themeColor();

    _blurEffectView = make<UIVisualEffectView>(UIBlurEffect::effectWithStyle(2));
    _blurEffectView->setName("_blurEffectView");
    _blurEffectView->setFrame(bounds());
    _blurEffectView->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    _blurEffectView->setUserInteractionEnabled(false);
    addSubview(_blurEffectView.get());

    _containerView = make<KVWeatherContainerView>();
    _containerView->setName("_containerView");
    addSubview(_containerView.get());

    auto makeLabel = [&](const char* name, NSTextAlignment alignment) {
        auto label = make<UILabel>();
        label->setName(name);
        label->setTextColor(_themeColor);
        label->setNumberOfLines(1);
        label->setTextAlignment(alignment);
        label->setAdjustsFontSizeToFitWidth(true);
        addSubview(label.get());
        return label;
    };
    _locationLabel = makeLabel("_locationLabel", NSTextAlignmentCenter);
    _conditionNameLabel = makeLabel("_conditionNameLabel", NSTextAlignmentCenter);
    _todayTemperatureLabel = makeLabel("_todayTemperatureLabel", NSTextAlignmentCenter);
    _todayLabel = makeLabel("_todayLabel", NSTextAlignmentLeft);
    _todayLabel->setText("Today");
    _todayHighLowLabel = makeLabel("_todayHighLowLabel", NSTextAlignmentRight);
}

void KVWeatherDisplayView::show() { showContainerOverlay(this); }

void KVWeatherDisplayView::viewWillShow()
{
    CVContainerView::viewWillShow();
    containerOverlayWillShow(this, _settings.get(), &KVSettings::forecastResetLockScreenDim);
    updateUsingCelciusScale(_settings->temperatureScale() == 2);
}

void KVWeatherDisplayView::viewWillHide()
{
    CVContainerView::viewWillHide();
    resetLockScreenIdleTimerIfAsked(_settings.get(), &KVSettings::forecastResetLockScreenDim);
}

void KVWeatherDisplayView::updateFrame()
{
    using KVWeatherLayout::textBoxHeight;
    double W = width(), H = height();
    _blurEffectView->setFrame(bounds());
    _containerView->setFrame(bounds());

    // Each font is its box's height less 10 (4 in the today row); on a short
    // screen the boxes keep room for the smallest font (KVWeatherLayout.h).
    _locationLabel->setFrame(CGRectMake(0, 0.054 * H, W, textBoxHeight(0.082 * H, 10)));
    _conditionNameLabel->setFrame(CGRectMake(0, CGRectGetMaxY(_locationLabel->frame()) + 5, W, textBoxHeight(0.041 * H, 10)));
    _todayTemperatureLabel->setFrame(CGRectMake(5, CGRectGetMaxY(_conditionNameLabel->frame()) + 10, W, textBoxHeight(0.149 * H, 10)));
    double todayY = CGRectGetMaxY(_todayTemperatureLabel->frame()) + 10;
    double todayHeight = textBoxHeight(0.027 * H, 4);
    _todayLabel->setFrame(CGRectMake(40, todayY, W / 2 - 40, todayHeight));
    _todayHighLowLabel->setFrame(CGRectMake(W / 2, todayY, W / 2 - 40, todayHeight));

    auto font = [](const char* name, UILabel& label, double offset) {
        label.setFont(UIFont::fontWithName(name, label.frame().size.height - offset));
    };
    font("HelveticaNeue-Light", *_locationLabel, 10);
    font("HelveticaNeue-Light", *_conditionNameLabel, 10);
    font("HelveticaNeue-UltraLight", *_todayTemperatureLabel, 10);
    font("HelveticaNeue-Light", *_todayLabel, 4);
    font("HelveticaNeue-Light", *_todayHighLowLabel, 4);

    // Turned while open: the high and low get their smaller letters back
    // (the font above covers the whole text), and what hangs from the today
    // row moves with it.
    if (_provider) {
        showTodayHighLow();
        layOutForecasts();
    }
}

void KVWeatherDisplayView::showTodayHighLow()
{
    _todayHighLowLabel->setAttributedText(weatherHighLowText(_provider->high(), _provider->low(), 10).get());
}

RefPtr<UIView> KVWeatherDisplayView::addSeparator(double y)
{
    auto separator = make<UIView>(CGRectMake(40, y, width() - 80, 1));
    separator->setName("separator");
    separator->setBackgroundColor(_themeColor->colorWithAlphaComponent(0.1));
    _containerView->addSubview(separator.get());
    return separator;
}

void KVWeatherDisplayView::updateUsingCelciusScale(bool celsius)
{
    _provider = CVWeatherProvider::alloc()->initUsingCelciusScale(celsius);
    _locationLabel->setText(_provider->cityName());
    _conditionNameLabel->setText(_provider->conditionName());
    _todayTemperatureLabel->setText(NSString::format("%d\u00B0", _provider->temperature()));
    showTodayHighLow();
    layOutForecasts();
}

void KVWeatherDisplayView::layOutForecasts()
{
    double W = width(), H = height();
    for (auto view : std::vector<RefPtr<UIView>>(_containerView->subviews()))
        view->removeFromSuperview();
    auto days = _provider->dayForecasts();
    auto hours = _provider->hourlyForecasts();

    auto separator = addSeparator(CGRectGetMaxY(_todayLabel->frame()) + 0.0136 * H);

    double stripHeight = KVWeatherDisplayHourlyView::columnHeight(H);
    auto strip = make<UIScrollView>(CGRectMake(20, CGRectGetMaxY(separator->frame()) + 0.00679 * H, W - 40, stripHeight));
    strip->setName("_hourlyScrollView");
    strip->setBackgroundColor(UIColor::clearColor());
    strip->setScrollEnabled(true);
    strip->setShowsHorizontalScrollIndicator(false);
    strip->setCanCancelContentTouches(true);
    double centerX = 20;
    for (const StrongId& object : hours ? hours->objects() : std::vector<StrongId> {}) {
        auto* forecast = objc::cast<CVHourlyForecast>(object.get());
        if (!forecast)
            continue;
        auto column = make<KVWeatherDisplayHourlyView>(forecast, _settings->forecastMilitaryTime(), bounds());
        CGRect frame = column->frame();
        column->setFrame(CGRectMake(centerX - frame.size.width / 2, frame.origin.y, frame.size.width, frame.size.height));
        strip->addSubview(column.get());
        centerX += frame.size.width + 5;
    }
    strip->setContentSize(CGSizeMake(centerX - 20, strip->frame().size.height));
    _containerView->addSubview(strip.get());

    auto secondSeparator = addSeparator(CGRectGetMaxY(strip->frame()) + 0.00679 * H);
    double y = CGRectGetMaxY(secondSeparator->frame()) + 0.027 * H;
    for (const StrongId& object : days ? days->objects() : std::vector<StrongId> {}) {
        auto* forecast = objc::cast<CVDayForecast>(object.get());
        if (!forecast || forecast->dayOfWeek() == "Today")
            continue;
        auto row = make<KVWeatherDisplayDayView>(forecast, bounds());
        CGRect frame = row->frame();
        row->setFrame(CGRectMake(frame.origin.x, y - frame.size.height / 2, frame.size.width, frame.size.height));
        _containerView->addSubview(row.get());
        y += frame.size.height + 0.00679 * H;
    }
}
