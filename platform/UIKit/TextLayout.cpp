#include "TextLayout.h"

#include "TextEngine.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <unordered_map>

static guint16 channel(double component) { return static_cast<guint16>(std::lround(std::clamp(component, 0.0, 1.0) * 65535.0)); }

static void insertAttribute(PangoAttrList* list, PangoAttribute* attribute, size_t start, size_t end)
{
    attribute->start_index = static_cast<guint>(start);
    attribute->end_index = static_cast<guint>(end);
    pango_attr_list_insert(list, attribute);
}

// Points in Pango units, kept to sizes a screen can show (an absurd value
// must not overflow).
static int pangoUnits(double points)
{
    if (!std::isfinite(points))
        return 0;
    return int(std::lround(std::clamp(points, -1e5, 1e5) * PANGO_SCALE));
}

static gpointer retainImage(gconstpointer image)
{
    static_cast<const UIImage*>(image)->ref();
    return const_cast<gpointer>(image);
}

static void releaseImage(gpointer image) { static_cast<UIImage*>(image)->deref(); }

static bool isTruncating(NSLineBreakMode mode)
{
    return mode == NSLineBreakByTruncatingHead || mode == NSLineBreakByTruncatingTail || mode == NSLineBreakByTruncatingMiddle;
}

// The byte offset of the first paragraph break (LF, CR, U+2028, U+2029).
static size_t firstParagraphBreak(const std::string& text)
{
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' || text[i] == '\r')
            return i;
        if (text.compare(i, 3, "\xE2\x80\xA8") == 0 || text.compare(i, 3, "\xE2\x80\xA9") == 0)
            return i;
    }
    return text.size();
}

TextLayout::TextLayout(const NSAttributedString& text, const TextStyle& style)
    : m_style(style)
{
    build(text, TextEngine::shared().measuringContext());
}

TextLayout::TextLayout(const NSAttributedString& text, const TextStyle& style, cairo_t* cr)
    : m_style(style)
{
    build(text, TextEngine::shared().drawingContext(cr));
}

TextLayout::~TextLayout()
{
    if (m_layout)
        g_object_unref(m_layout);
}

void TextLayout::build(const NSAttributedString& text, PangoContext* context)
{
    TextEngine& engine = TextEngine::shared();
    RefPtr<UIFont> defaultFont = m_style.defaultFont ? m_style.defaultFont : UIFont::fontWithName("Helvetica", 12);
    RefPtr<UIColor> defaultColor = m_style.defaultColor ? m_style.defaultColor : UIColor::blackColor();
    bool oneLine = m_style.maxLines == 1;
    bool truncating = isTruncating(m_style.lineBreakMode) && m_style.width >= 0;

    // Pango takes valid UTF-8 only: malformed bytes become U+FFFD, run by
    // run, so that the runs' offsets stay right.
    std::vector<std::string> texts;
    std::string string;
    for (auto& run : text.runs()) {
        gchar* valid = g_utf8_make_valid(run.text.data(), static_cast<gssize>(run.text.size()));
        texts.emplace_back(valid);
        g_free(valid);
        string += texts.back();
    }
    // A one-line box that does not truncate shows the first paragraph only.
    size_t cut = oneLine && !truncating ? firstParagraphBreak(string) : string.size();
    string.resize(cut);
    m_empty = string.empty();

    m_layout = pango_layout_new(context);
    PangoFontDescription* base = engine.createDescription(*defaultFont, m_style.fontScale);
    pango_layout_set_font_description(m_layout, base);
    pango_font_description_free(base);

    PangoAttrList* attributes = pango_attr_list_new();
    size_t start = 0;
    for (size_t r = 0; r < texts.size(); ++r) {
        size_t end = std::min(start + texts[r].size(), cut);
        if (start >= end)
            break;
        const NSTextAttributes& a = text.runs()[r].attributes;
        PangoFontDescription* description = engine.createDescription(a.font ? *a.font : *defaultFont, m_style.fontScale);
        insertAttribute(attributes, pango_attr_font_desc_new(description), start, end);
        pango_font_description_free(description);
        const UIColor& color = a.foregroundColor ? *a.foregroundColor : *defaultColor;
        insertAttribute(attributes, pango_attr_foreground_new(channel(color.red()), channel(color.green()), channel(color.blue())), start, end);
        if (color.alpha() < 1)
            insertAttribute(attributes, pango_attr_foreground_alpha_new(std::max<guint16>(1, channel(color.alpha()))), start, end);
        if (a.attachment && a.attachment->image()) {
            CGRect bounds = a.attachment->effectiveBounds();
            // Pango's rectangles grow downwards from the baseline.
            PangoRectangle rect { pangoUnits(bounds.origin.x), pangoUnits(-(bounds.origin.y + bounds.size.height)), pangoUnits(bounds.size.width),
                pangoUnits(bounds.size.height) };
            for (size_t i = start; i + 3 <= end; ++i) {
                if (string.compare(i, 3, NSAttributedString::attachmentCharacter) != 0)
                    continue;
                // The attribute releases its data when it goes; copies retain it.
                gpointer image = retainImage(a.attachment->image());
                insertAttribute(attributes, pango_attr_shape_new_with_data(&rect, &rect, image, retainImage, releaseImage), i, i + 3);
            }
        }
        start = end;
    }
    // UIKit breaks words that do not fit without adding hyphens.
    insertAttribute(attributes, pango_attr_insert_hyphens_new(FALSE), 0, string.size());
    pango_layout_set_text(m_layout, string.data(), static_cast<int>(string.size()));
    pango_layout_set_attributes(m_layout, attributes);
    pango_attr_list_unref(attributes);
    applyLineRules();
}

