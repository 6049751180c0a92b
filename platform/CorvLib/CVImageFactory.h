#pragma once

#include <CoreGraphics/CGGeometry.h>
#include <objc/objc.h>

class UIColor;
class UIImage;

// The maker library's image helpers. Both answer a new image (or null for a
// null image) and keep the resource name, so a dump still says which image it
// came from.
class CVImageFactory final : public NSObject {
    OBJC_CLASS(CVImageFactory)
public:
    // `image:setScale:`: the image redrawn at the given size in points.
    static RefPtr<UIImage> imageSetScale(UIImage*, CGSize);
    // `image:setColor:`: every opaque pixel painted in the colour, alpha kept.
    static RefPtr<UIImage> imageSetColor(UIImage*, UIColor*);
};
