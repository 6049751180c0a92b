#pragma once

#include <objc/objc.h>

#include <string>

class UIImage;
class UIImageView;

// One day of the maker library's forecast: the day's name ("Today" for the
// current day), its high and low in whole degrees of the provider's scale,
// and a ready image view of the condition icon.
class CVDayForecast final : public NSObject {
    OBJC_CLASS(CVDayForecast)
public:
    static constexpr double iconSide = 22;

    CVDayForecast(std::string dayOfWeek, int high, int low, RefPtr<UIImage> conditionImage);

    const std::string& dayOfWeek() const { return m_dayOfWeek; }
    int high() const { return m_high; }
    int low() const { return m_low; }
    // Made on first use; one view, so it can be in one place at a time.
    UIImageView* conditionImageView();

private:
    std::string m_dayOfWeek;
    int m_high { 0 };
    int m_low { 0 };
    RefPtr<UIImage> m_conditionImage;
    RefPtr<UIImageView> m_conditionImageView;
};
