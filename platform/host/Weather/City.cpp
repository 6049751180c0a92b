#include "City.h"

#include "WeatherGlyphs.h"

OBJC_IMPLEMENT_CLASS(City, NSObject)
{
    c.method<&City::name>("name");
    c.method<&City::conditionName>("conditionName");
    c.method<&City::conditionImage>("conditionImage");
    c.method<&City::temperatureCelsius>("temperatureCelsius");
    c.method<&City::highCelsius>("highCelsius");
    c.method<&City::lowCelsius>("lowCelsius");
    c.method<&City::hourlyForecasts>("hourlyForecasts");
    c.method<&City::dayForecasts>("dayForecasts");
}

RefPtr<UIImage> City::conditionImage() const { return WeatherGlyphs::conditionImage(m_icon); }
