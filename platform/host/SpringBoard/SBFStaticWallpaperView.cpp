#include "SBFStaticWallpaperView.h"

#include <UIKit/RenderContext.h>

#include <algorithm>
#include <nlohmann/json.hpp>

OBJC_IMPLEMENT_CLASS(SBFStaticWallpaperView, UIView)
{
    c.method<&SBFStaticWallpaperView::wallpaperImage>("wallpaperImage");
}

void SBFStaticWallpaperView::drawContent(RenderContext& context) const
{
    if (!m_image)
        return;
    CGSize bounds = this->bounds().size;
    CGSize image = m_image->size();
    if (image.width <= 0 || image.height <= 0)
        return;
    double scale = std::max(bounds.width / image.width, bounds.height / image.height);
    CGSize drawn { image.width * scale, image.height * scale };
    cairo_save(context.cr);
    cairo_rectangle(context.cr, 0, 0, bounds.width, bounds.height);
    cairo_clip(context.cr);
    m_image->drawInRect(context.cr, CGRectMake((bounds.width - drawn.width) / 2, (bounds.height - drawn.height) / 2, drawn.width, drawn.height));
    cairo_restore(context.cr);
}

void SBFStaticWallpaperView::dumpProperties(nlohmann::json& node) const
{
    UIView::dumpProperties(node);
    if (m_image)
        node["image"] = m_image->name();
}
