#pragma once

#include "UIView.h"

#include <string>
#include <vector>

class UINavigationController;

// A controller of one view, as UIKit's. The view is made on first use
// (`loadView`, then `viewDidLoad`); the appearance calls (viewWillAppear:,
// viewDidAppear:, viewWillDisappear:, viewDidDisappear:) come in pairs
// around each appearance transition. All of these go through the runtime so
// that hooks installed on them see every call, as on the phone.
class UIViewController : public UIResponder {
    OBJC_CLASS(UIViewController)
public:
    UIViewController() = default;
    ~UIViewController() override;

    UIView* view();
    void setView(UIView*);
    bool isViewLoaded() const { return m_view != nullptr; }
    void loadViewIfNeeded();

    // Overridden by subclasses; called through the runtime.
    virtual void loadView();
    virtual void viewDidLoad() { }
    virtual void viewWillAppear(bool) { }
    virtual void viewDidAppear(bool) { }
    virtual void viewWillDisappear(bool) { }
    virtual void viewDidDisappear(bool) { }

    // Starts and ends an appearance (or disappearance): sends the will- and
    // did- calls once each, to this controller and to the children whose
    // views are in its view. A repeated or contrary call in between is
    // ignored, as UIKit does.
    void beginAppearanceTransition(bool isAppearing, bool animated);
    void endAppearanceTransition();
    bool isAppeared() const { return m_appearance == Appearance::Appeared; }

    // Containment.
    UIViewController* parentViewController() const { return m_parent; }
    const std::vector<RefPtr<UIViewController>>& childViewControllers() const { return m_children; }
    // Sends willMoveToParentViewController: to the child; the container
    // sends didMoveToParentViewController: when it has placed the view.
    void addChildViewController(UIViewController*);
    // Sends didMoveToParentViewController: with null.
    void removeFromParentViewController();
    virtual void willMoveToParentViewController(UIViewController*) { }
    virtual void didMoveToParentViewController(UIViewController*) { }
    // The nearest navigation controller up the parents.
    UINavigationController* navigationController() const;

    const std::string& title() const { return m_title; }
    void setTitle(std::string title) { m_title = std::move(title); }

private:
    enum class Appearance { Disappeared, Appearing, Appeared, Disappearing };

    RefPtr<UIView> m_view;
    UIViewController* m_parent { nullptr };
    std::vector<RefPtr<UIViewController>> m_children;
    Appearance m_appearance { Appearance::Disappeared };
    bool m_transitionAnimated { false };
    std::string m_title;
};
