#include "CVDayForecast.h"

#include "CVForecastIcon.h"

OBJC_IMPLEMENT_CLASS(CVDayForecast, NSObject)
{
    c.method<&CVDayForecast::dayOfWeek>("dayOfWeek");
    c.method<&CVDayForecast::high>("high");
    c.method<&CVDayForecast::low>("low");
    c.method<&CVDayForecast::conditionImageView>("conditionImageView");
}

CVDayForecast::CVDayForecast(std::string dayOfWeek, int high, int low, RefPtr<UIImage> conditionImage)
    : m_dayOfWeek(std::move(dayOfWeek))
    , m_high(high)
    , m_low(low)
    , m_conditionImage(std::move(conditionImage))
{
}

UIImageView* CVDayForecast::conditionImageView()
{
    if (!m_conditionImageView)
        m_conditionImageView = makeForecastIconView(m_conditionImage, iconSide);
    return m_conditionImageView.get();
}
