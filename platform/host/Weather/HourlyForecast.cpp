#include "HourlyForecast.h"

#include "WeatherGlyphs.h"

OBJC_IMPLEMENT_CLASS(HourlyForecast, NSObject)
{
    c.method<&HourlyForecast::time>("time");
    c.method<&HourlyForecast::temperatureCelsius>("temperatureCelsius");
    c.method<&HourlyForecast::conditionImage>("conditionImage");
}

HourlyForecast::HourlyForecast(std::string time, double temperatureCelsius, std::string icon)
    : m_time(std::move(time))
    , m_temperatureCelsius(temperatureCelsius)
    , m_icon(std::move(icon))
{
}

RefPtr<UIImage> HourlyForecast::conditionImage() const { return WeatherGlyphs::conditionImage(m_icon); }
