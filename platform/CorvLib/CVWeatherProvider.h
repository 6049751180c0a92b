#pragma once

#include <Foundation/NSArray.h>
#include <Foundation/NSArray.h>
#include <objc/objc.h>

#include <string>

class UIImage;

// The maker library's weather source: the weather app's local city, read
// from the host's weather store by name (`WeatherPreferences
// sharedPreferences` → `localWeatherCity`, whose temperatures are degrees
// Celsius), in whole degrees of the scale asked for. Fahrenheit is
// round(C × 9/5 + 32), halves away from zero.
//
// A provider reads the store once, when made: it answers for that moment.
class CVWeatherProvider final : public NSObject {
    OBJC_CLASS(CVWeatherProvider)
public:
    CVWeatherProvider() = default;
    static RefPtr<CVWeatherProvider> alloc() { return make<CVWeatherProvider>(); }
    // Spelled as the library spells it.
    RefPtr<CVWeatherProvider> initUsingCelciusScale(bool celsius);

    // False when the weather app has no forecast (no location permission,
    // no network, never opened); everything else is then empty or 0.
    bool forecastIsAvailable() const { return m_city != nullptr; }
    std::string cityName() const;
    RefPtr<UIImage> conditionImage() const;
    std::string conditionName() const;
    int high() const;
    int low() const;
    int temperature() const;
    // Arrays of CVHourlyForecast and CVDayForecast, in the weather app's
    // order; the current day among the days is named "Today".
    RefPtr<NSArray> hourlyForecasts() const { return m_hourlyForecasts; }
    RefPtr<NSArray> dayForecasts() const { return m_dayForecasts; }

    // Whole degrees in the scale asked for, from degrees Celsius.
    static int degrees(double celsius, bool inCelsius);

private:
    int degrees(double celsius) const { return degrees(celsius, m_celsius); }
    void readForecasts();

    bool m_celsius { false };
    StrongId m_city;
    RefPtr<NSArray> m_hourlyForecasts;
    RefPtr<NSArray> m_dayForecasts;
};
