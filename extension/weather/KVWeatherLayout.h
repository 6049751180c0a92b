#pragma once

#include <algorithm>

// The weather overlay sizes its texts from the heights of their boxes (a box
// of h points gets a font of h less some points). On a short screen, a phone
// in landscape, those heights leave texts of 4 to 6 points; so a box never
// gets shorter than the font's offset plus minimumTextSize, and its font
// never drops below that size. Elsewhere the proportions hold as they are.
namespace KVWeatherLayout {

inline constexpr double minimumTextSize = 8;

// The height of a box whose font is its height less `fontOffset`.
inline double textBoxHeight(double proportionalHeight, double fontOffset)
{
    return std::max(proportionalHeight, minimumTextSize + fontOffset);
}

// A font size, never below the minimum.
inline double textSize(double size) { return std::max(size, minimumTextSize); }

}