void TextLayout::applyLineRules()
{
    bool truncating = isTruncating(m_style.lineBreakMode) && m_style.width >= 0;
    PangoEllipsizeMode ellipsis = m_style.lineBreakMode == NSLineBreakByTruncatingHead ? PANGO_ELLIPSIZE_START
        : m_style.lineBreakMode == NSLineBreakByTruncatingMiddle                      ? PANGO_ELLIPSIZE_MIDDLE
                                                                                      : PANGO_ELLIPSIZE_END;
    if (m_style.width >= 0 && (m_style.maxLines != 1 || truncating)) {
        pango_layout_set_width(m_layout, std::max(0, pangoUnits(m_style.width)));
        pango_layout_set_wrap(m_layout, m_style.lineBreakMode == NSLineBreakByCharWrapping ? PANGO_WRAP_CHAR : PANGO_WRAP_WORD_CHAR);
        switch (m_style.alignment) {
        case NSTextAlignmentCenter:
            pango_layout_set_alignment(m_layout, PANGO_ALIGN_CENTER);
            break;
        case NSTextAlignmentRight:
            pango_layout_set_alignment(m_layout, PANGO_ALIGN_RIGHT);
            break;
        case NSTextAlignmentJustified:
            pango_layout_set_justify(m_layout, TRUE);
            break;
        default:
            break;
        }
    }

    if (m_style.maxLines == 1 && truncating) {
        // A height of zero keeps exactly one line for the whole layout.
        pango_layout_set_ellipsize(m_layout, ellipsis);
        pango_layout_set_height(m_layout, 0);
    } else if (m_style.maxLines != 1 && m_style.width >= 0) {
        // Keep the lines that the line limit and the box's height allow (at
        // least one), and cut or ellipsize the rest.
        int allowed = m_style.maxLines > 0 ? m_style.maxLines : INT32_MAX;
        int fitting = 0;
        std::vector<int> bottoms;
        PangoLayoutIter* iter = pango_layout_get_iter(m_layout);
        do {
            int top = 0;
            int bottom = 0;
            pango_layout_iter_get_line_yrange(iter, &top, &bottom);
            bottoms.push_back(bottom);
            if (m_style.height < 0 || bottom <= pangoUnits(m_style.height + 0.01))
                ++fitting;
        } while (pango_layout_iter_next_line(iter));
        pango_layout_iter_free(iter);
        allowed = std::min(allowed, std::max(1, fitting));
        if (static_cast<int>(bottoms.size()) > allowed) {
            m_truncated = true;
            int limit = bottoms[static_cast<size_t>(allowed - 1)];
            if (truncating) {
                pango_layout_set_ellipsize(m_layout, ellipsis);
                pango_layout_set_height(m_layout, limit + PANGO_SCALE / 2);
            } else {
                m_clipHeight = double(limit) / PANGO_SCALE;
            }
        }
    }

    if (m_empty) {
        m_size = {};
        m_lineCount = 0;
        return;
    }
    PangoRectangle logical;
    pango_layout_get_extents(m_layout, nullptr, &logical);
    m_size = { double(logical.width) / PANGO_SCALE, double(logical.height) / PANGO_SCALE };
    if (m_clipHeight >= 0)
        m_size.height = std::min(m_size.height, m_clipHeight);
    m_lineCount = pango_layout_get_line_count(m_layout);
    if (pango_layout_is_ellipsized(m_layout))
        m_truncated = true;
}

