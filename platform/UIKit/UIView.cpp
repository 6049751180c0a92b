#include "UIView.h"

#include "UIGestureRecognizer.h"
#include "UIWindow.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

OBJC_IMPLEMENT_CLASS(UIResponder, NSObject) { }

void UIResponder::touchesBegan(UITouch* touch)
{
    if (UIResponder* next = nextResponder())
        next->touchesBegan(touch);
}

void UIResponder::touchesMoved(UITouch* touch)
{
    if (UIResponder* next = nextResponder())
        next->touchesMoved(touch);
}

void UIResponder::touchesEnded(UITouch* touch)
{
    if (UIResponder* next = nextResponder())
        next->touchesEnded(touch);
}

void UIResponder::touchesCancelled(UITouch* touch)
{
    if (UIResponder* next = nextResponder())
        next->touchesCancelled(touch);
}

OBJC_IMPLEMENT_CLASS(UIView, UIResponder)
{
    c.method<&UIView::initWithFrame>("initWithFrame:");
    c.method<&UIView::layoutSubviews>("layoutSubviews");
    c.method<&UIView::frame>("frame");
    c.method<&UIView::setFrame>("setFrame:");
    c.method<&UIView::bounds>("bounds");
    c.method<&UIView::isHidden>("isHidden");
    c.method<&UIView::setHidden>("setHidden:");
    c.method<&UIView::alpha>("alpha");
    c.method<&UIView::setAlpha>("setAlpha:");
    c.method<&UIView::superview>("superview");
    c.method<&UIView::addSubview>("addSubview:");
    c.method<&UIView::removeFromSuperview>("removeFromSuperview");
    c.method<&UIView::setNeedsLayout>("setNeedsLayout");
    c.method<&UIView::layoutIfNeeded>("layoutIfNeeded");
    c.allocatable();
}

// Views waiting for their layoutSubviews, in the order they asked.
static std::vector<RefPtr<UIView>>& pendingLayouts()
{
    static auto* views = new std::vector<RefPtr<UIView>>();
    return *views;
}

UIView::UIView(CGRect frame)
    : m_frame(frame)
    , m_bounds { {}, frame.size }
{
}

UIView::~UIView()
{
    for (auto& subview : m_subviews)
        subview->m_superview = nullptr;
    for (auto& recognizer : m_gestureRecognizers)
        recognizer->setView(nullptr);
}

StrongId UIView::initWithFrame(CGRect frame)
{
    setFrame(frame);
    return StrongId(this);
}

CGRect UIView::frame() const
{
    if (CGAffineTransformIsIdentity(m_transform))
        return m_frame;
    CGPoint corners[] = { { 0, 0 }, { m_bounds.size.width, 0 }, { 0, m_bounds.size.height }, { m_bounds.size.width, m_bounds.size.height } };
    double minX = INFINITY, minY = INFINITY, maxX = -INFINITY, maxY = -INFINITY;
    for (CGPoint corner : corners) {
        CGPoint p = pointToSuperview({ corner.x + m_bounds.origin.x, corner.y + m_bounds.origin.y });
        minX = std::min(minX, p.x), maxX = std::max(maxX, p.x);
        minY = std::min(minY, p.y), maxY = std::max(maxY, p.y);
    }
    return CGRectMake(minX, minY, maxX - minX, maxY - minY);
}

void UIView::setFrame(CGRect frame)
{
    willChangeAnimatableProperty();
    if (!CGAffineTransformIsIdentity(m_transform)) {
        // UIKit leaves other transforms undefined; a scale keeps its meaning.
        const CGAffineTransform& t = m_transform;
        CGSize size = m_bounds.size;
        if (t.b == 0 && t.c == 0 && t.a != 0 && t.d != 0)
            size = { frame.size.width / std::abs(t.a), frame.size.height / std::abs(t.d) };
        CGPoint centre { CGRectGetMidX(frame) - t.tx, CGRectGetMidY(frame) - t.ty };
        frame = CGRectMake(centre.x - size.width / 2, centre.y - size.height / 2, size.width, size.height);
    }
    CGSize oldSize = m_bounds.size;
    m_frame = frame;
    if (oldSize != frame.size) {
        m_bounds.size = frame.size;
        boundsSizeDidChange(oldSize);
    }
}

