#include "EventsTestSupport.h"

#include <UIKit/UIScrollView.h>
#include <UIKit/UITapGestureRecognizer.h>

using HitTesting = EventsTest;
using Phases = std::vector<std::string>;

namespace {

// Writes down the phases that reach it.
class TouchRecordingView : public UIView {
    OBJC_CLASS(TouchRecordingView)
public:
    using UIView::UIView;
    void touchesBegan(UITouch*) override { phases.push_back("began"); }
    void touchesMoved(UITouch*) override { phases.push_back("moved"); }
    void touchesEnded(UITouch*) override { phases.push_back("ended"); }
    void touchesCancelled(UITouch*) override { phases.push_back("cancelled"); }
    Phases phases;
};

} // namespace

OBJC_IMPLEMENT_CLASS(TouchRecordingView, UIView) { }

TEST_F(HitTesting, SkipsHiddenTransparentAndNonInteractiveViews)
{
    auto parent = addView(CGRectMake(0, 0, 200, 200));
    auto child = addView(CGRectMake(50, 50, 100, 100), parent.get());
    CGPoint point = centre(child.get());
    EXPECT_EQ(app().hitTest(point), child.get());

    child->setHidden(true);
    EXPECT_EQ(app().hitTest(point), parent.get());
    child->setHidden(false);

    child->setAlpha(0.005);
    EXPECT_EQ(app().hitTest(point), parent.get());
    child->setAlpha(0.01);
    EXPECT_EQ(app().hitTest(point), child.get());

    child->setUserInteractionEnabled(false);
    EXPECT_EQ(app().hitTest(point), parent.get());
    // A parent without interaction hides its whole subtree.
    child->setUserInteractionEnabled(true);
    parent->setUserInteractionEnabled(false);
    EXPECT_EQ(app().hitTest(point), window.get());
}

TEST_F(HitTesting, PartsOfASubviewOutsideItsParentAreNotHit)
{
    auto parent = addView(CGRectMake(0, 0, 100, 100));
    auto child = addView(CGRectMake(50, 50, 100, 100), parent.get());
    EXPECT_EQ(app().hitTest({ 75, 75 }), child.get());
    EXPECT_EQ(app().hitTest({ 125, 125 }), window.get());
}

TEST_F(HitTesting, FrontMostSiblingWinsAndCoveredViewsGetNoGestures)
{
    auto back = addView(CGRectMake(0, 0, 100, 100));
    auto front = addView(CGRectMake(0, 0, 100, 100));
    back->addGestureRecognizer(make<UITapGestureRecognizer>(log.get(), OBJC_SEL("single:")).get());
    EXPECT_EQ(app().hitTest({ 50, 50 }), front.get());
    EXPECT_TRUE(app().tapAt({ 50, 50 }));
    EXPECT_TRUE(log->entries.empty());

    window->bringSubviewToFront(back.get());
    app().tapAt({ 50, 50 });
    EXPECT_EQ(log->entries, std::vector<std::string> { "single:ended" });
}

TEST_F(HitTesting, ScrolledContentIsHitWhereItIsShown)
{
    auto scroll = addView<UIScrollView>(CGRectMake(0, 100, 100, 100));
    scroll->setContentSize({ 100, 400 });
    auto row = addView(CGRectMake(0, 200, 100, 50), scroll.get());
    EXPECT_EQ(app().hitTest({ 50, 125 }), scroll.get());
    scroll->setContentOffset({ 0, 200 });
    EXPECT_EQ(app().hitTest({ 50, 125 }), row.get());
    EXPECT_EQ(row->screenFrame(), CGRectMake(0, 100, 100, 50));
}

