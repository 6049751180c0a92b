#include "CVHourlyForecast.h"

#include "CVForecastIcon.h"

OBJC_IMPLEMENT_CLASS(CVHourlyForecast, NSObject)
{
    c.method<&CVHourlyForecast::hour>("hour");
    c.method<&CVHourlyForecast::temperature>("temperature");
    c.method<&CVHourlyForecast::conditionImageView>("conditionImageView");
}

CVHourlyForecast::CVHourlyForecast(std::string hour, int temperature, RefPtr<UIImage> conditionImage)
    : m_hour(std::move(hour))
    , m_temperature(temperature)
    , m_conditionImage(std::move(conditionImage))
{
}

UIImageView* CVHourlyForecast::conditionImageView()
{
    if (!m_conditionImageView)
        m_conditionImageView = makeForecastIconView(m_conditionImage, iconSide);
    return m_conditionImageView.get();
}
