#pragma once

#include "../SpotlightUI/SPUINavigationController.h"
#include "../SpotlightUI/SPUISearchViewController.h"

// The search page, presented by a swipe from the side or from the top. Its
// view holds Spotlight's navigation controller and search interface, made
// by name through the runtime when the view loads. The host follows the
// presentation: the blur and the search interface fade in
// with the progress.
class SBSearchViewController final : public UIViewController {
    OBJC_CLASS(SBSearchViewController)
public:
    StrongId init() { return StrongId(this); }
    void loadView() override;
    void updatePresentationProgress(double progress);
    void didFinishPresenting(bool presented);

    SPUISearchViewController* searchViewController() const { return m_searchViewController.get(); }
    SPUINavigationController* navigationController() const { return m_navigationController.get(); }
    bool isPresented() const { return m_presented; }

private:
    RefPtr<SPUISearchViewController> m_searchViewController;
    RefPtr<SPUINavigationController> m_navigationController;
    RefPtr<UIView> m_backdropView;
    bool m_presented { false };
};
