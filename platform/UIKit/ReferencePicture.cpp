#include "ReferencePicture.h"

#include <cairo.h>

#include <filesystem>

RefPtr<UIImage> ReferencePicture::decode(const std::string& path, std::string& error)
{
    cairo_surface_t* decoded = cairo_image_surface_create_from_png(path.c_str());
    cairo_status_t status = cairo_surface_status(decoded);
    if (status != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(decoded);
        // Cairo 1.16 reports a file that is not a PNG as being out of memory.
        error = "cannot read " + path + ": " + (status == CAIRO_STATUS_FILE_NOT_FOUND ? "no such file" : "it is not a PNG picture");
        return nullptr;
    }
    // A PNG without alpha decodes to RGB24; pictures are compared as ARGB32.
    int width = cairo_image_surface_get_width(decoded);
    int height = cairo_image_surface_get_height(decoded);
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    cairo_t* cr = cairo_create(surface);
    cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
    cairo_set_source_surface(cr, decoded, 0, 0);
    cairo_paint(cr);
    cairo_destroy(cr);
    cairo_surface_destroy(decoded);
    return make<UIImage>(surface, 1, "reference");
}

// Adds what went wrong, if anything, to `problems`.
static bool writePicture(const UIImage& picture, const std::string& path, std::string& problems)
{
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
    if (auto error = picture.writePNG(path)) {
        problems += "; " + *error;
        return false;
    }
    return true;
}

static void removeStalePictures(const ReferencePicture::Paths& paths)
{
    std::error_code ignored;
    if (!paths.seen.empty())
        std::filesystem::remove(paths.seen, ignored);
    if (!paths.difference.empty())
        std::filesystem::remove(paths.difference, ignored);
}

ReferencePicture::Verdict ReferencePicture::check(const UIImage& actual, const Paths& paths, const ImageTolerance& tolerance, const RecordPolicy& policy)
{
    Verdict verdict;
    // Trouble writing the pictures, told after the verdict.
    std::string problems;
    auto record = [&](const std::string& why) {
        verdict.recorded = writePicture(actual, paths.reference, problems);
        verdict.message = "recorded " + paths.shownName + why + problems;
        return verdict;
    };

    std::error_code error;
    bool exists = std::filesystem::exists(paths.reference, error);
    switch (policy.firstStep(exists)) {
    case RecordPolicy::Step::Record:
        removeStalePictures(paths);
        return record(exists ? " again (--record=all)" : "");
    case RecordPolicy::Step::FailMissing:
        verdict.message = "no reference picture " + paths.shownName + " (--record=never; run with --record=missing to record it)";
        return verdict;
    case RecordPolicy::Step::Compare:
        break;
    }

    std::string decodeError;
    RefPtr<UIImage> reference = decode(paths.reference, decodeError);
    if (!reference) {
        verdict.message = paths.shownName + ": " + decodeError;
        return verdict;
    }
    ImageComparison comparison(*reference, actual, tolerance.perceptual);
    if (comparison.matches(tolerance.precision)) {
        removeStalePictures(paths);
        verdict.passed = true;
        return verdict;
    }

    std::string differs = comparison.summary();
    if (!paths.seen.empty() && writePicture(actual, paths.seen, problems))
        verdict.writtenFiles.push_back(paths.seen);
    if (!paths.difference.empty() && writePicture(*comparison.differencePicture(), paths.difference, problems))
        verdict.writtenFiles.push_back(paths.difference);
    if (policy.rewritesDiffering())
        return record(" (" + differs + ")");
    verdict.message = paths.shownName + " does not match: " + differs;
    if (verdict.writtenFiles.size() == 2)
        verdict.message += " (seen in " + paths.seen + ", difference in " + paths.difference + ")";
    verdict.message += problems;
    return verdict;
}
