#pragma once

#include "RenderContext.h"

#include <cairo.h>

#include <functional>

// The last backdrop a visual-effect view blurred, and what blurring it gave.
// Pictures taken one after another mostly show the same backdrop behind a
// blur (the wallpaper behind the panel or behind an overlay), and blurring
// is most of what drawing such a screen costs. When the backdrop's pixels,
// its place on the screen and the style are those of the last time, the
// blurred pixels of the last time are answered: exactly what blurring again
// would give, since the blur depends on nothing else.
class BlurredBackdropCache {
public:
    BlurredBackdropCache() = default;
    BlurredBackdropCache(const BlurredBackdropCache&) = delete;
    BlurredBackdropCache& operator=(const BlurredBackdropCache&) = delete;
    ~BlurredBackdropCache();

    // Answers `backdrop` blurred by `blur` (which works in place), reusing
    // the last result when nothing of the input changed. Takes over the
    // reference to `backdrop`; the caller destroys the answer.
    cairo_surface_t* blurred(cairo_surface_t* backdrop, RenderContext::PixelRect area, int style, const std::function<void(cairo_surface_t*)>& blur);

    // How many blurs were actually computed (to prove that repeats are reused).
    size_t blurCount() const { return m_blurCount; }

private:
    bool matches(cairo_surface_t* backdrop, RenderContext::PixelRect area, int style) const;
    static cairo_surface_t* copyOf(cairo_surface_t*);

    cairo_surface_t* m_input { nullptr };
    cairo_surface_t* m_output { nullptr };
    RenderContext::PixelRect m_area;
    int m_style { -1 };
    size_t m_blurCount { 0 };
};
