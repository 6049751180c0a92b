#pragma once

#include "City.h"

// The weather app's store. Its local city is the one whose forecast the
// system shows; there is none until the weather app has fetched one (no
// location permission, no network, the app never opened), and then
// `localWeatherCity` answers null.
class WeatherPreferences final : public NSObject {
    OBJC_CLASS(WeatherPreferences)
public:
    static RefPtr<WeatherPreferences> sharedPreferences();

    // Null while no forecast is available.
    RefPtr<City> localWeatherCity() const { return m_available ? m_city : nullptr; }
    bool isForecastAvailable() const { return m_available; }
    void setForecastAvailable(bool available) { m_available = available; }
    // The city's record, whether or not it is available (the world edits it).
    City& city() { return *m_city; }

private:
    RefPtr<City> m_city { make<City>() };
    bool m_available { false };
};
