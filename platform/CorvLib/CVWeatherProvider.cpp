#include "CVWeatherProvider.h"

#include <Foundation/NSString.h>
#include <UIKit/UIImage.h>

#include <cmath>

OBJC_IMPLEMENT_CLASS(CVWeatherProvider, NSObject)
{
    c.method<&CVWeatherProvider::initUsingCelciusScale>("initUsingCelciusScale:");
    c.method<&CVWeatherProvider::forecastIsAvailable>("forecastIsAvailable");
    c.method<&CVWeatherProvider::conditionName>("conditionName");
    c.method<&CVWeatherProvider::high>("high");
    c.method<&CVWeatherProvider::low>("low");
    c.method<&CVWeatherProvider::temperature>("temperature");
    c.allocatable();
}

RefPtr<CVWeatherProvider> CVWeatherProvider::initUsingCelciusScale(bool celsius)
{
    m_celsius = celsius;
    // The weather app's store: its local city, when it has a forecast.
    StrongId preferences = objc::send<StrongId>(objc::objc_getClass("WeatherPreferences"), OBJC_SEL("sharedPreferences"));
    m_city = objc::send<StrongId>(preferences, OBJC_SEL("localWeatherCity"));
    return RefPtr<CVWeatherProvider>(this);
}

int CVWeatherProvider::degrees(double celsius) const
{
    return static_cast<int>(std::lround(m_celsius ? celsius : celsius * 9.0 / 5.0 + 32.0));
}

RefPtr<UIImage> CVWeatherProvider::conditionImage() const { return objc::send<RefPtr<UIImage>>(m_city, OBJC_SEL("conditionImage")); }
std::string CVWeatherProvider::conditionName() const { return objc::send<std::string>(m_city, OBJC_SEL("conditionName")); }
int CVWeatherProvider::high() const { return degrees(objc::send<double>(m_city, OBJC_SEL("highCelsius"))); }
int CVWeatherProvider::low() const { return degrees(objc::send<double>(m_city, OBJC_SEL("lowCelsius"))); }
int CVWeatherProvider::temperature() const { return degrees(objc::send<double>(m_city, OBJC_SEL("temperatureCelsius"))); }
