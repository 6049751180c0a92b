#pragma once

#include <UIKit/UIImage.h>
#include <UIKit/UIView.h>

// A still wallpaper: its image fills the view, cropped to keep its shape.
class SBFStaticWallpaperView final : public UIView {
    OBJC_CLASS(SBFStaticWallpaperView)
public:
    SBFStaticWallpaperView() = default;
    SBFStaticWallpaperView(CGRect frame, RefPtr<UIImage> image)
        : UIView(frame)
        , m_image(std::move(image))
    {
    }

    RefPtr<UIImage> wallpaperImage() const { return m_image; }

    void drawContent(RenderContext&) const override;
    void dumpProperties(nlohmann::json&) const override;

private:
    RefPtr<UIImage> m_image;
};
