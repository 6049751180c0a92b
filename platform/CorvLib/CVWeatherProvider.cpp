#include "CVWeatherProvider.h"

#include "CVDayForecast.h"
#include "CVHourlyForecast.h"

#include <Foundation/NSArray.h>
#include <UIKit/UIImage.h>

#include <climits>
#include <cmath>

OBJC_IMPLEMENT_CLASS(CVWeatherProvider, NSObject)
{
    c.method<&CVWeatherProvider::initUsingCelciusScale>("initUsingCelciusScale:");
    c.method<&CVWeatherProvider::forecastIsAvailable>("forecastIsAvailable");
    c.method<&CVWeatherProvider::cityName>("cityName");
    c.method<&CVWeatherProvider::conditionImage>("conditionImage");
    c.method<&CVWeatherProvider::conditionName>("conditionName");
    c.method<&CVWeatherProvider::high>("high");
    c.method<&CVWeatherProvider::low>("low");
    c.method<&CVWeatherProvider::temperature>("temperature");
    c.method<&CVWeatherProvider::hourlyForecasts>("hourlyForecasts");
    c.method<&CVWeatherProvider::dayForecasts>("dayForecasts");
    c.allocatable();
}

RefPtr<CVWeatherProvider> CVWeatherProvider::initUsingCelciusScale(bool celsius)
{
    m_celsius = celsius;
    StrongId preferences = objc::send<StrongId>(objc::objc_getClass("WeatherPreferences"), OBJC_SEL("sharedPreferences"));
    m_city = objc::send<StrongId>(preferences, OBJC_SEL("localWeatherCity"));
    readForecasts();
    return RefPtr<CVWeatherProvider>(this);
}

int CVWeatherProvider::degrees(double celsius, bool inCelsius)
{
    double value = std::round(inCelsius ? celsius : celsius * 9.0 / 5.0 + 32.0);
    // Nonsense from the store must not become undefined behaviour.
    if (!(value > INT_MIN && value < INT_MAX))
        return 0;
    return static_cast<int>(value);
}

void CVWeatherProvider::readForecasts()
{
    m_hourlyForecasts = NSArray::create();
    m_dayForecasts = NSArray::create();
    if (!m_city)
        return;
    auto hours = objc::send<RefPtr<NSArray>>(m_city, OBJC_SEL("hourlyForecasts"));
    for (const StrongId& hour : hours ? hours->objects() : std::vector<StrongId> {}) {
        if (!hour)
            continue;
        m_hourlyForecasts->addObject(make<CVHourlyForecast>(objc::send<std::string>(hour, OBJC_SEL("time")),
            degrees(objc::send<double>(hour, OBJC_SEL("temperatureCelsius"))), objc::send<RefPtr<UIImage>>(hour, OBJC_SEL("conditionImage"))));
    }
    auto days = objc::send<RefPtr<NSArray>>(m_city, OBJC_SEL("dayForecasts"));
    for (const StrongId& day : days ? days->objects() : std::vector<StrongId> {}) {
        if (!day)
            continue;
        m_dayForecasts->addObject(make<CVDayForecast>(objc::send<std::string>(day, OBJC_SEL("dayOfWeek")),
            degrees(objc::send<double>(day, OBJC_SEL("highCelsius"))), degrees(objc::send<double>(day, OBJC_SEL("lowCelsius"))),
            objc::send<RefPtr<UIImage>>(day, OBJC_SEL("conditionImage"))));
    }
}

std::string CVWeatherProvider::cityName() const { return objc::send<std::string>(m_city, OBJC_SEL("name")); }
RefPtr<UIImage> CVWeatherProvider::conditionImage() const { return objc::send<RefPtr<UIImage>>(m_city, OBJC_SEL("conditionImage")); }
std::string CVWeatherProvider::conditionName() const { return objc::send<std::string>(m_city, OBJC_SEL("conditionName")); }
int CVWeatherProvider::high() const { return degrees(objc::send<double>(m_city, OBJC_SEL("highCelsius"))); }
int CVWeatherProvider::low() const { return degrees(objc::send<double>(m_city, OBJC_SEL("lowCelsius"))); }
int CVWeatherProvider::temperature() const { return degrees(objc::send<double>(m_city, OBJC_SEL("temperatureCelsius"))); }
