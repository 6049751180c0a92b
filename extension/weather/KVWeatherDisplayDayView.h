#pragma once

#include <UIKit/UIView.h>

class CVDayForecast;
class UILabel;

// One row of the weather overlay's coming days: the day's name on the left,
// the condition icon in the middle, high and low on the right.
class KVWeatherDisplayDayView final : public UIView {
    OBJC_CLASS(KVWeatherDisplayDayView)
public:
    // `frame` is the overlay's: the row takes its proportions from it.
    KVWeatherDisplayDayView(CVDayForecast*, CGRect frame);

    CVDayForecast* dayForecast() const { return _dayForecast.get(); }
    void setDayForecast(CVDayForecast*);

private:
    RefPtr<CVDayForecast> _dayForecast;
    RefPtr<UILabel> _dayLabel;
    RefPtr<UILabel> _highLowLabel;
};
