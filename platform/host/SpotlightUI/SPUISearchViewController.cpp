#include "SPUISearchViewController.h"

#include <UIKit/UIFont.h>
#include <UIKit/UILabel.h>
#include <UIKit/UIScreen.h>

OBJC_IMPLEMENT_CLASS(SPUISearchViewController, UIViewController)
{
    c.method<&SPUISearchViewController::init>("init");
    c.method<&SPUISearchViewController::presentsFromEdge>("presentsFromEdge");
    c.allocatable();
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
    setView(view.get());
}
