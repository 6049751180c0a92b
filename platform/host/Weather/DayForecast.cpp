#include "DayForecast.h"

#include "WeatherGlyphs.h"

OBJC_IMPLEMENT_CLASS(DayForecast, NSObject)
{
    c.method<&DayForecast::dayOfWeek>("dayOfWeek");
    c.method<&DayForecast::highCelsius>("highCelsius");
    c.method<&DayForecast::lowCelsius>("lowCelsius");
    c.method<&DayForecast::conditionImage>("conditionImage");
}

DayForecast::DayForecast(std::string dayOfWeek, double highCelsius, double lowCelsius, std::string icon)
    : m_dayOfWeek(std::move(dayOfWeek))
    , m_highCelsius(highCelsius)
    , m_lowCelsius(lowCelsius)
    , m_icon(std::move(icon))
{
}

RefPtr<UIImage> DayForecast::conditionImage() const { return WeatherGlyphs::conditionImage(m_icon); }
