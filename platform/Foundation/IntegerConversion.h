#pragma once

#include <cmath>
#include <limits>
#include <type_traits>

// A real truncated toward zero to a signed integer type, as the phone's
// processor converts (arm64's fcvtzs): NaN gives 0, and a value beyond the
// type's range, infinities included, is held at the nearer end. In C++ these
// conversions are undefined, so every real that comes from outside (a
// preference, a reading of the host) is converted through here.
template<typename Int>
inline Int truncatedToInteger(double value)
{
    static_assert(std::is_integral_v<Int> && std::is_signed_v<Int>);
    if (std::isnan(value))
        return 0;
    // The type's minimum, -2^(bits-1), is exact as a double; its maximum may
    // not be, so the upper bound is the minimum's magnitude.
    constexpr double lowest = static_cast<double>(std::numeric_limits<Int>::min());
    if (value >= -lowest)
        return std::numeric_limits<Int>::max();
    if (value <= lowest - 1.0)
        return std::numeric_limits<Int>::min();
    return static_cast<Int>(value);
}