void UIView::setBounds(CGRect bounds)
{
    willChangeAnimatableProperty();
    CGSize oldSize = m_bounds.size;
    m_bounds = bounds;
    if (oldSize != bounds.size) {
        // The frame keeps its centre, as UIKit's does.
        CGPoint centre = center();
        m_frame.size = bounds.size;
        m_frame.origin = { centre.x - bounds.size.width / 2, centre.y - bounds.size.height / 2 };
        boundsSizeDidChange(oldSize);
    }
}

void UIView::setCenter(CGPoint centre)
{
    willChangeAnimatableProperty();
    m_frame.origin = { centre.x - m_frame.size.width / 2, centre.y - m_frame.size.height / 2 };
}

void UIView::setAlpha(double alpha)
{
    willChangeAnimatableProperty();
    m_alpha = alpha;
}

void UIView::boundsSizeDidChange(CGSize oldSize)
{
    autoresizeSubviews(oldSize);
    setNeedsLayout();
}

void UIView::autoresizeSubviews(CGSize oldSize)
{
    double dw = m_bounds.size.width - oldSize.width;
    double dh = m_bounds.size.height - oldSize.height;
    for (auto& subview : m_subviews) {
        unsigned mask = subview->m_autoresizingMask;
        if (!mask)
            continue;
        CGRect frame = subview->m_frame;
        // Share the change among the flexible parts, as UIKit does.
        auto distribute = [](double delta, bool leading, bool size, bool trailing, double& origin, double& length) {
            int parts = leading + size + trailing;
            if (!parts)
                return;
            double share = delta / parts;
            if (leading)
                origin += share;
            if (size)
                length += share;
        };
        distribute(dw, mask & UIViewAutoresizingFlexibleLeftMargin, mask & UIViewAutoresizingFlexibleWidth,
            mask & UIViewAutoresizingFlexibleRightMargin, frame.origin.x, frame.size.width);
        distribute(dh, mask & UIViewAutoresizingFlexibleTopMargin, mask & UIViewAutoresizingFlexibleHeight,
            mask & UIViewAutoresizingFlexibleBottomMargin, frame.origin.y, frame.size.height);
        subview->setFrame(frame);
    }
}

void UIView::addSubview(UIView* view)
{
    if (!view || view == this)
        return;
    insertSubviewAtIndex(view, m_subviews.size() + (view->m_superview == this ? -1 : 0));
}

void UIView::insertSubviewAtIndex(UIView* view, size_t index)
{
    if (!view || view == this)
        return;
    RefPtr<UIView> protect(view);
    UIWindow* oldWindow = view->window();
    if (view->m_superview)
        view->removeFromSuperview();
    index = std::min(index, m_subviews.size());
    m_subviews.insert(m_subviews.begin() + static_cast<long>(index), protect);
    view->m_superview = this;
    view->didMoveToSuperview();
    if (view->window() != oldWindow)
        view->notifyMovedToWindow();
    setNeedsLayout();
}

void UIView::insertSubviewAboveSubview(UIView* view, UIView* sibling)
{
    auto it = std::find(m_subviews.begin(), m_subviews.end(), sibling);
    if (it == m_subviews.end())
        return addSubview(view);
    size_t index = static_cast<size_t>(it - m_subviews.begin()) + 1;
    if (view && view->m_superview == this) {
        auto self = std::find(m_subviews.begin(), m_subviews.end(), view);
        if (self - m_subviews.begin() < it - m_subviews.begin())
            --index;
    }
    insertSubviewAtIndex(view, index);
}

void UIView::insertSubviewBelowSubview(UIView* view, UIView* sibling)
{
    auto it = std::find(m_subviews.begin(), m_subviews.end(), sibling);
    if (it == m_subviews.end())
        return addSubview(view);
    size_t index = static_cast<size_t>(it - m_subviews.begin());
    if (view && view->m_superview == this) {
        auto self = std::find(m_subviews.begin(), m_subviews.end(), view);
        if (self - m_subviews.begin() < it - m_subviews.begin())
            --index;
    }
    insertSubviewAtIndex(view, index);
}

void UIView::removeFromSuperview()
{
    UIView* parent = m_superview;
    if (!parent)
        return;
    RefPtr<UIView> protect(this);
    bool hadWindow = window() != nullptr;
    auto& siblings = parent->m_subviews;
    siblings.erase(std::remove(siblings.begin(), siblings.end(), this), siblings.end());
    m_superview = nullptr;
    didMoveToSuperview();
    if (hadWindow)
        notifyMovedToWindow();
    parent->setNeedsLayout();
}

