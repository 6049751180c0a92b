#pragma once

#include "UIColor.h"

#include <CoreGraphics/CGGeometry.h>
#include <objc/objc.h>

#include <cstdint>
#include <functional>
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
// Every image carries a `name` for dumps: the resource name for an image
// loaded from a bundle ("Battery/Battery60"), kept by scaling and tinting, or
// a description given by whoever made it ("artwork", "wallpaper").
class UIImage final : public NSObject {
    OBJC_CLASS(UIImage)
public:
    // Takes over the reference to an ARGB32 image surface.
    UIImage(cairo_surface_t*, double scale, std::string name);
    ~UIImage() override;

    // Loads a PNG file; null when it is missing or not a PNG. A "@2x" (or
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
    int pixelWidth() const;
    int pixelHeight() const;
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

    // Draws the image stretched into `rect` (in the context's units).
    void drawInRect(cairo_t*, CGRect rect, double alpha = 1) const;

    struct Pixel {
        uint8_t red { 0 }, green { 0 }, blue { 0 }, alpha { 0 };
        friend bool operator==(const Pixel&, const Pixel&) = default;
    };
    // One pixel, not premultiplied; transparent outside the image.
    Pixel pixelAt(int x, int y) const;

    cairo_surface_t* cairoSurface() const { return m_surface; }
    // Writes the image as a PNG file; answers the error, if any.
    [[nodiscard]] std::optional<std::string> writePNG(const std::string& path) const;

    std::string description() const override { return m_name; }

private:
    RefPtr<UIImage> derived(cairo_surface_t*, double scale) const;
    RefPtr<UIColor> computeMergedColor() const;

    cairo_surface_t* m_surface { nullptr };
    CGSize m_size {};
    double m_scale { 1 };
    std::string m_name;
    RefPtr<UIColor> m_tintColor;
    mutable RefPtr<UIColor> m_mergedColor;
    UIImageRenderingMode m_renderingMode { UIImageRenderingModeAutomatic };
};
