#include "EventsTestSupport.h"

#include <UIKit/UIControl.h>
#include <UIKit/UILongPressGestureRecognizer.h>
#include <UIKit/UISwipeGestureRecognizer.h>
#include <UIKit/UITapGestureRecognizer.h>

#include <nlohmann/json.hpp>

using GestureRecognizer = EventsTest;
using Entries = std::vector<std::string>;

namespace {

RefPtr<UITapGestureRecognizer> tapRecognizer(NSObject* target, const char* action, int taps = 1)
{
    auto recognizer = make<UITapGestureRecognizer>(target, objc::sel_registerName(action));
    recognizer->setNumberOfTapsRequired(taps);
    return recognizer;
}

objc::IMP originalSingle;
std::vector<NSObject*> hookedSenders;
void hookedSingle(NSObject* self, objc::SEL cmd, NSObject* sender)
{
    hookedSenders.push_back(sender);
    objc::callOriginal(originalSingle, self, cmd, sender);
}

} // namespace

TEST(GestureRecognizerStates, TheTableAllowsOnlyUIKitsMoves)
{
    using S = UIGestureRecognizerState;
    auto allowed = &UIGestureRecognizer::isTransitionAllowed;
    EXPECT_TRUE(allowed(S::UIGestureRecognizerStatePossible, S::UIGestureRecognizerStateRecognized));
    EXPECT_TRUE(allowed(S::UIGestureRecognizerStatePossible, S::UIGestureRecognizerStateFailed));
    EXPECT_TRUE(allowed(S::UIGestureRecognizerStateBegan, S::UIGestureRecognizerStateChanged));
    EXPECT_TRUE(allowed(S::UIGestureRecognizerStateChanged, S::UIGestureRecognizerStateCancelled));
    EXPECT_TRUE(allowed(S::UIGestureRecognizerStateFailed, S::UIGestureRecognizerStatePossible));
    EXPECT_FALSE(allowed(S::UIGestureRecognizerStatePossible, S::UIGestureRecognizerStateChanged));
    EXPECT_FALSE(allowed(S::UIGestureRecognizerStatePossible, S::UIGestureRecognizerStateCancelled));
    EXPECT_FALSE(allowed(S::UIGestureRecognizerStateBegan, S::UIGestureRecognizerStateFailed));
    EXPECT_FALSE(allowed(S::UIGestureRecognizerStateEnded, S::UIGestureRecognizerStateBegan));
    EXPECT_FALSE(allowed(S::UIGestureRecognizerStateFailed, S::UIGestureRecognizerStateEnded));
    EXPECT_FALSE(allowed(static_cast<S>(9), S::UIGestureRecognizerStatePossible));
}

TEST_F(GestureRecognizer, AncestorsRecognisersSeeTheTouchAndTheDeepestTapWins)
{
    auto parent = addView(CGRectMake(0, 0, 200, 200));
    auto child = addView(CGRectMake(50, 50, 100, 100), parent.get());
    parent->addGestureRecognizer(tapRecognizer(log.get(), "single:").get());
    app().tapAt(centre(child.get()));
    EXPECT_EQ(log->entries, Entries { "single:ended" });

    child->addGestureRecognizer(tapRecognizer(log.get(), "button:").get());
    app().tapAt(centre(child.get()));
    EXPECT_EQ(log->entries, (Entries { "single:ended", "button:ended" }));
    // A disabled recogniser takes no part.
    child->gestureRecognizers()[0]->setEnabled(false);
    app().tapAt(centre(child.get()));
    EXPECT_EQ(log->entries.back(), "single:ended");
}