void TextLayout::draw(cairo_t* cr, CGPoint origin) const
{
    if (m_empty)
        return;
    double x = origin.x;
    // Without a width given to Pango, the alignment is ours to apply.
    if (m_style.width >= 0 && pango_layout_get_width(m_layout) < 0) {
        if (m_style.alignment == NSTextAlignmentCenter)
            x += (m_style.width - m_size.width) / 2;
        else if (m_style.alignment == NSTextAlignmentRight)
            x += m_style.width - m_size.width;
    }
    cairo_save(cr);
    if (m_clipHeight >= 0) {
        cairo_rectangle(cr, origin.x - 1e4, origin.y, 2e4, m_clipHeight);
        cairo_clip(cr);
    }
    cairo_move_to(cr, x, origin.y);
    pango_cairo_show_layout(cr, m_layout);
    cairo_restore(cr);
}

// A key that tells apart every input that can change a measurement (colours
// cannot).
static std::string measurementKey(const NSAttributedString& text, const TextStyle& style)
{
    std::string key;
    key.reserve(text.string().size() + 64);
    char number[160];
    auto appendFont = [&](const UIFont* font) {
        if (font) {
            std::snprintf(number, sizeof number, "%s/%.4f/%d", font->fontName().c_str(), font->pointSize(), font->weight());
            key += number;
        }
        key += '|';
    };
    appendFont(style.defaultFont.get());
    std::snprintf(number, sizeof number, "%.4f|%.4f|%d|%d|%d|%.6f|", style.width, style.height, style.maxLines, int(style.lineBreakMode), int(style.alignment), style.fontScale);
    key += number;
    for (auto& run : text.runs()) {
        key += std::to_string(run.text.size());
        key += ':';
        key += run.text;
        appendFont(run.attributes.font.get());
        if (run.attributes.attachment) {
            CGRect b = run.attributes.attachment->effectiveBounds();
            std::snprintf(number, sizeof number, "%.4f,%.4f,%.4f,%.4f|", b.origin.x, b.origin.y, b.size.width, b.size.height);
            key += number;
        }
    }
    return key;
}

TextLayout::Measurement TextLayout::measure(const NSAttributedString& text, const TextStyle& style)
{
    static auto* cache = new std::unordered_map<std::string, Measurement>();
    std::string key = measurementKey(text, style);
    if (auto it = cache->find(key); it != cache->end())
        return it->second;
    TextLayout layout(text, style);
    Measurement result { layout.size(), layout.lineCount(), layout.isTruncated() };
    if (cache->size() >= 4096)
        cache->clear();
    cache->emplace(std::move(key), result);
    return result;
}

double TextLayout::fittingScale(const NSAttributedString& text, const TextStyle& style, double minimumScale)
{
    static auto* cache = new std::unordered_map<std::string, double>();
    char bound[32];
    std::snprintf(bound, sizeof bound, "%.6f", minimumScale);
    std::string key = measurementKey(text, style) + bound;
    if (auto it = cache->find(key); it != cache->end())
        return it->second;

    auto fits = [&](double scale) {
        TextStyle trial = style;
        trial.fontScale = scale;
        trial.lineBreakMode = NSLineBreakByWordWrapping;
        trial.height = -1;
        if (style.maxLines == 1) {
            trial.width = -1;
            return measure(text, trial).size.width <= style.width + 1e-3;
        }
        Measurement m = measure(text, trial);
        return (style.maxLines == 0 || m.lineCount <= style.maxLines) && m.size.height <= style.height + 1e-3 && m.size.width <= style.width + 1e-3;
    };
    double low = std::clamp(minimumScale, 0.01, 1.0);
    double result = 1;
    if (!fits(1)) {
        if (!fits(low)) {
            result = low;
        } else {
            double high = 1;
            for (int i = 0; i < 12; ++i) {
                double middle = (low + high) / 2;
                (fits(middle) ? low : high) = middle;
            }
            result = low;
        }
    }
    if (cache->size() >= 1024)
        cache->clear();
    cache->emplace(std::move(key), result);
    return result;
}
