#include "WeatherGlyphs.h"

#include <UIKit/RenderContext.h>

#include <cairo.h>

#include <array>
#include <cmath>
#include <map>

namespace WeatherGlyphs {

static constexpr double lineWidth = 3.2;

static void sun(cairo_t* cr, double cx, double cy, double radius, double rayLength)
{
    cairo_new_sub_path(cr);
    cairo_arc(cr, cx, cy, radius, 0, 2 * M_PI);
    cairo_stroke(cr);
    for (int ray = 0; ray < 8; ++ray) {
        double angle = ray * M_PI / 4;
        double inner = radius + 5;
        cairo_move_to(cr, cx + inner * std::cos(angle), cy + inner * std::sin(angle));
        cairo_line_to(cr, cx + (inner + rayLength) * std::cos(angle), cy + (inner + rayLength) * std::sin(angle));
    }
    cairo_stroke(cr);
}

// The cloud is the outline of a union of circles and a flat-bottomed base:
// the shape filled, then the same shape drawn smaller cleared out of it, so
// that the line keeps one width where the lobes meet.
static void cloudShape(cairo_t* cr, double x, double y, double scale, double inset)
{
    struct Lobe {
        double cx, cy, r;
    };
    static constexpr std::array<Lobe, 3> lobes { { { 20, 30, 10 }, { 33, 22, 14 }, { 46, 30, 10 } } };
    for (auto& lobe : lobes) {
        cairo_new_sub_path(cr);
        cairo_arc(cr, x + lobe.cx * scale, y + lobe.cy * scale, lobe.r * scale - inset, 0, 2 * M_PI);
        cairo_fill(cr);
    }
    double left = x + 20 * scale, right = x + 46 * scale;
    double top = y + 30 * scale - 10 * scale + inset, bottom = y + 40 * scale - inset;
    cairo_rectangle(cr, left, top, right - left, bottom - top);
    cairo_fill(cr);
}

static void cloud(cairo_t* cr, double x, double y, double scale = 1)
{
    cairo_push_group(cr);
    cairo_set_source_rgb(cr, 1, 1, 1);
    cloudShape(cr, x, y, scale, 0);
    cairo_set_operator(cr, CAIRO_OPERATOR_CLEAR);
    cloudShape(cr, x, y, scale, lineWidth);
    cairo_set_operator(cr, CAIRO_OPERATOR_OVER);
    cairo_pop_group_to_source(cr);
    cairo_paint(cr);
    cairo_set_source_rgb(cr, 1, 1, 1);
}

// Clears the cloud's area, so that what is behind it (the sun) does not show through.
static void clearCloudArea(cairo_t* cr, double x, double y, double scale = 1)
{
    cairo_set_operator(cr, CAIRO_OPERATOR_CLEAR);
    cloudShape(cr, x, y, scale, -1.5);
    cairo_set_operator(cr, CAIRO_OPERATOR_OVER);
}

static void moon(cairo_t* cr, double cx, double cy, double radius)
{
    cairo_push_group(cr);
    cairo_set_source_rgb(cr, 1, 1, 1);
    cairo_arc(cr, cx, cy, radius, 0, 2 * M_PI);
    cairo_fill(cr);
    cairo_set_operator(cr, CAIRO_OPERATOR_CLEAR);
    cairo_arc(cr, cx, cy, radius - lineWidth, 0, 2 * M_PI);
    cairo_fill(cr);
    cairo_arc(cr, cx + radius * 0.55, cy - radius * 0.4, radius * 0.85, 0, 2 * M_PI);
    cairo_fill(cr);
    cairo_set_operator(cr, CAIRO_OPERATOR_OVER);
    cairo_set_source_rgb(cr, 1, 1, 1);
    cairo_arc(cr, cx + radius * 0.55, cy - radius * 0.4, radius * 0.85 + lineWidth, 0, 2 * M_PI);
    cairo_arc(cr, cx, cy, radius, 0, 2 * M_PI);
    cairo_pop_group_to_source(cr);
    cairo_paint(cr);
    cairo_set_source_rgb(cr, 1, 1, 1);
}

static void slantedLines(cairo_t* cr, double top, double length, int count)
{
    for (int i = 0; i < count; ++i) {
        double x = 22 + i * 10;
        cairo_move_to(cr, x, top);
        cairo_line_to(cr, x - length * 0.35, top + length);
    }
    cairo_stroke(cr);
}

static void flakes(cairo_t* cr)
{
    for (int i = 0; i < 3; ++i) {
        double cx = 22 + i * 10, cy = 50 + (i % 2) * 6;
        for (int arm = 0; arm < 3; ++arm) {
            double angle = arm * M_PI / 3;
            cairo_move_to(cr, cx - 3.5 * std::cos(angle), cy - 3.5 * std::sin(angle));
            cairo_line_to(cr, cx + 3.5 * std::cos(angle), cy + 3.5 * std::sin(angle));
        }
    }
    cairo_set_line_width(cr, 2);
    cairo_stroke(cr);
}

static void bolt(cairo_t* cr)
{
    addPolygon(cr, { { 35, 44 }, { 27, 54 }, { 33, 54 }, { 29, 62 }, { 39, 51 }, { 33, 51 }, { 37, 44 } });
    cairo_fill(cr);
}

static void wind(cairo_t* cr)
{
    cairo_move_to(cr, 8, 24);
    cairo_line_to(cr, 40, 24);
    cairo_arc(cr, 40, 18, 6, M_PI / 2, -M_PI);
    cairo_move_to(cr, 8, 34);
    cairo_line_to(cr, 50, 34);
    cairo_arc_negative(cr, 50, 41, 7, -M_PI / 2, M_PI);
    cairo_move_to(cr, 14, 44);
    cairo_line_to(cr, 32, 44);
    cairo_stroke(cr);
}

using Drawing = void (*)(cairo_t*);

static const std::map<std::string, Drawing>& drawings()
{
    static const std::map<std::string, Drawing> table {
        { "sunny", [](cairo_t* cr) { sun(cr, 32, 32, 11, 7); } },
        { "clear", [](cairo_t* cr) { moon(cr, 32, 32, 18); } },
        { "partly-cloudy",
            [](cairo_t* cr) {
                sun(cr, 24, 24, 8, 5);
                clearCloudArea(cr, 6, 14);
                cloud(cr, 6, 14);
            } },
        { "cloudy", [](cairo_t* cr) { cloud(cr, -1, 4); } },
        { "rain",
            [](cairo_t* cr) {
                cloud(cr, -1, -4);
                slantedLines(cr, 44, 12, 4);
            } },
        { "snow",
            [](cairo_t* cr) {
                cloud(cr, -1, -4);
                flakes(cr);
            } },
        { "thunderstorm",
            [](cairo_t* cr) {
                cloud(cr, -1, -4);
                bolt(cr);
            } },
        { "fog",
            [](cairo_t* cr) {
                cloud(cr, -1, -6);
                for (double y : { 44.0, 51.0, 58.0 }) {
                    cairo_move_to(cr, 12, y);
                    cairo_line_to(cr, 52, y);
                }
                cairo_stroke(cr);
            } },
        { "wind", wind },
    };
    return table;
}

bool isKnownIcon(const std::string& icon) { return drawings().count(icon) != 0; }

std::vector<std::string> knownIcons()
{
    std::vector<std::string> names;
    for (const auto& entry : drawings())
        names.push_back(entry.first);
    return names;
}

RefPtr<UIImage> conditionImage(const std::string& icon)
{
    auto found = drawings().find(icon);
    Drawing draw = found != drawings().end() ? found->second : drawings().at("cloudy");
    return UIImage::imageWithSize({ side, side }, 3, [draw](cairo_t* cr) {
        cairo_set_source_rgb(cr, 1, 1, 1);
        cairo_set_line_width(cr, lineWidth);
        cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
        cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
        draw(cr);
    }, "weather:" + icon);
}

} // namespace WeatherGlyphs
