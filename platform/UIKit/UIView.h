#pragma once

#include "CALayer.h"
#include "UIColor.h"

#include <CoreGraphics/CGGeometry.h>
#include <objc/objc.h>

#include <nlohmann/json_fwd.hpp>
#include <functional>
#include <string>
#include <vector>

#include "UIGestureRecognizer.h"
class UITouch;
class UIWindow;
struct RenderContext;

enum UIViewAutoresizing : unsigned {
    UIViewAutoresizingNone = 0,
    UIViewAutoresizingFlexibleLeftMargin = 1 << 0,
    UIViewAutoresizingFlexibleWidth = 1 << 1,
    UIViewAutoresizingFlexibleRightMargin = 1 << 2,
    UIViewAutoresizingFlexibleTopMargin = 1 << 3,
    UIViewAutoresizingFlexibleHeight = 1 << 4,
    UIViewAutoresizingFlexibleBottomMargin = 1 << 5,
};

// Touches reach views through the responder chain: a responder that does
// not handle a phase passes it on to its next responder (a view's superview),
// as UIKit's default implementations do. There is one finger, so each phase
// carries one touch.
class UIResponder : public NSObject {
    OBJC_CLASS(UIResponder)
public:
    virtual UIResponder* nextResponder() const { return nullptr; }
    virtual void touchesBegan(UITouch*);
    virtual void touchesMoved(UITouch*);
    virtual void touchesEnded(UITouch*);
    virtual void touchesCancelled(UITouch*);
};

// A rectangle on screen with subviews, as UIKit's UIView. Geometry follows
// UIKit: `frame` is in the superview's coordinates, `bounds` in the view's
// own; changing the frame's size resizes the bounds, lays out flexible
// subviews again and asks for layoutSubviews at the end of the current
// run-loop turn.
//
// layoutSubviews and initWithFrame: are dispatched through the runtime so
// that hooks installed on them see every call, as on the phone.
class UIView : public UIResponder {
    OBJC_CLASS(UIView)
public:
    UIView() = default;
    explicit UIView(CGRect frame);
    ~UIView() override;
    static RefPtr<UIView> create(CGRect frame = CGRectZero) { return make<UIView>(frame); }

    // The designated initialiser for objects made by `alloc`; answers self.
    virtual StrongId initWithFrame(CGRect frame);

    // With a transform, as in UIKit, the frame is the box the transformed
    // view covers in its superview, and setting it (for a scale) sizes the
    // bounds so that the drawing covers that box; the view turns and scales
    // about its centre.
    CGRect frame() const;
    virtual void setFrame(CGRect);
    CGRect bounds() const { return m_bounds; }
    void setBounds(CGRect);
    CGPoint center() const { return { CGRectGetMidX(m_frame), CGRectGetMidY(m_frame) }; }
    void setCenter(CGPoint);
    CGAffineTransform transform() const { return m_transform; }
    void setTransform(CGAffineTransform transform) { m_transform = transform; }
    // A point of the superview's coordinates in the view's own, and back.
    CGPoint pointFromSuperview(CGPoint) const;
    CGPoint pointToSuperview(CGPoint) const;

    bool isHidden() const { return m_hidden; }
    virtual void setHidden(bool hidden) { m_hidden = hidden; }
    double alpha() const { return m_alpha; }
    void setAlpha(double);
    UIColor* backgroundColor() const { return m_backgroundColor.get(); }
    void setBackgroundColor(RefPtr<UIColor> color) { m_backgroundColor = std::move(color); }
    bool isUserInteractionEnabled() const { return m_userInteractionEnabled; }
    void setUserInteractionEnabled(bool enabled) { m_userInteractionEnabled = enabled; }
    bool clipsToBounds() const { return m_layer->masksToBounds(); }
    void setClipsToBounds(bool clips) { m_layer->setMasksToBounds(clips); }
    unsigned autoresizingMask() const { return m_autoresizingMask; }
    void setAutoresizingMask(unsigned mask) { m_autoresizingMask = mask; }
    int tag() const { return m_tag; }
    void setTag(int tag) { m_tag = tag; }
    CALayer& layer() const { return *m_layer; }

    // The name under which the view's owner keeps it (an instance variable
    // name such as "_timeDateLabel"); shown in dumps and used as a target.
    const std::string& name() const { return m_name; }
    void setName(std::string name) { m_name = std::move(name); }

