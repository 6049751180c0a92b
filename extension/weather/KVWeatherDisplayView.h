#pragma once

#include <CorvLib/CVContainerView.h>

class CVWeatherProvider;
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
    // Lays out the fixed labels for the current size, and what hangs below
    // the today row when a forecast was fetched.
    void updateFrame();
    // Fetches the forecast from a fresh provider and rebuilds everything
    // below the today row.
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
    // "H21 L12" with the letters in the smaller font.
    void showTodayHighLow();
    // Builds the separators, the hourly strip and the day rows anew from the
    // last forecast, for the current size.
    void layOutForecasts();

    // The forecast of the last opening, kept to lay it out again when the
    // phone turns.
    RefPtr<CVWeatherProvider> _provider;
};
