#include "SPUINavigationController.h"

#include "../SpringBoard/SBGlyphs.h"

#include <UIKit/UIFont.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>
#include <UIKit/UIScreen.h>

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
    // iOS 9's search field on a dark page: a light translucent capsule with
    // a magnifying glass and a grey placeholder.
    auto field = UIView::create(CGRectMake(8, 8, std::max(0.0, bar->bounds().size.width - 16), 28));
    field->setName("_searchField");
    field->setBackgroundColor(UIColor::colorWithWhite(1, 0.14));
    field->layer().setCornerRadius(5);
    field->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
    auto glyph = make<UIImageView>(SBGlyphs::magnifier(UIScreen::mainScreen()->scale())->imageWithRenderingMode(UIImageRenderingModeAlwaysTemplate));
    glyph->setName("_magnifierView");
    glyph->setTintColor(UIColor::colorWithWhite(1, 0.55));
    glyph->setFrame(CGRectMake(8, 7, 14, 14));
    field->addSubview(glyph.get());
    auto placeholder = UILabel::create(CGRectMake(28, 0, std::max(0.0, field->bounds().size.width - 36), 28));
    placeholder->setName("_placeholderLabel");
    placeholder->setText("Search");
    placeholder->setFont(UIFont::systemFontOfSize(15));
    placeholder->setTextColor(UIColor::colorWithWhite(1, 0.55));
    placeholder->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
    field->addSubview(placeholder.get());
    bar->addSubview(field.get());
}
