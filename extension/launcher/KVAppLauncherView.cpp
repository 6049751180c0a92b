#include "KVAppLauncherView.h"

#include "KVAppLauncherAppIconImageView.h"
#include "KVAppList.h"
#include "settings/KVSettings.h"

#include <CorvLib/CVAppItem.h>
#include <CorvLib/CVAppItemsProvider.h>
#include <CorvLib/CVSBUIController.h>
#include <UIKit/UIImage.h>
#include <UIKit/UIScrollView.h>
#include <UIKit/UITapGestureRecognizer.h>

#include <algorithm>
#include <unordered_set>

OBJC_IMPLEMENT_CLASS(KVAppLauncherView, UIView)
{
    c.method<&KVAppLauncherView::changeFrame>("changeFrame:");
    c.method<&KVAppLauncherView::update>("update");
    c.method<&KVAppLauncherView::appIconSingleTapRecognizer>("appIconSingleTapRecognizer:");
    c.ivar<&KVAppLauncherView::_settings>("_settings");
}

// "appLauncherShape" 1: rounded squares; anything else: circles.
static constexpr int squareShape = 1;

KVAppLauncherView::KVAppLauncherView()
{
    setBackgroundColor(UIColor::clearColor());
    setUserInteractionEnabled(true);
    _settings = KVSettings::sharedInstance();
}

void KVAppLauncherView::changeFrame(CGRect panelFrame)
{
    double p = panelFrame.size.width;
    double q = panelFrame.size.height;
    double h = std::max(0.071 * q, 40.0);
    double y;
    if (_settings->location() == KVPanelLocation::NotificationCenter)
        y = q - h - std::max(q, p) * (_settings->shouldShowStatusBar() ? 0.075 : 0.05);
    else
        y = q - h - 10;
    setFrame(CGRectMake(0, y, p, h));
}

std::vector<RefPtr<CVAppItem>> KVAppLauncherView::chosenApps() const
{
    if (!_settings->useCustomApps())
        return CVAppItemsProvider::switcherAppItems(false);
    std::vector<RefPtr<CVAppItem>> apps;
    auto text = KVAppList::textFromFile();
    if (!text)
        return apps;
    // Each line naming an installed app gives an icon, repeats included; an
    // identifier the host did not know is not asked about again, so a list
    // of unknown names costs one look-up per distinct name.
    std::unordered_set<std::string_view> unknown;
    KVAppList::forEachBundleIdentifier(*text, [&](std::string_view identifier) {
        if (unknown.contains(identifier))
            return true;
        if (auto app = CVAppItem::alloc()->initFromIdentifier(std::string(identifier), false))
            apps.push_back(std::move(app));
        else
            unknown.insert(identifier);
        return apps.size() < maximumIcons;
    });
    return apps;
}

void KVAppLauncherView::update()
{
    while (!subviews().empty())
        subviews().back()->removeFromSuperview();

    _scrollView = UIScrollView::create(CGRectMake(20, 5, bounds().size.width - 40, bounds().size.height - 10));
    _scrollView->setName("_scrollView");
    _scrollView->setBackgroundColor(UIColor::clearColor());
    _scrollView->setAlpha(0.8);
    _scrollView->setScrollEnabled(true);
    _scrollView->setShowsHorizontalScrollIndicator(false);
    _scrollView->setCanCancelContentTouches(true);
    addSubview(_scrollView.get());

    bool square = _settings->appLauncherShape() == squareShape;
    double s = _scrollView->frame().size.height;
    double x = 0;
    for (auto& app : chosenApps()) {
        auto icon = KVAppLauncherAppIconImageView::initWithAppItem(app.get());
        icon->setName("_appIcon");
        icon->setFrame(CGRectMake(x, 0, s, s));
        if (square) {
            icon->layer().setCornerRadius(1);
        } else {
            icon->layer().setCornerRadius(s / 2);
            icon->layer().setBorderWidth(2);
            icon->layer().setBorderColor(icon->image() ? icon->image()->mergedColor() : nullptr);
        }
        icon->setClipsToBounds(true);
        _scrollView->addSubview(icon.get());
        icon->addGestureRecognizer(make<UITapGestureRecognizer>(this, OBJC_SEL("appIconSingleTapRecognizer:")).get());
        x += s + 5;
    }
    _scrollView->setContentSize(CGSizeMake(x, _scrollView->frame().size.height));
}

void KVAppLauncherView::appIconSingleTapRecognizer(UIGestureRecognizer* recognizer)
{
    auto* icon = recognizer ? dynamic_cast<KVAppLauncherAppIconImageView*>(recognizer->view()) : nullptr;
    if (!icon || !icon->app())
        return;
    if (_settings->location() == KVPanelLocation::LockScreen)
        CVSBUIController::activateApplicationPromptToUnlockIfNecessary(icon->app());
    else
        CVSBUIController::activateApplication(icon->app());
}