TEST_F(GestureRecognizer, ActionsGoThroughTheRuntimeWithTheRecogniser)
{
    auto view = addView(CGRectMake(0, 0, 100, 100));
    auto recognizer = tapRecognizer(log.get(), "single:");
    recognizer->addTarget(log.get(), OBJC_SEL("bare"));
    // A target without the method is reported, not crashed on.
    auto stranger = make<NSObject>();
    recognizer->addTarget(stranger.get(), OBJC_SEL("missing:"));
    view->addGestureRecognizer(recognizer.get());
    MSHookMessageEx(ActionLog::classObject(), OBJC_SEL("single:"), &hookedSingle, &originalSingle);

    app().tapAt({ 50, 50 });
    EXPECT_EQ(hookedSenders, std::vector<NSObject*> { recognizer.get() });
    EXPECT_EQ(log->entries, (Entries { "single:ended", "bare" }));
    EXPECT_EQ(recognizer->state(), UIGestureRecognizerStatePossible);
    EXPECT_EQ(recognizer->locationInView(view.get()), CGPointMake(50, 50));
}

TEST_F(GestureRecognizer, ASingleTapWaitingForADoubleTapFiresAfterTheTapWindow)
{
    auto view = addView(CGRectMake(0, 0, 100, 100));
    auto single = tapRecognizer(log.get(), "single:");
    auto twice = tapRecognizer(log.get(), "twice:", 2);
    single->requireGestureRecognizerToFail(twice.get());
    view->addGestureRecognizer(single.get());
    view->addGestureRecognizer(twice.get());

    app().tapAt({ 50, 50 });
    EXPECT_TRUE(log->entries.empty());
    advance(UITapGestureRecognizer::maximumTapInterval - 0.01);
    EXPECT_TRUE(log->entries.empty());
    advance(0.02);
    EXPECT_EQ(log->entries, Entries { "single:ended" });

    log->entries.clear();
    app().doubleTapAt({ 50, 50 });
    advance(1);
    EXPECT_EQ(log->entries, Entries { "double:ended" });
}

TEST_F(GestureRecognizer, WithoutARequirementADoubleTapAlsoRunsTheSingleTapTwice)
{
    auto view = addView(CGRectMake(0, 0, 100, 100));
    view->addGestureRecognizer(tapRecognizer(log.get(), "single:").get());
    view->addGestureRecognizer(tapRecognizer(log.get(), "twice:", 2).get());
    app().doubleTapAt({ 50, 50 });
    EXPECT_EQ(log->entries, (Entries { "single:ended", "single:ended", "double:ended" }));
}

TEST_F(GestureRecognizer, ATouchElsewhereEndsTheWaitOfADoubleTap)
{
    auto left = addView(CGRectMake(0, 0, 100, 100));
    auto right = addView(CGRectMake(200, 0, 100, 100));
    auto single = tapRecognizer(log.get(), "single:");
    auto twice = tapRecognizer(log.get(), "twice:", 2);
    single->requireGestureRecognizerToFail(twice.get());
    left->addGestureRecognizer(single.get());
    left->addGestureRecognizer(twice.get());
    right->addGestureRecognizer(tapRecognizer(log.get(), "button:").get());

    app().tapAt(centre(left.get()));
    app().tapAt(centre(right.get()));
    EXPECT_EQ(log->entries, (Entries { "single:ended", "button:ended" }));
}

TEST_F(GestureRecognizer, ALongPressBeginsAfterHalfASecondAndTakesTheTapsAway)
{
    auto view = addView(CGRectMake(0, 0, 100, 100));
    view->addGestureRecognizer(tapRecognizer(log.get(), "single:").get());
    view->addGestureRecognizer(make<UILongPressGestureRecognizer>(log.get(), OBJC_SEL("press:")).get());

    app().sendTouch({ 50, 50 }, UITouchPhaseBegan);
    advance(0.49);
    EXPECT_TRUE(log->entries.empty());
    advance(0.02);
    EXPECT_EQ(log->entries, Entries { "press:began" });
    app().sendTouch({ 55, 50 }, UITouchPhaseMoved);
    app().sendTouch({ 55, 50 }, UITouchPhaseEnded);
    EXPECT_EQ(log->entries, (Entries { "press:began", "press:changed", "press:ended" }));

    log->entries.clear();
    app().longPressAt({ 50, 50 });
    EXPECT_EQ(log->entries, (Entries { "press:began", "press:ended" }));
}

