#pragma once

#include <UIKit/UIImage.h>

#include <string>
#include <vector>

// The weather app's condition icons, drawn by code as thin white line
// glyphs: "sunny", "clear" (night), "partly-cloudy", "cloudy", "rain",
// "snow", "thunderstorm", "fog" and "wind". Any other name draws the cloud.
// Each image is named "weather:" and the icon's name, for dumps.
namespace WeatherGlyphs {

static constexpr double side = 64;

RefPtr<UIImage> conditionImage(const std::string& icon);
// Whether the name is one of the icons above.
bool isKnownIcon(const std::string& icon);
// The names of the icons above, in alphabetical order.
std::vector<std::string> knownIcons();

} // namespace WeatherGlyphs
