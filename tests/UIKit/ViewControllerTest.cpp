#include "EventsTestSupport.h"

#include <UIKit/UINavigationController.h>

using ViewControllers = EventsTest;
using Calls = std::vector<std::string>;

namespace {

Calls calls;

class RecordingController : public UIViewController {
    OBJC_CLASS(RecordingController)
public:
    explicit RecordingController(std::string name = "vc")
        : m_name(std::move(name))
    {
    }
    void loadView() override
    {
        calls.push_back(m_name + " loadView");
        UIViewController::loadView();
    }
    void viewDidLoad() override { calls.push_back(m_name + " viewDidLoad"); }
    void viewWillAppear(bool) override { calls.push_back(m_name + " willAppear"); }
    void viewDidAppear(bool) override { calls.push_back(m_name + " didAppear"); }
    void viewWillDisappear(bool) override { calls.push_back(m_name + " willDisappear"); }
    void viewDidDisappear(bool) override { calls.push_back(m_name + " didDisappear"); }

private:
    std::string m_name;
};

// Hooks stay for the process: only this class is hooked.
class HookedController : public RecordingController {
    OBJC_CLASS(HookedController)
};

objc::IMP originalDidAppear;
void hookedDidAppear(NSObject* self, objc::SEL cmd, bool animated)
{
    calls.push_back("hook didAppear");
    objc::callOriginal(originalDidAppear, self, cmd, animated);
}

} // namespace

OBJC_IMPLEMENT_CLASS(RecordingController, UIViewController) { }
OBJC_IMPLEMENT_CLASS(HookedController, RecordingController) { }

TEST_F(ViewControllers, TheViewLoadsOnFirstUseOnly)
{
    calls.clear();
    auto controller = make<RecordingController>();
    EXPECT_FALSE(controller->isViewLoaded());
    UIView* view = controller->view();
    EXPECT_EQ(controller->view(), view);
    EXPECT_EQ(calls, (Calls { "vc loadView", "vc viewDidLoad" }));
    EXPECT_EQ(view->bounds(), UIScreen::mainScreen()->bounds());
}

TEST_F(ViewControllers, TheRootControllerAppearsAndDisappearsWithItsWindowThroughTheRuntime)
{
    MSHookMessageEx(HookedController::classObject(), OBJC_SEL("viewDidAppear:"), &hookedDidAppear, &originalDidAppear);
    auto host = UIWindow::create(UIScreen::mainScreen()->bounds());
    auto controller = make<HookedController>();
    host->setRootViewController(controller.get());
    calls.clear();

    host->makeKeyAndVisible();
    host->makeKeyAndVisible();
    EXPECT_EQ(calls, (Calls { "vc willAppear", "hook didAppear", "vc didAppear" }));
    EXPECT_EQ(controller->view()->superview(), host.get());

    calls.clear();
    controller->beginAppearanceTransition(true, false);
    host->setHidden(true);
    EXPECT_EQ(calls, (Calls { "vc willDisappear", "vc didDisappear" }));
    host->setRootViewController(nullptr);
    EXPECT_EQ(controller->view()->superview(), nullptr);
}

TEST_F(ViewControllers, ANavigationControllerShowsItsTopControllerUnderItsBar)
{
    auto root = make<RecordingController>("root");
    auto detail = make<RecordingController>("detail");
    auto navigation = make<UINavigationController>(root.get());
    EXPECT_EQ(root->navigationController(), navigation.get());
    auto host = UIWindow::create(UIScreen::mainScreen()->bounds());
    host->setRootViewController(navigation.get());
    calls.clear();

    host->makeKeyAndVisible();
    EXPECT_EQ(calls, (Calls { "root willAppear", "root didAppear" }));
    UIView* content = navigation->view();
    EXPECT_EQ(content->subviews().back().get(), navigation->navigationBar());
    EXPECT_EQ(navigation->navigationBar()->frame(), CGRectMake(0, 20, 375, 44));

    calls.clear();
    navigation->pushViewController(detail.get(), true);
    EXPECT_EQ(calls, (Calls { "root willDisappear", "detail loadView", "detail viewDidLoad", "detail willAppear", "root didDisappear",
                         "detail didAppear" }));
    EXPECT_EQ(navigation->topViewController(), detail.get());
    EXPECT_EQ(root->view()->superview(), nullptr);

    calls.clear();
    EXPECT_EQ(navigation->popViewControllerAnimated(false), detail);
    EXPECT_EQ(calls, (Calls { "detail willDisappear", "root willAppear", "detail didDisappear", "root didAppear" }));
    EXPECT_EQ(navigation->popViewControllerAnimated(false), nullptr);
    EXPECT_EQ(detail->parentViewController(), nullptr);
    host->setHidden(true);
}
