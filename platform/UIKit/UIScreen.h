#pragma once

#include <CoreGraphics/CGGeometry.h>
#include <objc/objc.h>

// The device's screen. As on iOS 8 and later, `bounds` follows the interface
// orientation: in landscape its width is the long side. Code that wants the
// portrait shape takes the smaller and larger of the two dimensions.
class UIScreen final : public NSObject {
    OBJC_CLASS(UIScreen)
public:
    static UIScreen* mainScreen();

    // Points, in the current interface orientation, at origin 0,0.
    CGRect bounds() const;
    // Pixels of the portrait screen, as iOS 8's nativeBounds.
    CGRect nativeBounds() const;
    double scale() const { return m_scale; }

    // The device's shape: the portrait size in points and the pixels per
    // point. Set by whoever plays the device (an iPhone 6 until then).
    CGSize portraitSize() const { return m_portraitSize; }
    void setDeviceShape(CGSize portraitSize, double scale);

private:
    CGSize m_portraitSize { 375, 667 };
    double m_scale { 2 };
};
