#include "ImageComparison.h"

#include <cairo.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string_view>

bool ImageDifference::isWithin(const ImageTolerance& tolerance) const
{
    if (!sameSize)
        return false;
    return double(differingPixels) <= tolerance.pixels * double(pixelCount);
}

static int channelDifference(const UIImage::Pixel& a, const UIImage::Pixel& b)
{
    if (!a.alpha && !b.alpha)
        return 0;
    return std::max({ std::abs(a.red - b.red), std::abs(a.green - b.green), std::abs(a.blue - b.blue), std::abs(a.alpha - b.alpha) });
}

ImageDifference compareImages(const UIImage& reference, const UIImage& actual, int channelTolerance)
{
    ImageDifference difference;
    difference.sameSize = reference.pixelWidth() == actual.pixelWidth() && reference.pixelHeight() == actual.pixelHeight();
    if (!difference.sameSize)
        return difference;
    difference.pixelCount = size_t(reference.pixelWidth()) * size_t(reference.pixelHeight());
    for (int y = 0; y < reference.pixelHeight(); ++y) {
        for (int x = 0; x < reference.pixelWidth(); ++x) {
            int delta = channelDifference(reference.pixelAt(x, y), actual.pixelAt(x, y));
            difference.largestChannelDifference = std::max(difference.largestChannelDifference, delta);
            if (delta > channelTolerance)
                ++difference.differingPixels;
        }
    }
    return difference;
}

RefPtr<UIImage> differencePicture(const UIImage& reference, const UIImage& actual, int channelTolerance)
{
    int width = std::max(reference.pixelWidth(), actual.pixelWidth());
    int height = std::max(reference.pixelHeight(), actual.pixelHeight());
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width * 3, height);
    cairo_t* cr = cairo_create(surface);
    cairo_set_source_rgb(cr, 0.5, 0.5, 0.5);
    cairo_paint(cr);
    cairo_set_source_surface(cr, reference.cairoSurface(), 0, 0);
    cairo_paint(cr);
    cairo_set_source_surface(cr, actual.cairoSurface(), width, 0);
    cairo_paint(cr);
    cairo_set_source_surface(cr, actual.cairoSurface(), 2 * width, 0);
    cairo_paint_with_alpha(cr, 0.25);
    cairo_set_source_rgb(cr, 1, 0, 0);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (channelDifference(reference.pixelAt(x, y), actual.pixelAt(x, y)) > channelTolerance)
                cairo_rectangle(cr, 2 * width + x, y, 1, 1);
        }
    }
    cairo_fill(cr);
    cairo_destroy(cr);
    return make<UIImage>(surface, 1, "difference");
}

RecordMode recordModeFromEnvironment()
{
    const char* value = std::getenv("KV_RECORD");
    std::string_view mode = value ? value : "";
    if (mode == "all")
        return RecordMode::All;
    if (mode == "never")
        return RecordMode::Never;
    return RecordMode::Missing;
}

static ScreenshotVerdict record(const UIImage& actual, const std::string& referencePath)
{
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(referencePath).parent_path(), ignored);
    if (auto error = actual.writePNG(referencePath))
        return { false, false, *error };
    return { true, true, "recorded " + referencePath };
}

ScreenshotVerdict verifyScreenshot(const UIImage& actual, const std::string& referencePath, const std::string& failurePath, ImageTolerance tolerance,
    RecordMode mode)
{
    std::error_code error;
    bool exists = std::filesystem::is_regular_file(referencePath, error);
    if (mode == RecordMode::All || (mode == RecordMode::Missing && !exists))
        return record(actual, referencePath);
    if (!exists)
        return { false, false, "no reference picture " + referencePath + " (run with KV_RECORD=missing to record it)" };
    RefPtr<UIImage> reference = UIImage::imageWithContentsOfFile(referencePath);
    if (!reference)
        return { false, false, "cannot read the reference picture " + referencePath };

    ImageDifference difference = compareImages(*reference, actual, tolerance.channel);
    if (difference.isWithin(tolerance))
        return { true, false, {} };
    std::string message = referencePath + ": ";
    if (!difference.sameSize) {
        message += "the size differs (" + std::to_string(reference->pixelWidth()) + "x" + std::to_string(reference->pixelHeight()) + " expected, "
            + std::to_string(actual.pixelWidth()) + "x" + std::to_string(actual.pixelHeight()) + " found)";
    } else {
        message += std::to_string(difference.differingPixels) + " of " + std::to_string(difference.pixelCount) + " pixels differ by more than "
            + std::to_string(tolerance.channel) + " (largest difference " + std::to_string(difference.largestChannelDifference) + ")";
    }
    if (!failurePath.empty()) {
        std::filesystem::create_directories(std::filesystem::path(failurePath).parent_path(), error);
        if (auto failed = differencePicture(*reference, actual, tolerance.channel)->writePNG(failurePath))
            message += "; " + *failed;
        else
            message += "; reference | actual | difference in " + failurePath;
    }
    return { false, false, message };
}
