#pragma once

#include "DayForecast.h"
#include "HourlyForecast.h"

#include <Foundation/NSArray.h>
#include <UIKit/UIImage.h>
#include <objc/objc.h>

#include <string>

// The weather app's record of one city: its name, the current condition
// with its icon, the temperature and today's high and low in degrees
// Celsius, and the hourly and daily forecasts in order.
class City final : public NSObject {
    OBJC_CLASS(City)
public:
    City() = default;

    const std::string& name() const { return m_name; }
    void setName(std::string name) { m_name = std::move(name); }
    const std::string& conditionName() const { return m_conditionName; }
    void setConditionName(std::string name) { m_conditionName = std::move(name); }
    const std::string& icon() const { return m_icon; }
    void setIcon(std::string icon) { m_icon = std::move(icon); }
    RefPtr<UIImage> conditionImage() const;

    double temperatureCelsius() const { return m_temperatureCelsius; }
    void setTemperatureCelsius(double degrees) { m_temperatureCelsius = degrees; }
    double highCelsius() const { return m_highCelsius; }
    void setHighCelsius(double degrees) { m_highCelsius = degrees; }
    double lowCelsius() const { return m_lowCelsius; }
    void setLowCelsius(double degrees) { m_lowCelsius = degrees; }

    // Arrays of HourlyForecast and DayForecast, copied so that callers
    // holding one are not changed under their feet.
    RefPtr<NSArray> hourlyForecasts() const { return NSArray::create(m_hourly); }
    RefPtr<NSArray> dayForecasts() const { return NSArray::create(m_days); }
    void addHourlyForecast(RefPtr<HourlyForecast> forecast) { m_hourly.push_back(std::move(forecast)); }
    void addDayForecast(RefPtr<DayForecast> forecast) { m_days.push_back(std::move(forecast)); }

private:
    std::string m_name { "Cupertino" };
    std::string m_conditionName { "Sunny" };
    std::string m_icon { "sunny" };
    double m_temperatureCelsius { 20 };
    double m_highCelsius { 23 };
    double m_lowCelsius { 12 };
    std::vector<StrongId> m_hourly;
    std::vector<StrongId> m_days;
};
