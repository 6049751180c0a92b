#include "UILabel.h"

#include "RenderContext.h"
#include "TextLayout.h"

#include <cmath>
#include <nlohmann/json.hpp>

OBJC_IMPLEMENT_CLASS(UILabel, UIView)
{
    c.method<&UILabel::text>("text");
    c.method<&UILabel::setText>("setText:");
    c.method<&UILabel::attributedText>("attributedText");
    c.method<&UILabel::setAttributedText>("setAttributedText:");
    c.method<&UILabel::font>("font");
    c.method<&UILabel::setFont>("setFont:");
    c.method<&UILabel::textColor>("textColor");
    c.method<&UILabel::setTextColor>("setTextColor:");
    c.method<&UILabel::textAlignment>("textAlignment");
    c.method<&UILabel::setTextAlignment>("setTextAlignment:");
    c.method<&UILabel::numberOfLines>("numberOfLines");
    c.method<&UILabel::setNumberOfLines>("setNumberOfLines:");
    c.method<&UILabel::setLineBreakMode>("setLineBreakMode:");
    c.method<&UILabel::setAdjustsFontSizeToFitWidth>("setAdjustsFontSizeToFitWidth:");
    c.method<&UILabel::setMinimumScaleFactor>("setMinimumScaleFactor:");
    c.allocatable();
}

UILabel::UILabel()
    : m_font(UIFont::systemFontOfSize(17))
    , m_textColor(UIColor::blackColor())
{
    // Labels let touches through to the views behind them unless asked.
    setUserInteractionEnabled(false);
}

UILabel::UILabel(CGRect frame)
    : UILabel()
{
    setFrame(frame);
}

void UILabel::setText(const std::string& text)
{
    m_text = make<NSAttributedString>(text);
    m_isAttributed = false;
}

void UILabel::setAttributedText(const NSAttributedString* text)
{
    if (!text) {
        setText({});
        return;
    }
    m_text = text->mutableCopy();
    m_isAttributed = true;
}

RefPtr<NSAttributedString> UILabel::attributedText() const
{
    auto filled = make<NSMutableAttributedString>();
    for (auto& run : m_text->runs()) {
        NSTextAttributes attributes = run.attributes;
        if (!attributes.font)
            attributes.font = m_font;
        if (!attributes.foregroundColor)
            attributes.foregroundColor = m_textColor;
        filled->appendString(run.text, attributes);
    }
    return filled;
}

void UILabel::applyToWholeText(const NSTextAttributes& attributes)
{
    if (!m_isAttributed)
        return;
    auto text = m_text->mutableCopy();
    text->addAttributes(attributes, NSMakeRange(0, text->length()));
    m_text = text;
}

void UILabel::setFont(RefPtr<UIFont> font)
{
    m_font = font ? std::move(font) : UIFont::systemFontOfSize(17);
    applyToWholeText({ .font = m_font });
}

void UILabel::setTextColor(RefPtr<UIColor> color)
{
    m_textColor = color ? std::move(color) : UIColor::blackColor();
    applyToWholeText({ .foregroundColor = m_textColor });
}

void UILabel::setTextAlignment(NSTextAlignment alignment) { m_alignment = alignment; }

TextStyle UILabel::textStyle(double width, double height, double fontScale) const
{
    TextStyle style;
    style.defaultFont = m_font;
    style.defaultColor = m_textColor;
    style.width = width;
    style.height = height;
    style.maxLines = m_numberOfLines;
    style.lineBreakMode = m_lineBreakMode;
    style.alignment = m_alignment;
    style.fontScale = fontScale;
    return style;
}

double UILabel::fontScaleForBounds() const
{
    if (!m_adjustsFontSizeToFitWidth || m_text->string().empty())
        return 1;
    CGSize size = bounds().size;
    return TextLayout::fittingScale(*m_text, textStyle(size.width, size.height, 1), m_minimumScaleFactor);
}

CGSize UILabel::sizeThatFits(CGSize size) const
{
    double width = size.width > 0 && m_numberOfLines != 1 ? size.width : -1;
    CGSize fitted = TextLayout::measure(*m_text, textStyle(width, -1, 1)).size;
    if (size.width > 0)
        fitted.width = std::min(fitted.width, size.width);
    return { std::ceil(fitted.width), std::ceil(fitted.height) };
}

void UILabel::drawContent(RenderContext& context) const
{
    CGSize size = bounds().size;
    if (m_text->string().empty() || size.width <= 0)
        return;
    TextLayout layout(*m_text, textStyle(size.width, size.height, fontScaleForBounds()), context.cr);
    layout.draw(context.cr, { 0, (size.height - layout.size().height) / 2 });
}

static const char* alignmentName(NSTextAlignment alignment)
{
    switch (alignment) {
    case NSTextAlignmentLeft:
        return "left";
    case NSTextAlignmentCenter:
        return "center";
    case NSTextAlignmentRight:
        return "right";
    case NSTextAlignmentJustified:
        return "justified";
    case NSTextAlignmentNatural:
        break;
    }
    return "natural";
}

static std::string withoutAttachmentCharacters(const std::string& text)
{
    std::string result;
    for (size_t i = 0; i < text.size();) {
        if (text.compare(i, 3, NSAttributedString::attachmentCharacter) == 0) {
            i += 3;
            continue;
        }
        result += text[i++];
    }
    return result;
}

static nlohmann::json fontJSON(const UIFont* font) { return font ? nlohmann::json { font->fontName(), font->pointSize() } : nlohmann::json { "", 0 }; }

void UILabel::dumpProperties(nlohmann::json& node) const
{
    UIView::dumpProperties(node);
    node["text"] = withoutAttachmentCharacters(m_text->string());
    node["textColor"] = UIColorHexString(m_textColor.get());
    node["font"] = fontJSON(m_font.get());
    node["lines"] = m_numberOfLines;
    node["alignment"] = alignmentName(m_alignment);
    node["shrinks"] = m_adjustsFontSizeToFitWidth;
    if (m_adjustsFontSizeToFitWidth)
        node["fontScale"] = std::round(fontScaleForBounds() * 1000) / 1000;
    if (!m_isAttributed)
        return;
    // Each inline image is a run of its own, between the text around it.
    auto runs = nlohmann::json::array();
    RefPtr<NSAttributedString> text = attributedText();
    for (auto& run : text->runs()) {
        const NSTextAttributes& a = run.attributes;
        UIImage* image = a.attachment ? a.attachment->image() : nullptr;
        auto addText = [&](const std::string& text) {
            if (!text.empty())
                runs.push_back({ { "text", text }, { "font", fontJSON(a.font.get()) }, { "color", UIColorHexString(a.foregroundColor.get()) } });
        };
        if (!image) {
            addText(run.text);
            continue;
        }
        CGRect bounds = a.attachment->effectiveBounds();
        size_t start = 0;
        for (size_t at; (at = run.text.find(NSAttributedString::attachmentCharacter, start)) != std::string::npos; start = at + 3) {
            addText(run.text.substr(start, at - start));
            runs.push_back({ { "image", image->name() }, { "size", { bounds.size.width, bounds.size.height } }, { "color", UIColorHexString(image->tintColor()) } });
        }
        addText(run.text.substr(start));
    }
    node["runs"] = runs;
}
