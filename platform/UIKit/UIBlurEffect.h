#pragma once

#include <objc/objc.h>

#include <string>

enum UIBlurEffectStyle : int {
    UIBlurEffectStyleExtraLight = 0,
    UIBlurEffectStyleLight = 1,
    UIBlurEffectStyleDark = 2,
};

// A blur for a visual-effect view, with the look of iOS 9's backdrop
// settings for its style: how far the backdrop is blurred, how much its
// colours are strengthened, and the grey laid over it.
class UIBlurEffect final : public NSObject {
    OBJC_CLASS(UIBlurEffect)
public:
    UIBlurEffect() = default;
    explicit UIBlurEffect(UIBlurEffectStyle style)
        : m_style(style)
    {
    }
    static RefPtr<UIBlurEffect> effectWithStyle(int style);

    UIBlurEffectStyle style() const { return m_style; }
    std::string styleName() const;

    // Blur radius in points.
    double blurRadius() const;
    // 1 keeps the backdrop's colours; more makes them stronger.
    double saturation() const;
    // The grey (0 black, 1 white) laid over the blurred backdrop and how
    // opaque it is.
    double tintWhite() const;
    double tintAlpha() const;

private:
    UIBlurEffectStyle m_style { UIBlurEffectStyleLight };
};
