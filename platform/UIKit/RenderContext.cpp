#include "RenderContext.h"

#include "CALayer.h"

#include <algorithm>
#include <cmath>

RenderContext::PixelRect RenderContext::devicePixels(CGRect rect, int padding) const
{
    double xs[4] = { rect.origin.x, CGRectGetMaxX(rect), rect.origin.x, CGRectGetMaxX(rect) };
    double ys[4] = { rect.origin.y, rect.origin.y, CGRectGetMaxY(rect), CGRectGetMaxY(rect) };
    double minX = INFINITY, minY = INFINITY, maxX = -INFINITY, maxY = -INFINITY;
    for (int i = 0; i < 4; ++i) {
        cairo_user_to_device(cr, &xs[i], &ys[i]);
        minX = std::min(minX, xs[i]);
        maxX = std::max(maxX, xs[i]);
        minY = std::min(minY, ys[i]);
        maxY = std::max(maxY, ys[i]);
    }
    cairo_surface_t* screen = layers.empty() ? cairo_get_target(cr) : layers.front().surface;
    int screenWidth = cairo_image_surface_get_width(screen);
    int screenHeight = cairo_image_surface_get_height(screen);
    int x0 = std::clamp(int(std::floor(minX)) - padding, 0, screenWidth);
    int y0 = std::clamp(int(std::floor(minY)) - padding, 0, screenHeight);
    int x1 = std::clamp(int(std::ceil(maxX)) + padding, 0, screenWidth);
    int y1 = std::clamp(int(std::ceil(maxY)) + padding, 0, screenHeight);
    return { x0, y0, x1 - x0, y1 - y0 };
}

cairo_surface_t* RenderContext::createBackdrop(PixelRect pixels, double reduction) const
{
    reduction = std::max(1.0, reduction);
    int width = std::max(1, int(std::ceil(pixels.width / reduction)));
    int height = std::max(1, int(std::ceil(pixels.height / reduction)));
    // What shows is screen OVER a1 * (group1 OVER a2 * (group2 ...)): fold
    // the groups from the innermost outwards.
    cairo_surface_t* folded = nullptr;
    for (size_t k = layers.size(); k-- > 0;) {
        cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
        cairo_t* c = cairo_create(surface);
        cairo_save(c);
        cairo_scale(c, 1 / reduction, 1 / reduction);
        cairo_set_source_surface(c, layers[k].surface, -pixels.x, -pixels.y);
        cairo_pattern_set_filter(cairo_get_source(c), CAIRO_FILTER_GOOD);
        cairo_paint(c);
        cairo_restore(c);
        if (folded) {
            cairo_set_source_surface(c, folded, 0, 0);
            cairo_paint_with_alpha(c, layers[k + 1].alpha);
            cairo_surface_destroy(folded);
        }
        cairo_destroy(c);
        folded = surface;
    }
    if (!folded)
        folded = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    cairo_surface_flush(folded);
    return folded;
}

void addRoundedRectangle(cairo_t* cr, CGRect rect, double radius, unsigned corners)
{
    double x = rect.origin.x;
    double y = rect.origin.y;
    double w = rect.size.width;
    double h = rect.size.height;
    double r = std::clamp(radius, 0.0, std::min(w, h) / 2);
    if (r <= 0 || !corners) {
        cairo_rectangle(cr, x, y, w, h);
        return;
    }
    auto radiusFor = [&](unsigned corner) { return (corners & corner) ? r : 0.0; };
    double tl = radiusFor(CALayer::TopLeft);
    double tr = radiusFor(CALayer::TopRight);
    double br = radiusFor(CALayer::BottomRight);
    double bl = radiusFor(CALayer::BottomLeft);
    cairo_new_sub_path(cr);
    cairo_arc(cr, x + w - tr, y + tr, tr, -M_PI / 2, 0);
    cairo_arc(cr, x + w - br, y + h - br, br, 0, M_PI / 2);
    cairo_arc(cr, x + bl, y + h - bl, bl, M_PI / 2, M_PI);
    cairo_arc(cr, x + tl, y + tl, tl, M_PI, 3 * M_PI / 2);
    cairo_close_path(cr);
}

void addPolygon(cairo_t* cr, std::initializer_list<CGPoint> points)
{
    if (points.size() < 2)
        return;
    cairo_new_sub_path(cr);
    for (const CGPoint& point : points)
        cairo_line_to(cr, point.x, point.y);
    cairo_close_path(cr);
}
