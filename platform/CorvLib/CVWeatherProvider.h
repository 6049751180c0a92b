#pragma once

#include <objc/objc.h>

#include <string>

class UIImage;

// The maker library's weather source: today's conditions from the host's
// weather data, in whole degrees of the scale asked for.
class CVWeatherProvider final : public NSObject {
    OBJC_CLASS(CVWeatherProvider)
public:
    CVWeatherProvider() = default;
    static RefPtr<CVWeatherProvider> alloc() { return make<CVWeatherProvider>(); }
    // Spelled as the library spells it.
    RefPtr<CVWeatherProvider> initUsingCelciusScale(bool celsius);

    bool forecastIsAvailable() const { return m_city != nullptr; }
    RefPtr<UIImage> conditionImage() const;
    std::string conditionName() const;
    int high() const;
    int low() const;
    int temperature() const;

private:
    int degrees(double celsius) const;
    bool m_celsius { false };
    StrongId m_city;
};
