#pragma once

#include "UIControl.h"
#include "UIImage.h"

#include <map>
#include <string>

enum UIButtonType : int {
    UIButtonTypeCustom = 0,
    UIButtonTypeSystem = 1,
};

// A control with a title, an image and a background image per control
// state, as UIKit's UIButton. A state without a value of its own shows the
// normal state's. It draws its background image stretched over its bounds
// and its image centred at the image's size (shrunk to fit).
class UIButton : public UIControl {
    OBJC_CLASS(UIButton)
public:
    using UIControl::UIControl;
    static RefPtr<UIButton> buttonWithType(int type);

    int buttonType() const { return m_buttonType; }

    void setTitle(std::string, unsigned state);
    std::string titleForState(unsigned state) const;
    std::string currentTitle() const { return titleForState(state()); }
    void setTitleColor(RefPtr<UIColor>, unsigned state);
    UIColor* titleColorForState(unsigned state) const;
    void setImage(RefPtr<UIImage>, unsigned state);
    UIImage* imageForState(unsigned state) const;
    UIImage* currentImage() const { return imageForState(state()); }
    void setBackgroundImage(RefPtr<UIImage>, unsigned state);
    UIImage* backgroundImageForState(unsigned state) const;
    UIImage* currentBackgroundImage() const { return backgroundImageForState(state()); }

    void drawContent(RenderContext&) const override;
    void dumpProperties(nlohmann::json&) const override;

private:
    template<typename Map>
    static auto lookUp(const Map&, unsigned state) -> typename Map::mapped_type;

    int m_buttonType { UIButtonTypeCustom };
    std::map<unsigned, std::string> m_titles;
    std::map<unsigned, RefPtr<UIColor>> m_titleColors;
    std::map<unsigned, RefPtr<UIImage>> m_images;
    std::map<unsigned, RefPtr<UIImage>> m_backgroundImages;
};
