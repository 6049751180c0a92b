#pragma once

#include <objc/objc.h>

#include <string>

// A font: a PostScript-style name and a size in points, as UIKit's UIFont.
//
// Apple's font names do not exist off the phone, so every name is mapped to
// a face of Inter (the bundled, metric-stable stand-in for Helvetica Neue and
// San Francisco): "HelveticaNeue-Light" to Inter Light, "-UltraLight" to
// Inter Extra Light, "-Medium" to Inter Medium, the system font to Inter
// Regular or Bold. Names of families that are not mapped give null, as
// `fontWithName:size:` answers nil for a font the phone does not have.
class UIFont final : public NSObject {
    OBJC_CLASS(UIFont)
public:
    UIFont() = default;
    UIFont(std::string name, double pointSize, int weight, bool italic);

    static RefPtr<UIFont> fontWithName(const std::string& name, double pointSize);
    static RefPtr<UIFont> systemFontOfSize(double pointSize);
    static RefPtr<UIFont> boldSystemFontOfSize(double pointSize);
    RefPtr<UIFont> fontWithSize(double pointSize) const;

    const std::string& fontName() const { return m_fontName; }
    double pointSize() const { return m_pointSize; }
    // The CSS-style weight (100 thin ... 400 regular ... 700 bold) of the
    // face this font is drawn with.
    int weight() const { return m_weight; }
    bool isItalic() const { return m_italic; }
    bool isEqual(const UIFont* other) const;

    // The full name of the installed face that text in this font is really
    // drawn with, such as "Inter Light" (for tests and diagnostics).
    std::string resolvedFaceName() const;

    // Line metrics in points, as the font reports them.
    double ascender() const;
    double descender() const; // negative, as UIKit's
    double lineHeight() const;

    std::string description() const override;

private:
    std::string m_fontName;
    double m_pointSize { 0 };
    int m_weight { 400 };
    bool m_italic { false };
};
