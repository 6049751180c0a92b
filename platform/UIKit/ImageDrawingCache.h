#pragma once

#include <cairo.h>

#include <cstddef>
#include <optional>
#include <vector>

// The pixels one big opaque image left on the screen where it was last
// drawn. Drawing a full-screen wallpaper stretched (resampled with a good
// filter) is most of what a picture of the lock screen costs, and it is
// drawn the same way picture after picture. An opaque image painted fully
// over a box of whole pixels leaves exactly its resampled values there,
// whatever was under it; those depend only on the image, its placement and
// the box. So the first drawing keeps what it left, and a drawing with the
// same placement and box copies it back: the pictures do not change by a
// single bit. Anything else (a translucent image or drawing, a clip that is
// not one box of whole pixels, another operator) is drawn as usual.
class ImageDrawingCache {
public:
    ImageDrawingCache() = default;
    ImageDrawingCache(const ImageDrawingCache&) = delete;
    ImageDrawingCache& operator=(const ImageDrawingCache&) = delete;
    ~ImageDrawingCache();

    // Images at least this many pixels big keep what they drew; smaller
    // ones are cheap to draw again.
    static constexpr long smallestPixelCount = 256 * 256;

    // Draws `image` through `cr`, whose current matrix maps the image's
    // pixels to the place to draw, clipped to the image: `draw` does it the
    // usual way, and is called unless a kept drawing can be copied instead.
    template<typename Draw>
    void drawImage(cairo_t* cr, cairo_surface_t* image, double alpha, Draw draw)
    {
        auto place = placeOf(cr, image, alpha);
        if (place && copyKept(cr, *place))
            return;
        draw();
        if (place)
            keep(cr, *place);
    }

    size_t drawingsKept() const { return m_kept; }

private:
    struct Box {
        int x { 0 }, y { 0 }, width { 0 }, height { 0 };
    };
    struct Place {
        cairo_matrix_t matrix; // image pixels to device pixels
        Box box; // the device pixels painted
    };
    struct Kept {
        Place place;
        cairo_surface_t* pixels { nullptr };
    };
    // The place of a drawing whose result can be kept, or nothing.
    std::optional<Place> placeOf(cairo_t*, cairo_surface_t* image, double alpha);
    bool copyKept(cairo_t*, const Place&);
    void keep(cairo_t*, const Place&);
    bool isOpaque(cairo_surface_t* image);

    // A wallpaper is drawn by the wallpaper window and again behind a blur:
    // two places; older ones make way for newer ones.
    static constexpr size_t placesKept = 2;
    std::vector<Kept> m_drawings; // most recently used last
    std::optional<bool> m_opaque;
    size_t m_kept { 0 };
};
