#pragma once

#include <objc/objc.h>

#include <string>

class UIImage;
class UIImageView;

// One hour of the maker library's forecast: the hour as the weather app
// writes it ("HHMM", so its first two characters are the hour of day), the
// temperature in whole degrees of the provider's scale, and a ready image
// view of the condition icon.
class CVHourlyForecast final : public NSObject {
    OBJC_CLASS(CVHourlyForecast)
public:
    static constexpr double iconSide = 28;

    CVHourlyForecast(std::string hour, int temperature, RefPtr<UIImage> conditionImage);

    const std::string& hour() const { return m_hour; }
    int temperature() const { return m_temperature; }
    // Made on first use; one view, so it can be in one place at a time.
    UIImageView* conditionImageView();

private:
    std::string m_hour;
    int m_temperature { 0 };
    RefPtr<UIImage> m_conditionImage;
    RefPtr<UIImageView> m_conditionImageView;
};
