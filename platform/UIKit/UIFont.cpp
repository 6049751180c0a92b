#include "UIFont.h"

#include "TextEngine.h"

#include <cstdio>
#include <string_view>

OBJC_IMPLEMENT_CLASS(UIFont, NSObject)
{
    c.classMethod<&UIFont::fontWithName>("fontWithName:size:");
    c.classMethod<&UIFont::systemFontOfSize>("systemFontOfSize:");
    c.classMethod<&UIFont::boldSystemFontOfSize>("boldSystemFontOfSize:");
    c.method<&UIFont::fontName>("fontName");
    c.method<&UIFont::pointSize>("pointSize");
    c.method<&UIFont::fontWithSize>("fontWithSize:");
    c.method<&UIFont::lineHeight>("lineHeight");
}

namespace {

struct Style {
    std::string_view suffix;
    int weight;
};

// Weights of the styles that the Apple families have, named as in their
// PostScript names ("HelveticaNeue-UltraLight", ".SFUIText-Semibold").
constexpr Style styles[] = {
    { "", 400 },
    { "Regular", 400 },
    { "Roman", 400 },
    { "Thin", 100 },
    { "UltraLight", 200 },
    { "Ultralight", 200 },
    { "Light", 300 },
    { "Medium", 500 },
    { "Semibold", 600 },
    { "SemiBold", 600 },
    { "Bold", 700 },
    { "CondensedBold", 700 },
    { "Heavy", 800 },
    { "CondensedBlack", 900 },
    { "Black", 900 },
};

constexpr std::string_view families[] = { "HelveticaNeue", "Helvetica Neue", "Helvetica", ".SFUIText", ".SFUIDisplay", ".HelveticaNeueInterface" };

// Fills weight and italic for a mapped name; false for a name the phone's
// font list would not know.
bool mapFontName(std::string_view name, int& weight, bool& italic)
{
    for (std::string_view family : families) {
        if (!name.starts_with(family))
            continue;
        std::string_view rest = name.substr(family.size());
        if (!rest.empty() && rest.front() != '-')
            continue;
        if (!rest.empty())
            rest.remove_prefix(1);
        italic = false;
        if (rest.ends_with("Italic")) {
            italic = true;
            rest.remove_suffix(6);
        } else if (rest.ends_with("Oblique")) {
            italic = true;
            rest.remove_suffix(7);
        }
        for (const Style& style : styles) {
            if (style.suffix == rest) {
                weight = style.weight;
                return true;
            }
        }
        return false;
    }
    return false;
}

} // namespace

UIFont::UIFont(std::string name, double pointSize, int weight, bool italic)
    : m_fontName(std::move(name))
    , m_pointSize(pointSize)
    , m_weight(weight)
    , m_italic(italic)
{
}

RefPtr<UIFont> UIFont::fontWithName(const std::string& name, double pointSize)
{
    int weight = 400;
    bool italic = false;
    if (!mapFontName(name, weight, italic))
        return nullptr;
    return make<UIFont>(name, pointSize, weight, italic);
}

// iOS 9's system font is San Francisco: the Text cut below 20 points and the
// Display cut from 20 points up, as its names show.
static std::string systemFontName(double pointSize, const char* style)
{
    return std::string(pointSize < 20 ? ".SFUIText-" : ".SFUIDisplay-") + style;
}

RefPtr<UIFont> UIFont::systemFontOfSize(double pointSize) { return make<UIFont>(systemFontName(pointSize, "Regular"), pointSize, 400, false); }

RefPtr<UIFont> UIFont::boldSystemFontOfSize(double pointSize) { return make<UIFont>(systemFontName(pointSize, "Bold"), pointSize, 700, false); }

RefPtr<UIFont> UIFont::fontWithSize(double pointSize) const { return make<UIFont>(m_fontName, pointSize, m_weight, m_italic); }

bool UIFont::isEqual(const UIFont* other) const
{
    return other && other->m_fontName == m_fontName && other->m_pointSize == m_pointSize;
}

std::string UIFont::resolvedFaceName() const { return TextEngine::shared().resolvedFaceName(*this); }

double UIFont::ascender() const
{
    double ascent = 0;
    double descent = 0;
    TextEngine::shared().metrics(*this, ascent, descent);
    return ascent;
}

double UIFont::descender() const
{
    double ascent = 0;
    double descent = 0;
    TextEngine::shared().metrics(*this, ascent, descent);
    return -descent;
}

double UIFont::lineHeight() const { return ascender() - descender(); }

std::string UIFont::description() const
{
    char size[32];
    std::snprintf(size, sizeof size, "%g", m_pointSize);
    return "font-family: \"" + m_fontName + "\"; font-size: " + size + "pt";
}
