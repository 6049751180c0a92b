#pragma once

#include "scenario/Command.h"

#include <CoreGraphics/CGGeometry.h>
#include <UIKit/RecordPolicy.h>
#include <UIKit/UIImage.h>

#include <filesystem>
#include <string>
#include <vector>

namespace sim {

// expect-shot: the screen as `shot` draws it, or the target's rectangle of
// it at the device's scale, checked against a reference picture beside the
// scenario. A mismatch leaves OUT/failed/REF.png (what was seen) and
// OUT/failed/REF.diff.png (the difference).
class ShotExpectation {
public:
    struct Outcome {
        bool held { false };
        std::string message; // empty when it held
        std::vector<std::filesystem::path> writtenFiles;
    };

    static Outcome check(const Command&, const std::filesystem::path& outputDirectory, const RecordPolicy&);

    // The whole screen, as `shot` writes it; null if it cannot be drawn.
    static RefPtr<UIImage> screenPicture();
    // The pixels of `picture` under `rect` (in points), widened to whole
    // pixels and cut to the picture; null when nothing is left.
    static RefPtr<UIImage> crop(const UIImage& picture, CGRect rect);
};

}
