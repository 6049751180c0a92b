#pragma once

#include "NSAttributedString.h"
#include "NSParagraphStyle.h"
#include "UIView.h"

struct TextStyle;

// A view that shows text, as UIKit's UILabel: plain text in one font and
// colour, or attributed text. The text is centred vertically in the bounds;
// lines beyond `numberOfLines` (0: any number) or below the bounds are left
// out, the last one shown truncated by `lineBreakMode`. With
// `adjustsFontSizeToFitWidth` every font shrinks by one factor, down to
// `minimumScaleFactor`, until the text fits the bounds.
//
// As in UIKit, setting the font, the text colour or the alignment applies it
// to the whole of an attributed text, and runs without a font or colour of
// their own take the label's.
class UILabel : public UIView {
    OBJC_CLASS(UILabel)
public:
    UILabel();
    explicit UILabel(CGRect frame);
    static RefPtr<UILabel> create(CGRect frame = CGRectZero) { return make<UILabel>(frame); }

    std::string text() const { return m_text->string(); }
    void setText(const std::string&);
    // The text with the label's font and colour filled in where runs have none.
    RefPtr<NSAttributedString> attributedText() const;
    void setAttributedText(const NSAttributedString*);
    bool hasAttributedText() const { return m_isAttributed; }

    UIFont* font() const { return m_font.get(); }
    void setFont(RefPtr<UIFont>);
    UIColor* textColor() const { return m_textColor.get(); }
    void setTextColor(RefPtr<UIColor>);
    NSTextAlignment textAlignment() const { return m_alignment; }
    void setTextAlignment(NSTextAlignment);
    int numberOfLines() const { return m_numberOfLines; }
    void setNumberOfLines(int lines) { m_numberOfLines = std::max(0, lines); }
    NSLineBreakMode lineBreakMode() const { return m_lineBreakMode; }
    void setLineBreakMode(NSLineBreakMode mode) { m_lineBreakMode = mode; }
    bool adjustsFontSizeToFitWidth() const { return m_adjustsFontSizeToFitWidth; }
    void setAdjustsFontSizeToFitWidth(bool adjusts) { m_adjustsFontSizeToFitWidth = adjusts; }
    double minimumScaleFactor() const { return m_minimumScaleFactor; }
    void setMinimumScaleFactor(double factor) { m_minimumScaleFactor = std::clamp(factor, 0.0, 1.0); }

    // The factor the fonts are drawn at in the current bounds: 1 unless the
    // label shrinks its text to fit.
    double fontScaleForBounds() const;
    // The size of the text in `size` (its width wraps; no height limit
    // unless `numberOfLines` sets one), rounded up to whole points.
    CGSize sizeThatFits(CGSize) const override;

    void drawContent(RenderContext&) const override;
    void dumpProperties(nlohmann::json&) const override;

private:
    TextStyle textStyle(double width, double height, double fontScale) const;
    void applyToWholeText(const NSTextAttributes&);

    RefPtr<NSAttributedString> m_text { make<NSAttributedString>() };
    bool m_isAttributed { false };
    RefPtr<UIFont> m_font;
    RefPtr<UIColor> m_textColor;
    NSTextAlignment m_alignment { NSTextAlignmentNatural };
    int m_numberOfLines { 1 };
    NSLineBreakMode m_lineBreakMode { NSLineBreakByTruncatingTail };
    bool m_adjustsFontSizeToFitWidth { false };
    double m_minimumScaleFactor { 0 };
};
