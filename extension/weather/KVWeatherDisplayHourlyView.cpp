#include "KVWeatherDisplayHourlyView.h"

#include "KVWeatherLayout.h"
#include "settings/KVSettings.h"

#include <CorvLib/CVHourlyForecast.h>
#include <Foundation/NSString.h>
#include <UIKit/UIFont.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>

OBJC_IMPLEMENT_CLASS(KVWeatherDisplayHourlyView, UIView)
{
    c.method<&KVWeatherDisplayHourlyView::hourlyForecast>("hourlyForecast");
    c.method<&KVWeatherDisplayHourlyView::setHourlyForecast>("setHourlyForecast:");
}

static constexpr double stripShare = 0.109;
static constexpr double labelShare = 0.027;
// A label's font is its height less this.
static constexpr double labelFontOffset = 4;

static double labelHeight(double overlayHeight) { return KVWeatherLayout::textBoxHeight(labelShare * overlayHeight, labelFontOffset); }

double KVWeatherDisplayHourlyView::columnHeight(double overlayHeight)
{
    return std::max(stripShare * overlayHeight, 2 * labelHeight(overlayHeight) + CVHourlyForecast::iconSide);
}

std::string KVWeatherDisplayHourlyView::hourText(const std::string& hour, bool militaryTime)
{
    std::string digits = hour.substr(0, 2);
    if (militaryTime)
        return digits;
    if (digits.size() != 2 || !isdigit(static_cast<unsigned char>(digits[0])) || !isdigit(static_cast<unsigned char>(digits[1])))
        return {};
    int n = std::stoi(digits);
    if (n == 0)
        return "12am";
    if (n < 12)
        return NSString::format("%d%s", n, "am");
    if (n == 12)
        return "12pm";
    if (n < 24)
        return NSString::format("%d%s", n - 12, "pm");
    return {};
}

KVWeatherDisplayHourlyView::KVWeatherDisplayHourlyView(CVHourlyForecast* forecast, bool militaryTime, CGRect frame)
    : _hourlyForecast(forecast)
{
    setName("KVWeatherDisplayHourlyView");
    double height = columnHeight(frame.size.height);
    setFrame(CGRectMake(frame.origin.x, 0, columnWidth, height));
    setBackgroundColor(UIColor::clearColor());
    setUserInteractionEnabled(false);

    auto themeColor = KVSettings::sharedInstance()->themeColor();
    double textHeight = labelHeight(frame.size.height);
    auto makeLabel = [&](const char* name, double y) {
        auto label = make<UILabel>(CGRectMake(0, y, columnWidth, textHeight));
        label->setName(name);
        label->setTextColor(themeColor);
        label->setFont(UIFont::fontWithName("HelveticaNeue-Light", textHeight - labelFontOffset));
        label->setNumberOfLines(1);
        label->setTextAlignment(NSTextAlignmentCenter);
        label->setAdjustsFontSizeToFitWidth(true);
        addSubview(label.get());
        return label;
    };
    _hourLabel = makeLabel("_hourLabel", 0);
    _temperatureLabel = makeLabel("_temperatureLabel", height - textHeight);
    if (!forecast)
        return;
    _hourLabel->setText(hourText(forecast->hour(), militaryTime));
    _temperatureLabel->setText(std::to_string(forecast->temperature()));

    if (auto* icon = forecast->conditionImageView()) {
        CGSize size = icon->bounds().size;
        icon->setFrame(CGRectMake(columnWidth / 2 - size.width / 2, height / 2 - size.height / 2, size.width, size.height));
        addSubview(icon);
    }
}

void KVWeatherDisplayHourlyView::setHourlyForecast(CVHourlyForecast* forecast) { _hourlyForecast = forecast; }
