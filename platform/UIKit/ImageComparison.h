#pragma once

#include "UIImage.h"

#include <string>

// Screenshot testing: decoded pixels are compared with a reference picture
// within explicit tolerances, and a failure leaves a picture of reference,
// result and difference side by side.

struct ImageTolerance {
    // The largest difference in any channel (0-255) that still counts as equal.
    int channel { 2 };
    // The share of pixels allowed to differ by more than that.
    double pixels { 0.001 };
};

struct ImageDifference {
    bool sameSize { false };
    size_t pixelCount { 0 };
    size_t differingPixels { 0 };
    int largestChannelDifference { 0 };

    bool isWithin(const ImageTolerance&) const;
};

// Compares two images pixel by pixel (not premultiplied, so that a fully
// transparent pixel equals any other).
ImageDifference compareImages(const UIImage& reference, const UIImage& actual, int channelTolerance);

// Reference, actual and difference side by side; differing pixels are red
// over a faded copy of the actual picture.
RefPtr<UIImage> differencePicture(const UIImage& reference, const UIImage& actual, int channelTolerance);

// When to write the reference instead of comparing, from the environment
// variable KV_RECORD: "missing" (the default: record only references that do
// not exist yet), "all" (record every one, as after an intended change) or
// "never" (a missing reference fails, as on a build machine).
enum class RecordMode {
    Missing,
    All,
    Never,
};
RecordMode recordModeFromEnvironment();

struct ScreenshotVerdict {
    bool passed { false };
    bool recorded { false };
    std::string message;
};

// Checks `actual` against the PNG at `referencePath`, recording it as the
// record mode says. On failure writes the side-by-side picture to
// `failurePath` (when given) and says where in the message.
ScreenshotVerdict verifyScreenshot(const UIImage& actual, const std::string& referencePath, const std::string& failurePath,
    ImageTolerance = {}, RecordMode = recordModeFromEnvironment());
