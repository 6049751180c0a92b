#include "ShotExpectation.h"

#include "ViewTree.h"

#include <UIKit/ReferencePicture.h>
#include <UIKit/UIRenderer.h>
#include <UIKit/UIScreen.h>
#include <UIKit/UIView.h>

#include <cairo.h>

#include <algorithm>
#include <cmath>

namespace sim {

RefPtr<UIImage> ShotExpectation::screenPicture()
{
    CGRect screen = UIScreen::mainScreen()->bounds();
    return UIRenderer::renderWindows(ViewTree::windows(), screen.size, UIScreen::mainScreen()->scale());
}

RefPtr<UIImage> ShotExpectation::crop(const UIImage& picture, CGRect rect)
{
    double scale = picture.scale();
    int left = std::max(0, static_cast<int>(std::floor(CGRectGetMinX(rect) * scale)));
    int top = std::max(0, static_cast<int>(std::floor(CGRectGetMinY(rect) * scale)));
    int right = std::min(picture.pixelWidth(), static_cast<int>(std::ceil(CGRectGetMaxX(rect) * scale)));
    int bottom = std::min(picture.pixelHeight(), static_cast<int>(std::ceil(CGRectGetMaxY(rect) * scale)));
    if (right <= left || bottom <= top)
        return nullptr;
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, right - left, bottom - top);
    cairo_t* cr = cairo_create(surface);
    cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
    cairo_set_source_surface(cr, picture.cairoSurface(), -left, -top);
    cairo_paint(cr);
    cairo_destroy(cr);
    return make<UIImage>(surface, scale, picture.name());
}

ShotExpectation::Outcome ShotExpectation::check(const Command& command, const std::filesystem::path& outputDirectory, const RecordPolicy& policy)
{
    const auto& expect = command.as<ExpectShotCommand>();
    Outcome outcome;
    RefPtr<UIImage> picture = screenPicture();
    if (!picture) {
        outcome.message = "the screen could not be drawn";
        return outcome;
    }
    if (expect.target) {
        UIView* view = ViewTree::find(*expect.target);
        if (!view) {
            outcome.message = "expected " + expect.target->toString() + " to exist, found nothing";
            return outcome;
        }
        picture = crop(*picture, view->screenFrame());
        if (!picture) {
            outcome.message = "expected " + expect.target->toString() + " on screen, found it wholly outside";
            return outcome;
        }
    }

    // The reference lives beside the scenario; what a mismatch leaves keeps
    // the reference's own path under OUT/failed.
    std::filesystem::path reference = std::filesystem::path(command.file).parent_path() / expect.reference;
    std::filesystem::path seen = outputDirectory / "failed" / expect.reference;
    std::filesystem::path difference = seen;
    difference.replace_extension(".diff.png");
    ReferencePicture::Paths paths { reference.string(), expect.reference, seen.string(), difference.string() };
    auto verdict = ReferencePicture::check(*picture, paths, { expect.perceptual, expect.precision }, policy);
    outcome.held = verdict.passed;
    outcome.message = verdict.message;
    outcome.writtenFiles.assign(verdict.writtenFiles.begin(), verdict.writtenFiles.end());
    return outcome;
}

}
