#include "WeatherPreferences.h"

#include "../HostShared.h"

OBJC_IMPLEMENT_CLASS(WeatherPreferences, NSObject)
{
    c.classMethod<&WeatherPreferences::sharedPreferences>("sharedPreferences");
    c.method<&WeatherPreferences::localWeatherCity>("localWeatherCity");
}

RefPtr<WeatherPreferences> WeatherPreferences::sharedPreferences()
{
    static auto* slot = new RefPtr<WeatherPreferences>();
    return host::sharedInstanceIn(*slot);
}
