#include "SBGlyphs.h"

#include <UIKit/RenderContext.h>

#include <cairo.h>

#include <algorithm>
#include <cmath>

namespace SBGlyphs {

RefPtr<UIImage> camera(double scale)
{
    return UIImage::imageWithSize({ 26, 20 }, scale, [](cairo_t* cr) {
        cairo_set_source_rgba(cr, 1, 1, 1, 0.9);
        cairo_set_line_width(cr, 1.5);
        // The body, the viewfinder bump on top and the lens.
        addRoundedRectangle(cr, CGRectMake(1, 5, 24, 14), 2.5);
        cairo_move_to(cr, 8, 5);
        cairo_line_to(cr, 10, 1.75);
        cairo_line_to(cr, 16, 1.75);
        cairo_line_to(cr, 18, 5);
        cairo_stroke(cr);
        cairo_arc(cr, 13, 12, 4.25, 0, 2 * M_PI);
        cairo_stroke(cr);
    }, "camera");
}

RefPtr<UIImage> magnifier(double scale)
{
    return UIImage::imageWithSize({ 14, 14 }, scale, [](cairo_t* cr) {
        cairo_set_source_rgb(cr, 1, 1, 1);
        cairo_set_line_width(cr, 1.5);
        cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
        cairo_arc(cr, 5.75, 5.75, 4.75, 0, 2 * M_PI);
        cairo_move_to(cr, 9.25, 9.25);
        cairo_line_to(cr, 13, 13);
        cairo_stroke(cr);
    }, "magnifier");
}

RefPtr<UIImage> unlockChevron(double scale)
{
    return UIImage::imageWithSize({ 10, 16 }, scale, [](cairo_t* cr) {
        cairo_set_source_rgba(cr, 1, 1, 1, 0.9);
        cairo_set_line_width(cr, 2);
        cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
        cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
        cairo_move_to(cr, 2, 2);
        cairo_line_to(cr, 8, 8);
        cairo_line_to(cr, 2, 14);
        cairo_stroke(cr);
    }, "chevron");
}

RefPtr<UIImage> padlock(double scale)
{
    return UIImage::imageWithSize({ 10, 13 }, scale, [](cairo_t* cr) {
        cairo_set_source_rgb(cr, 1, 1, 1);
        cairo_set_line_width(cr, 1.4);
        cairo_arc(cr, 5, 5, 3, M_PI, 0);
        cairo_line_to(cr, 8, 6);
        cairo_move_to(cr, 2, 6);
        cairo_line_to(cr, 2, 5);
        cairo_stroke(cr);
        addRoundedRectangle(cr, CGRectMake(0.5, 6, 9, 6.5), 1);
        cairo_fill(cr);
    }, "lock");
}

RefPtr<UIImage> signalDots(int bars, double scale)
{
    bars = std::clamp(bars, 0, 5);
    return UIImage::imageWithSize({ 34, 7 }, scale, [bars](cairo_t* cr) {
        cairo_set_source_rgb(cr, 1, 1, 1);
        cairo_set_line_width(cr, 0.75);
        for (int i = 0; i < 5; ++i) {
            cairo_arc(cr, 3.5 + i * 6.75, 3.5, 2.9, 0, 2 * M_PI);
            if (i < bars)
                cairo_fill(cr);
            else
                cairo_stroke(cr);
        }
    }, "signal");
}

RefPtr<UIImage> battery(double level, bool charging, double scale)
{
    level = std::isnan(level) ? 0 : std::clamp(level, 0.0, 1.0);
    return UIImage::imageWithSize({ 25, 11 }, scale, [level, charging](cairo_t* cr) {
        cairo_set_source_rgb(cr, 1, 1, 1);
        cairo_set_line_width(cr, 1);
        addRoundedRectangle(cr, CGRectMake(0.5, 0.5, 21.5, 10), 2);
        cairo_stroke(cr);
        addRoundedRectangle(cr, CGRectMake(22.75, 3.5, 1.75, 4), 0.75);
        cairo_fill(cr);
        double fill = 18.5 * level;
        if (fill > 0) {
            addRoundedRectangle(cr, CGRectMake(2, 2, std::max(fill, 1.5), 7), 1);
            cairo_fill(cr);
        }
        if (charging) {
            // A bolt with a clear gap cut around it, so that it shows on the
            // fill and off it in whatever colour the status bar tints it.
            auto bolt = [cr] { addPolygon(cr, { { 13, 2 }, { 8.25, 6.1 }, { 11, 6.1 }, { 9.5, 9 }, { 14.25, 4.9 }, { 11.5, 4.9 } }); };
            bolt();
            cairo_set_operator(cr, CAIRO_OPERATOR_CLEAR);
            cairo_set_line_width(cr, 1);
            cairo_stroke(cr);
            cairo_set_operator(cr, CAIRO_OPERATOR_OVER);
            bolt();
            cairo_fill(cr);
        }
    }, charging ? "battery-charging" : "battery");
}

RefPtr<UIImage> transportControls(bool playing, double scale)
{
    return UIImage::imageWithSize({ 150, 22 }, scale, [playing](cairo_t* cr) {
        cairo_set_source_rgb(cr, 1, 1, 1);
        auto triangle = [cr](double x, double direction) {
            addPolygon(cr, { { x, 4 }, { x + direction * 11, 11 }, { x, 18 } });
            cairo_fill(cr);
        };
        // Two triangles against a bar each side; play or two bars in the middle.
        triangle(14, -1);
        triangle(25, -1);
        cairo_rectangle(cr, 1, 4, 2, 14);
        triangle(125, 1);
        triangle(136, 1);
        cairo_rectangle(cr, 147, 4, 2, 14);
        cairo_fill(cr);
        if (playing) {
            cairo_rectangle(cr, 68, 3, 4.5, 16);
            cairo_rectangle(cr, 77.5, 3, 4.5, 16);
            cairo_fill(cr);
        } else {
            triangle(68, 1.3);
        }
    }, playing ? "pause" : "play");
}

RefPtr<UIImage> fallbackWallpaper(CGSize size, double scale)
{
    return UIImage::imageWithSize(size, scale, [size](cairo_t* cr) {
        cairo_pattern_t* gradient = cairo_pattern_create_linear(0, 0, size.width * 0.4, size.height);
        cairo_pattern_add_color_stop_rgb(gradient, 0, 0.16, 0.32, 0.52);
        cairo_pattern_add_color_stop_rgb(gradient, 0.55, 0.33, 0.27, 0.55);
        cairo_pattern_add_color_stop_rgb(gradient, 1, 0.85, 0.45, 0.42);
        cairo_set_source(cr, gradient);
        cairo_paint(cr);
        cairo_pattern_destroy(gradient);
    }, "wallpaper");
}

} // namespace SBGlyphs
