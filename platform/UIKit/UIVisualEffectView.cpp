#include "UIVisualEffectView.h"

#include "RenderContext.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <vector>

OBJC_IMPLEMENT_CLASS(UIVisualEffectView, UIView)
{
    c.method<&UIVisualEffectView::initWithEffect>("initWithEffect:");
    c.method<&UIVisualEffectView::contentView>("contentView");
    c.allocatable();
}

UIVisualEffectView::UIVisualEffectView()
    : m_contentView(UIView::create())
{
    m_contentView->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    addSubview(m_contentView.get());
}

UIVisualEffectView::UIVisualEffectView(RefPtr<UIBlurEffect> effect)
    : UIVisualEffectView()
{
    m_effect = std::move(effect);
}

StrongId UIVisualEffectView::initWithEffect(UIBlurEffect* effect)
{
    m_effect = effect;
    return StrongId(this);
}

static int blurPassRadius(const UIBlurEffect& effect) { return std::max(1, int(std::lround(effect.blurRadius() / 2))); }

// A sum of 2r + 1 bytes divided by their count, by multiplying with a
// fixed-point reciprocal (a division per channel would cost most of the blur).
struct BoxAverage {
    explicit BoxAverage(int radius)
        : multiplier(((uint64_t(1) << 32) + uint64_t(radius)) / uint64_t(2 * radius + 1))
    {
    }
    uint8_t operator()(uint32_t sum) const { return static_cast<uint8_t>((sum * multiplier + (uint64_t(1) << 31)) >> 32); }
    uint64_t multiplier;
};

// One pass of a box blur of half-width `radius` along the rows of
// premultiplied 8-bit pixels, with the edge pixels repeated beyond the edge.
static void blurRows(const uint8_t* source, uint8_t* target, int width, int height, int stride, int radius)
{
    BoxAverage average(radius);
    for (int y = 0; y < height; ++y) {
        const uint8_t* in = source + static_cast<size_t>(y) * stride;
        uint8_t* out = target + static_cast<size_t>(y) * stride;
        auto at = [&](int x) { return in + 4 * static_cast<size_t>(std::clamp(x, 0, width - 1)); };
        uint32_t sum[4] = { 0, 0, 0, 0 };
        for (int x = -radius; x <= radius; ++x) {
            for (int c = 0; c < 4; ++c)
                sum[c] += at(x)[c];
        }
        for (int x = 0; x < width; ++x) {
            for (int c = 0; c < 4; ++c)
                out[4 * x + c] = average(sum[c]);
            const uint8_t* entering = at(x + radius + 1);
            const uint8_t* leaving = at(x - radius);
            for (int c = 0; c < 4; ++c)
                sum[c] += entering[c] - leaving[c];
        }
    }
}

// The same along the columns, walking the rows in memory order with one
// running sum per column.
static void blurColumns(const uint8_t* source, uint8_t* target, int width, int height, int stride, int radius)
{
    BoxAverage average(radius);
    size_t channels = 4 * static_cast<size_t>(width);
    std::vector<uint32_t> sums(channels, 0);
    auto row = [&](int y) { return source + static_cast<size_t>(std::clamp(y, 0, height - 1)) * stride; };
    for (int y = -radius; y <= radius; ++y) {
        const uint8_t* in = row(y);
        for (size_t i = 0; i < channels; ++i)
            sums[i] += in[i];
    }
    for (int y = 0; y < height; ++y) {
        uint8_t* out = target + static_cast<size_t>(y) * stride;
        for (size_t i = 0; i < channels; ++i)
            out[i] = average(sums[i]);
        const uint8_t* entering = row(y + radius + 1);
        const uint8_t* leaving = row(y - radius);
        for (size_t i = 0; i < channels; ++i)
            sums[i] += entering[i] - leaving[i];
    }
}

// Blurs, saturates and tints, in place, an ARGB32 surface of one pixel per point.
static void applyBlur(cairo_surface_t* surface, const UIBlurEffect& effect)
{
    int width = cairo_image_surface_get_width(surface);
    int height = cairo_image_surface_get_height(surface);
    int stride = cairo_image_surface_get_stride(surface);
    uint8_t* data = cairo_image_surface_get_data(surface);
    // Three box passes of half-width r come close to a Gaussian whose
    // standard deviation is about r; the style's radius spans two of them.
    int radius = blurPassRadius(effect);
    std::vector<uint8_t> scratch(static_cast<size_t>(stride) * height);
    for (int pass = 0; pass < 3; ++pass) {
        blurRows(data, scratch.data(), width, height, stride, radius);
        blurColumns(scratch.data(), data, width, height, stride, radius);
    }

    double saturation = effect.saturation();
    double tint = effect.tintWhite() * 255;
    double tintAlpha = effect.tintAlpha();
    for (int y = 0; y < height; ++y) {
        auto* row = reinterpret_cast<uint32_t*>(data + static_cast<size_t>(y) * stride);
        for (int x = 0; x < width; ++x) {
            uint32_t argb = row[x];
            double a = argb >> 24;
            double rgb[3] = { double((argb >> 16) & 0xff), double((argb >> 8) & 0xff), double(argb & 0xff) };
            double luma = 0.2126 * rgb[0] + 0.7152 * rgb[1] + 0.0722 * rgb[2];
            // Every value is positive: adding a half and truncating rounds.
            uint32_t result = uint32_t(a * (1 - tintAlpha) + 255 * tintAlpha + 0.5) << 24;
            for (int c = 0; c < 3; ++c) {
                double saturated = std::clamp(luma + (rgb[c] - luma) * saturation, 0.0, a);
                result |= uint32_t(saturated * (1 - tintAlpha) + tint * tintAlpha + 0.5) << (16 - 8 * c);
            }
            row[x] = result;
        }
    }
    cairo_surface_mark_dirty(surface);
}

void UIVisualEffectView::drawContent(RenderContext& context) const
{
    if (!m_effect)
        return;
    cairo_t* cr = context.cr;
    CGRect local = { {}, bounds().size };
    // The blur runs at one pixel per point, as the phone blurs a reduced
    // copy of the backdrop: the picture is the same and the work a
    // fraction. Edges take the backdrop from around the view.
    double reduction = std::max(1.0, context.scale);
    int padding = int(std::ceil(3 * blurPassRadius(*m_effect) * reduction));
    RenderContext::PixelRect area = context.devicePixels(local, padding);
    if (area.width <= 0 || area.height <= 0)
        return;
    const UIBlurEffect& effect = *m_effect;
    cairo_surface_t* backdrop = m_blurredBackdrop.blurred(context.createBackdrop(area, reduction), area, effect.style(),
        [&effect](cairo_surface_t* surface) { applyBlur(surface, effect); });

    cairo_save(cr);
    addRoundedRectangle(cr, local, layer().cornerRadius());
    cairo_clip(cr);
    cairo_identity_matrix(cr);
    cairo_translate(cr, area.x, area.y);
    cairo_scale(cr, reduction, reduction);
    cairo_set_source_surface(cr, backdrop, 0, 0);
    cairo_pattern_set_extend(cairo_get_source(cr), CAIRO_EXTEND_PAD);
    cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_BILINEAR);
    cairo_paint(cr);
    cairo_restore(cr);
    cairo_surface_destroy(backdrop);
}

void UIVisualEffectView::dumpProperties(nlohmann::json& node) const
{
    UIView::dumpProperties(node);
    if (m_effect)
        node["effect"] = m_effect->styleName();
}
