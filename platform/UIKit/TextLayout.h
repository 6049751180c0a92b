#pragma once

// Private to UIKit: sets attributed text in a box with Pango, for measuring
// and drawing labels and strings.

#include "NSAttributedString.h"
#include "NSParagraphStyle.h"

#include <pango/pangocairo.h>

// How a block of text is set: the defaults for runs without a font or a
// colour, the box, and the rules for lines that do not fit.
struct TextStyle {
    RefPtr<UIFont> defaultFont; // null: Helvetica 12
    RefPtr<UIColor> defaultColor; // null: black
    double width { -1 }; // wrap or truncate at this width; negative: unbounded
    double height { -1 }; // lines below this height are left out; negative: unbounded
    int maxLines { 0 }; // 0: any number
    NSLineBreakMode lineBreakMode { NSLineBreakByWordWrapping };
    NSTextAlignment alignment { NSTextAlignmentNatural };
    double fontScale { 1 }; // every font's size is multiplied by this (shrink to fit)
};

class TextLayout {
public:
    // Lays the text out for measuring.
    TextLayout(const NSAttributedString&, const TextStyle&);
    // Lays the text out for drawing into `cr`, with its current transform.
    TextLayout(const NSAttributedString&, const TextStyle&, cairo_t*);
    ~TextLayout();
    TextLayout(const TextLayout&) = delete;
    TextLayout& operator=(const TextLayout&) = delete;

    // The size of the text as set (the widest line, the visible lines).
    CGSize size() const { return m_size; }
    int lineCount() const { return m_lineCount; }
    // Lines were left out or ellipsized.
    bool isTruncated() const { return m_truncated; }

    // Draws the text with the top-left corner of its box at `origin`.
    void draw(cairo_t*, CGPoint origin) const;

    struct Measurement {
        CGSize size;
        int lineCount { 0 };
        bool truncated { false };
    };
    // The same as laying out and asking, remembered for texts and boxes seen
    // before (layout costs tens of microseconds; labels ask every second).
    static Measurement measure(const NSAttributedString&, const TextStyle&);

    // The largest font scale, from `minimumScale` to 1, at which the text
    // fits the style's box: on one line within the width when `maxLines` is
    // 1, otherwise wrapped at the width within the height and the line
    // limit. Answers `minimumScale` when even that does not fit. Remembered
    // like measurements.
    static double fittingScale(const NSAttributedString&, const TextStyle&, double minimumScale);

private:
    void build(const NSAttributedString&, PangoContext*);
    void applyLineRules();

    TextStyle m_style;
    PangoLayout* m_layout { nullptr };
    CGSize m_size {};
    int m_lineCount { 0 };
    bool m_truncated { false };
    bool m_empty { true };
    // The text is cut below this height (points) when lines are left out
    // without an ellipsis; negative when nothing is cut.
    double m_clipHeight { -1 };
};
