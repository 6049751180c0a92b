#pragma once

#include <UIKit/UIView.h>

#include <string>

class CVHourlyForecast;
class UILabel;

// One column of the weather overlay's hourly strip: the hour on top, the
// condition icon in the middle, the temperature (a plain number) below.
class KVWeatherDisplayHourlyView final : public UIView {
    OBJC_CLASS(KVWeatherDisplayHourlyView)
public:
    static constexpr double columnWidth = 50;

    // `frame` is the overlay's: the column takes its proportions from it.
    KVWeatherDisplayHourlyView(CVHourlyForecast*, bool militaryTime, CGRect frame);

    // A column's height (and the strip's) in an overlay `overlayHeight`
    // high: 0.109 of it, or on a short screen enough for the two labels at
    // their smallest and the icon between them.
    static double columnHeight(double overlayHeight);

    CVHourlyForecast* hourlyForecast() const { return _hourlyForecast.get(); }
    void setHourlyForecast(CVHourlyForecast*);

    // The hour label's text for a forecast's `hour` ("HHMM"): the first two
    // characters as they stand with military time, else 12am, 9am, 12pm,
    // 2pm...; empty when they are not an hour of day.
    static std::string hourText(const std::string& hour, bool militaryTime);

private:
    RefPtr<CVHourlyForecast> _hourlyForecast;
    RefPtr<UILabel> _hourLabel;
    RefPtr<UILabel> _temperatureLabel;
};