void UIView::bringSubviewToFront(UIView* view)
{
    auto it = std::find(m_subviews.begin(), m_subviews.end(), view);
    if (it == m_subviews.end())
        return;
    RefPtr<UIView> protect(view);
    m_subviews.erase(it);
    m_subviews.push_back(protect);
}

void UIView::sendSubviewToBack(UIView* view)
{
    auto it = std::find(m_subviews.begin(), m_subviews.end(), view);
    if (it == m_subviews.end())
        return;
    RefPtr<UIView> protect(view);
    m_subviews.erase(it);
    m_subviews.insert(m_subviews.begin(), protect);
}

bool UIView::isDescendantOfView(const UIView* view) const
{
    for (const UIView* v = this; v; v = v->m_superview) {
        if (v == view)
            return true;
    }
    return false;
}

UIWindow* UIView::window() const { return m_superview ? m_superview->window() : nullptr; }

void UIView::notifyMovedToWindow()
{
    didMoveToWindow();
    for (auto& subview : m_subviews)
        subview->notifyMovedToWindow();
}

void UIView::setNeedsLayout()
{
    if (m_needsLayout)
        return;
    m_needsLayout = true;
    pendingLayouts().push_back(RefPtr<UIView>(this));
}

void UIView::layoutIfNeeded()
{
    if (!m_needsLayout)
        return;
    m_needsLayout = false;
    RefPtr<UIView> protect(this);
    objc::send(this, OBJC_SEL("layoutSubviews"));
}

void UIView::layoutPendingViews()
{
    // Layout may ask for more layout; keep going until nothing is left, with
    // a bound so that a view that always asks again cannot hang the host.
    auto& pending = pendingLayouts();
    for (int round = 0; round < 16 && !pending.empty(); ++round) {
        auto batch = std::move(pending);
        pending.clear();
        for (auto& view : batch)
            view->layoutIfNeeded();
    }
}

void UIView::sizeToFit()
{
    CGSize size = sizeThatFits(m_bounds.size);
    setFrame(CGRectMake(m_frame.origin.x, m_frame.origin.y, size.width, size.height));
}

CGPoint UIView::convertPointToView(CGPoint point, const UIView* view) const
{
    // Up to the root in screen-space, then down into the target.
    CGPoint p = point;
    for (const UIView* v = this; v; v = v->m_superview)
        p = v->pointToSuperview(p);
    if (!view)
        return p;
    return view->convertPointFromView(p, nullptr);
}

CGPoint UIView::convertPointFromView(CGPoint point, const UIView* view) const
{
    CGPoint p = view ? view->convertPointToView(point, nullptr) : point;
    // Down from the root, through each view's transform.
    std::vector<const UIView*> chain;
    for (const UIView* v = this; v; v = v->m_superview)
        chain.push_back(v);
    for (auto it = chain.rbegin(); it != chain.rend(); ++it)
        p = (*it)->pointFromSuperview(p);
    return p;
}

CGRect UIView::convertRectToView(CGRect rect, const UIView* view) const
{
    // The box around the four corners: a transform on the way may scale or
    // turn the rectangle.
    CGPoint a = convertPointToView(rect.origin, view);
    CGPoint b = convertPointToView({ CGRectGetMaxX(rect), CGRectGetMaxY(rect) }, view);
    CGPoint c = convertPointToView({ CGRectGetMaxX(rect), rect.origin.y }, view);
    CGPoint d = convertPointToView({ rect.origin.x, CGRectGetMaxY(rect) }, view);
    double minX = std::min({ a.x, b.x, c.x, d.x }), minY = std::min({ a.y, b.y, c.y, d.y });
    return CGRectMake(minX, minY, std::max({ a.x, b.x, c.x, d.x }) - minX, std::max({ a.y, b.y, c.y, d.y }) - minY);
}

CGPoint UIView::pointToSuperview(CGPoint point) const
{
    CGPoint p { point.x - m_bounds.origin.x, point.y - m_bounds.origin.y };
    if (CGAffineTransformIsIdentity(m_transform))
        return { p.x + m_frame.origin.x, p.y + m_frame.origin.y };
    const CGAffineTransform& t = m_transform;
    double dx = p.x - m_frame.size.width / 2, dy = p.y - m_frame.size.height / 2;
    return { CGRectGetMidX(m_frame) + t.a * dx + t.c * dy + t.tx, CGRectGetMidY(m_frame) + t.b * dx + t.d * dy + t.ty };
}

