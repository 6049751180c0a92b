#include "ImageDrawingCache.h"

#include <cmath>
#include <cstdint>
#include <cstring>

ImageDrawingCache::~ImageDrawingCache()
{
    for (auto& drawing : m_drawings)
        cairo_surface_destroy(drawing.pixels);
}

static bool samePlace(const cairo_matrix_t& a, const cairo_matrix_t& b)
{
    return a.xx == b.xx && a.yx == b.yx && a.xy == b.xy && a.yy == b.yy && a.x0 == b.x0 && a.y0 == b.y0;
}

bool ImageDrawingCache::isOpaque(cairo_surface_t* image)
{
    if (!m_opaque) {
        cairo_surface_flush(image);
        int width = cairo_image_surface_get_width(image);
        int height = cairo_image_surface_get_height(image);
        int stride = cairo_image_surface_get_stride(image);
        const unsigned char* data = cairo_image_surface_get_data(image);
        bool opaque = cairo_image_surface_get_format(image) == CAIRO_FORMAT_ARGB32 && data;
        for (int y = 0; opaque && y < height; ++y) {
            auto* row = reinterpret_cast<const uint32_t*>(data + static_cast<size_t>(y) * stride);
            for (int x = 0; x < width; ++x) {
                if ((row[x] >> 24) != 0xff) {
                    opaque = false;
                    break;
                }
            }
        }
        m_opaque = opaque;
    }
    return *m_opaque;
}

std::optional<ImageDrawingCache::Place> ImageDrawingCache::placeOf(cairo_t* cr, cairo_surface_t* image, double alpha)
{
    cairo_surface_t* target = cairo_get_group_target(cr);
    if (alpha != 1 || cairo_get_operator(cr) != CAIRO_OPERATOR_OVER || cairo_surface_get_type(target) != CAIRO_SURFACE_TYPE_IMAGE
        || cairo_image_surface_get_format(target) != CAIRO_FORMAT_ARGB32 || !isOpaque(image))
        return std::nullopt;
    Place place;
    cairo_get_matrix(cr, &place.matrix);
    // The clip, in device pixels, must be one box of whole pixels.
    cairo_save(cr);
    cairo_identity_matrix(cr);
    cairo_rectangle_list_t* clip = cairo_copy_clip_rectangle_list(cr);
    cairo_restore(cr);
    bool box = clip->status == CAIRO_STATUS_SUCCESS && clip->num_rectangles == 1;
    if (box) {
        const cairo_rectangle_t& r = clip->rectangles[0];
        box = r.x == std::floor(r.x) && r.y == std::floor(r.y) && r.width == std::floor(r.width) && r.height == std::floor(r.height)
            && r.width >= 1 && r.height >= 1 && std::abs(r.x) < 1e6 && std::abs(r.y) < 1e6 && r.width < 1e5 && r.height < 1e5;
        if (box)
            place.box = { int(r.x), int(r.y), int(r.width), int(r.height) };
    }
    cairo_rectangle_list_destroy(clip);
    if (!box)
        return std::nullopt;
    return place;
}

// The target's pixel rows for a device box, or null when the box is not
// all inside the target.
static unsigned char* targetPixels(cairo_t* cr, int x, int y, int width, int height, int& stride)
{
    cairo_surface_t* target = cairo_get_group_target(cr);
    double offsetX = 0, offsetY = 0;
    cairo_surface_get_device_offset(target, &offsetX, &offsetY);
    int left = x + int(offsetX);
    int top = y + int(offsetY);
    if (offsetX != std::floor(offsetX) || offsetY != std::floor(offsetY) || left < 0 || top < 0
        || left + width > cairo_image_surface_get_width(target) || top + height > cairo_image_surface_get_height(target))
        return nullptr;
    cairo_surface_flush(target);
    stride = cairo_image_surface_get_stride(target);
    unsigned char* data = cairo_image_surface_get_data(target);
    return data ? data + static_cast<size_t>(top) * stride + static_cast<size_t>(left) * 4 : nullptr;
}

bool ImageDrawingCache::copyKept(cairo_t* cr, const Place& place)
{
    for (size_t index = 0; index < m_drawings.size(); ++index) {
        Kept& kept = m_drawings[index];
        const Box& box = kept.place.box;
        if (!samePlace(kept.place.matrix, place.matrix) || box.x != place.box.x || box.y != place.box.y || box.width != place.box.width
            || box.height != place.box.height)
            continue;
        int stride = 0;
        unsigned char* target = targetPixels(cr, box.x, box.y, box.width, box.height, stride);
        if (!target)
            return false;
        const unsigned char* source = cairo_image_surface_get_data(kept.pixels);
        int sourceStride = cairo_image_surface_get_stride(kept.pixels);
        for (int row = 0; row < box.height; ++row)
            std::memcpy(target + static_cast<size_t>(row) * stride, source + static_cast<size_t>(row) * sourceStride, static_cast<size_t>(box.width) * 4);
        cairo_surface_t* surface = cairo_get_group_target(cr);
        cairo_surface_mark_dirty(surface);
        if (index + 1 != m_drawings.size()) {
            Kept used = kept;
            m_drawings.erase(m_drawings.begin() + static_cast<long>(index));
            m_drawings.push_back(used);
        }
        return true;
    }
    return false;
}

void ImageDrawingCache::keep(cairo_t* cr, const Place& place)
{
    const Box& box = place.box;
    int stride = 0;
    const unsigned char* target = targetPixels(cr, box.x, box.y, box.width, box.height, stride);
    if (!target)
        return;
    cairo_surface_t* pixels = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, box.width, box.height);
    if (cairo_surface_status(pixels) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(pixels);
        return;
    }
    unsigned char* copy = cairo_image_surface_get_data(pixels);
    int copyStride = cairo_image_surface_get_stride(pixels);
    for (int row = 0; row < box.height; ++row)
        std::memcpy(copy + static_cast<size_t>(row) * copyStride, target + static_cast<size_t>(row) * stride, static_cast<size_t>(box.width) * 4);
    cairo_surface_mark_dirty(pixels);
    if (m_drawings.size() >= placesKept) {
        cairo_surface_destroy(m_drawings.front().pixels);
        m_drawings.erase(m_drawings.begin());
    }
    m_drawings.push_back({ place, pixels });
    ++m_kept;
}
