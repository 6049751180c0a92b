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

// One pass of a box blur of half-width `radius` along rows (or columns) of
// premultiplied 8-bit pixels, with the edge pixels repeated beyond the edge.
static void boxBlurPass(const uint8_t* source, uint8_t* target, int width, int height, int stride, int radius, bool horizontal)
{
    int lines = horizontal ? height : width;
    int length = horizontal ? width : height;
    int step = horizontal ? 4 : stride;
    int lineStep = horizontal ? stride : 4;
    uint32_t divisor = static_cast<uint32_t>(2 * radius + 1);
    for (int line = 0; line < lines; ++line) {
        const uint8_t* in = source + static_cast<size_t>(line) * lineStep;
        uint8_t* out = target + static_cast<size_t>(line) * lineStep;
        auto at = [&](int i) { return in + static_cast<size_t>(std::clamp(i, 0, length - 1)) * step; };
        uint32_t sum[4] = { 0, 0, 0, 0 };
        for (int i = -radius; i <= radius; ++i) {
            for (int c = 0; c < 4; ++c)
                sum[c] += at(i)[c];
        }
        for (int i = 0; i < length; ++i) {
            uint8_t* pixel = out + static_cast<size_t>(i) * step;
            for (int c = 0; c < 4; ++c)
                pixel[c] = static_cast<uint8_t>((sum[c] + divisor / 2) / divisor);
            const uint8_t* entering = at(i + radius + 1);
            const uint8_t* leaving = at(i - radius);
            for (int c = 0; c < 4; ++c)
                sum[c] += entering[c] - leaving[c];
        }
    }
}

// Blurs, saturates and tints an ARGB32 surface in place.
static void applyBlur(cairo_surface_t* surface, const UIBlurEffect& effect, double scale)
{
    int width = cairo_image_surface_get_width(surface);
    int height = cairo_image_surface_get_height(surface);
    int stride = cairo_image_surface_get_stride(surface);
    uint8_t* data = cairo_image_surface_get_data(surface);
    // Three box passes of half-width r come close to a Gaussian whose
    // standard deviation is about r; the style's radius spans two of them.
    int radius = std::max(1, int(std::lround(effect.blurRadius() * scale / 2)));
    std::vector<uint8_t> scratch(static_cast<size_t>(stride) * height);
    for (int pass = 0; pass < 3; ++pass) {
        boxBlurPass(data, scratch.data(), width, height, stride, radius, true);
        boxBlurPass(scratch.data(), data, width, height, stride, radius, false);
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
            uint32_t result = uint32_t(std::lround(a * (1 - tintAlpha) + 255 * tintAlpha)) << 24;
            for (int c = 0; c < 3; ++c) {
                double saturated = std::clamp(luma + (rgb[c] - luma) * saturation, 0.0, a);
                result |= uint32_t(std::lround(saturated * (1 - tintAlpha) + tint * tintAlpha)) << (16 - 8 * c);
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
    int padding = 3 * std::max(1, int(std::lround(m_effect->blurRadius() * context.scale / 2)));
    RenderContext::PixelRect area = context.devicePixels(local, padding);
    if (area.width <= 0 || area.height <= 0)
        return;
    cairo_surface_t* backdrop = context.createBackdrop(area);
    applyBlur(backdrop, *m_effect, context.scale);

    cairo_save(cr);
    addRoundedRectangle(cr, local, layer().cornerRadius());
    cairo_clip(cr);
    cairo_identity_matrix(cr);
    cairo_set_source_surface(cr, backdrop, area.x, area.y);
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
