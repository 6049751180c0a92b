#include "SBHomeScreenView.h"

#include "../HostWorld.h"
#include "SBApplicationIcon.h"

#include <UIKit/UIFont.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>

OBJC_IMPLEMENT_CLASS(SBHomeScreenView, UIView) { }

static constexpr int columns = 4;

SBHomeScreenView::SBHomeScreenView(CGRect frame, double scale)
    : UIView(frame)
    , m_scale(scale)
{
    setName("_homeScreenView");
    reloadIcons();
}

RefPtr<UIView> SBHomeScreenView::makeIconCell(const HostWorld::App& app, double scale)
{
    auto cell = UIView::create(CGRectMake(0, 0, iconSize, cellHeight));
    cell->setName(app.bundleIdentifier);
    auto icon = make<UIImageView>(SBApplicationIcon::iconImageForApp(app, scale));
    icon->setName("_iconImageView");
    icon->setFrame(CGRectMake(0, 0, iconSize, iconSize));
    cell->addSubview(icon.get());
    auto label = UILabel::create(CGRectMake(-8, iconSize + 4, iconSize + 16, 16));
    label->setName("_labelView");
    label->setText(app.name);
    label->setFont(UIFont::systemFontOfSize(12));
    label->setTextColor(UIColor::whiteColor());
    label->setTextAlignment(NSTextAlignmentCenter);
    cell->addSubview(label.get());
    return cell;
}

void SBHomeScreenView::reloadIcons()
{
    while (!subviews().empty())
        subviews().back()->removeFromSuperview();
    for (auto& app : HostWorld::shared().apps())
        addSubview(makeIconCell(app, m_scale).get());
    setNeedsLayout();
}

void SBHomeScreenView::refreshIconCells(UIView* container, double scale)
{
    for (auto& cell : container->subviews()) {
        const HostWorld::App* app = HostWorld::shared().appWithIdentifier(cell->name());
        auto* icon = cell->subviews().empty() ? nullptr : dynamic_cast<UIImageView*>(cell->subviews().front().get());
        if (!app || !icon)
            continue;
        RefPtr<UIImage> image = SBApplicationIcon::iconImageForApp(*app, scale);
        if (image.get() != icon->image())
            icon->setImage(image);
    }
}

void SBHomeScreenView::layoutSubviews()
{
    double width = bounds().size.width;
    double gap = (width - columns * iconSize) / (columns + 1);
    int index = 0;
    for (auto& cell : subviews()) {
        int row = index / columns;
        int column = index % columns;
        cell->setFrame(CGRectMake(gap + column * (iconSize + gap), 28 + row * cellHeight, iconSize, cellHeight));
        ++index;
    }
}