TEST_F(GestureRecognizer, ALongPressFailsWhenTheFingerLiftsEarlyOrStrays)
{
    auto view = addView(CGRectMake(0, 0, 100, 100));
    view->addGestureRecognizer(tapRecognizer(log.get(), "single:").get());
    view->addGestureRecognizer(make<UILongPressGestureRecognizer>(log.get(), OBJC_SEL("press:")).get());

    app().longPressAt({ 50, 50 }, 0.3);
    EXPECT_EQ(log->entries, Entries { "single:ended" });

    log->entries.clear();
    app().sendTouch({ 50, 50 }, UITouchPhaseBegan);
    app().sendTouch({ 50, 70 }, UITouchPhaseMoved);
    advance(1);
    app().sendTouch({ 50, 70 }, UITouchPhaseEnded);
    EXPECT_EQ(log->entries, Entries { "single:ended" });
}

TEST_F(GestureRecognizer, DisablingARecogniserMidGestureCancelsIt)
{
    auto view = addView(CGRectMake(0, 0, 100, 100));
    auto press = make<UILongPressGestureRecognizer>(log.get(), OBJC_SEL("press:"));
    view->addGestureRecognizer(press.get());
    app().sendTouch({ 50, 50 }, UITouchPhaseBegan);
    advance(0.6);
    press->setEnabled(false);
    app().sendTouch({ 50, 50 }, UITouchPhaseEnded);
    EXPECT_EQ(log->entries, (Entries { "press:began", "press:cancelled" }));
}

TEST_F(GestureRecognizer, SwipesRecogniseOnlyTheirDirection)
{
    auto view = addView(CGRectMake(100, 100, 150, 150));
    std::vector<RefPtr<UISwipeGestureRecognizer>> swipes;
    for (unsigned direction : { 1u, 2u, 4u, 8u }) {
        auto swipe = make<UISwipeGestureRecognizer>(log.get(), OBJC_SEL("swipe:"));
        swipe->setDirection(direction);
        view->addGestureRecognizer(swipe.get());
        swipes.push_back(swipe);
    }
    for (auto direction : { UISwipeGestureRecognizerDirectionRight, UISwipeGestureRecognizerDirectionLeft, UISwipeGestureRecognizerDirectionUp,
             UISwipeGestureRecognizerDirectionDown }) {
        log->senders.clear();
        app().swipeAt(centre(view.get()), direction);
        ASSERT_EQ(log->senders.size(), 1u);
        EXPECT_EQ(static_cast<UISwipeGestureRecognizer*>(log->senders[0])->direction(), direction);
    }
    // Too short, or diagonal: no swipe.
    log->senders.clear();
    app().dragAt(centre(view.get()), 30, 0);
    app().dragAt(centre(view.get()), 60, 60);
    EXPECT_TRUE(log->senders.empty());

    nlohmann::json node;
    view->dumpProperties(node);
    EXPECT_EQ(node["gestures"], nlohmann::json({ "swipe-right", "swipe-left", "swipe-up", "swipe-down" }));
}

TEST_F(GestureRecognizer, KindNamesForDumps)
{
    EXPECT_EQ(tapRecognizer(nullptr, "x:")->kindName(), "tap");
    EXPECT_EQ(tapRecognizer(nullptr, "x:", 2)->kindName(), "doubletap");
    EXPECT_EQ(make<UILongPressGestureRecognizer>()->kindName(), "longpress");
    auto swipe = make<UISwipeGestureRecognizer>();
    swipe->setDirection(UISwipeGestureRecognizerDirectionLeft | UISwipeGestureRecognizerDirectionRight);
    EXPECT_EQ(swipe->kindName(), "swipe-right-left");
}

