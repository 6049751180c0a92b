// The panel's weather line.

#include "KVView.h"

#include "settings/KVSettings.h"
#include "weather/KVWeatherDisplayView.h"

#include <CorvLib/CVWeatherProvider.h>
#include <Foundation/NSString.h>
#include <UIKit/NSAttributedString.h>
#include <UIKit/NSTextAttachment.h>
#include <UIKit/UIFont.h>
#include <UIKit/UIImage.h>
#include <UIKit/UILabel.h>
#include <UIKit/UITapGestureRecognizer.h>
#include <objc/SharedInstance.h>

static constexpr const char* weatherErrorText
    = "Enable location services for weather then open the weather app. Make sure you have an internet connection.";

static RefPtr<UILabel> makeWeatherLabel(const char* name, int lines, NSTextAlignment alignment)
{
    auto label = make<UILabel>();
    label->setName(name);
    label->setNumberOfLines(lines);
    label->setTextAlignment(alignment);
    label->setAdjustsFontSizeToFitWidth(true);
    return label;
}

void KVView::addForecast()
{
    _weatherContainerView = make<UIView>();
    _weatherContainerView->setName("_weatherContainerView");
    _weatherContainerView->setUserInteractionEnabled(true);
    _weatherContainerView->addGestureRecognizer(make<UITapGestureRecognizer>(this, OBJC_SEL("weatherContainerSingleTapRecognizer:")).get());
    addSubview(_weatherContainerView.get());

    _weatherIconAndConditionNameLabel = makeWeatherLabel("_weatherIconAndConditionNameLabel", 1, NSTextAlignmentRight);
    _highLowLabel = makeWeatherLabel("_highLowLabel", 1, NSTextAlignmentRight);
    _temperatureLabel = makeWeatherLabel("_temperatureLabel", 1, NSTextAlignmentRight);
    _weatherErrorLabel = makeWeatherLabel("_weatherErrorLabel", 0, NSTextAlignmentLeft);
    _weatherErrorLabel->setUserInteractionEnabled(false);
    for (auto* label : { _weatherIconAndConditionNameLabel.get(), _highLowLabel.get(), _temperatureLabel.get(), _weatherErrorLabel.get() })
        _weatherContainerView->addSubview(label);

    // Made now so that its first opening is quick.
    objc::sharedInstance<KVWeatherDisplayView>();
}

// The three stacked rows of the weather line; each label's type is its row's
// height less 6 points. The condition's icon takes the type's size, from these
// heights rather than the label's current frame: the first update can come
// before the first layout (in the notification centre and on the search page).
static constexpr double conditionRowHeight = 24;
static constexpr double highLowRowHeight = 20;
static constexpr double temperatureRowHeight = 38;

void KVView::layoutForecast(double weatherTop)
{
    // The right half of the panel, level with the clock: condition, high and
    // low, then the current temperature in large type.
    double containerWidth = width() / 2 - 20;
    _weatherContainerView->setFrame(CGRectMake(width() / 2, weatherTop, containerWidth, conditionRowHeight + highLowRowHeight + temperatureRowHeight));
    struct Row {
        UILabel* label;
        double y;
        double height;
    };
    for (Row row : { Row { _weatherIconAndConditionNameLabel.get(), 0, conditionRowHeight }, Row { _highLowLabel.get(), conditionRowHeight, highLowRowHeight }, Row { _temperatureLabel.get(), conditionRowHeight + highLowRowHeight, temperatureRowHeight } }) {
        row.label->setFrame(CGRectMake(0, row.y, containerWidth, row.height));
        row.label->setFont(UIFont::fontWithName("HelveticaNeue-Light", row.height - 6));
    }
    _weatherErrorLabel->setFrame(_weatherContainerView->bounds());
    _weatherErrorLabel->setFont(UIFont::fontWithName("HelveticaNeue-Light", 10));
}

void KVView::updateForecastLabels()
{
    int scale = _settings->temperatureScale();
    auto provider = CVWeatherProvider::alloc()->initUsingCelciusScale(scale == 2);
    if (!provider || !provider->forecastIsAvailable()) {
        _weatherErrorLabel->setText(_settings->forecastErrorMessageEnabled() ? weatherErrorText : "");
        _weatherContainerView->setUserInteractionEnabled(false);
        return;
    }
    _weatherErrorLabel->setText("");
    _weatherContainerView->setUserInteractionEnabled(true);

    auto condition = NSMutableAttributedString::create();
    auto attachment = make<NSTextAttachment>();
    attachment->setImage(provider->conditionImage());
    double side = conditionRowHeight - 6;
    attachment->setBounds(CGRectMake(0, -3, side, side));
    condition->appendAttributedString(NSAttributedString::attributedStringWithAttachment(attachment).get());
    condition->appendString(" " + provider->conditionName());
    _weatherIconAndConditionNameLabel->setAttributedText(condition.get());

    _highLowLabel->setText(NSString::format("high %d | low %d", provider->high(), provider->low()));

    // The unit texts end in a line break, kept as data; a one-line label
    // shows nothing of it.
    if (scale == 1)
        _temperatureLabel->setText(NSString::format("%d%s", provider->temperature(), "\u00B0F\n"));
    else if (scale == 2)
        _temperatureLabel->setText(NSString::format("%d%s", provider->temperature(), "\u00B0C\n"));
    else
        _temperatureLabel->setText("");
}
