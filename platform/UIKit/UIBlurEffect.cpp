#include "UIBlurEffect.h"

#include <algorithm>

OBJC_IMPLEMENT_CLASS(UIBlurEffect, NSObject)
{
    c.classMethod<&UIBlurEffect::effectWithStyle>("effectWithStyle:");
}

namespace {

struct BackdropSettings {
    const char* name;
    double blurRadius;
    double saturation;
    double tintWhite;
    double tintAlpha;
};

// iOS 9's backdrop settings for the three blur styles, indexed by style.
constexpr BackdropSettings settings[] = {
    { "extralight", 20, 1.8, 0.97, 0.8 },
    { "light", 30, 1.8, 1.0, 0.3 },
    { "dark", 20, 1.8, 0.11, 0.73 },
};

const BackdropSettings& settingsFor(UIBlurEffectStyle style) { return settings[std::clamp(int(style), 0, 2)]; }

} // namespace

RefPtr<UIBlurEffect> UIBlurEffect::effectWithStyle(int style)
{
    if (style < UIBlurEffectStyleExtraLight || style > UIBlurEffectStyleDark)
        style = UIBlurEffectStyleLight;
    return make<UIBlurEffect>(static_cast<UIBlurEffectStyle>(style));
}

std::string UIBlurEffect::styleName() const { return settingsFor(m_style).name; }
double UIBlurEffect::blurRadius() const { return settingsFor(m_style).blurRadius; }
double UIBlurEffect::saturation() const { return settingsFor(m_style).saturation; }
double UIBlurEffect::tintWhite() const { return settingsFor(m_style).tintWhite; }
double UIBlurEffect::tintAlpha() const { return settingsFor(m_style).tintAlpha; }
