#pragma once

#include <objc/objc.h>

#include <string>

// An immutable RGBA colour with components from 0 to 1.
class UIColor final : public NSObject {
    OBJC_CLASS(UIColor)
public:
    UIColor() = default;
    UIColor(double red, double green, double blue, double alpha)
        : m_red(red)
        , m_green(green)
        , m_blue(blue)
        , m_alpha(alpha)
    {
    }
    static RefPtr<UIColor> colorWithRed(double red, double green, double blue, double alpha) { return make<UIColor>(red, green, blue, alpha); }
    static RefPtr<UIColor> colorWithWhite(double white, double alpha) { return make<UIColor>(white, white, white, alpha); }
    static RefPtr<UIColor> whiteColor();
    static RefPtr<UIColor> blackColor();
    static RefPtr<UIColor> clearColor();
    static RefPtr<UIColor> redColor();

    double red() const { return m_red; }
    double green() const { return m_green; }
    double blue() const { return m_blue; }
    double alpha() const { return m_alpha; }
    RefPtr<UIColor> colorWithAlphaComponent(double alpha) const { return make<UIColor>(m_red, m_green, m_blue, alpha); }
    bool isEqual(const UIColor* other) const;

    // "#rrggbbaa", lower case: how colours are written in dumps.
    std::string hexString() const;
    std::string description() const override { return hexString(); }

private:
    double m_red { 0 };
    double m_green { 0 };
    double m_blue { 0 };
    double m_alpha { 1 };
};

// "#rrggbbaa" for a colour, or for null (clear).
std::string UIColorHexString(const UIColor*);
