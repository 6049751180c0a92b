#pragma once

#include <CoreGraphics/CGGeometry.h>

#include <cairo.h>

#include <initializer_list>
#include <vector>

// What a view draws its content into (UIView::drawContent). The cairo
// context's units are points, with (0, 0) at the view's top-left corner; the
// renderer has already drawn the view's background and applied its alpha
// and clipping, and draws the subviews afterwards.
struct RenderContext {
    cairo_t* cr { nullptr };
    double scale { 1 }; // pixels per point

    // The surfaces being drawn into: the screen first, then one group for
    // each translucent view being drawn, with the alpha that the group will
    // be composited with.
    struct Layer {
        cairo_surface_t* surface;
        double alpha;
    };
    std::vector<Layer> layers;

    // A rectangle in whole device pixels.
    struct PixelRect {
        int x { 0 }, y { 0 }, width { 0 }, height { 0 };
    };
    // The device pixels that `rect` (in current units) covers, grown by
    // `padding` pixels and cut to the screen.
    PixelRect devicePixels(CGRect rect, int padding = 0) const;
    // A new ARGB32 surface with what the screen will show under `pixels`
    // from everything drawn so far (the open groups composited over the
    // screen), shrunk by `reduction` (2 gives a quarter of the pixels). The
    // caller destroys it.
    cairo_surface_t* createBackdrop(PixelRect pixels, double reduction = 1) const;
};

// Adds a rounded rectangle to the path; `corners` are CALayer::Corner bits.
void addRoundedRectangle(cairo_t*, CGRect, double radius, unsigned corners = 15);
// Adds a closed polygon through `points` to the path (the glyphs' bolts and
// triangles).
void addPolygon(cairo_t*, std::initializer_list<CGPoint>);
