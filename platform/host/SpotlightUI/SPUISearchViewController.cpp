#include "SPUISearchViewController.h"

#include "../HostWorld.h"
#include "../SpringBoard/SBHomeScreenView.h"

#include <UIKit/UIFont.h>
#include <UIKit/UILabel.h>
#include <UIKit/UIScreen.h>

#include <algorithm>
#include <vector>

static constexpr size_t suggestionCount = 4;

OBJC_IMPLEMENT_CLASS(SPUISearchViewController, UIViewController)
{
    c.method<&SPUISearchViewController::init>("init");
    c.method<&SPUISearchViewController::presentsFromEdge>("presentsFromEdge");
    c.allocatable();
}

// A row of four apps under the caption: the app switcher's most recent
// ones, or the first installed apps when the switcher is empty. The cells
// keep their share of the width when the screen turns.
static void addSuggestedApps(UIView* view, double top)
{
    const HostWorld& world = HostWorld::shared();
    std::vector<const HostWorld::App*> apps;
    for (auto& identifier : world.switcherApps()) {
        if (auto* app = world.appWithIdentifier(identifier); app && apps.size() < suggestionCount)
            apps.push_back(app);
    }
    for (auto& app : world.apps()) {
        if (apps.size() < suggestionCount && std::find(apps.begin(), apps.end(), &app) == apps.end())
            apps.push_back(&app);
    }
    double width = view->bounds().size.width;
    double gap = (width - suggestionCount * SBHomeScreenView::iconSize) / (suggestionCount + 1);
    for (size_t index = 0; index < apps.size(); ++index) {
        auto cell = SBHomeScreenView::makeIconCell(*apps[index], UIScreen::mainScreen()->scale());
        cell->setFrame(CGRectMake(gap + index * (SBHomeScreenView::iconSize + gap), top, SBHomeScreenView::iconSize, SBHomeScreenView::cellHeight));
        cell->setAutoresizingMask(UIViewAutoresizingFlexibleLeftMargin | UIViewAutoresizingFlexibleRightMargin);
        view->addSubview(cell.get());
    }
}

void SPUISearchViewController::loadView()
{
    auto view = UIView::create(UIScreen::mainScreen()->bounds());
    view->setName("searchResultsView");
    view->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    auto hint = UILabel::create(CGRectMake(16, 80, view->bounds().size.width - 32, 24));
    hint->setName("_suggestionsLabel");
    hint->setText("SIRI APP SUGGESTIONS");
    hint->setFont(UIFont::fontWithName("HelveticaNeue-Medium", 13));
    hint->setTextColor(UIColor::colorWithWhite(1, 0.7));
    hint->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
    view->addSubview(hint.get());
    addSuggestedApps(view.get(), CGRectGetMaxY(hint->frame()) + 12);
    setView(view.get());
}
