#pragma once

#include "UIImage.h"

#include <CoreGraphics/CGGeometry.h>
#include <objc/objc.h>

// An image inside attributed text. It stands on the baseline; `bounds` moves
// and sizes it (a positive y raises it, as in UIKit). Zero bounds mean the
// image's own size.
class NSTextAttachment final : public NSObject {
    OBJC_CLASS(NSTextAttachment)
public:
    NSTextAttachment() = default;
    explicit NSTextAttachment(RefPtr<UIImage> image, CGRect bounds = CGRectZero)
        : m_image(std::move(image))
        , m_bounds(bounds)
    {
    }

    UIImage* image() const { return m_image.get(); }
    void setImage(RefPtr<UIImage> image) { m_image = std::move(image); }
    CGRect bounds() const { return m_bounds; }
    void setBounds(CGRect bounds) { m_bounds = bounds; }

    // The rectangle the image takes, relative to the baseline (y up).
    CGRect effectiveBounds() const;

private:
    RefPtr<UIImage> m_image;
    CGRect m_bounds {};
};
