#pragma once

#include <UIKit/UIImage.h>
#include <objc/objc.h>

#include <string>

// One day of the weather app's forecast: the day's name ("Today" for the
// current day), its high and low in degrees Celsius and the condition icon.
class DayForecast final : public NSObject {
    OBJC_CLASS(DayForecast)
public:
    DayForecast(std::string dayOfWeek, double highCelsius, double lowCelsius, std::string icon);

    const std::string& dayOfWeek() const { return m_dayOfWeek; }
    double highCelsius() const { return m_highCelsius; }
    double lowCelsius() const { return m_lowCelsius; }
    const std::string& icon() const { return m_icon; }
    RefPtr<UIImage> conditionImage() const;

private:
    std::string m_dayOfWeek;
    double m_highCelsius { 0 };
    double m_lowCelsius { 0 };
    std::string m_icon;
};