// A view drawn at a scale, as the music overlay's volume slider is: its
// frame is the box it covers, its bounds that box grown by the inverse of
// the scale, and touches and coordinates go through the scale.
TEST_F(HitTesting, AScaledViewCoversItsFrameAndIsHitOnlyThere)
{
    auto scaled = addView(CGRectZero);
    scaled->setTransform(CGAffineTransformMakeScale(0.5, 0.5));
    scaled->setFrame(CGRectMake(100, 100, 100, 20));
    EXPECT_EQ(scaled->frame(), CGRectMake(100, 100, 100, 20));
    EXPECT_EQ(scaled->bounds().size, CGSizeMake(200, 40));
    EXPECT_EQ(scaled->screenFrame(), CGRectMake(100, 100, 100, 20));
    auto end = addView(CGRectMake(180, 0, 20, 40), scaled.get());
    EXPECT_EQ(end->screenFrame(), CGRectMake(190, 100, 10, 20));
    EXPECT_EQ(end->convertPointToView({ 0, 0 }, nullptr), CGPointMake(190, 100));
    EXPECT_EQ(end->convertPointFromView({ 195, 110 }, nullptr), CGPointMake(10, 20));

    EXPECT_EQ(app().hitTest({ 195, 110 }), end.get());
    EXPECT_EQ(app().hitTest({ 150, 110 }), scaled.get());
    // Inside the untransformed box, outside the drawn one.
    EXPECT_EQ(app().hitTest({ 60, 95 }), window.get());

    // Turning the scale off again shows the bounds at full size, same centre.
    scaled->setTransform(CGAffineTransformIdentity);
    EXPECT_EQ(scaled->frame(), CGRectMake(50, 90, 200, 40));
}

TEST_F(HitTesting, WindowsAreSearchedFrontToBackAndHiddenOnesSkipped)
{
    auto alert = UIWindow::create(CGRectMake(0, 0, 100, 100));
    alert->setWindowLevel(UIWindowLevelAlert);
    alert->setHidden(false);
    auto overlay = UIWindow::create(CGRectMake(50, 50, 100, 100));
    overlay->setHidden(false);

    EXPECT_EQ(app().hitTest({ 75, 75 }), alert.get());
    EXPECT_EQ(app().hitTest({ 125, 125 }), overlay.get());
    // Window coordinates start at the window's origin.
    auto inside = addView(CGRectMake(60, 60, 10, 10), overlay.get());
    EXPECT_EQ(app().hitTest({ 115, 115 }), inside.get());

    alert->setHidden(true);
    EXPECT_EQ(app().hitTest({ 75, 75 }), overlay.get());
    overlay->setHidden(true);
    EXPECT_EQ(app().hitTest({ 75, 75 }), window.get());
}

TEST_F(HitTesting, TouchesClimbTheResponderChainUntilARecogniserTakesThem)
{
    auto parent = addView<TouchRecordingView>(CGRectMake(0, 0, 200, 200));
    auto child = addView(CGRectMake(50, 50, 100, 100), parent.get());
    app().sendTouch(centre(child.get()), UITouchPhaseBegan);
    // The touch stays with the view it began on, wherever it goes.
    app().sendTouch({ 300, 300 }, UITouchPhaseMoved);
    app().sendTouch({ 300, 300 }, UITouchPhaseEnded);
    EXPECT_EQ(parent->phases, (Phases { "began", "moved", "ended" }));

    parent->phases.clear();
    child->addGestureRecognizer(make<UITapGestureRecognizer>(log.get(), OBJC_SEL("single:")).get());
    app().tapAt(centre(child.get()));
    EXPECT_EQ(parent->phases, (Phases { "began", "cancelled" }));

    // The system taking the screen cancels the touch in progress.
    parent->phases.clear();
    app().sendTouch(centre(child.get()), UITouchPhaseBegan);
    app().cancelTouches();
    app().sendTouch(centre(child.get()), UITouchPhaseEnded);
    EXPECT_EQ(parent->phases, (Phases { "began", "cancelled" }));
    EXPECT_EQ(log->entries, std::vector<std::string> { "single:ended" });

    EXPECT_FALSE(app().tapAt({ -10, -10 }));
}
