#include "BBBulletin.h"

#include "BBAction.h"

#include <Foundation/NSArray.h>
#include <UIKit/UIImage.h>

#include <cairo.h>

OBJC_IMPLEMENT_CLASS(BBBulletin, NSObject)
{
    c.method<&BBBulletin::section>("section");
    c.method<&BBBulletin::sectionID>("sectionID");
    c.method<&BBBulletin::bulletinID>("bulletinID");
    c.method<&BBBulletin::title>("title");
    c.method<&BBBulletin::subtitle>("subtitle");
    c.method<&BBBulletin::message>("message");
    c.method<&BBBulletin::date>("date");
    c.method<&BBBulletin::defaultAction>("defaultAction");
    c.method<&BBBulletin::supplementaryActions>("supplementaryActions");
    c.method<&BBBulletin::hasAttachment>("hasAttachment");
    c.method<&BBBulletin::attachmentImage>("attachmentImage");
}

StrongId BBBulletin::supplementaryActions() const
{
    std::vector<StrongId> actions(m_supplementaryActions.begin(), m_supplementaryActions.end());
    return NSArray::create(std::move(actions));
}

// A photo-like picture (sky, sun, two hills), so that a shown attachment
// looks like one.
static RefPtr<UIImage> drawAttachment()
{
    return UIImage::imageWithSize({ 300, 300 }, 2, [](cairo_t* cr) {
        cairo_pattern_t* sky = cairo_pattern_create_linear(0, 0, 0, 300);
        cairo_pattern_add_color_stop_rgb(sky, 0, 0.25, 0.55, 0.85);
        cairo_pattern_add_color_stop_rgb(sky, 1, 0.95, 0.75, 0.55);
        cairo_set_source(cr, sky);
        cairo_paint(cr);
        cairo_pattern_destroy(sky);
        cairo_set_source_rgb(cr, 1.0, 0.9, 0.6);
        cairo_arc(cr, 210, 110, 36, 0, 6.2832);
        cairo_fill(cr);
        cairo_set_source_rgb(cr, 0.22, 0.45, 0.3);
        cairo_move_to(cr, 0, 300);
        cairo_curve_to(cr, 60, 170, 150, 190, 220, 300);
        cairo_fill(cr);
        cairo_set_source_rgb(cr, 0.15, 0.35, 0.22);
        cairo_move_to(cr, 90, 300);
        cairo_curve_to(cr, 170, 200, 250, 190, 300, 240);
        cairo_line_to(cr, 300, 300);
        cairo_fill(cr);
    }, "attachment");
}

RefPtr<UIImage> BBBulletin::attachmentImage() const
{
    if (!m_hasAttachment)
        return nullptr;
    // Every attachment shows the same picture: drawn once for the process.
    static auto* picture = new RefPtr<UIImage>(drawAttachment());
    return *picture;
}
