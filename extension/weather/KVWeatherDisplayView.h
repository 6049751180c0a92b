#pragma once

#include <CorvLib/CVContainerView.h>

class KVSettings;
class UIColor;
class UILabel;
class UIScrollView;
class UIVisualEffectView;

// The weather overlay opened from the panel's weather line: the city, the
// condition, the temperature and today's high and low, a strip of hourly
// forecasts and one row per coming day, over a dark blur. The forecast is
// fetched anew each time it opens.
class KVWeatherDisplayView final : public CVContainerView {
    OBJC_CLASS(KVWeatherDisplayView)
public:
    KVWeatherDisplayView();
    static KVWeatherDisplayView* sharedInstance();

    void show() override;
    void viewWillShow() override;
    void viewWillHide() override;
    void updateFrame();
    // Rebuilds everything below the today row from a fresh provider.
    void updateUsingCelciusScale(bool celsius);

    RefPtr<KVSettings> _settings;
    RefPtr<UIColor> _themeColor;
    RefPtr<UIVisualEffectView> _blurEffectView;
    RefPtr<UIView> _containerView;
    RefPtr<UILabel> _locationLabel;
    RefPtr<UILabel> _conditionNameLabel;
    RefPtr<UILabel> _todayTemperatureLabel;
    RefPtr<UILabel> _todayLabel;
    RefPtr<UILabel> _todayHighLowLabel;

private:
    RefPtr<UIView> addSeparator(double y);
};
