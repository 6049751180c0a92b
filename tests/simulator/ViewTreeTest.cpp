#include <RunProgress.h>
#include <ScenarioRunner.h>
#include <TouchProbe.h>
#include <ViewTree.h>
#include <scenario/Target.h>

#include <UIKit/UIApplication.h>
#include <UIKit/UIImage.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>
#include <UIKit/UIScreen.h>
#include <UIKit/UITapGestureRecognizer.h>
#include <UIKit/UIWindow.h>

#include <gtest/gtest.h>

using namespace sim;

namespace {

// A screen-sized window holding names used twice, views without names and
// subclasses of UIView, some of them hidden or off screen.
class ViewTreeTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        UIApplication::sharedApplication()->setStatusBarOrientation(1);
        window = UIWindow::create(UIScreen::mainScreen()->bounds());
        window->makeKeyAndVisible();
        auto add = [&](UIView* parent, RefPtr<UIView> view, std::string name) {
            view->setName(std::move(name));
            parent->addSubview(view.get());
            return view.get();
        };
        UIView* panel = add(window.get(), UIView::create(CGRectMake(0, 0, 375, 100)), "panel");
        hiddenLabel = add(panel, UILabel::create(CGRectMake(0, 0, 100, 20)), "_timeLabel");
        hiddenLabel->setHidden(true);
        add(panel, UIView::create(CGRectMake(0, 20, 100, 20)), "");
        shownLabel = add(panel, UILabel::create(CGRectMake(0, 40, 100, 20)), "_timeLabel");
        add(panel, UIImageView::create(CGRectMake(500, 0, 10, 10)), "");
        add(window.get(), UIView::create(CGRectMake(0, 100, 375, 100)), "odd@name");
        UIView* button = add(window.get(), UIView::create(CGRectMake(0, 300, 100, 50)), "");
        button->addGestureRecognizer(make<UITapGestureRecognizer>(window.get(), objc::sel_registerName("tapped:")).get());
    }
    void TearDown() override
    {
        window->setHidden(true);
        window = nullptr;
    }

    RefPtr<UIWindow> window;
    UIView* hiddenLabel { nullptr };
    UIView* shownLabel { nullptr };
};

void collect(UIView* view, std::vector<UIView*>& out)
{
    out.push_back(view);
    for (auto& subview : view->subviews())
        collect(subview.get(), out);
}

}

TEST_F(ViewTreeTest, EveryViewsTargetFindsThatViewAgain)
{
    auto texts = ViewTree::targetTexts();
    std::vector<UIView*> views;
    collect(window.get(), views);
    for (UIView* view : views) {
        ASSERT_TRUE(texts.contains(view)) << view->className();
        auto target = parseTarget(texts[view]);
        ASSERT_TRUE(target) << texts[view];
        EXPECT_EQ(ViewTree::find(*target), view) << texts[view];
    }
    EXPECT_EQ(texts[hiddenLabel], "#_timeLabel");
    EXPECT_EQ(texts[shownLabel], "#_timeLabel@1");
    // A name holding '@' keeps its index, so that its own '@' is not read as one.
    EXPECT_EQ(texts[views[6]], "#odd@name@0");
    // Unnamed views count among every view their class target matches, subclasses too
    // (the window, the labels and the image view are all UIViews).
    EXPECT_EQ(texts[views[3]], "UIView@3");
    EXPECT_EQ(texts[views[0]], "UIWindow@0");
    EXPECT_EQ(texts[views[5]], "UIImageView@0");
}

TEST_F(ViewTreeTest, AnAmbiguousTargetIsOneWhoseFirstMatchIsNotOnScreen)
{
    Target timeLabel = *parseTarget("#_timeLabel");
    EXPECT_FALSE(ViewTree::isOnScreen(*hiddenLabel));
    EXPECT_TRUE(ViewTree::isOnScreen(*shownLabel));
    std::string ambiguity = ViewTree::ambiguity(timeLabel);
    EXPECT_EQ(ambiguity, "#_timeLabel matched 2 views: #_timeLabel at [0, 0, 100, 20] (not on screen), #_timeLabel@1 at [0, 40, 100, 20]");
    // Naming the match is a choice, not a mistake; neither is a first match on screen.
    EXPECT_EQ(ViewTree::ambiguity(*parseTarget("#_timeLabel@0")), "");
    hiddenLabel->setHidden(false);
    EXPECT_EQ(ViewTree::ambiguity(timeLabel), "");
    // Off the screen's edge, and under a faded ancestor, is not on screen either.
    EXPECT_FALSE(ViewTree::isOnScreen(*ViewTree::find(*parseTarget("UIImageView"))));
    shownLabel->superview()->setAlpha(0.005);
    EXPECT_FALSE(ViewTree::isOnScreen(*shownLabel));
}

TEST_F(ViewTreeTest, ATouchIsTakenOnlyByARecogniserOfItsKind)
{
    TouchProbe tap = TouchProbe::at(CGPointMake(50, 325), TouchProbe::Gesture::Tap);
    EXPECT_TRUE(tap.wasTaken());
    EXPECT_EQ(tap.description(), "UIView/UIView@7 (tap: tapped:)");
    EXPECT_FALSE(TouchProbe::at(CGPointMake(50, 325), TouchProbe::Gesture::LongPress).wasTaken());
    EXPECT_EQ(TouchProbe::at(CGPointMake(200, 150), TouchProbe::Gesture::Tap).description(), "nothing took the touch (it landed on UIView)");
}

TEST(RunSummary, CountsAndProgressReadAsSentences)
{
    EXPECT_EQ(ScenarioRunner::summary({ 1, 1, 0, 1 }, "out"), "played 1 command, 1 expect held, 0 failed, wrote 1 file in out");
    EXPECT_EQ(ScenarioRunner::summary({ 12, 0, 2, 3 }, "a b"), "played 12 commands, 0 expects held, 2 failed, wrote 3 files in a b");
    EXPECT_EQ(RunProgress::line("advance 400d", 12 * 86400 + 3 * 3600 + 59, 400 * 86400, 41234.4), "advance 400d: 12d 3h of 400d, 41,234 events/s");
    EXPECT_EQ(RunProgress::line("soak 2h", 95, 7200, 999), "soak 2h: 1m 35s of 2h, 999 events/s");
}
