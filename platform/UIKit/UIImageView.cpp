#include "UIImageView.h"

#include "RenderContext.h"

#include <Foundation/VirtualClock.h>

#include <cmath>
#include <nlohmann/json.hpp>

OBJC_IMPLEMENT_CLASS(UIImageView, UIView)
{
    c.method<&UIImageView::image>("image");
    c.method<&UIImageView::setImage>("setImage:");
    c.method<&UIImageView::setTintColor>("setTintColor:");
    c.method<&UIImageView::startAnimating>("startAnimating");
    c.method<&UIImageView::stopAnimating>("stopAnimating");
    c.method<&UIImageView::isAnimating>("isAnimating");
    c.method<&UIImageView::setAnimationDuration>("setAnimationDuration:");
    c.method<&UIImageView::setAnimationRepeatCount>("setAnimationRepeatCount:");
    c.allocatable();
}

UIImageView::UIImageView()
{
    setUserInteractionEnabled(false);
}

UIImageView::UIImageView(CGRect frame)
    : UIImageView()
{
    setFrame(frame);
}

UIImageView::UIImageView(RefPtr<UIImage> image)
    : UIImageView()
{
    if (image)
        setFrame({ {}, image->size() });
    m_image = std::move(image);
}

double UIImageView::passDuration() const
{
    if (m_animationDuration > 0)
        return m_animationDuration;
    return static_cast<double>(m_animationImages.size()) / 30.0;
}

void UIImageView::startAnimating()
{
    if (isAnimating())
        return;
    m_animating = true;
    m_animationStart = VirtualClock::shared().monotonic();
}

bool UIImageView::isAnimating() const
{
    if (!m_animating)
        return false;
    if (m_animationRepeatCount == 0)
        return true;
    double elapsed = VirtualClock::shared().monotonic() - m_animationStart;
    return elapsed < passDuration() * m_animationRepeatCount;
}

int UIImageView::currentAnimationFrame() const
{
    if (m_animationImages.empty() || !isAnimating())
        return -1;
    double duration = passDuration();
    if (duration <= 0)
        return 0;
    double elapsed = VirtualClock::shared().monotonic() - m_animationStart;
    double pass = std::fmod(elapsed, duration) / duration;
    int count = static_cast<int>(m_animationImages.size());
    return std::clamp(static_cast<int>(std::floor(pass * count + 1e-9)), 0, count - 1);
}

UIImage* UIImageView::displayedImage() const
{
    int frame = currentAnimationFrame();
    return frame >= 0 ? m_animationImages[static_cast<size_t>(frame)].get() : m_image.get();
}

CGSize UIImageView::sizeThatFits(CGSize) const
{
    UIImage* image = displayedImage();
    return image ? image->size() : CGSize {};
}

// Where an image of `image` size goes in `bounds` for a content mode.
static CGRect placeImage(CGSize image, CGSize bounds, UIViewContentMode mode)
{
    if (mode == UIViewContentModeScaleToFill || mode == UIViewContentModeRedraw)
        return { {}, bounds };
    CGSize size = image;
    if (mode == UIViewContentModeScaleAspectFit || mode == UIViewContentModeScaleAspectFill) {
        double sx = bounds.width / image.width;
        double sy = bounds.height / image.height;
        double s = mode == UIViewContentModeScaleAspectFit ? std::min(sx, sy) : std::max(sx, sy);
        size = { image.width * s, image.height * s };
    }
    double left = 0;
    double centreX = (bounds.width - size.width) / 2;
    double right = bounds.width - size.width;
    double top = 0;
    double centreY = (bounds.height - size.height) / 2;
    double bottom = bounds.height - size.height;
    switch (mode) {
    case UIViewContentModeTop:
        return { { centreX, top }, size };
    case UIViewContentModeBottom:
        return { { centreX, bottom }, size };
    case UIViewContentModeLeft:
        return { { left, centreY }, size };
    case UIViewContentModeRight:
        return { { right, centreY }, size };
    case UIViewContentModeTopLeft:
        return { { left, top }, size };
    case UIViewContentModeTopRight:
        return { { right, top }, size };
    case UIViewContentModeBottomLeft:
        return { { left, bottom }, size };
    case UIViewContentModeBottomRight:
        return { { right, bottom }, size };
    default:
        return { { centreX, centreY }, size };
    }
}

void UIImageView::drawContent(RenderContext& context) const
{
    UIImage* image = displayedImage();
    if (!image || image->size().width <= 0 || image->size().height <= 0)
        return;
    CGRect rect = placeImage(image->size(), bounds().size, m_contentMode);
    if (image->renderingMode() == UIImageRenderingModeAlwaysTemplate) {
        // Template images take the view's tint (UIKit's default blue).
        RefPtr<UIColor> tint = m_tintColor ? m_tintColor : UIColor::colorWithRed(0, 122 / 255.0, 1, 1);
        image->tintedWithColor(tint.get())->drawInRect(context.cr, rect);
        return;
    }
    image->drawInRect(context.cr, rect);
}

void UIImageView::dumpProperties(nlohmann::json& node) const
{
    UIView::dumpProperties(node);
    if (UIImage* image = displayedImage()) {
        node["image"] = image->name();
        node["imageSize"] = { image->size().width, image->size().height };
    }
    node["tint"] = UIColorHexString(m_tintColor.get());
    node["animating"] = isAnimating();
    node["frames"] = static_cast<int>(m_animationImages.size());
}
