#include "UIColor.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

OBJC_IMPLEMENT_CLASS(UIColor, NSObject)
{
    c.classMethod<&UIColor::whiteColor>("whiteColor");
    c.classMethod<&UIColor::blackColor>("blackColor");
    c.classMethod<&UIColor::clearColor>("clearColor");
}

RefPtr<UIColor> UIColor::whiteColor() { return make<UIColor>(1, 1, 1, 1); }
RefPtr<UIColor> UIColor::blackColor() { return make<UIColor>(0, 0, 0, 1); }
RefPtr<UIColor> UIColor::clearColor() { return make<UIColor>(0, 0, 0, 0); }
RefPtr<UIColor> UIColor::redColor() { return make<UIColor>(1, 0, 0, 1); }

bool UIColor::isEqual(const UIColor* other) const
{
    return other && m_red == other->m_red && m_green == other->m_green && m_blue == other->m_blue && m_alpha == other->m_alpha;
}

static int byte(double component) { return static_cast<int>(std::lround(std::clamp(component, 0.0, 1.0) * 255.0)); }

std::string UIColor::hexString() const
{
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "#%02x%02x%02x%02x", byte(m_red), byte(m_green), byte(m_blue), byte(m_alpha));
    return buffer;
}

std::string UIColorHexString(const UIColor* color) { return color ? color->hexString() : "#00000000"; }
