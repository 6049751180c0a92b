#include "UIRenderer.h"

#include "RenderContext.h"
#include "UIView.h"

#include <cmath>

static void setSourceColor(cairo_t* cr, const UIColor& color) { cairo_set_source_rgba(cr, color.red(), color.green(), color.blue(), color.alpha()); }

// Whether nothing of `rect` (current units) can show through the clip.
static bool isClippedAway(cairo_t* cr, CGRect rect)
{
    double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
    cairo_clip_extents(cr, &x0, &y0, &x1, &y1);
    return !CGRectIntersectsRect(rect, CGRectMake(x0, y0, x1 - x0, y1 - y0));
}

// Whether cairo can draw the view at all: a value that is not a number, or a
// transform that flattens the view, would put the context in an error state
// and blank the rest of the picture.
static bool isDrawable(const UIView& view)
{
    CGRect f = view.presentationFrame();
    CGRect b = view.bounds();
    CGAffineTransform t = view.transform();
    for (double value : { f.origin.x, f.origin.y, f.size.width, f.size.height, b.origin.x, b.origin.y, view.presentationAlpha(), t.a, t.b, t.c, t.d, t.tx, t.ty }) {
        if (!std::isfinite(value))
            return false;
    }
    return std::abs(t.a * t.d - t.b * t.c) > 1e-12;
}

void UIRenderer::drawView(const UIView& view, RenderContext& context)
{
    // An animation in flight shows its current frame and alpha, not the
    // values it is heading for.
    double alpha = view.presentationAlpha();
    if (view.isHidden() || alpha <= 0 || !isDrawable(view))
        return;
    cairo_t* cr = context.cr;
    CGRect frame = view.presentationFrame();
    CGRect local = { {}, frame.size };
    const CALayer& layer = view.layer();
    bool clips = layer.masksToBounds() || layer.maskedCorners();

    cairo_save(cr);
    cairo_translate(cr, frame.origin.x, frame.origin.y);
    CGAffineTransform t = view.transform();
    if (!CGAffineTransformIsIdentity(t)) {
        // A view's transform turns it about its centre.
        cairo_matrix_t matrix { t.a, t.b, t.c, t.d, t.tx, t.ty };
        cairo_translate(cr, frame.size.width / 2, frame.size.height / 2);
        cairo_transform(cr, &matrix);
        cairo_translate(cr, -frame.size.width / 2, -frame.size.height / 2);
    }
    if (clips && isClippedAway(cr, local)) {
        cairo_restore(cr);
        return;
    }
    bool translucent = alpha < 1;
    if (translucent) {
        cairo_push_group(cr);
        context.layers.push_back({ cairo_get_group_target(cr), alpha });
    }

    if (layer.maskedCorners()) {
        addRoundedRectangle(cr, local, layer.maskCornerRadius(), layer.maskedCorners());
        cairo_clip(cr);
    }
    UIColor* background = view.backgroundColor();
    if (background && background->alpha() > 0) {
        addRoundedRectangle(cr, local, layer.cornerRadius());
        setSourceColor(cr, *background);
        cairo_fill(cr);
    }
    if (layer.masksToBounds()) {
        addRoundedRectangle(cr, local, layer.cornerRadius());
        cairo_clip(cr);
    }

    cairo_save(cr);
    view.drawContent(context);
    cairo_restore(cr);

    CGRect bounds = view.bounds();
    cairo_save(cr);
    cairo_translate(cr, -bounds.origin.x, -bounds.origin.y);
    for (auto& subview : view.subviews())
        drawView(*subview, context);
    cairo_restore(cr);

    // Core Animation draws the border above the content and the sublayers.
    double width = layer.borderWidth();
    UIColor* borderColor = layer.borderColor();
    if (width > 0 && borderColor && borderColor->alpha() > 0) {
        addRoundedRectangle(cr, CGRectInset(local, width / 2, width / 2), std::max(0.0, layer.cornerRadius() - width / 2));
        cairo_set_line_width(cr, width);
        setSourceColor(cr, *borderColor);
        cairo_stroke(cr);
    }

    if (translucent) {
        cairo_pop_group_to_source(cr);
        context.layers.pop_back();
        cairo_paint_with_alpha(cr, alpha);
    }
    cairo_restore(cr);
}

static RefPtr<UIImage> render(CGSize size, double scale, const UIColor* background, const std::function<void(RenderContext&)>& draw)
{
    int width = std::max(1, int(std::lround(size.width * scale)));
    int height = std::max(1, int(std::lround(size.height * scale)));
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    cairo_t* cr = cairo_create(surface);
    if (background) {
        setSourceColor(cr, *background);
        cairo_paint(cr);
    }
    cairo_scale(cr, scale, scale);
    RenderContext context { cr, scale, { { surface, 1 } } };
    draw(context);
    cairo_destroy(cr);
    cairo_surface_flush(surface);
    return make<UIImage>(surface, scale, "screenshot");
}

RefPtr<UIImage> UIRenderer::renderWindows(const std::vector<UIView*>& windows, CGSize screenSize, double scale)
{
    auto black = UIColor::blackColor();
    return render(screenSize, scale, black.get(), [&](RenderContext& context) {
        for (UIView* window : windows) {
            if (window)
                drawView(*window, context);
        }
    });
}

RefPtr<UIImage> UIRenderer::renderView(const UIView& view, double scale)
{
    return render(view.frame().size, scale, nullptr, [&](RenderContext& context) {
        cairo_translate(context.cr, -view.frame().origin.x, -view.frame().origin.y);
        drawView(view, context);
    });
}
