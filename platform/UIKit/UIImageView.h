#pragma once

#include "UIImage.h"
#include "UIView.h"

#include <vector>

// How an image view's image fills its bounds (UIKit keeps this on UIView;
// here only image views draw content that it applies to).
enum UIViewContentMode : int {
    UIViewContentModeScaleToFill = 0,
    UIViewContentModeScaleAspectFit,
    UIViewContentModeScaleAspectFill,
    UIViewContentModeRedraw,
    UIViewContentModeCenter,
    UIViewContentModeTop,
    UIViewContentModeBottom,
    UIViewContentModeLeft,
    UIViewContentModeRight,
    UIViewContentModeTopLeft,
    UIViewContentModeTopRight,
    UIViewContentModeBottomLeft,
    UIViewContentModeBottomRight,
};

// A view that shows an image, or plays a list of images, as UIKit's
// UIImageView. The animation needs no timer: the frame on show is worked out
// from the virtual clock's monotonic time whenever it is asked for, so it
// advances exactly as time is played.
class UIImageView : public UIView {
    OBJC_CLASS(UIImageView)
public:
    UIImageView();
    explicit UIImageView(CGRect frame);
    // Sized to the image, as initWithImage: does.
    explicit UIImageView(RefPtr<UIImage>);
    static RefPtr<UIImageView> create(CGRect frame = CGRectZero) { return make<UIImageView>(frame); }

    UIImage* image() const { return m_image.get(); }
    void setImage(RefPtr<UIImage> image) { m_image = std::move(image); }
    // Colours template images (UIImageRenderingModeAlwaysTemplate).
    UIColor* tintColor() const { return m_tintColor.get(); }
    void setTintColor(RefPtr<UIColor> color) { m_tintColor = std::move(color); }
    UIViewContentMode contentMode() const { return m_contentMode; }
    void setContentMode(UIViewContentMode mode) { m_contentMode = mode; }

    const std::vector<RefPtr<UIImage>>& animationImages() const { return m_animationImages; }
    void setAnimationImages(std::vector<RefPtr<UIImage>> images) { m_animationImages = std::move(images); }
    // Seconds for one pass over the images; 0 means 1/30 s per image.
    double animationDuration() const { return m_animationDuration; }
    void setAnimationDuration(double duration) { m_animationDuration = std::max(0.0, duration); }
    // Passes to play; 0 repeats for ever.
    int animationRepeatCount() const { return m_animationRepeatCount; }
    void setAnimationRepeatCount(int count) { m_animationRepeatCount = std::max(0, count); }
    void startAnimating();
    void stopAnimating() { m_animating = false; }
    // False again once a limited number of passes has been played.
    bool isAnimating() const;
    // The index of the animation image on show now, or -1 when the view
    // shows its still image.
    int currentAnimationFrame() const;
    // The image on show now: the animation's frame or the still image.
    UIImage* displayedImage() const;

    CGSize sizeThatFits(CGSize) const override;
    void drawContent(RenderContext&) const override;
    void dumpProperties(nlohmann::json&) const override;

private:
    double passDuration() const;

    RefPtr<UIImage> m_image;
    RefPtr<UIColor> m_tintColor;
    UIViewContentMode m_contentMode { UIViewContentModeScaleToFill };
    std::vector<RefPtr<UIImage>> m_animationImages;
    double m_animationDuration { 0 };
    int m_animationRepeatCount { 0 };
    bool m_animating { false };
    double m_animationStart { 0 };
};
