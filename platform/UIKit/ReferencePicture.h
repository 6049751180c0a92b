#pragma once

#include "ImageComparison.h"
#include "RecordPolicy.h"
#include "UIImage.h"

#include <string>
#include <vector>

// A picture checked against its reference PNG: recorded or compared as the
// record policy says; on a mismatch, what was seen and a difference picture
// are written beside each other for a person to look at.
class ReferencePicture {
public:
    struct Paths {
        std::string reference;
        // How messages name the reference (as the test or scenario wrote it).
        std::string shownName;
        // Where a mismatch leaves what was seen and the difference picture;
        // empty writes nothing.
        std::string seen;
        std::string difference;
    };

    struct Verdict {
        bool passed { false };
        bool recorded { false };
        // Empty when it passed; otherwise says why it failed.
        std::string message;
        // What a mismatch left (the reference itself is not listed).
        std::vector<std::string> writtenFiles;
    };

    static Verdict check(const UIImage& actual, const Paths&, const ImageTolerance&, const RecordPolicy&);

    // Decodes a PNG into pixels with an alpha channel; null with `error` set
    // when the file cannot be read or is not a PNG.
    static RefPtr<UIImage> decode(const std::string& path, std::string& error);
};
