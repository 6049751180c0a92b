#include "SPUINavigationController.h"

#include <UIKit/UIFont.h>
#include <UIKit/UILabel.h>

#include <algorithm>

OBJC_IMPLEMENT_CLASS(SPUINavigationController, UINavigationController)
{
    c.method<&SPUINavigationController::initWithRootViewController>("initWithRootViewController:");
    c.allocatable();
}

StrongId SPUINavigationController::initWithRootViewController(UIViewController* root)
{
    UINavigationController::initWithRootViewController(root);
    navigationBar()->setName("navigationBar");
    return StrongId(this);
}

void SPUINavigationController::loadView()
{
    UINavigationController::loadView();
    UINavigationBar* bar = navigationBar();
    auto field = UILabel::create(CGRectMake(8, 7, std::max(0.0, bar->bounds().size.width - 16), 30));
    field->setName("_searchField");
    field->setText("  Search");
    field->setFont(UIFont::systemFontOfSize(17));
    field->setTextColor(UIColor::colorWithWhite(1, 0.6));
    field->setBackgroundColor(UIColor::colorWithWhite(1, 0.15));
    field->layer().setCornerRadius(6);
    field->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
    bar->addSubview(field.get());
}
