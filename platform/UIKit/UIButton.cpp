#include "UIButton.h"

#include "RenderContext.h"

#include <algorithm>
#include <nlohmann/json.hpp>

OBJC_IMPLEMENT_CLASS(UIButton, UIControl)
{
    c.classMethod<&UIButton::buttonWithType>("buttonWithType:");
    c.method<&UIButton::setTitle>("setTitle:forState:");
    c.method<&UIButton::titleForState>("titleForState:");
    c.method<&UIButton::setImage>("setImage:forState:");
    c.method<&UIButton::imageForState>("imageForState:");
    c.method<&UIButton::setBackgroundImage>("setBackgroundImage:forState:");
    c.method<&UIButton::backgroundImageForState>("backgroundImageForState:");
    c.allocatable();
}

RefPtr<UIButton> UIButton::buttonWithType(int type)
{
    auto button = make<UIButton>();
    button->m_buttonType = type;
    return button;
}

template<typename Map>
auto UIButton::lookUp(const Map& values, unsigned state) -> typename Map::mapped_type
{
    if (auto it = values.find(state); it != values.end())
        return it->second;
    if (auto it = values.find(UIControlStateNormal); it != values.end())
        return it->second;
    return {};
}

void UIButton::setTitle(std::string title, unsigned state) { m_titles[state] = std::move(title); }

std::string UIButton::titleForState(unsigned state) const { return lookUp(m_titles, state); }

void UIButton::setTitleColor(RefPtr<UIColor> color, unsigned state) { m_titleColors[state] = std::move(color); }

UIColor* UIButton::titleColorForState(unsigned state) const { return lookUp(m_titleColors, state).get(); }

void UIButton::setImage(RefPtr<UIImage> image, unsigned state) { m_images[state] = std::move(image); }

UIImage* UIButton::imageForState(unsigned state) const { return lookUp(m_images, state).get(); }

void UIButton::setBackgroundImage(RefPtr<UIImage> image, unsigned state) { m_backgroundImages[state] = std::move(image); }

UIImage* UIButton::backgroundImageForState(unsigned state) const { return lookUp(m_backgroundImages, state).get(); }

void UIButton::drawContent(RenderContext& context) const
{
    CGRect area = bounds();
    area.origin = {};
    if (UIImage* background = currentBackgroundImage())
        background->drawInRect(context.cr, area);
    if (UIImage* image = currentImage()) {
        CGSize size = image->size();
        double fit = std::min({ 1.0, size.width > 0 ? area.size.width / size.width : 1.0, size.height > 0 ? area.size.height / size.height : 1.0 });
        CGSize shown { size.width * fit, size.height * fit };
        image->drawInRect(context.cr, CGRectMake((area.size.width - shown.width) / 2, (area.size.height - shown.height) / 2, shown.width, shown.height));
    }
}

void UIButton::dumpProperties(nlohmann::json& node) const
{
    UIControl::dumpProperties(node);
    if (auto title = currentTitle(); !title.empty())
        node["title"] = title;
    if (UIImage* image = currentImage() ? currentImage() : currentBackgroundImage())
        node["image"] = image->name();
}
