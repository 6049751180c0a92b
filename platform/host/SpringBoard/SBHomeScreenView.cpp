#include "SBHomeScreenView.h"

#include "../HostWorld.h"

#include <UIKit/UIFont.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>
#include <UIKit/RenderContext.h>

#include <cairo.h>

OBJC_IMPLEMENT_CLASS(SBHomeScreenView, UIView) { }

namespace {

constexpr double iconSize = 60;
constexpr double cellHeight = 88;
constexpr int columns = 4;

RefPtr<UIColor> colorFromHex(const std::string& hex)
{
    unsigned value = 0x8e8e93;
    if (hex.size() == 7 && hex[0] == '#')
        value = static_cast<unsigned>(std::strtoul(hex.c_str() + 1, nullptr, 16));
    return UIColor::colorWithRed(((value >> 16) & 0xff) / 255.0, ((value >> 8) & 0xff) / 255.0, (value & 0xff) / 255.0, 1);
}

RefPtr<UIImage> drawnIcon(const HostWorld::App& app, double scale)
{
    auto color = colorFromHex(app.color);
    return UIImage::imageWithSize({ iconSize, iconSize }, scale, [&](cairo_t* cr) {
        addRoundedRectangle(cr, CGRectMake(0, 0, iconSize, iconSize), 13.5);
        cairo_set_source_rgb(cr, color->red(), color->green(), color->blue());
        cairo_fill(cr);
    }, "icon:" + app.bundleIdentifier);
}

} // namespace

SBHomeScreenView::SBHomeScreenView(CGRect frame, std::string artDirectory, double scale)
    : UIView(frame)
    , m_artDirectory(std::move(artDirectory))
    , m_scale(scale)
{
    setName("_homeScreenView");
    reloadIcons();
}

void SBHomeScreenView::reloadIcons()
{
    while (!subviews().empty())
        subviews().back()->removeFromSuperview();
    for (auto& app : HostWorld::shared().apps()) {
        auto cell = UIView::create();
        cell->setName(app.bundleIdentifier);
        RefPtr<UIImage> image;
        if (!m_artDirectory.empty())
            image = UIImage::imageWithContentsOfFile(m_artDirectory + "/icons/" + app.bundleIdentifier + ".png");
        bool drawn = !image;
        if (drawn)
            image = drawnIcon(app, m_scale);
        else
            image->setName("icon:" + app.bundleIdentifier);
        auto icon = make<UIImageView>(image);
        icon->setName("_iconImageView");
        icon->setFrame(CGRectMake(0, 0, iconSize, iconSize));
        cell->addSubview(icon.get());
        if (drawn && !app.name.empty()) {
            auto initial = UILabel::create(icon->bounds());
            initial->setName("_initialLabel");
            initial->setText(app.name.substr(0, 1));
            initial->setFont(UIFont::systemFontOfSize(30));
            initial->setTextColor(UIColor::whiteColor());
            initial->setTextAlignment(NSTextAlignmentCenter);
            icon->addSubview(initial.get());
        }
        auto label = UILabel::create(CGRectMake(-8, iconSize + 4, iconSize + 16, 16));
        label->setName("_labelView");
        label->setText(app.name);
        label->setFont(UIFont::systemFontOfSize(12));
        label->setTextColor(UIColor::whiteColor());
        label->setTextAlignment(NSTextAlignmentCenter);
        cell->addSubview(label.get());
        addSubview(cell.get());
    }
    setNeedsLayout();
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