CGPoint UIView::pointFromSuperview(CGPoint point) const
{
    if (CGAffineTransformIsIdentity(m_transform))
        return { point.x - m_frame.origin.x + m_bounds.origin.x, point.y - m_frame.origin.y + m_bounds.origin.y };
    const CGAffineTransform& t = m_transform;
    double determinant = t.a * t.d - t.b * t.c;
    if (determinant == 0)
        return { NAN, NAN };
    double dx = point.x - CGRectGetMidX(m_frame) - t.tx, dy = point.y - CGRectGetMidY(m_frame) - t.ty;
    double x = (t.d * dx - t.c * dy) / determinant, y = (-t.b * dx + t.a * dy) / determinant;
    return { x + m_frame.size.width / 2 + m_bounds.origin.x, y + m_frame.size.height / 2 + m_bounds.origin.y };
}

CGRect UIView::screenFrame() const { return convertRectToView(m_bounds, nullptr); }

void UIView::addGestureRecognizer(UIGestureRecognizer* recognizer)
{
    if (!recognizer)
        return;
    if (recognizer->view())
        recognizer->view()->removeGestureRecognizer(recognizer);
    m_gestureRecognizers.push_back(RefPtr<UIGestureRecognizer>(recognizer));
    recognizer->setView(this);
}

void UIView::removeGestureRecognizer(UIGestureRecognizer* recognizer)
{
    auto it = std::find(m_gestureRecognizers.begin(), m_gestureRecognizers.end(), recognizer);
    if (it == m_gestureRecognizers.end())
        return;
    recognizer->setView(nullptr);
    m_gestureRecognizers.erase(it);
}

bool UIView::pointInside(CGPoint point) const { return CGRectContainsPoint(m_bounds, point); }

UIView* UIView::hitTest(CGPoint point)
{
    if (m_hidden || !m_userInteractionEnabled || m_alpha < 0.01 || !pointInside(point))
        return nullptr;
    for (auto it = m_subviews.rbegin(); it != m_subviews.rend(); ++it) {
        UIView* subview = it->get();
        if (UIView* hit = subview->hitTest(subview->pointFromSuperview(point)))
            return hit;
    }
    return this;
}

void UIView::dumpProperties(nlohmann::json& node) const
{
    CGRect screen = screenFrame();
    node["class"] = className();
    node["name"] = m_name;
    CGRect frame = this->frame();
    node["frame"] = { frame.origin.x, frame.origin.y, frame.size.width, frame.size.height };
    if (!CGAffineTransformIsIdentity(m_transform)) {
        // The frame above is the transformed box; how the drawing is scaled
        // or turned to cover it is told apart.
        const CGAffineTransform& t = m_transform;
        if (t.b == 0 && t.c == 0 && t.tx == 0 && t.ty == 0 && t.a == t.d)
            node["drawScale"] = t.a;
        else
            node["transform"] = { t.a, t.b, t.c, t.d, t.tx, t.ty };
    }
    node["screen"] = { screen.origin.x, screen.origin.y, screen.size.width, screen.size.height };
    node["hidden"] = m_hidden;
    node["alpha"] = m_alpha;
    node["interactive"] = m_userInteractionEnabled;
    node["background"] = UIColorHexString(m_backgroundColor.get());
    node["cornerRadius"] = m_layer->cornerRadius();
    node["clips"] = m_layer->masksToBounds();
    node["borderWidth"] = m_layer->borderWidth();
    node["borderColor"] = UIColorHexString(m_layer->borderColor());
    if (unsigned corners = m_layer->maskedCorners()) {
        auto list = nlohmann::json::array();
        if (corners & CALayer::TopLeft)
            list.push_back("tl");
        if (corners & CALayer::TopRight)
            list.push_back("tr");
        if (corners & CALayer::BottomLeft)
            list.push_back("bl");
        if (corners & CALayer::BottomRight)
            list.push_back("br");
        node["corners"] = list;
    }
    auto gestures = nlohmann::json::array();
    for (auto& recognizer : m_gestureRecognizers) {
        // Recognisers a view makes for itself (a scroll view's pan) have no
        // kind name and are not listed.
        if (auto kind = recognizer->kindName(); !kind.empty())
            gestures.push_back(kind);
    }
    node["gestures"] = gestures;
}