TEST_F(GestureRecognizer, ARecogniserTakenOffItsViewLeavesItsGestureQuietly)
{
    auto view = addView(CGRectMake(0, 0, 100, 100));
    auto press = make<UILongPressGestureRecognizer>(log.get(), OBJC_SEL("press:"));
    view->addGestureRecognizer(press.get());
    app().sendTouch({ 50, 50 }, UITouchPhaseBegan);
    advance(0.6);
    view->removeGestureRecognizer(press.get());
    app().sendTouch({ 50, 50 }, UITouchPhaseEnded);
    EXPECT_EQ(log->entries, Entries { "press:began" });

    // A single tap waiting for a double tap that goes away fires at the next
    // turn of the run loop; a view freed in the middle of a press is no harm.
    log->entries.clear();
    auto single = tapRecognizer(log.get(), "single:");
    auto twice = tapRecognizer(log.get(), "twice:", 2);
    single->requireGestureRecognizerToFail(twice.get());
    view->addGestureRecognizer(single.get());
    view->addGestureRecognizer(twice.get());
    app().tapAt({ 50, 50 });
    view->removeGestureRecognizer(twice.get());
    EXPECT_TRUE(log->entries.empty());
    advance(0);
    EXPECT_EQ(log->entries, Entries { "single:ended" });

    auto doomed = addView(CGRectMake(0, 0, 50, 50));
    addView(CGRectMake(0, 0, 20, 20), doomed.get());
    doomed->addGestureRecognizer(make<UILongPressGestureRecognizer>(log.get(), OBJC_SEL("press:")).get());
    app().sendTouch({ 10, 10 }, UITouchPhaseBegan);
    advance(0.6);
    doomed->removeFromSuperview();
    doomed = nullptr;
    app().sendTouch({ 10, 10 }, UITouchPhaseEnded);
    EXPECT_EQ(log->entries.back(), "press:began");
}

TEST_F(GestureRecognizer, TargetsAreNotKeptAliveAndAreSkippedOnceGone)
{
    // A view whose recognisers and control target the view itself (the
    // usual shape of a panel) is freed with its last outside reference.
    long before = NSObject::liveObjectCount();
    {
        auto panel = make<UIView>(CGRectMake(0, 0, 100, 100));
        auto child = make<UIView>(CGRectMake(0, 0, 50, 50));
        auto button = make<UIControl>(CGRectMake(50, 50, 50, 50));
        panel->addSubview(child.get());
        panel->addSubview(button.get());
        panel->addGestureRecognizer(tapRecognizer(panel.get(), "single:").get());
        child->addGestureRecognizer(make<UILongPressGestureRecognizer>(panel.get(), OBJC_SEL("press:")).get());
        button->addTarget(panel.get(), OBJC_SEL("button:"), UIControlEventTouchUpInside);
        button->addTarget(button.get(), OBJC_SEL("changed:"), UIControlEventTouchUpInside);
    }
    // The layout queue holds views until it runs.
    UIView::layoutPendingViews();
    EXPECT_EQ(NSObject::liveObjectCount(), before);

    // A target that went away is not messaged; the others still are.
    auto view = addView(CGRectMake(0, 0, 100, 100));
    auto gone = make<ActionLog>();
    auto recognizer = tapRecognizer(gone.get(), "single:");
    recognizer->addTarget(log.get(), OBJC_SEL("single:"));
    view->addGestureRecognizer(recognizer.get());
    auto button = addView<UIControl>(CGRectMake(0, 100, 100, 100));
    button->addTarget(gone.get(), OBJC_SEL("button:"), UIControlEventTouchUpInside);
    button->addTarget(log.get(), OBJC_SEL("button:"), UIControlEventTouchUpInside);
    gone = nullptr;
    app().tapAt({ 50, 50 });
    app().tapAt({ 50, 150 });
    EXPECT_EQ(log->entries, (Entries { "single:ended", "button" }));
}
