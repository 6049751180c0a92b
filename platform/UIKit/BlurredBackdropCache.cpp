#include "BlurredBackdropCache.h"

#include <cstring>

BlurredBackdropCache::~BlurredBackdropCache()
{
    if (m_input)
        cairo_surface_destroy(m_input);
    if (m_output)
        cairo_surface_destroy(m_output);
}

bool BlurredBackdropCache::matches(cairo_surface_t* backdrop, RenderContext::PixelRect area, int style) const
{
    if (!m_input || style != m_style || area.x != m_area.x || area.y != m_area.y || area.width != m_area.width || area.height != m_area.height)
        return false;
    int width = cairo_image_surface_get_width(backdrop);
    int height = cairo_image_surface_get_height(backdrop);
    if (width != cairo_image_surface_get_width(m_input) || height != cairo_image_surface_get_height(m_input))
        return false;
    cairo_surface_flush(backdrop);
    const unsigned char* fresh = cairo_image_surface_get_data(backdrop);
    const unsigned char* kept = cairo_image_surface_get_data(m_input);
    int freshStride = cairo_image_surface_get_stride(backdrop);
    int keptStride = cairo_image_surface_get_stride(m_input);
    size_t rowBytes = static_cast<size_t>(width) * 4;
    for (int y = 0; y < height; ++y) {
        if (std::memcmp(fresh + static_cast<size_t>(y) * freshStride, kept + static_cast<size_t>(y) * keptStride, rowBytes))
            return false;
    }
    return true;
}

cairo_surface_t* BlurredBackdropCache::copyOf(cairo_surface_t* surface)
{
    cairo_surface_flush(surface);
    cairo_surface_t* copy = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, cairo_image_surface_get_width(surface), cairo_image_surface_get_height(surface));
    int height = cairo_image_surface_get_height(surface);
    int stride = cairo_image_surface_get_stride(surface);
    if (cairo_surface_status(copy) == CAIRO_STATUS_SUCCESS && stride == cairo_image_surface_get_stride(copy))
        std::memcpy(cairo_image_surface_get_data(copy), cairo_image_surface_get_data(surface), static_cast<size_t>(stride) * height);
    cairo_surface_mark_dirty(copy);
    return copy;
}

cairo_surface_t* BlurredBackdropCache::blurred(cairo_surface_t* backdrop, RenderContext::PixelRect area, int style, const std::function<void(cairo_surface_t*)>& blur)
{
    if (matches(backdrop, area, style)) {
        cairo_surface_destroy(backdrop);
        return cairo_surface_reference(m_output);
    }
    if (m_input)
        cairo_surface_destroy(m_input);
    if (m_output)
        cairo_surface_destroy(m_output);
    m_input = copyOf(backdrop);
    blur(backdrop);
    ++m_blurCount;
    m_output = backdrop;
    m_area = area;
    m_style = style;
    return cairo_surface_reference(m_output);
}