    // The tree.
    UIView* superview() const { return m_superview; }
    const std::vector<RefPtr<UIView>>& subviews() const { return m_subviews; }
    void addSubview(UIView*);
    void insertSubviewAtIndex(UIView*, size_t index);
    void insertSubviewAboveSubview(UIView*, UIView* sibling);
    void insertSubviewBelowSubview(UIView*, UIView* sibling);
    void removeFromSuperview();
    void bringSubviewToFront(UIView*);
    void sendSubviewToBack(UIView*);
    bool isDescendantOfView(const UIView*) const;
    virtual UIWindow* window() const;
    UIResponder* nextResponder() const override { return m_superview; }

    // Layout.
    void setNeedsLayout();
    bool needsLayout() const { return m_needsLayout; }
    void layoutIfNeeded();
    virtual void layoutSubviews() { }
    virtual CGSize sizeThatFits(CGSize size) const { return m_bounds.size; }
    void sizeToFit();

    // Geometry between views; a null view means the screen (window) space.
    CGPoint convertPointToView(CGPoint, const UIView* view) const;
    CGPoint convertPointFromView(CGPoint, const UIView* view) const;
    CGRect convertRectToView(CGRect, const UIView* view) const;
    // The view's frame in screen points.
    CGRect screenFrame() const;

    // Events.
    void addGestureRecognizer(UIGestureRecognizer*);
    void removeGestureRecognizer(UIGestureRecognizer*);
    const std::vector<RefPtr<UIGestureRecognizer>>& gestureRecognizers() const { return m_gestureRecognizers; }
    virtual bool pointInside(CGPoint point) const;
    // The front-most view under the point (in this view's coordinates) that
    // can take touches: hidden views, views with interaction off, views with
    // alpha below 0.01 and points outside the bounds are skipped.
    virtual UIView* hitTest(CGPoint point);
    // Whether a touch that lands on this view keeps the recogniser, attached
    // to one of its ancestors, out of the gesture. Controls answer YES for
    // the gestures that would take their own action away (UIKit does this
    // since iOS 6: a button inside a tappable view still gets its taps).
    virtual bool preventsAncestorGestureRecognizer(const UIGestureRecognizer&) const { return false; }

    // Animation on the virtual clock. The block's changes take effect at
    // once, as UIKit's model values do; what the screen would show meanwhile
    // is kept (see presentationFrame) and the completion runs, finished, on
    // the run loop when the duration has passed.
    static void animateWithDuration(double duration, std::function<void()> animations, std::function<void(bool)> completion = nullptr);
    static void animateWithDuration(double duration, double delay, unsigned options, std::function<void()> animations,
        std::function<void(bool)> completion);
    // The frame and alpha in flight at the current time (linear between the
    // values before and after the block), for a renderer that wants them.
    CGRect presentationFrame() const;
    double presentationAlpha() const;

    // Drawing and introspection, used by the renderer and the simulator.
    virtual void drawContent(RenderContext&) const { }
    virtual void dumpProperties(nlohmann::json&) const;

    // Runs the layout of every view that asked for it; UIKit does this at
    // the end of each run-loop turn.
    static void layoutPendingViews();

protected:
    virtual void didMoveToSuperview() { }
    virtual void didMoveToWindow() { }
    virtual void boundsSizeDidChange(CGSize oldSize);

private:
    void autoresizeSubviews(CGSize oldSize);
    void notifyMovedToWindow();

    void willChangeAnimatableProperty();

    // Untransformed: the centre and the bounds' size.
    CGRect m_frame {};
    CGRect m_bounds {};
    CGAffineTransform m_transform {};
    bool m_hidden { false };
    double m_alpha { 1 };
    RefPtr<UIColor> m_backgroundColor;
    bool m_userInteractionEnabled { true };
    unsigned m_autoresizingMask { UIViewAutoresizingNone };
    int m_tag { 0 };
    bool m_needsLayout { false };
    RefPtr<CALayer> m_layer { make<CALayer>() };
    std::string m_name;
    UIView* m_superview { nullptr };
    std::vector<RefPtr<UIView>> m_subviews;
    std::vector<RefPtr<UIGestureRecognizer>> m_gestureRecognizers;
};
