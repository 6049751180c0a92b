#pragma once

#include "UIImage.h"

#include <cstdint>
#include <string>
#include <vector>

// How close a picture must be to its reference.
struct ImageTolerance {
    // The closeness a pixel needs to count as matching (see ImageComparison):
    // 1 is exact; 0.98 lets through what the eye cannot tell apart.
    double perceptual { 1 };
    // The share of pixels that must match.
    double precision { 1 };
};

// Compares two pictures pixel by pixel, as decoded pixels (never as files:
// two PNG encoders may write the same pixels differently).
//
// A pixel's closeness to the reference pixel is 1 - d/255, where d is the
// largest difference in any of the four channels with colours premultiplied by
// alpha. d/255 bounds how far apart the two pixels can look drawn over any
// background, and every fully transparent pixel equals every other. A pixel
// matches when its closeness is at least `perceptual`: 0.98 lets through a
// difference of up to 5 in 255 in each channel.
//
// Pictures of different sizes never match; their pixels are compared where
// both have them, and pixels only one of them has count as differing.
class ImageComparison {
public:
    ImageComparison(const UIImage& reference, const UIImage& actual, double perceptual = 1);

    bool sameSize() const { return m_sameSize; }
    // Pixels compared: the larger width by the larger height.
    size_t pixelCount() const { return m_pixelCount; }
    size_t differingPixels() const { return m_differingPixels; }
    // 0 to 1.
    double differingShare() const;
    // The largest channel difference (0-255) over every pixel both pictures have.
    int largestChannelDifference() const { return m_largestChannelDifference; }
    // Whether the sizes agree and at least `precision` of the pixels match.
    bool matches(double precision = 1) const;

    // For messages: "the size differs (750x1334 expected, 1334x750 found)" or
    // "1.5% of the pixels differ: 15 of 1000, by up to 40 in 255".
    std::string summary() const;
    // The reference faded to a light grey, with the differing pixels in red.
    RefPtr<UIImage> differencePicture() const;

private:
    // Kept for the difference picture (images never change).
    RefPtr<UIImage> m_reference;
    int m_width { 0 };
    int m_height { 0 };
    int m_actualWidth { 0 };
    int m_actualHeight { 0 };
    bool m_sameSize { false };
    size_t m_pixelCount { 0 };
    size_t m_differingPixels { 0 };
    int m_largestChannelDifference { 0 };
    // One entry per pixel, row by row: whether it differs.
    std::vector<uint8_t> m_differs;
};
