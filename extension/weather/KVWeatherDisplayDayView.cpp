#include "KVWeatherDisplayDayView.h"

#include "KVWeatherHighLowText.h"
#include "KVWeatherLayout.h"
#include "settings/KVSettings.h"

#include <CorvLib/CVDayForecast.h>
#include <UIKit/UIFont.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>

OBJC_IMPLEMENT_CLASS(KVWeatherDisplayDayView, UIView)
{
    c.method<&KVWeatherDisplayDayView::dayForecast>("dayForecast");
    c.method<&KVWeatherDisplayDayView::setDayForecast>("setDayForecast:");
}

KVWeatherDisplayDayView::KVWeatherDisplayDayView(CVDayForecast* forecast, CGRect frame)
    : _dayForecast(forecast)
{
    setName("KVWeatherDisplayDayView");
    double width = frame.size.width - 80;
    double height = KVWeatherLayout::textBoxHeight(0.034 * frame.size.height, 9);
    setFrame(CGRectMake(40, 0, width, height));
    setBackgroundColor(UIColor::clearColor());
    setUserInteractionEnabled(false);

    auto themeColor = KVSettings::sharedInstance()->themeColor();
    auto font = UIFont::fontWithName("HelveticaNeue-Light", height - 9);
    _dayLabel = make<UILabel>(CGRectMake(0, 0, 0.4 * width, height));
    _dayLabel->setName("_dayLabel");
    _dayLabel->setTextColor(themeColor);
    _dayLabel->setFont(font);
    _dayLabel->setNumberOfLines(1);
    _dayLabel->setTextAlignment(NSTextAlignmentLeft);
    addSubview(_dayLabel.get());

    _highLowLabel = make<UILabel>(CGRectMake(0.6 * width, 0, 0.4 * width, height));
    _highLowLabel->setName("_highLowLabel");
    _highLowLabel->setTextColor(themeColor);
    _highLowLabel->setFont(font);
    _highLowLabel->setNumberOfLines(1);
    _highLowLabel->setTextAlignment(NSTextAlignmentRight);
    _highLowLabel->setAdjustsFontSizeToFitWidth(true);
    addSubview(_highLowLabel.get());
    if (!forecast)
        return;

    _dayLabel->setText(forecast->dayOfWeek());
    _highLowLabel->setAttributedText(weatherHighLowText(forecast->high(), forecast->low(), KVWeatherLayout::textSize(height - 15)).get());
    if (auto* icon = forecast->conditionImageView()) {
        // The icon keeps its size, but a row shorter than the icon (a phone
        // in landscape) shrinks it to the row's height.
        CGSize size = { CVDayForecast::iconSide, CVDayForecast::iconSide };
        if (size.height > height)
            size = { size.width * height / size.height, height };
        icon->setFrame(CGRectMake(width / 2 - size.width / 2, height / 2 - size.height / 2, size.width, size.height));
        addSubview(icon);
    }
}

void KVWeatherDisplayDayView::setDayForecast(CVDayForecast* forecast) { _dayForecast = forecast; }
