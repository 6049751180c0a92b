#pragma once

#include "ImageDrawingCache.h"
#include "UIColor.h"

#include <CoreGraphics/CGGeometry.h>
#include <objc/objc.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

typedef struct _cairo cairo_t;
typedef struct _cairo_surface cairo_surface_t;

enum UIImageRenderingMode : int {
    UIImageRenderingModeAutomatic = 0,
    UIImageRenderingModeAlwaysOriginal = 1,
    UIImageRenderingModeAlwaysTemplate = 2,
};

// An immutable bitmap with a size in points and a scale (pixels per point),
// as UIKit's UIImage. Pixels are premultiplied ARGB in a cairo image surface.
//
// An image loaded from a file is decoded when its pixels are first needed
// (drawn or sampled), as UIKit does: loading reads the file and only the
// PNG's header for the size. Scaled, tinted and re-moded copies are made
// the same way, when first drawn, so that the many icons made at start-up
// and never shown cost no decoding. The pixels are those the same steps
// made at once would have given.
//
// Every image carries a `name` for dumps: the resource name for an image
// loaded from a bundle ("Battery/Battery60"), kept by scaling and tinting, or
// a description given by whoever made it ("artwork", "wallpaper").
class UIImage final : public NSObject {
    OBJC_CLASS(UIImage)
public:
    // Takes over the reference to an ARGB32 image surface.
    UIImage(cairo_surface_t*, double scale, std::string name);
    ~UIImage() override;

    // Loads a PNG file (its bytes, decoded when first needed); null when it
    // is missing or does not start as a PNG. A file whose data turns out
    // damaged when decoded draws as transparent pixels of the header's size. A "@2x" (or
    // else "@3x") variant next to the file is preferred and sets the scale,
    // as UIKit does on a Retina screen; a file without such a suffix has a
    // scale of 1, one point per pixel.
    //
    // The file is looked at on every call, but a file already decoded and
    // unchanged since (same size and modification time) answers the image
    // decoded then: the same object, which callers must therefore not rename.
    static RefPtr<UIImage> imageWithContentsOfFile(const std::string& path);
    // How many PNG files were decoded so far (to prove that reloads read none).
    static size_t decodedFileCount();
    // An image drawn by code: `draw` paints into a context whose units are
    // points, with (0, 0) at the top left.
    static RefPtr<UIImage> imageWithSize(CGSize, double scale, const std::function<void(cairo_t*)>& draw, std::string name);
    // One colour all over (for backgrounds and tests).
    static RefPtr<UIImage> imageWithColor(const UIColor&, CGSize, double scale = 1, std::string name = "color");

    CGSize size() const { return m_size; }
    double scale() const { return m_scale; }
    int pixelWidth() const { return m_pixelWidth; }
    int pixelHeight() const { return m_pixelHeight; }
    const std::string& name() const { return m_name; }
    void setName(std::string name) { m_name = std::move(name); }
    // The colour the image was tinted with, or null.
    UIColor* tintColor() const { return m_tintColor.get(); }
    UIImageRenderingMode renderingMode() const { return m_renderingMode; }
    RefPtr<UIImage> imageWithRenderingMode(UIImageRenderingMode) const;

    // A copy stretched to `size` points (null for an empty or invalid size).
    // It keeps enough pixels for a sharp picture up to a scale of 3.
    RefPtr<UIImage> scaledToSize(CGSize) const;
    // A copy whose every pixel has `color`, keeping the pixel's coverage.
    RefPtr<UIImage> tintedWithColor(const UIColor*) const;
    // The average colour of the image's opaque pixels (those at least half
    // covered); clear for an image without any. Computed on the first call
    // only: the pixels never change, and timers ask for it twice a second.
    RefPtr<UIColor> mergedColor() const;

    // Draws the image stretched into `rect` (in the context's units). A big
    // image keeps what it was resampled to for the last places it was drawn
    // at (ImageDrawingCache), so that drawing it there again only copies.
    void drawInRect(cairo_t*, CGRect rect, double alpha = 1) const;
    // How many such drawings were kept (to prove that repeats copy them).
    size_t drawingsKept() const { return m_drawingCache ? m_drawingCache->drawingsKept() : 0; }

    struct Pixel {
        uint8_t red { 0 }, green { 0 }, blue { 0 }, alpha { 0 };
        friend bool operator==(const Pixel&, const Pixel&) = default;
    };
    // One pixel, not premultiplied; transparent outside the image.
    Pixel pixelAt(int x, int y) const;

    // The pixels, decoded on the first call for an image loaded from a file.
    cairo_surface_t* cairoSurface() const;
    // Writes the image as a PNG file; answers the error, if any.
    [[nodiscard]] std::optional<std::string> writePNG(const std::string& path) const;

    std::string description() const override { return m_name; }

private:
    using PixelMaker = std::function<cairo_surface_t*()>;
    // An image whose pixels (an ARGB32 surface of the given size) `make`
    // gives when they are first needed.
    UIImage(int pixelWidth, int pixelHeight, double scale, std::string name, PixelMaker make);
    // A copy whose pixels `makePixels` gives, with this image's name, tint
    // and mode: made when first drawn if this image is a file not decoded
    // yet, at once otherwise. So a copy waits on a file's bytes and never on
    // a chain of copies of copies (a label tinted again every second while
    // the display is off would keep every earlier tint alive).
    RefPtr<UIImage> derived(int pixelWidth, int pixelHeight, double scale, PixelMaker makePixels) const;
    RefPtr<UIColor> computeMergedColor() const;

    // Set once: by the constructor, or by the first cairoSurface() of an
    // image made later (which may run on any thread).
    mutable cairo_surface_t* m_surface { nullptr };
    mutable std::once_flag m_made;
    mutable PixelMaker m_makePixels; // released once used
    mutable std::atomic<bool> m_pixelsMade { false };
    bool m_fromFile { false };
    int m_pixelWidth { 0 };
    int m_pixelHeight { 0 };
    CGSize m_size {};
    double m_scale { 1 };
    std::string m_name;
    RefPtr<UIColor> m_tintColor;
    mutable RefPtr<UIColor> m_mergedColor;
    UIImageRenderingMode m_renderingMode { UIImageRenderingModeAutomatic };
    // Big images only, made on their first drawing.
    mutable std::unique_ptr<ImageDrawingCache> m_drawingCache;
};
