#pragma once

#include <UIKit/UIImage.h>
#include <objc/objc.h>

#include <string>

// One hour of the weather app's forecast: the time as "HHMM", the
// temperature in degrees Celsius and the condition icon.
class HourlyForecast final : public NSObject {
    OBJC_CLASS(HourlyForecast)
public:
    HourlyForecast(std::string time, double temperatureCelsius, std::string icon);

    const std::string& time() const { return m_time; }
    double temperatureCelsius() const { return m_temperatureCelsius; }
    const std::string& icon() const { return m_icon; }
    RefPtr<UIImage> conditionImage() const;

private:
    std::string m_time;
    double m_temperatureCelsius { 0 };
    std::string m_icon;
};
