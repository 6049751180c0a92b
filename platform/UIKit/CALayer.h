#pragma once

#include "UIColor.h"

#include <objc/objc.h>

// The drawing properties of a view that UIKit keeps on its layer.
class CALayer final : public NSObject {
    OBJC_CLASS(CALayer)
public:
    // Corners of a rounded mask (UIRectCorner values).
    enum Corner : unsigned {
        TopLeft = 1 << 0,
        TopRight = 1 << 1,
        BottomLeft = 1 << 2,
        BottomRight = 1 << 3,
        AllCorners = 15,
    };

    double cornerRadius() const { return m_cornerRadius; }
    void setCornerRadius(double radius) { m_cornerRadius = radius; }
    bool masksToBounds() const { return m_masksToBounds; }
    void setMasksToBounds(bool masks) { m_masksToBounds = masks; }
    double borderWidth() const { return m_borderWidth; }
    void setBorderWidth(double width) { m_borderWidth = width; }
    UIColor* borderColor() const { return m_borderColor.get(); }
    void setBorderColor(RefPtr<UIColor> color) { m_borderColor = std::move(color); }

    // A rounded-rectangle shape mask with only some corners rounded (what a
    // CAShapeLayer mask of a UIBezierPath with rounded corners gives).
    // Zero corners means no such mask.
    unsigned maskedCorners() const { return m_maskedCorners; }
    double maskCornerRadius() const { return m_maskCornerRadius; }
    void setRoundedCornerMask(unsigned corners, double radius)
    {
        m_maskedCorners = corners;
        m_maskCornerRadius = radius;
    }

private:
    double m_cornerRadius { 0 };
    bool m_masksToBounds { false };
    double m_borderWidth { 0 };
    RefPtr<UIColor> m_borderColor;
    unsigned m_maskedCorners { 0 };
    double m_maskCornerRadius { 0 };
};
