#include "CVColorFactory.h"

#include <optional>

OBJC_IMPLEMENT_CLASS(CVColorFactory, NSObject) { c.classMethod<&CVColorFactory::colorFromHexString>("colorFromHexString:"); }

static std::optional<int> hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return std::nullopt;
}

RefPtr<UIColor> CVColorFactory::colorFromHexString(const std::string& text)
{
    size_t first = text.find_first_not_of(" \t\r\n");
    size_t last = text.find_last_not_of(" \t\r\n");
    if (first == std::string::npos || last - first + 1 != 7 || text[first] != '#')
        return UIColor::whiteColor();
    double components[3];
    for (int i = 0; i < 3; ++i) {
        auto high = hexDigit(text[first + 1 + 2 * i]);
        auto low = hexDigit(text[first + 2 + 2 * i]);
        if (!high || !low)
            return UIColor::whiteColor();
        components[i] = (*high * 16 + *low) / 255.0;
    }
    return UIColor::colorWithRed(components[0], components[1], components[2], 1);
}
