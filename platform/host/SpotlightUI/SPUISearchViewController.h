#pragma once

#include <UIKit/UIViewController.h>

// Spotlight's search interface: the list under the search field. It says
// from which edge the search page is being presented (UIKit rectangle-edge
// values: 1 top, 8 right).
class SPUISearchViewController final : public UIViewController {
    OBJC_CLASS(SPUISearchViewController)
public:
    StrongId init() { return StrongId(this); }
    void loadView() override;
    long long presentsFromEdge() const { return m_edge; }
    void setPresentationEdge(long long edge) { m_edge = edge; }

private:
    long long m_edge { 8 };
};
